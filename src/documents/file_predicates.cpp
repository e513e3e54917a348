// Predicates on files and models: where a model lies, what else there is, what it uses.
#include <unordered_set>

#include "core/log.h"
#include "creo/ProMdl.h"
#include "documents/predicate_families.h"
#include "documents/predicate_words.h"
#include "language/variables.h"
#include "os/surroundings.h"
#include "text/format.h"
#include "text/units.h"

namespace documents {
namespace {

using core::Message;

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

Answer pathPredicate(const Question& question) {
  const auto data = creo::ProMdlDataGet(question.model);
  if (!data) return Answer::no;
  return answer(matches(question.value(L"path"), data.value.device + L":" + data.value.path));
}

Answer filenamePredicate(const Question& question) {
  const auto data = creo::ProMdlDataGet(question.model);
  if (!data) return Answer::no;
  const std::wstring name = data.value.name + L"." + data.value.type;
  return answer(matches(question.value(L"filename"), text::cut(name, kFileNameField - 1)));
}

Answer fileExistsPredicate(const Question& question) {
  const auto name = language::replaceVariables(question.value(L"filename"), question.model);
  return answer(name && !name.text.empty() && os::files().exists(name.text));
}

Answer modelExistsPredicate(const Question& question) {
  const auto fileName = language::replaceVariables(question.value(L"filename"), question.model);
  if (!fileName) return Answer::no;
  const NamedModel wanted = namedModel(fileName.text);
  const auto other = creo::ProMdlRetrieve(wanted.name, wanted.type);
  if (!other) return Answer::no;
  if (question.value(L"vcheck") != L"1") return Answer::yes;
  const auto expected = language::replaceVariables(question.value(L"vcheckvalue"), question.model);
  const auto content = language::replaceVariables(question.value(L"vcheckcontent"), other.value);
  return answer(expected && content && expected.text == content.text);
}

Answer modifiedPredicate(const Question& question) {
  const auto modified = creo::ProMdlModificationVerify(question.model);
  return answer(modified && modified.value);
}

Answer circularReferencesPredicate(const Question& question) {
  const auto name = creo::ProMdlNameGet(question.model);
  if (!name) return Answer::no;
  return answer(DependencyWalk().findsCircle(question.model, name.value + L"." + creo::typeExtension(question.type)));
}

constexpr Attribute kPath[] = {
    {.name = L"path", .kind = Kind::pattern, .need = Need::needed, .about = "device, colon and path of the model"},
};
constexpr Attribute kFilename[] = {
    {.name = L"filename", .kind = Kind::pattern, .need = Need::needed, .about = "NAME.EXT of the model"},
};
constexpr Attribute kFile[] = {
    {.name = L"filename", .kind = Kind::file, .variables = true, .need = Need::needed, .about = "the file"},
};
constexpr Attribute kModel[] = {
    {.name = L"filename", .variables = true, .need = Need::needed, .about = "NAME.EXT of the other model"},
    {.name = L"vcheck", .kind = Kind::integer, .about = "1 compares two texts too"},
    {.name = L"vcheckvalue", .variables = true, .about = "a text, put together on this model"},
    {.name = L"vcheckcontent",
     .variables = true,
     .about = "the text that it must equal, put together on the other model"},
};

constexpr Predicate kPredicates[] = {
    {.key = L"path",
     .place = 7,
     .title = Message::filterPath,
     .attributes = kPath,
     .about = "where it lies fits",
     .function = &pathPredicate},
    {.key = L"filename",
     .place = 8,
     .title = Message::filterFilename,
     .attributes = kFilename,
     .about = "the name of its file fits",
     .function = &filenamePredicate},
    {.key = L"fileexists",
     .place = 39,
     .title = L"Filter File exists",
     .attributes = kFile,
     .about = "there is such a file",
     .function = &fileExistsPredicate},
    {.key = L"modelexists",
     .place = 40,
     .title = L"Filter Model exists",
     .attributes = kModel,
     .about = "another model can be retrieved",
     .function = &modelExistsPredicate},
    {.key = L"ismodified",
     .place = 51,
     .title = L"Extended filter: Is modified",
     .about = "it was changed since it was saved",
     .function = &modifiedPredicate},
    {.key = L"containsCircularReferences",
     .place = 52,
     .title = L"Extended filter: Contains circular references",
     .models = Models::solids,
     .about = "what it uses leads back to a model on the way",
     .function = &circularReferencesPredicate},
};

}  // namespace

std::span<const Predicate> filePredicates() { return kPredicates; }

}  // namespace documents
