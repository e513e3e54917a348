// The materials that a part holds.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "headless/model/model.h"

namespace headless {

class Models;  // models.h

// The column of a family table that says which material an instance is made of.
constexpr std::string_view kMaterialColumn = "PTC_MATERIAL_NAME";

// As ProMaterialCurrentSet and ProMaterialDelete.
creo::ProError setCurrentMaterial(Model& part, const std::wstring& name);
creo::ProError deleteMaterial(Model& part, const std::wstring& name);
// As ProMaterialfileRead. folders: where material files are looked for, one that isn't whole from the working folder
// on; none: in the working folder alone.
creo::ProError readMaterialFile(const Models& models, std::vector<std::wstring> folders, Model& part,
                                const std::wstring& name);

}  // namespace headless
