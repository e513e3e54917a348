// Features that come into being: datum points, datum planes, patterns of points.
#pragma once

#include <map>
#include <string>

#include "creo/ProFeatureCreate.h"
#include "headless/model/model.h"

namespace headless {

// As ProFeatureCreate and ProPatternCreate; the id of the new feature.
creo::Got<int> createDatum(const Model& solid, const creo::ProElement& tree);
creo::Got<int> createPattern(const Model& solid, int leader, const creo::ProElement& tree);

// A dimension with an id and a symbol that no other one has.
DimensionRecord& addDimension(ModelRecord& record, double value);

// The layers on which new things come to lie, by kind (creo/ProLayer.h) and name; the session's, for all models.
using DefaultLayers = std::map<int, std::wstring>;
bool isDefaultLayerKind(int kind);
// A new feature comes to lie on the layers of its kinds, where the model has them.
void putOnDefaultLayers(const Model& solid, int feature, const DefaultLayers& layers);

}  // namespace headless
