// What dimensions of solids and drawings are beside their symbol and text. ProNotFound: the dimension has gone.
#pragma once

#include "creo/ProSolid.h"

namespace creo {

// At which end of its tolerance a dimension stands; Creo's numbers.
enum class ProDimensionBound : int { nominal = 0, upper = 1, lower = 2, middle = 3 };

// none: the dimension has no tolerance. standard: that of a table of DIN or ISO.
enum class ProToleranceType : int {
  none = -1,
  standard = 0,
  limits = 1,
  plusMinus = 2,
  symmetric = 3,
  symmetricSuperscript = 4,
};

// Its value in the model's units, an instance's own where its family table says so; degrees for angles. It is never
// below 0 once the model is regenerated. ProNotFound also for one without a value.
Got<double> ProDimensionValueGet(const ProDimension& dimension);
// The geometry follows with the next regeneration; a value below 0 flips the direction in which it is measured. Of an
// instance: the value of its row, with a column where there was none. ProBadInputs: the value isn't finite.
// ProGeneralError: a reference dimension, or a relation drives it.
ProError ProDimensionValueSet(const ProDimension& dimension, double value);
// ProGeneralError: a reference dimension.
Got<ProToleranceType> ProDimensionTolTypeGet(const ProDimension& dimension);
// Does the dimension follow the geometry that it measures?
Got<bool> ProDimensionIsAssociative(const ProDimension& dimension);
// Does a relation of its model give it its value?
Got<bool> ProDimensionIsReldriven(const ProDimension& dimension);

}  // namespace creo
