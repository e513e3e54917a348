// What tells the faces of bodies apart: of two states of a model those that are in both are found by it.
#pragma once

#include <vector>

#include "creo/ProTransform.h"
#include "headless/geometry/body.h"

namespace headless::geometry {

struct FacePrint {
  int kind = 0;            // of its surface, by the library's number
  double area = 0;         // in the body's units
  creo::ProVector centre;  // of the area
};

// In the order of faces(). Throws std::runtime_error for what the library can't measure.
std::vector<FacePrint> facePrints(const Body& body);

}  // namespace headless::geometry
