#include "headless/pictures/shown_parts.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <set>

#include "creo/ProAppearance.h"
#include "headless/model/displayed.h"
#include "headless/model/measures.h"
#include "headless/model/models.h"

namespace headless {

using creo::Got;
using creo::ProTransform;

namespace {

constexpr double kDeflection = 0.001;  // how far a triangle may be off its face, of the body's diagonal
constexpr double kTurn = 0.35;         // from piece to piece of a round face, in radians
constexpr double kSeenThrough = 0.7;   // transparency of what a style makes transparent

geometry::Mesh meshOf(const geometry::Body& body) {
  const creo::ProOutline box = geometry::outline(body, {});
  const double diagonal = std::hypot(box.max.x - box.min.x, box.max.y - box.min.y, box.max.z - box.min.z);
  return geometry::mesh(body, kDeflection * diagonal, kTurn);
}

// A part where it stands, and how it looks where nothing of its own says it.
struct Found {
  const Model& part;
  geometry::PlacedBody body;
  const AppearanceRecord* look;
  bool isTransparent;  // as a style has it
};

Teeth teethFor(PlacedFor purpose) { return purpose == PlacedFor::sheet ? Teeth::simplified : Teeth::asTheyAre; }

// The parts below a solid, each once.
class DistinctParts {
 public:
  explicit DistinctParts(const Models& models) : models_(models) {}
  void add(const Model& solid) {
    if (!known_.insert(solid.handle).second) return;
    if (solid.type() == creo::ProMdlType::part) return parts.push_back(&solid);
    for (const DisplayedModel& placed : displayedComponents(models_, solid)) add(*placed.model);
  }
  std::vector<const Model*> parts;

 private:
  const Models& models_;
  std::set<creo::ProMdl> known_;
};

// All parts below a solid, each as often as it is used.
class Gathering {
 public:
  using Take = std::function<void(const Found&)>;
  Gathering(Bodies& bodies, const Models& models, PlacedFor purpose, Take take)
      : bodies_(bodies), models_(models), purpose_(purpose), take_(std::move(take)) {}

  creo::ProError gather(const Model& solid, const ProTransform& place, double scale, const AppearanceRecord* look,
                        bool isTransparent) {
    if (!inside_.insert(solid.handle).second) return creo::ProNoError;  // an assembly inside itself
    if (const auto& own = solid.document->record.appearance) look = own.get();
    const creo::ProError result = solid.type() == creo::ProMdlType::part
                                      ? takePart(solid, place, scale, look, isTransparent)
                                      : takeAssembly(solid, place, scale, look, isTransparent);
    inside_.erase(solid.handle);
    return result;
  }

 private:
  creo::ProError takePart(const Model& part, const ProTransform& place, double scale, const AppearanceRecord* look,
                          bool isTransparent) {
    auto drawn = drawnFor(part);
    if (drawn.error == creo::ProNotFound) return creo::ProNoError;
    if (!drawn) return drawn.error;
    geometry::PlacedBody placed{drawn.value.body, place, scale};
    placed.gears = std::move(drawn.value.gears);
    take_({part, std::move(placed), look, isTransparent});
    return creo::ProNoError;
  }
  Got<DrawnBody> drawnFor(const Model& part) {
    if (purpose_ != PlacedFor::solid) return bodies_.drawn(part, teethFor(purpose_));
    const auto body = bodies_.body(part);
    if (!body) return body.error;
    return DrawnBody{body.value, {}};
  }

  creo::ProError takeAssembly(const Model& assembly, const ProTransform& place, double scale,
                              const AppearanceRecord* look, bool isTransparent) {
    for (const DisplayedModel& placed : displayedComponents(models_, assembly)) {
      ProTransform there = placed.place;  // in the assembly's units, which are `scale` of the picture's
      there.origin = {there.origin.x * scale, there.origin.y * scale, there.origin.z * scale};
      const double length = scale * unitRatio("m", *placed.model, assembly);
      if (const creo::ProError result =
              gather(*placed.model, creo::transformed(place, there), length, look, isTransparent || placed.transparent))
        return result;
    }
    return creo::ProNoError;
  }

  Bodies& bodies_;
  const Models& models_;
  PlacedFor purpose_;
  Take take_;
  std::set<creo::ProMdl> inside_;
};

creo::ProError gather(Bodies& bodies, const Models& models, const Model& solid, PlacedFor purpose,
                      Gathering::Take take) {
  try {
    DistinctParts distinct(models);
    distinct.add(solid);
    bodies.buildAhead(distinct.parts, teethFor(purpose));
    return Gathering(bodies, models, purpose, std::move(take)).gather(solid, {}, 1, nullptr, false);
  } catch (const MeasureFault& fault) {
    models.message(solid.name + L'.' + creo::typeExtension(solid.type()) + L": " + fault.reason);
    return creo::ProGeneralError;
  }
}

// A mesh is made once a body.
void addShaded(ShownParts& shown, const Found& found) {
  auto [known, isNew] = shown.meshes.try_emplace(found.body.body);
  if (isNew) known->second = meshOf(*found.body.body);
  ShadedPart& made = shown.parts.emplace_back(
      ShadedPart{.mesh = &known->second, .place = found.body.place, .scale = found.body.scale});
  const AppearanceRecord* look = found.look;
  if (look && look->color.size() == 3) made.color = {look->color[0], look->color[1], look->color[2]};
  if (look) made.transparency = look->transparency;
  if (found.isTransparent) made.transparency = std::max(made.transparency, kSeenThrough);
  for (const SurfaceAppearanceRecord& entry : found.part.document->record.surfaceAppearances) {
    const auto& color = entry.appearance.color;
    const bool isOuter = entry.side == static_cast<int>(creo::ProSurfaceSide::outer);
    if (isOuter && color.size() == 3)
      made.faceColors.try_emplace(entry.surface, std::array{color[0], color[1], color[2]});
  }
}

}  // namespace

Got<ShownParts> shownParts(Bodies& bodies, const Models& models, const Model& solid) {
  ShownParts shown;
  const auto take = [&shown](const Found& found) { addShaded(shown, found); };
  if (const creo::ProError result = gather(bodies, models, solid, PlacedFor::solid, take)) return result;
  return shown;
}

Got<PlacedParts> placedParts(Bodies& bodies, const Models& models, const Model& solid, PlacedFor purpose) {
  PlacedParts placed;
  std::map<creo::ProMdl, int> numbers;
  const auto take = [&](const Found& found) {
    const auto [known, isNew] = numbers.try_emplace(found.part.handle, static_cast<int>(placed.parts.size()));
    if (isNew) placed.parts.push_back(&found.part);
    placed.bodies.push_back(found.body);
    placed.bodies.back().number = known->second;
  };
  if (const creo::ProError result = gather(bodies, models, solid, purpose, take)) return result;
  return placed;
}

std::optional<ProTransform> orientationOf(const ViewRecord& view) {
  if (view.matrix.size() < 9) return std::nullopt;
  // Its rows are where the model's axes point on the screen: the screen's axes are its columns.
  const auto& m = view.matrix;
  return ProTransform{{m[0], m[3], m[6]}, {m[1], m[4], m[7]}, {m[2], m[5], m[8]}, {}};
}

}  // namespace headless
