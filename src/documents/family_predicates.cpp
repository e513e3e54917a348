// Predicates on families: a model's place in one, and its instances down to the last level.
#include <set>

#include "core/log.h"
#include "core/messages.h"
#include "creo/ProFamtable.h"
#include "creo/ProMdl.h"
#include "documents/predicate_families.h"
#include "documents/predicate_words.h"
#include "engine/variables.h"
#include "text/letters.h"

namespace documents {
namespace {

constexpr int kTitleInstance = 6, kTitleGeneric = 8;
constexpr int kCreationFailed = 141;

// An instance as a model, for as long as the object lives. One that was in memory before stays there: somebody works
// on it.
class BuiltInstance {
 public:
  BuiltInstance(const creo::ProFaminstance& row, creo::ProMdlType type)
      : wasThere_(static_cast<bool>(creo::ProMdlInit(row.name, type))), model_(creo::ProFaminstanceCreate(row)) {}
  ~BuiltInstance() {
    if (model_ && !wasThere_) creo::ProMdlErase(model_.value);
  }
  BuiltInstance(const BuiltInstance&) = delete;
  BuiltInstance& operator=(const BuiltInstance&) = delete;

  [[nodiscard]] const creo::Got<creo::ProMdl>& model() const { return model_; }

 private:
  bool wasThere_;
  creo::Got<creo::ProMdl> model_;
};

// The rows of a generic's own table; none for another model.
std::vector<creo::ProFaminstance> rowsOf(creo::ProMdl model) {
  std::vector<creo::ProFaminstance> rows;
  if (creo::ProSolidFamtableCheck(model) != creo::ProNoError) return rows;
  const auto table = creo::ProFamtableInit(model);
  if (!table) return rows;
  creo::ProFamtableInstanceVisit(table.value, [&rows](const creo::ProFaminstance& row) {
    rows.push_back(row);
    return creo::ProNoError;
  });
  return rows;
}

// A search through the instances of a family, level below level. A row may name a model above it or one that was
// searched; none is searched twice. As deep as tables nest in a document, so the stack holds.
class FamilySearch {
 public:
  explicit FamilySearch(creo::ProMdlType type) : type_(type) {}

  // True when an instance at any level has a name that fits.
  bool findsName(creo::ProMdl generic, std::wstring_view pattern) {
    if (!searched_.insert(generic).second) return false;
    for (const creo::ProFaminstance& row : rowsOf(generic)) {
      const BuiltInstance built(row, type_);
      if (!built.model()) continue;
      if (findsName(built.model().value, pattern)) return true;
      const auto name = creo::ProMdlNameGet(built.model().value);
      if (name && matches(pattern, name.value)) return true;
    }
    return false;
  }

  // True when an instance wasn't verified, or failed; allLevels: those of instances too.
  bool findsUnverified(creo::ProMdl generic, bool allLevels) {
    if (!searched_.insert(generic).second) return false;
    for (const creo::ProFaminstance& row : rowsOf(generic)) {
      const auto verification = creo::ProFaminstanceIsVerified(row);
      if (verification && verification.value != creo::ProVerification::verified) return true;
      if (!allLevels) continue;
      const BuiltInstance built(row, type_);
      if (!built.model())
        core::logWrite(row.name + core::msgText(kCreationFailed), core::kError);
      else if (findsUnverified(built.model().value, allLevels))
        return true;
    }
    return false;
  }

 private:
  creo::ProMdlType type_;
  std::set<creo::ProMdl> searched_;
};

}  // namespace

int instancePredicate(creo::ProMdl model, const core::XmlNode&) { return isInstance(model); }
int genericPredicate(creo::ProMdl model, const core::XmlNode&) { return isGeneric(model); }
int skeletonPredicate(creo::ProMdl model, const core::XmlNode&) { return isSkeleton(model); }

int instanceNamePredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(L"Extended filter: Has instance with name");
  const auto type = applicableType(model, AppliesTo::solids);
  if (!type) return kNotApplicable;
  const auto pattern = engine::replaceVariables(valueOf(item, L"filename"), model);
  return pattern && FamilySearch(*type).findsName(model, pattern.text) ? kTrue : kFalse;
}

int unregeneratedInstancePredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(L"Extended filter: Has unregenerated instance");
  const auto type = applicableType(model, AppliesTo::solids);
  if (!type) return kNotApplicable;
  return FamilySearch(*type).findsUnverified(model, valueOf(item, L"level") == L"all") ? kTrue : kFalse;
}

int isInstance(creo::ProMdl model) {
  title(kTitleInstance);
  if (!applicableType(model, AppliesTo::solids)) return kNotApplicable;
  const auto generic = creo::ProFaminstanceImmediategenericinfoGet(model);
  if (!generic || generic.value.version == -1) return kFalse;
  const auto name = creo::ProMdlNameGet(model);
  return name && !text::equalNoCase(name.value, generic.value.name) ? kTrue : kFalse;
}

int isGeneric(creo::ProMdl model) {
  title(kTitleGeneric);
  if (!applicableType(model, AppliesTo::solids)) return kNotApplicable;
  return creo::ProSolidFamtableCheck(model) == creo::ProNoError ? kTrue : kFalse;
}

int isSkeleton(creo::ProMdl model) {
  title(L"Extended filter: Is skeleton");
  const auto skeleton = creo::ProMdlIsSkeleton(model);
  return skeleton && skeleton.value ? kTrue : kFalse;
}

}  // namespace documents
