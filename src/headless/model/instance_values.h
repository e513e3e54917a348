// What an instance has of its own because its generic's relations and program say so.
#pragma once

#include <string>
#include <unordered_map>

#include "creo/ProFeature.h"
#include "creo/ProSolid.h"
#include "headless/model/expression.h"
#include "headless/store/fields.h"

namespace headless {

// Values by where the document stores them.
using ValuesByPlace = std::unordered_map<const Scalar*, Scalar>;

// Worked out by the instance's row, each time something has changed; never written.
struct InstanceValues {
  ValuesByPlace values;
  std::unordered_map<int, creo::ProFeatureStatus>
      statuses;  // by the feature's id: those that differ from the generic's
  creo::ProRegenerationStatus status = creo::ProRegenerationStatus::regenerated;
  std::wstring fault;  // why nothing can be worked out; empty: it can
};

struct Model;  // model.h

// Where readers of a model ask for what its relations make of it. The regeneration works that out and is a reader too,
// so it lies over them all, and is handed down to them with each document that is brought into memory.
struct WorkedOut {
  const InstanceValues& (*instanceValues)(const Model& instance) = nullptr;
  RelationLookup (*relationNames)(const Model& model) = nullptr;
};

}  // namespace headless
