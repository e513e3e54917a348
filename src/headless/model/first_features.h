// The first features of solids: their default datums.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "headless/model/model.h"

namespace headless {

// A feature and its place in the geometry.
struct NewDatum {
  int type = 0;  // Creo's number
  std::string typeName, subtype;
  std::wstring name;
  std::vector<DatumRecord> SolidRecord::*list = nullptr;
  std::unique_ptr<PlacementRecord> placement;  // null: the model's own axes
};

// Adds it behind the last feature, in insert mode at its place; gives its id. ProExists: a feature has the name;
// ProBadInputs: no name, or one over 31 characters.
creo::Got<int> addDatum(const Model& solid, NewDatum datum);

}  // namespace headless
