// What a solid keeps under a name, and what refers to it by that name.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "headless/model/model.h"
#include "headless/model/records.h"
#include "headless/model/symbols.h"

namespace headless {

class Models;  // models.h

// The representations that Creo makes by itself.
struct DefaultRep {
  int id = 0;
  std::string_view name;
};
constexpr DefaultRep kMasterForm = {-1, "Master Rep"}, kGraphicsForm = {-2, "Graphics Rep"},
                     kGeometryForm = {-3, "Geometry Rep"}, kSymbolicForm = {-4, "Symbolic Rep"};
constexpr DefaultRep kDefaultReps[] = {kMasterForm, kGraphicsForm, kGeometryForm, kSymbolicForm};

// A new record at the end, with a free id. The name isn't looked for.
template <class Record>
Record& addRecord(std::vector<Record>& records, const std::string& name) {
  const int id = nextId(records);
  Record& added = records.emplace_back();
  added.id = id;
  added.name = name;
  return added;
}

// What is active of the model, and what its combined states and cross sections refer to, has another name now; empty:
// it has gone.
void replaceReferences(const Model& model, creo::ProItemType type, std::string_view from, std::string_view to);
// Takes a representation, an exploded state, a combined state or a cross section away, and what refers to it.
// ProNotFound: it has gone; ProBadInputs: another kind.
creo::ProError deleteState(const Model& model, const creo::ProModelitem& state);
// Makes a name the active one, in a member of the record, and marks the model as changed where it was another one.
void makeActive(const Model& model, std::string ModelRecord::*active, std::string_view name);

// Puts a solid into a representation of that name, its own or one that Creo makes by itself. Each component that the
// representation substitutes shows that one of its own; where the solid leaves it, its master.
void showRep(const Models& models, const Model& solid, std::string_view name);

// As ProCombstateActivate; the message area says what has gone.
creo::ProError activateCombinedState(const Models& models, const Model& model, const CombinedStateRecord& state);

}  // namespace headless
