// What a model keeps under a name: views, combined states, simplified representations, exploded states, styles, cross
// sections. The visits give items whose names ProModelitemNameGet tells. What is done to them stands in ProSimprep.h,
// ProCombstate.h, ProExpldstate.h and ProXsec.h.
#pragma once

#include "creo/ProModelitem.h"

namespace creo {

struct ProViewNames {
  std::vector<std::wstring> names, alternateNames;  // side by side; an alternate name may be empty
};
// The saved views of a solid. Those of a drawing are named places that it is shown at: ProDrawingViewsCollect has its
// views of models. ProNotFound: the model has no views.
Got<ProViewNames> ProViewNamesGet(ProMdl model);

struct ProCombstateData {
  std::wstring name;
};
// Of a solid. ProNotFound: the model has none.
Got<std::vector<ProModelitem>> ProMdlCombstatesGet(ProMdl model);
// ProNotFound: it has gone; ProBadInputs: an item of another kind.
Got<ProCombstateData> ProCombstateDataGet(const ProModelitem& state);

// Those that users made, with a name: no master or form that Creo makes by itself, no default state. Each visit ends at
// the visitor's first answer that isn't 0, and gives that. ProNotFound: there are none.
ProError ProSolidSimprepVisit(ProMdl solid, Visitor<ProModelitem> visitor);
ProError ProSolidExpldstateVisit(ProMdl solid, Visitor<ProModelitem> visitor);
ProError ProSolidCompdisplayVisit(ProMdl solid, Visitor<ProModelitem> visitor);
ProError ProSolidXsecVisit(ProMdl solid, Visitor<ProModelitem> visitor);

// What a representation does with a feature or a component; the numbers are Creo's action codes.
enum class ProSimprepAction : int {
  none = -1,
  reverse = 0,
  include = 1,
  exclude = 2,
  geometry = 3,
  substitute = 4,
  graphics = 5,
  symbolic = 6,
  boundaryBox = 7,
  lightGraphics = 9,
};
// By what a component is replaced.
enum class ProSubstitutionKind : int { none = 0, partRep = 2, assemblyRep = 3 };

// How a cross section cuts, and what.
enum class ProXsecType : int { planar = 0, offset = 1 };
enum class ProXsecObjects : int { model = 0, quilts = 1, modelAndQuilts = 2 };
struct ProXsecData {
  ProXsecType type = ProXsecType::planar;
  ProXsecObjects objects = ProXsecObjects::model;
};
// ProBadInputs: no cross section; ProNotFound: it has gone.
Got<ProXsecData> ProXsecDataGet(const ProModelitem& section);

}  // namespace creo
