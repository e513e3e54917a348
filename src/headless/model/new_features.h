// Features that come into being: datum points, datum planes, patterns of points.
#pragma once

#include "creo/ProFeatureCreate.h"
#include "headless/model/model.h"

namespace headless {

// As ProFeatureCreate and ProPatternCreate; the id of the new feature.
creo::Got<int> createDatum(const Model& solid, const creo::ProElement& tree);
creo::Got<int> createPattern(const Model& solid, int leader, const creo::ProElement& tree);

// A dimension with an id and a symbol that no other one has.
DimensionRecord& addDimension(ModelRecord& record, double value);

}  // namespace headless
