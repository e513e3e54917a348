// Materials that take the place of others, in a part and in the instances of its family table.
#include <algorithm>
#include <utility>

#include "actions/model/materials.h"
#include "core/messages.h"
#include "creo/ProFiles.h"
#include "creo/ProMaterial.h"
#include "language/compare.h"
#include "text/format.h"
#include "text/letters.h"

namespace actions {
namespace {

using namespace language;

constexpr int kMostPairs = 100;

void tell(Message message, const std::wstring& a, const std::wstring& b = {}) {
  core::logIndented(text::format(core::msgText(message), a, b), core::kNormal, 1);
}
void tellError(Message message, const std::wstring& a, const std::wstring& b = {}) {
  core::logWrite(text::format(core::msgText(message), a, b), core::kError);
}

// One material that comes in the place of those that a pattern fits.
class Replacement {
 public:
  Replacement(const Task& task, std::wstring_view from, std::wstring to)
      : task_(task), part_(task.model()), from_(from), to_(std::move(to)) {}

  void run() {
    const auto materials = materialsOf(part_);
    if (!materials) return;
    std::vector<std::wstring> old;
    for (const std::wstring& name : *materials) {
      if (!fits(name)) continue;
      if (isNew(name))
        refresh();
      else if (replaceInPart(name))
        old.push_back(name);
    }
    if (task_.isTrue(L"instances")) replaceInInstances();
    if (task_.isTrue(L"delreplaced")) deleteAll(old);
  }
  // The file's content in the place of what the material of its name says.
  void refresh() {
    if (wasRead_ && read_ == creo::ProNoError) return;
    tell(Message::replaceMaterialFromTo, to_, to_);
    isRead();
  }

 private:
  [[nodiscard]] bool fits(const std::wstring& name) const { return matches(from_, name); }
  [[nodiscard]] bool isNew(const std::wstring& name) const { return text::equalNoCase(name, to_); }

  // Reads the file when it is first asked for; each replacement that fails for it has its line.
  bool isRead() {
    if (!std::exchange(wasRead_, true)) read_ = creo::ProMaterialfileRead(part_, to_);
    if (read_ == creo::ProNoError) return true;
    const bool isMissing = read_ == creo::ProNotFound || read_ == creo::ProBadInputs;
    tellError(isMissing ? Message::namedFileUnread : Message::namedFileFaulty, to_);
    return false;
  }

  // False: the old material is still what it was.
  bool replaceInPart(const std::wstring& name) {
    tell(Message::replaceMaterialFromTo, name, to_);
    if (!isRead()) return false;
    const auto isCurrent = isCurrentMaterial(part_, name);
    if (!isCurrent || !*isCurrent) return isCurrent.has_value();
    if (creo::ProMaterialCurrentSet({part_, to_}) != creo::ProNoError)
      return tellError(Message::namedMaterialNotSet, to_), false;
    tell(Message::namedMaterialSet, to_);
    return true;
  }

  void replaceInInstances() {
    const bool all = eachInstance(part_, [&](const creo::ProFaminstance& instance) {
      const auto own = creo::ProFaminstanceFamtableItemIsDefault(instance, materialColumn());
      if (own.error == creo::ProNotFound || (own && own.value)) return;  // it has the generic's
      const auto value = creo::ProFaminstanceValueGet(instance, materialColumn());
      if (!own || !value) return tellError(Message::instanceMaterialUnread, instance.name);
      const std::wstring& name = value.value.string;
      if (!fits(name) || isNew(name)) return;
      core::logIndented(text::format(core::msgText(Message::replaceInInstance), instance.name, name, to_),
                        core::kNormal, 1);
      if (!isRead()) return;
      creo::ProParamvalue wanted = value.value;
      wanted.string = to_;
      if (creo::ProFaminstanceValueSet(instance, materialColumn(), wanted) != creo::ProNoError)
        tellError(Message::instanceMaterialFailed, to_, instance.name);
    });
    if (!all) core::logWrite(L"Not all instances can be looked at: they keep their materials", core::kError);
  }

  // An instance that stayed with its material keeps it.
  void deleteAll(const std::vector<std::wstring>& old) {
    if (old.empty()) return;
    const auto used = materialsOfInstances(part_);
    for (const std::wstring& name : old) {
      if (!used || isAmong(*used, name))
        core::logWrite(text::format(L"Don't delete %s because it's used by the model or an instance.", name),
                       core::kWarning);
      else if (creo::ProMaterialDelete({part_, name}) == creo::ProNoError)
        tell(Message::replacedMaterialDeleted, name);
      else
        tellError(Message::replacedMaterialNotDeleted, name);
    }
  }

