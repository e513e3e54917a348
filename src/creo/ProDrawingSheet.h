// What is set for a sheet of a drawing.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// The sheet's own scale, measured by the drawing's current model; views with a scale of their own keep it. sheet: from
// 1, below it the current one. ProBadInputs: no drawing, no such sheet, or no positive number.
ProError ProDrawingSheetScaleSet(ProMdl drawing, int sheet, double scale);

}  // namespace creo
