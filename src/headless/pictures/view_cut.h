// Cross sections of models, as views and pictures are cut by them.
#pragma once

#include <optional>
#include <string>

#include "headless/geometry/sight.h"
#include "headless/model/model.h"

namespace headless {

class Models;  // model/models.h

// The plane of a model's cross section in the model's coordinates, its normal as that of the datum plane. Datum planes
// called FRONT, TOP and RIGHT (also behind ASM_ or DTM_) that have no place of their own are those of the model's axes.
struct SectionPlane {
  std::optional<geometry::SightCut> cut;
  std::wstring fault;  // why there is none: "the model has no cross section B"
};
SectionPlane sectionPlane(const Model& solid, std::string_view name);
// What lies towards the viewer is cut away. Nothing: the plane is seen on its edge.
std::optional<geometry::SightCut> towardsViewer(geometry::SightCut cut, const creo::ProTransform& screen);
// By the solid's active cross section, if one is; one that can't cut what is seen has a warning in the message area.
std::optional<geometry::SightCut> activeCut(const Models& models, const Model& solid, const creo::ProTransform& screen);

}  // namespace headless
