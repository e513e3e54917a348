// What is set for a solid as a whole. Every operation gives ProBadInputs for a model that is no solid; Creo refuses to
// change a read-only one.
#pragma once

#include "creo/ProDimension.h"

namespace creo {

// The smallest length that counts, relative to the model's size or in its units. ProBadInputs also for a value that
// isn't positive, or a relative one above 0.01, the coarsest that Creo takes. Doesn't regenerate: the geometry follows
// with the next regeneration. An assembly's says nothing of its parts.
ProError ProSolidAccuracySet(ProMdl solid, const ProAccuracy& accuracy);
// The class of ISO 2768; none: the solid follows ANSI, which knows no classes. Creo refuses a class for a solid that
// follows no tables of ISO or DIN.
ProError ProSolidModelclassSet(ProMdl solid, ProToleranceClass toleranceClass);
// Reads a table of tolerances, a name and a value in the solid's units on each line, in place of the one that it has.
// Empty lines and those that begin with "!" say nothing. ProNotFound: no such file; ProGeneralError: a line is
// otherwise, the message area has its number, and the solid keeps its table.
ProError ProSolidToleranceTableLoad(ProMdl solid, const std::wstring& path);

// Where in its tolerance a dimension stands when the body is built. ProNotFound: it has gone; ProBadInputs: it has no
// tolerance. Creo refuses dimensions that can't have a bound.
ProError ProDimensionBoundSet(const ProDimension& dimension, ProDimensionBound bound);

}  // namespace creo
