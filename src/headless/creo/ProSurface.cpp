// Surfaces of parts, boxes in any axes, and features that are put away and brought back.
#include "creo/ProSurface.h"

#include <cmath>

#include "headless/creo/solid_operation.h"
#include "headless/geometry/faces.h"
#include "headless/model/bodies.h"
#include "headless/model/suppress.h"

namespace creo {

using headless::Model;
using headless::onSolid;
using headless::geometry::Face;
using State = headless::Session::State;

namespace {

// get: (face).
template <class Get>
auto onSurface(std::string_view operation, const ProSurface& surface, Get get)
    -> std::invoke_result_t<Get, const Face&> {
  using Result = std::invoke_result_t<Get, const Face&>;
  return onSolid(operation, surface.owner, [&](State&, Model&) -> Result {
    const auto* face = static_cast<const Face*>(surface.shape.get());
    if (!face) return Result(ProBadInputs);
    return get(*face);
  });
}

double dot(const ProVector& a, const ProVector& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

bool isRightHandedBasis(const ProVector& x, const ProVector& y, const ProVector& z) {
  constexpr double kRounding = 1e-6;
  const ProVector cross{x.y * y.z - x.z * y.y, x.z * y.x - x.x * y.z, x.x * y.y - x.y * y.x};
  const auto is = [](double value, double wanted) { return std::abs(value - wanted) < kRounding; };
  return is(dot(x, x), 1) && is(dot(y, y), 1) && is(dot(x, y), 0) && is(cross.x, z.x) && is(cross.y, z.y) &&
         is(cross.z, z.z);
}

}  // namespace

ProError ProSolidSurfaceVisit(ProMdl part, Visitor<ProSurface> visitor) {
  return onSolid("ProSolidSurfaceVisit", part, [&](State& state, Model& m) -> ProError {
    if (m.type() != ProMdlType::part) return ProBadInputs;
    const auto body = state.bodies.body(m);
    if (!body) return body.error;
    std::vector<ProSurface> surfaces;
    for (const Face& face : headless::geometry::faces(*body.value))
      // The face lives as long as its body, which the surface keeps.
      surfaces.push_back({m.handle, static_cast<int>(surfaces.size()) + 1, {body.value, &face}});
    return headless::visit<ProSurface>(surfaces, visitor);
  });
}

Got<ProSurfaceType> ProSurfaceTypeGet(const ProSurface& surface) {
  return onSurface("ProSurfaceTypeGet", surface, [](const Face& face) -> Got<ProSurfaceType> {
    return face.plane ? ProSurfaceType::plane : ProSurfaceType::other;
  });
}

Got<ProTransform> ProSurfaceDataGet(const ProSurface& surface) {
  return onSurface("ProSurfaceDataGet", surface, [](const Face& face) -> Got<ProTransform> {
    if (!face.plane) return ProNotFound;
    return *face.plane;
  });
}

Got<double> ProSurfaceDiameterEval(const ProSurface& surface) {
  return onSurface("ProSurfaceDiameterEval", surface, [](const Face& face) -> Got<double> {
    if (!face.diameter) return ProNotFound;
    return *face.diameter;
  });
}

Got<ProTransform> ProMatrixInit(const ProVector& x, const ProVector& y, const ProVector& z, const ProVector& origin) {
  return headless::operation("ProMatrixInit", [&](State&) -> Got<ProTransform> {
    if (!isRightHandedBasis(x, y, z)) return ProBadInputs;
    return ProTransform{x, y, z, origin};
  });
}

// What isn't of the body counts for nothing here, so that every exclude holds.
Got<ProOutline> ProSolidOutlineCompute(ProMdl solid, const ProTransform& into, std::span<const int>) {
  return onSolid("ProSolidOutlineCompute", solid,
                 [&into](State& state, Model& m) { return state.bodies.outline(m, into); });
}

ProError ProFeatureWithoptionsSuppress(ProMdl solid, const std::vector<int>& features, ProChildren children) {
  return onSolid("ProFeatureWithoptionsSuppress", solid,
                 [&](State&, Model& m) { return headless::suppress(m, features, children); });
}

ProError ProFeatureResume(ProMdl solid, const std::vector<int>& features, ProParents parents) {
  return onSolid("ProFeatureResume", solid,
                 [&](State& state, Model& m) { return headless::resume(state.models, m, features, parents); });
}

}  // namespace creo
