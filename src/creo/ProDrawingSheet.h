// What is set for a sheet of a drawing.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// The sheet's own scale; views with a scale of their own keep it. sheet: from 1. ProNotFound: no such sheet;
// ProBadInputs: no drawing, or no positive number.
ProError ProDrawingSheetScaleSet(ProMdl drawing, int sheet, double scale);

}  // namespace creo
