#include "actions/model/materials.h"

#include "core/log.h"
#include "creo/ProMaterial.h"

namespace actions {

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

}  // namespace actions
