// What relations ask of the model that they belong to.
#pragma once

#include <string>
#include <vector>

#include "headless/model/expression.h"
#include "headless/model/model.h"

namespace headless {

// The answer to a function by its arguments, or for null to a name; nothing for what is none of these. A body that
// isn't there, or can't be built, isn't worked out; neither is a component behind a path. heedsUnits: a material's
// number with a unit counts in those of the model.
//   PRO_MP_MASS, _VOLUME, _AREA, _DENSITY, _COGX, _COGY, _COGZ, MP_DENSITY
//   mp_mass(path), mp_volume, mp_surf_area, mp_density; mp_cg_x(path, coordinate system, path), _y, _z
//   rel_model_name(), rel_model_type()
//   material_param(parameter [, material])     of the current material, unless one is named
std::optional<Evaluated> askModel(const Model& model, std::string_view name,
                                  const std::vector<RelationValue>* arguments, bool heedsUnits);

// Does some line ask for what the body gives?
bool asksBody(const std::vector<std::string>& lines);

}  // namespace headless
