// Solids as line drawings: their edges and outlines, seen from one side.
#pragma once

#include <vector>

#include "creo/ProTransform.h"
#include "headless/pictures/shaded.h"

namespace headless {

struct ProjectedLine {
  double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
  bool isHidden = false;  // it lies behind a face
};
// Lengths are in the solid's units; places are counted from the middle of what is seen, y upwards.
struct Projection {
  double width = 0, height = 0;
  std::vector<ProjectedLine> lines;  // the hidden ones first, and no two alike
};
// view: the axes of the screen in the solid's coordinates. Edges between faces are there, and where a round face turns
// away. What is hidden is told as exactly as a picture of some hundred dots tells it. No parts: no lines.
Projection projection(const std::vector<ShadedPart>& parts, const creo::ProTransform& view);

}  // namespace headless
