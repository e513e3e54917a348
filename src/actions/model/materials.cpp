#include "actions/model/materials.h"

#include <algorithm>

#include "actions/environment/config_options.h"
#include "actions/model/instances.h"
#include "actions/visits.h"
#include "core/log.h"
#include "creo/ProMaterial.h"
#include "creo/ProMdl.h"
#include "os/paths.h"
#include "text/letters.h"

namespace actions {

namespace {

constexpr std::wstring_view kOption = L"pro_material_dir";
constexpr std::wstring_view kEndings[] = {L".mtl", L".mat"};

}  // namespace

std::optional<creo::ProModelitem> currentMaterial(creo::ProMdl part, int level) {
  const auto material = creo::ProMaterialCurrentGet(part);
  if (!material) {
    core::logWrite(L"No current material found", level);
    return std::nullopt;
  }
  const auto item = creo::ProModelitemByNameInit(part, creo::ProItemType::material, material.value.name);
  if (item) return item.value;
  core::logWrite(L"Failure while ProMdlToMdlitem", core::kError);
  return std::nullopt;
}

MaterialPath materialPath(std::wstring_view path) {
  MaterialPath parts{os::folderOf(path), os::nameOf(path), {}};
  parts.name = parts.file;
  for (const std::wstring_view ending : kEndings)
    if (text::endsWithNoCase(parts.file, ending)) parts.name.resize(parts.file.size() - ending.size());
  return parts;
}

std::optional<std::vector<std::wstring>> materialsOf(creo::ProMdl part) {
  auto names = creo::ProPartMaterialsGet(part);
  if (names || names.error == creo::ProNotFound) return std::move(names.value);
  core::logWrite(L"Can't get the materials of the part", core::kError);
  return std::nullopt;
}

bool isAmong(const std::vector<std::wstring>& names, std::wstring_view name) {
  return std::any_of(names.begin(), names.end(),
                     [name](const std::wstring& entry) { return text::equalNoCase(entry, name); });
}

std::optional<bool> isCurrentMaterial(creo::ProMdl part, std::wstring_view name) {
  const auto current = creo::ProMaterialCurrentGet(part);
  if (!current && current.error != creo::ProNotFound) {
    core::logWrite(L"Can't get the current material of the part", core::kError);
    return std::nullopt;
  }
  return current && text::equalNoCase(current.value.name, name);
}

MaterialFolder::MaterialFolder() : option_(std::wstring(kOption)) {}

bool MaterialFolder::change(const std::wstring& folder) {
  if (option_.change(folder) == creo::ProNoError) return true;
  tellUnset(kOption);
  return false;
}

MaterialFolder::~MaterialFolder() {
  if (!option_.back()) tellUnset(kOption);
}

creo::ProFamtableItem materialColumn() { return {creo::ProFamitemType::parameter, L"PTC_MATERIAL_NAME"}; }

bool eachInstance(creo::ProMdl generic, creo::FunctionRef<void(const creo::ProFaminstance& instance)> visit) {
  const auto table = creo::ProFamtableInit(generic);
  bool all = table || table.error == creo::ProNotFound;
  if (table) {
    const auto rows = creo::ProFamtableInstanceVisit(table.value, [&](const creo::ProFaminstance& instance) {
      visit(instance);
      return creo::ProNoError;
    });
    all = isWhole(rows, L"The instances");
  }
  // A table of its own is seen from the instance as a model.
  const bool visited = visitInstances(
      generic, [&](const creo::ProFaminstance&, creo::ProMdl model) { all = eachInstance(model, visit) && all; });
  return visited && all;
}

std::optional<std::vector<std::wstring>> materialsOfInstances(creo::ProMdl generic) {
  std::vector<std::wstring> names;
  bool isRead = true;
  const bool all = eachInstance(generic, [&](const creo::ProFaminstance& instance) {
    const auto value = creo::ProFaminstanceValueGet(instance, materialColumn());
    if (value && !isAmong(names, value.value.string)) names.push_back(value.value.string);
    isRead = isRead && (value || value.error == creo::ProNotFound);
  });
  if (!all || !isRead) return std::nullopt;
  return names;
}

}  // namespace actions
