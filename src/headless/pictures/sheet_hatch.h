// Hatching of cut material, as lines and as areas.
#pragma once

#include <vector>

#include "headless/geometry/flat_loop.h"
#include "headless/pictures/sheet_stroke.h"

namespace headless {

struct Model;  // model/models.h

// An area with its hatching; writers that know none draw its lines, which stand among the strokes of the picture, too.
struct SheetHatch {
  std::vector<geometry::FlatLoop> loops;  // it fills what lies within an odd number of them
  std::vector<geometry::HatchLines> lines;
  SheetPen pen;
};
// The hatching of cut faces, each part's alike. parts: by the numbers of the cuts. Plastics (below 2000 kg/m^3) are
// crossed, all others have simple lines, of light metals (below 3500) twice as far apart every second time. Parts that
// lie beside one another are told apart by angle and distance.
std::vector<SheetHatch> hatchesOf(const std::vector<geometry::SeenCut>& cuts, const std::vector<const Model*>& parts);
std::vector<SheetStroke> strokesOf(const SheetHatch& hatch);
SheetHatch moved(SheetHatch hatch, double x, double y);

}  // namespace headless
