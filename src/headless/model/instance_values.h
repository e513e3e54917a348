// What an instance has of its own because its generic's relations and program say so.
#pragma once

#include <string>
#include <unordered_map>

#include "creo/ProFeature.h"
#include "creo/ProSolid.h"
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

}  // namespace headless
