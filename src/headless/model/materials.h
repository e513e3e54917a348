// The materials that a part holds.
#pragma once

#include <string>
#include <string_view>

#include "headless/creo/state.h"
#include "headless/model/models.h"

namespace headless {

// The column of a family table that says which material an instance is made of.
constexpr std::string_view kMaterialColumn = "PTC_MATERIAL_NAME";

// As ProMaterialCurrentSet, ProMaterialDelete and ProMaterialfileRead.
creo::ProError setCurrentMaterial(Model& part, const std::wstring& name);
creo::ProError deleteMaterial(Model& part, const std::wstring& name);
creo::ProError readMaterialFile(Session::State& state, Model& part, const std::wstring& name);

}  // namespace headless
