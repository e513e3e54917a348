// Predicates on files and models: where a model lies, what else there is, what it uses.
#include <unordered_set>

#include "core/log.h"
#include "creo/ProMdl.h"
#include "documents/predicate_families.h"
#include "documents/predicate_words.h"
#include "engine/variables.h"
#include "os/surroundings.h"
#include "text/format.h"
#include "text/units.h"

namespace documents {
namespace {

constexpr int kTitlePath = 17, kTitleFilename = 18;
constexpr std::size_t kFileNameField = 101;

// What a file's name says of its model; unused: nothing.
struct NamedModel {
  std::wstring name;
  creo::ProMdlType type = creo::ProMdlType::unused;
};
NamedModel namedModel(const std::wstring& fileName) {
  static constexpr struct {
    std::wstring_view upper, lower;
    creo::ProMdlType type;
  } kExtensions[] = {{L".PRT", L".prt", creo::ProMdlType::part},
                     {L".ASM", L".asm", creo::ProMdlType::assembly},
                     {L".DRW", L".drw", creo::ProMdlType::drawing}};
  for (const auto& row : kExtensions) {
    for (const std::wstring_view extension : {row.upper, row.lower}) {
      const std::size_t at = fileName.find(extension);
      if (at != fileName.npos) return {fileName.substr(0, at), row.type};
    }
  }
  return {fileName, creo::ProMdlType::unused};
}

// A walk along what models use. Its steps are kept in a list and not on the stack, as an assembly may be deep.
class DependencyWalk {
 public:
  // True at the first circle.
  bool findsCircle(creo::ProMdl model, std::wstring name) {
    enter(model, std::move(name));
    while (!path_.empty()) {
      Step& step = path_.back();
      if (step.next == step.uses.size()) {
        // What was walked whole without a circle has none for another way to it either.
        onPath_.erase(step.name);
        walked_.insert(std::move(step.name));
        path_.pop_back();
        continue;
      }
      if (closes(step.uses[step.next++])) return true;
    }
    return false;
  }

 private:
  struct Step {
    std::wstring name;
    std::vector<creo::ProDependencyData> uses;
    std::size_t next = 0;
  };

  void enter(creo::ProMdl model, std::wstring name) {
    onPath_.insert(name);
    path_.push_back({std::move(name), creo::ProMdlDependenciesDataList(model).value});
  }

  // Goes on to a used model; the list that names it may move with `enter`. True: it is on the path already.
  bool closes(const creo::ProDependencyData& used) {
    std::wstring name = used.name + L"." + used.typeText;
    if (onPath_.contains(name)) {
      core::logWrite(L"Circular: '" + name, core::kWarning);
      return true;
    }
    const auto type = static_cast<creo::ProMdlType>(used.type);
    if (type == creo::kLayoutType || walked_.contains(name)) return false;
    const auto model = creo::ProMdlnameRetrieve(used.name, type);
    if (model)
      enter(model.value, std::move(name));
    else
      core::logWrite(L"Dependency: '" + name + L"' could not be retrieved", core::kWarning);
    return false;
  }

  std::vector<Step> path_;
  std::unordered_set<std::wstring> onPath_, walked_;
};

}  // namespace

int pathPredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(kTitlePath);
  const auto data = creo::ProMdlDataGet(model);
  if (!data) return kFalse;
  return matches(valueOf(item, L"path"), data.value.device + L":" + data.value.path) ? kTrue : kFalse;
}

int filenamePredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(kTitleFilename);
  const auto data = creo::ProMdlDataGet(model);
  if (!data) return kFalse;
  const std::wstring name = data.value.name + L"." + data.value.type;
  return matches(valueOf(item, L"filename"), text::cut(name, kFileNameField - 1)) ? kTrue : kFalse;
}

int fileExistsPredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(L"Filter File exists");
  const auto name = engine::replaceVariables(valueOf(item, L"filename"), model);
  return name && !name.text.empty() && os::files().exists(name.text) ? kTrue : kFalse;
}

int modelExistsPredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(L"Filter Model exists");
  const auto fileName = engine::replaceVariables(valueOf(item, L"filename"), model);
  if (!fileName) return kFalse;
  const NamedModel wanted = namedModel(fileName.text);
  const auto other = creo::ProMdlRetrieve(wanted.name, wanted.type);
  if (!other) return kFalse;
  if (valueOf(item, L"vcheck") != L"1") return kTrue;
  const auto expected = engine::replaceVariables(valueOf(item, L"vcheckvalue"), model);
  const auto content = engine::replaceVariables(valueOf(item, L"vcheckcontent"), other.value);
  return expected && content && expected.text == content.text ? kTrue : kFalse;
}

int modifiedPredicate(creo::ProMdl model, const core::XmlNode&) {
  title(L"Extended filter: Is modified");
  const auto modified = creo::ProMdlModificationVerify(model);
  return modified && modified.value ? kTrue : kFalse;
}

int circularReferencesPredicate(creo::ProMdl model, const core::XmlNode&) {
  title(L"Extended filter: Contains circular references");
  const auto type = applicableType(model, AppliesTo::solids);
  if (!type) return kNotApplicable;
  const auto name = creo::ProMdlNameGet(model);
  if (!name) return kFalse;
  return DependencyWalk().findsCircle(model, name.value + L"." + creo::typeExtension(*type)) ? kTrue : kFalse;
}

}  // namespace documents
