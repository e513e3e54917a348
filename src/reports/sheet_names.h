// Sheets of drawings and what is on them, as reports call it.
#pragma once

#include <string>

#include "creo/ProDrawing.h"

namespace reports {

// "A3"; "variable" and "other" for sizes without a name; empty where it can't be had.
std::wstring sizeName(const creo::Got<creo::ProSheetDimensions>& size);
// The name of a placed symbol's definition.
creo::Got<std::wstring> symbolName(const creo::ProDtlsyminst& symbol);
// From 1 to the last; none for a model that is no drawing.
void eachSheet(creo::ProMdl drawing, creo::FunctionRef<void(int sheet)> visit);

}  // namespace reports
