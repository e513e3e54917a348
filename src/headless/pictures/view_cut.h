// Cross sections of models, as views and pictures are cut by them.
#pragma once

#include <optional>
#include <string>

#include "headless/geometry/sight.h"
#include "headless/model/model.h"

namespace headless {

// The plane of a model's cross section in the model's coordinates, its normal as that of the datum plane. Datum planes
// called FRONT, TOP and RIGHT (also behind ASM_ or DTM_) that have no place of their own are those of the model's axes.
struct SectionPlane {
  std::optional<geometry::SightCut> cut;
  std::wstring fault;  // why there is none: "the model has no cross section B"
};
SectionPlane sectionPlane(const Model& solid, std::string_view name);
// What lies towards the viewer is cut away. Nothing: the plane is seen on its edge.
std::optional<geometry::SightCut> towardsViewer(geometry::SightCut cut, const creo::ProTransform& screen);

}  // namespace headless
