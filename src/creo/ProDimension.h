// Values of dimensions.
#pragma once

#include "creo/ProSolid.h"

namespace creo {

// In the model's units; an instance's own where its family table says so. ProNotFound: it has gone.
Got<double> ProDimensionValueGet(const ProDimension& dimension);
// The geometry follows with the next regeneration. Of an instance: the value of its row, with a column where there was
// none. ProBadInputs: the value isn't finite. ProGeneralError: a reference dimension, or a relation drives it.
ProError ProDimensionValueSet(const ProDimension& dimension, double value);

}  // namespace creo
