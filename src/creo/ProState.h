// What a model keeps under a name: views, combined states, simplified representations, exploded states, styles, cross
// sections. The visits give items whose names ProModelitemNameGet tells.
#pragma once

#include "creo/ProModelitem.h"

namespace creo {

struct ProViewNames {
  std::vector<std::wstring> names, alternateNames;  // side by side; an alternate name may be empty
};
// ProNotFound: the model has no views.
Got<ProViewNames> ProViewNamesGet(ProMdl model);

struct ProCombstateData {
  std::wstring name;
};
// ProNotFound: the model has none.
Got<std::vector<ProModelitem>> ProMdlCombstatesGet(ProMdl model);
Got<ProCombstateData> ProCombstateDataGet(const ProModelitem& state);

ProError ProSolidSimprepVisit(ProMdl solid, Visitor<ProModelitem> visitor);
ProError ProSolidExpldstateVisit(ProMdl solid, Visitor<ProModelitem> visitor);
ProError ProSolidCompdisplayVisit(ProMdl solid, Visitor<ProModelitem> visitor);
ProError ProSolidXsecVisit(ProMdl solid, Visitor<ProModelitem> visitor);

// The model in one of its representations; that representation is active then. "Master Rep" is there in every model.
// ProNotFound: no model, or no representation of that name.
Got<ProMdl> ProSimprepMdlnameRetrieve(const std::wstring& model, ProMdlType type, const std::wstring& rep);
Got<ProMdl> ProAssemblySimprepMdlnameRetrieve(const std::wstring& assembly, const std::wstring& rep);

}  // namespace creo
