// The parts of a solid where they stand, as pictures and views of drawings look at them.
#pragma once

#include <map>
#include <optional>
#include <vector>

#include "headless/geometry/sight.h"
#include "headless/model/bodies.h"
#include "headless/pictures/shaded.h"

namespace headless {

// All parts below a solid, each as often as it is used, in the solid's coordinates and units. Moving it keeps the
// parts' meshes where they are.
struct ShownParts {
  std::vector<ShadedPart> parts;
  std::map<geometry::BodyPtr, geometry::Mesh> meshes;
};
// As models are displayed (model/displayed.h): without those that are suppressed or aren't in memory; no parts: the
// solid has no geometry. ProGeneralError with a line of the message area: a body can't be built.
creo::Got<ShownParts> shownParts(Bodies& bodies, const Models& models, const Model& solid);
// What placed bodies are for: a sheet marks gears, and shows their teeth only where a view asks for them.
enum class PlacedFor { solid, sheet, sheetWithTeeth };
// The same as bodies, of which nothing is cut up. A body's number is the place of its part among the parts, each of
// which stands there once.
struct PlacedParts {
  std::vector<geometry::PlacedBody> bodies;
  std::vector<const Model*> parts;
};
creo::Got<PlacedParts> placedParts(Bodies& bodies, const Models& models, const Model& solid, PlacedFor purpose);

// Looking from the front, the right and above.
constexpr creo::ProTransform kTrimetric{{0.8192, 0, -0.5736}, {-0.2424, 0.9063, -0.3462}, {0.5198, 0.4226, 0.7424}, {}};

// The axes of the screen in the model's coordinates, as a view's matrix says; nothing where it has none.
std::optional<creo::ProTransform> orientationOf(const ViewRecord& view);
// The screen's axes as a placement that leads from the model's coordinates to the screen's.
constexpr creo::ProTransform toScreen(const creo::ProTransform& s) {
  return {{s.xAxis.x, s.yAxis.x, s.zAxis.x}, {s.xAxis.y, s.yAxis.y, s.zAxis.y}, {s.xAxis.z, s.yAxis.z, s.zAxis.z}, {}};
}

}  // namespace headless
