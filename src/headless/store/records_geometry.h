// What the document of a solid says of its geometry: what a part's body is made of, datums, where components stand. The
// model keeps these members as written; they are read when geometry is first asked for.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "headless/geometry/primitive.h"
#include "headless/store/fields.h"

namespace headless {

// A number, or an expression of the model's dimensions and parameters: "WIDTH / 2".
using Measure = Scalar;
using Measures = std::vector<Measure>;

// Without axes those of the system around it; the y axis follows from the two.
struct PlacementRecord : Open {
  Measures position, xAxis, zAxis;
};

using geometry::PrimitiveKind;
using geometry::PrimitiveUse;
struct PrimitiveRecord : Open {
  PrimitiveKind type = PrimitiveKind::box;
  PrimitiveUse use = PrimitiveUse::add;
  int feature = 0;  // it isn't there while that feature is suppressed; 0: always
  Measures size;
  Measure diameter, topDiameter, length, angle;
  std::vector<Measures> profile;
  std::string file;  // beside the document
  std::string step;  // the text of a STEP file, in place of `file`
  std::unique_ptr<PlacementRecord> placement;
};

struct DatumRecord : Open {
  std::string name;  // without one that of its feature
  int feature = 0;
  std::string csys;  // name of the coordinate system that the placement counts in; empty: the model's own
  std::unique_ptr<PlacementRecord> placement;
};

// Teeth about the z axis of the placement, from its xy plane on, as drawings show them.
struct GearRecord : Open {
  int feature = 0;  // the one that makes the teeth and nothing else; 0: there is none
  Measure tipDiameter, pitchDiameter, rootDiameter, length;
  std::unique_ptr<PlacementRecord> placement;
};

struct SolidRecord : Open {
  std::vector<PrimitiveRecord> primitives;
  std::vector<GearRecord> gears;
  std::vector<DatumRecord> coordinateSystems, points;
  std::vector<DatumRecord> planes;  // each is the xy plane of its placement
};

// What a model keeps as written, as records. Nothing where nothing is kept. The text was read with its document, so
// that it has no fault.
SolidRecord solidRecord(const RawJson& solid);
// The way back.
RawJson rawSolid(const SolidRecord& solid);
PlacementRecord placementRecord(const RawJson& placement);

}  // namespace headless
