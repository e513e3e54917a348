// Which models a start model leads to: by its dependencies, its family, its drawings.
#pragma once

#include <string>
#include <unordered_set>

#include "creo/ProTypes.h"

namespace run {

struct WalkFlags {
  bool instances = false;     // a generic leads to its instances
  bool drawings = false;      // a model leads to the drawing of its name
  bool dependents = false;    // a model leads to the solids that it uses, also where they aren't components
  bool currentOnly = false;   // assemblies and drawings lead to nothing
  bool skipGenerics = false;  // an instance doesn't lead to its generic
  bool operator==(const WalkFlags&) const = default;
};

struct WalkedModel {
  std::string row;  // its row name
  creo::ProMdl model;
  creo::ProMdlType type{};
  bool fromDependency = false;  // a model used by another one; not the start, a generic, an instance or a drawing
};

// Calls `leave` for each model once, after those it leads to; models whose row names stand in visited are left out, and
// those that are met are added there. Cycles end where they began; a chain of any length is walked without recursion.
void walkModels(creo::ProMdl start, const WalkFlags& flags, std::unordered_set<std::string>& visited,
                creo::FunctionRef<void(const WalkedModel&)> leave);

}  // namespace run