  const Task& task_;
  creo::ProMdl part_;
  std::wstring_view from_;
  std::wstring to_;
  bool wasRead_ = false;
  creo::ProError read_ = creo::ProNotFound;  // what reading the file gave
};

// The names of the material files of the folders, each once.
std::vector<std::wstring> namesInFolders(const std::vector<std::wstring>& folders) {
  std::vector<std::wstring> names;
  for (const std::wstring& folder : folders) {
    const auto files = creo::ProFilesList(folder, L"*.mat,*.mtl");
    if (!files) core::logWrite(L"Can't list folder", core::kError);
    for (const std::wstring& file : files.value) {
      const std::wstring name = file.substr(file.find_last_of(L"\\/") + 1);
      names.push_back(name.substr(0, name.rfind(L'.')));
    }
  }
  return names;
}

// Each material that has a file of its name becomes what the file says.
void updateAll(const Task& task, const std::vector<std::wstring>& folders) {
  if (folders.empty())
    return core::logWrite(L"No material is updated: neither 'path' nor pro_material_dir names a folder", core::kError);
  const auto materials = materialsOf(task.model());
  if (!materials) return;
  std::vector<std::wstring> names = namesInFolders(folders);
  const auto less = [](const std::wstring& a, const std::wstring& b) { return text::lower(a) < text::lower(b); };
  std::sort(names.begin(), names.end(), less);
  for (const std::wstring& name : *materials)
    if (std::binary_search(names.begin(), names.end(), name, less)) Replacement(task, {}, name).refresh();
}

Outcome replaceMaterial(const Task& task) {
  MaterialFolder option;
  std::vector<std::wstring> folders = option.before();
  if (task.has(L"path")) {
    folders = {task.path(L"path", L"materials/")};
    if (!option.change(folders.front())) return done;
  }
  for (const Task::Numbered& from : task.numberedAll(L"namef_", kMostPairs)) {
    const auto to = task.numbered(L"namet_%d", from.number);
    if (!to || to->empty()) {
      if (!from.value.empty())
        core::logWrite(text::format(L"Nothing takes the place of %s: 'namet_%d' is missing", from.value, from.number),
                       core::kError);
      continue;
    }
    const MaterialPath pattern = materialPath(from.value);
    // A pattern may hold separators; only an ending is cut off.
    const std::size_t ending = pattern.file.size() - pattern.name.size();
    Replacement(task, from.value.substr(0, from.value.size() - ending), materialPath(*to).name).run();
  }
  std::erase(folders, std::wstring());
  if (task.isTrue(L"autoUpdate")) updateAll(task, folders);
  return done;
}

constexpr Attribute kAttributes[] = {
    {.name = L"path",
     .kind = Kind::folder,
     .variables = true,
     .folder = L"materials",
     .about = "the folder of the files; absent: the folders of pro_material_dir"},
    {.name = L"namef_%d",
     .kind = Kind::pattern,
     .need = Need::oneOf,
     .most = kMostPairs,
     .about = "a pattern for the names of old materials"},
    {.name = L"namet_%d", .most = kMostPairs, .about = "the name of the new one"},
    {.name = L"delreplaced",
     .kind = Kind::flag,
     .words = L"true",
     .about = "old materials that no instance is made of any more are deleted"},
    {.name = L"autoUpdate",
     .kind = Kind::flag,
     .words = L"true",
     .need = Need::oneOf,
     .about = "each material that has a file of its name in the folder becomes what the file says"},
    {.name = L"instances",
     .kind = Kind::flag,
     .words = L"true",
     .about = "the instances of the family table get the new materials too"},
};

constexpr Action kActions[] = {
    {.key = L"replaceMaterial",
     .place = 110,
     .group = Group::ownModelTest,
     .title = Message::replaceMaterial,
     .conditions = {kFilter,
                    kNotInstance,
                    kOnlyParts,
                    {.test = Test::notSkeleton, .line = Message::skeletonRefused, .level = core::kDebug}},
     .attributes = kAttributes,
     .effects = {.reads = Touched::model | Touched::family | Touched::files | Touched::options,
                 .changes = Touched::model | Touched::family | Touched::session | Touched::options},
     .about = "puts materials from files in the place of others",
     .function = &replaceMaterial},
};

}  // namespace

std::span<const Action> replaceMaterialActions() { return kActions; }

}  // namespace actions
