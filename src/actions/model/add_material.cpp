// Materials that come into a part from files, and leave it.
#include <algorithm>

#include "actions/model/materials.h"
#include "core/messages.h"
#include "creo/ProMaterial.h"
#include "documents/predicates.h"
#include "language/compare.h"
#include "text/format.h"

namespace actions {
namespace {

using namespace language;

constexpr int kMostNames = 100;

// One that is worked, as the list says so, has the line of one that isn't.
void announceSkeleton(const Task& task) {
  if (documents::isSkeleton(task.model()) == documents::Answer::yes)
    core::logMsgPlain(Message::skeletonRefused, core::kWarning);
}

// False, with its line: the part doesn't hold the material afterwards.
bool readMaterial(creo::ProMdl part, const MaterialPath& material) {
  MaterialFolder folder;
  if (!material.folder.empty() && !folder.change(material.folder)) return false;
  const creo::ProError result = creo::ProMaterialfileRead(part, material.name);
  if (result == creo::ProNoError)
    core::logMsgId(Message::materialAdded, core::kNormal, 1);
  else if (result == creo::ProNotFound || result == creo::ProBadInputs)
    core::logWrite(L"The defined material has not be found.", core::kError);
  else
    core::logMsgPlain(Message::materialFileFaulty, core::kError);
  return result == creo::ProNoError;
}

Outcome addMaterial(const Task& task) {
  announceSkeleton(task);
  core::logWrite(task.attribute(L"material"), core::kDebug);
  const std::wstring path = task.path(L"material", L"materials");
  core::logIndented(path, core::kNormal, 1);
  const MaterialPath material = materialPath(path);
  const auto materials = materialsOf(task.model());
  if (!materials) return done;
  if (isAmong(*materials, material.name))
    core::logMsgPlain(Message::materialAlreadyThere, core::kWarning);
  else if (!readMaterial(task.model(), material))
    return done;
  if (!task.isTrue(L"currmat")) return done;
  if (isCurrentMaterial(task.model(), material.name).value_or(false))
    core::logMsgId(Message::materialAlreadyCurrent, core::kNormal, 1);
  else if (creo::ProMaterialCurrentSet({task.model(), material.name}) == creo::ProNoError)
    core::logMsgId(Message::materialSet, core::kNormal, 1);
  else
    core::logMsgPlain(Message::materialNotSet, core::kError);
  return done;
}

// Those that the part or an instance is made of; nothing, with a line, where they can't be told.
std::optional<std::vector<std::wstring>> materialsInUse(creo::ProMdl part) {
  auto used = materialsOfInstances(part);
  const auto current = creo::ProMaterialCurrentGet(part);
  if (!used || (!current && current.error != creo::ProNotFound)) {
    core::logWrite(L"Can't find out which materials are used, none is deleted", core::kError);
    return std::nullopt;
  }
  if (current) used->push_back(current.value.name);
  return used;
}

// False, with its line: it may still be there.
bool deleteOne(creo::ProMdl part, const std::wstring& name) {
  const bool isDeleted = creo::ProMaterialDelete({part, name}) == creo::ProNoError;
  if (isDeleted)
    core::logIndented(text::format(core::msgText(Message::materialDeleted), name), core::kNormal, 1);
  else
    core::logMsgPlain(Message::unsureIfDeleted, core::kWarning);
  return isDeleted;
}

// Creo clears the part's own parameter with the material; a row of the family table would go on naming what is gone.
void clearInstances(creo::ProMdl part, const std::vector<std::wstring>& deleted) {
  const bool all = eachInstance(part, [&](const creo::ProFaminstance& instance) {
    const auto inherits = creo::ProFaminstanceFamtableItemIsDefault(instance, materialColumn());
    if (inherits.error == creo::ProNotFound || (inherits && inherits.value)) return;
    const auto value = creo::ProFaminstanceValueGet(instance, materialColumn());
    if (inherits && value && !isAmong(deleted, value.value.string)) return;
    creo::ProParamvalue none = value.value;
    none.string.clear();
    if (inherits && value && creo::ProFaminstanceValueSet(instance, materialColumn(), none) == creo::ProNoError)
      core::logIndented(text::format(L"The instance %s has no material any more", instance.name), core::kNormal, 1);
    else
      core::logWrite(text::format(L"The material of the instance %s can't be cleared", instance.name), core::kError);
  });
  if (!all) core::logWrite(L"Not all instances can be looked at: they may name a deleted material", core::kError);
}

Outcome deleteMaterial(const Task& task) {
  announceSkeleton(task);
  std::vector<std::wstring> used;
  if (task.isTrue(L"deleteOnlyUnused")) {
    core::logMsgId(Message::onlyUnusedMaterials, core::kNormal, 1);
    auto found = materialsInUse(task.model());
    if (!found) return done;
    used = std::move(*found);
  }
  const auto names = task.numberedAll(L"name_", kMostNames);
  const auto materials = materialsOf(task.model());
  if (!materials) return done;
  std::vector<std::wstring> deleted;
  for (const std::wstring& material : *materials) {
    const bool fits = std::any_of(names.begin(), names.end(),
                                  [&](const Task::Numbered& name) { return matches(name.value, material); });
    if (!fits) continue;
    if (isAmong(used, material))
      core::logWrite(text::format(L"Don't delete %s because it's used by the model or an instance.", material),
                     core::kWarning);
    else if (deleteOne(task.model(), material))
      deleted.push_back(material);
  }
  if (!deleted.empty()) clearInstances(task.model(), deleted);
  return done;
}

constexpr Attribute kSkeletons[] = {
    {.name = L"forSkel", .kind = Kind::flag, .words = L"true", .about = "skeletons are worked too"},
};
constexpr Attribute kMaterial[] = {
    {.name = L"material",
     .kind = Kind::file,
     .variables = true,
     .need = Need::needed,
     .folder = L"materials",
     .about = "the file, with or without its ending; a name alone is looked for in the folders of pro_material_dir"},
    {.name = L"currmat", .kind = Kind::flag, .words = L"true", .about = "it becomes the part's current material"},
};
constexpr Attribute kMaterials[] = {
    {.name = L"name_%d",
     .kind = Kind::pattern,
     .need = Need::needed,
     .most = kMostNames,
     .about = "patterns for their names"},
    {.name = L"deleteOnlyUnused",
     .kind = Kind::flag,
     .words = L"true",
     .about = "one that the part or an instance of its family table is made of stays"},
};
constexpr auto kAddAttributes = joined(kMaterial, kSkeletons);
constexpr auto kDeleteAttributes = joined(kMaterials, kSkeletons);

constexpr Conditions kOnPartsAndSkeletons = {
    kFilter, kNotInstance, kOnlyParts, {.test = Test::skeletonsAsTold, .line = Message::skeletonRefused}};

constexpr Action kActions[] = {
    {.key = L"addMaterial",
     .place = 108,
     .group = Group::ownModelTest,
     .title = Message::addMaterial,
     .conditions = kOnPartsAndSkeletons,
     .attributes = kAddAttributes,
     .effects = {.reads = Touched::model | Touched::files | Touched::options,
                 .changes = Touched::model | Touched::options},
     .about = "reads a material from a file into a part",
     .function = &addMaterial},
    {.key = L"deleteMaterial",
     .place = 109,
     .group = Group::ownModelTest,
     .title = Message::deleteMaterial,
     .conditions = kOnPartsAndSkeletons,
     .attributes = kDeleteAttributes,
     .effects = {.reads = Touched::model | Touched::family,
                 .changes = Touched::model | Touched::family | Touched::session},
     .about = "deletes materials of a part",
     .function = &deleteMaterial},
};

}  // namespace

std::span<const Action> materialActions() { return kActions; }

}  // namespace actions
