// Predicates on families: a model's place in one, and its instances down to the last level.
#include <set>

#include "core/log.h"
#include "core/messages.h"
#include "creo/ProFamtable.h"
#include "creo/ProMdl.h"
#include "documents/predicate_families.h"
#include "documents/predicate_table.h"
#include "documents/predicate_words.h"
#include "language/variables.h"
#include "text/letters.h"

namespace documents {
namespace {

using core::Message;

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
        core::logWrite(row.name + core::msgText(Message::instanceNotCreated), core::kError);
      else if (findsUnverified(built.model().value, allLevels))
        return true;
    }
    return false;
  }

 private:
  creo::ProMdlType type_;
  std::set<creo::ProMdl> searched_;
};

Answer instancePredicate(const Question& question) {
  const auto generic = creo::ProFaminstanceImmediategenericinfoGet(question.model);
  if (!generic || generic.value.type == creo::ProMdlType::unused) return Answer::no;
  const auto name = creo::ProMdlNameGet(question.model);
  return answer(name && !text::equalNoCase(name.value, generic.value.name));
}

Answer genericPredicate(const Question& question) {
  return answer(creo::ProSolidFamtableCheck(question.model) == creo::ProNoError);
}

Answer skeletonPredicate(const Question& question) {
  const auto skeleton = creo::ProMdlIsSkeleton(question.model);
  return answer(skeleton && skeleton.value);
}

Answer instanceNamePredicate(const Question& question) {
  const auto pattern = language::replaceVariables(question.value(L"filename"), question.model);
  return answer(pattern && FamilySearch(question.type).findsName(question.model, pattern.text));
}

Answer unregeneratedInstancePredicate(const Question& question) {
  return answer(FamilySearch(question.type).findsUnverified(question.model, question.value(L"level") == L"all"));
}

constexpr Attribute kInstanceName[] = {
    {.name = L"filename",
     .kind = Kind::pattern,
     .variables = true,
     .need = Need::needed,
     .about = "the name of the instance"},
};
constexpr Attribute kLevel[] = {
    {.name = L"level", .about = "all asks the instances of instances too"},
};

constexpr Predicate kInstance = {.key = L"isInstance",
                                 .place = 0,
                                 .title = Message::filterIsInstance,
                                 .models = Models::solids,
                                 .about = "it is an instance of a family table",
                                 .function = &instancePredicate};
constexpr Predicate kGeneric = {.key = L"isGeneric",
                                .place = 1,
                                .title = Message::filterIsGeneric,
                                .models = Models::solids,
                                .about = "it has a family table",
                                .function = &genericPredicate};
constexpr Predicate kSkeleton = {.key = L"isSkeleton",
                                 .place = 2,
                                 .title = L"Extended filter: Is skeleton",
                                 .about = "it is a skeleton",
                                 .function = &skeletonPredicate};
constexpr Predicate kPredicates[] = {
    kInstance,
    kGeneric,
    kSkeleton,
    {.key = L"hasInstanceWithName",
     .place = 30,
     .title = L"Extended filter: Has instance with name",
     .models = Models::solids,
     .attributes = kInstanceName,
     .about = "an instance at any level of the family has a name that fits",
     .function = &instanceNamePredicate},
    {.key = L"hasUnregeneratedInstance",
     .place = 33,
     .title = L"Extended filter: Has unregenerated instance",
     .models = Models::solids,
     .attributes = kLevel,
     .about = "an instance is not verified",
     .function = &unregeneratedInstancePredicate},
};

}  // namespace

std::span<const Predicate> familyPredicates() { return kPredicates; }

Answer isInstance(creo::ProMdl model) { return ask(kInstance, model, {}); }
Answer isGeneric(creo::ProMdl model) { return ask(kGeneric, model, {}); }
Answer isSkeleton(creo::ProMdl model) { return ask(kSkeleton, model, {}); }

creo::Got<creo::ProMdl> immediateGeneric(creo::ProMdl instance) {
  const auto there = creo::ProFaminstanceGenericGet(instance, true);
  if (there || there.error == creo::ProNotFound) return there;
  const auto info = creo::ProFaminstanceImmediategenericinfoGet(instance);
  if (!info) return there;
  // It is an instance itself, and a bare name may be that of another model.
  std::wstring name = info.value.name;
  const auto top = creo::ProFaminstanceGenericGet(instance, false);
  const auto topName = top ? creo::ProMdlNameGet(top.value) : creo::Got<std::wstring>(top.error);
  if (topName && !text::equalNoCase(topName.value, name)) name += L"<" + topName.value + L">";
  return creo::ProMdlRetrieve(name, info.value.type);
}

}  // namespace documents
