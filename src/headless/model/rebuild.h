// What a regeneration does beside relations: dimensions settle, and features and components are looked for.
#pragma once

#include <string>
#include <vector>

#include "headless/model/model.h"

namespace headless {

class Models;  // models.h

// A feature that was regenerated.
struct RegeneratedFeature {
  creo::ProMdl model;
  int id = 0;
  std::wstring name;  // empty: it has none
};

// A dimension below 0 turns its direction round and is positive from then on, in an instance the value of the
// row that decides on it.
void settleDimensions(const Model& model);
// The cross sections of a plain model follow the dimensions of their distances, as the relations have left them.
void settleSections(const Model& model);
// What is wrong with the first feature that can't be regenerated: "the feature RIB isn't regenerated". Empty: nothing.
// worked: gets the features before it; null where nobody asks.
std::wstring featureFault(const Model& model, std::vector<RegeneratedFeature>* worked);
// The first component in use whose model isn't in memory: "GONE.PRT". It isn't retrieved: it was missed when the
// assembly came in. Those that a representation leaves out aren't asked for. Empty: none is missing.
std::wstring missingComponent(const Models& models, const Model& assembly);

}  // namespace headless
