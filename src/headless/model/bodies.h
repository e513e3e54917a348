// The bodies of solids: built when first asked for, measured as parts and assemblies have them.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "creo/ProSolid.h"
#include "headless/geometry/sight.h"
#include "headless/model/model.h"

namespace headless {

class Models;  // models.h

// A part as a sheet shows it.
struct DrawnBody {
  geometry::BodyPtr body;
  std::vector<geometry::Gear> gears;
};
enum class Teeth { asTheyAre, simplified };

// Results of all: ProNotFound: there is no body; ProGeneralError: one can't be built, with a line of the message area.
class Bodies {
 public:
  explicit Bodies(const Models& models) : models_(models) {}

  creo::Got<creo::ProMassProperty> mass(const Model& solid);
  creo::Got<creo::ProOutline> outline(const Model& solid, const creo::ProTransform& into);
  // Of a part, as its dimensions, parameters and features are now.
  creo::Got<geometry::BodyPtr> body(const Model& part);
  // With what marks its gears. Simplified teeth are none: what their feature adds and cuts isn't there, and where no
  // feature makes them the room between root and tip is filled.
  creo::Got<DrawnBody> drawn(const Model& part, Teeth teeth);
  // Builds at once what drawn() will be asked for; Teeth::asTheyAre: what body() will be. Says nothing: that does.
  void buildAhead(const std::vector<const Model*>& parts, Teeth teeth);
  // What keeps a part's body from being built, by feature: "the feature RIB can't be built: primitive 2: the diameter
  // must be over 0"; without the feature where it can't be told. Empty: nothing, and for a part whose body is
  // imported: that one isn't built anew.
  std::wstring fault(const Model& part);

 private:
  // Warnings are told once, for the first part that is made so.
  geometry::Built built(const Model& part, const std::vector<geometry::Primitive>& primitives);

  const Models& models_;
  // By what a body is made of: a change of the model is another key, and equal parts share one. What wasn't asked for
  // while kMostKept new ones came is dropped.
  std::unordered_map<std::string, geometry::Built> kept_, keptBefore_;
};

}  // namespace headless
