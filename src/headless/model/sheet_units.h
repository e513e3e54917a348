// Units and heights of texts on the sheets of drawings.
#pragma once

#include "creo/ProDrawing.h"
#include "headless/model/document.h"

namespace headless {

// Whether a sheet of that size is measured in millimetres; else in inches.
bool isInMm(creo::ProSheetSize size);
// The height of a text that has none of its own, in units of the sheet: the drawing's detail option (text_height or
// drawing_text_height), else 3.5 mm. A sheet that isn't there is measured in millimetres.
double textHeight(const ModelDocument& drawing, int sheet);

}  // namespace headless
