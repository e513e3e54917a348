// Material files: what a material is made of, as lines of text. docs/materials.md describes both forms for users.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "headless/store/parameter_record.h"
#include "headless/store/text_fault.h"

namespace headless {

constexpr std::wstring_view kMaterialEnding = L".mtl", kPlainMaterialEnding = L".mat";  // of one length

// properties: named properties with types and units, as ".mtl" holds them; plain: the older "NAME = value" of ".mat".
enum class MaterialForm { properties, plain };
// By a file's name; nothing for any other file.
std::optional<MaterialForm> materialKind(std::wstring_view path);

// The parameters that a file's content gives a material; `into` is meaningful only without a fault.
TextFault readMaterial(std::wstring_view content, MaterialForm form, ParameterList& into);

}  // namespace headless
