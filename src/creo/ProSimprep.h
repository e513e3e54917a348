// Simplified representations. Which one a model is in is the session's own state; what each does with components is the
// model's. Those of parts are found and retrieved; what makes, describes and activates one is for assemblies alone and
// gives ProBadInputs for a part. Operations that need a solid give ProBadInputs for a drawing.
#pragma once

#include <optional>

#include "creo/ProAsmcomppath.h"
#include "creo/ProState.h"

namespace creo {

// The id of the master representation, "Master Rep", which every solid has.
constexpr int kMasterRep = -1;

// The representation of that name, or, where the name is empty, of that id. The master and the forms that Creo makes by
// itself are found too. ProNotFound: none.
Got<ProModelitem> ProSimprepInit(const std::wstring& name, int id, ProMdl solid);
// The one that the model is in.
Got<ProModelitem> ProSimprepActiveGet(ProMdl solid);
// Of an assembly, which must be displayed anew to show it. ProNotFound: it has gone; ProBadInputs: one of a part.
ProError ProSimprepActivate(const ProModelitem& rep);

// By what a component is replaced: by a representation of its own model.
struct ProSubstitution {
  ProSubstitutionKind kind = ProSubstitutionKind::none;
  ProMdl model;
  std::wstring rep;
};
// ProBadInputs: the kind isn't that of the representation's model; ProNotFound: it has gone.
Got<ProSubstitution> ProSubstitutionInit(ProSubstitutionKind kind, const ProModelitem& rep);

struct ProSimprepItemAction {
  ProSimprepAction type = ProSimprepAction::none;
  ProSubstitution substitution;
};
// ProBadInputs: no action of Creo's, or a substitution with another action than `substitute`, or that one without any.
Got<ProSimprepItemAction> ProSimprepActionInit(ProSimprepAction type,
                                               const std::optional<ProSubstitution>& substitution);

// What a representation does with one feature, which is a component: other features aren't supported.
struct ProSimprepdataitem {
  int feature = 0;
  ProSimprepItemAction action;
};
// A component by its path, or, where the path is empty, a feature by its id, which Creo doesn't support. ProBadInputs:
// no action, no id, or a component below the top level.
Got<ProSimprepdataitem> ProSimprepdataitemInit(const ProAsmcomppath& path, int feature,
                                               const ProSimprepItemAction& action);

struct ProSimprepdata {
  std::wstring name;
  ProSimprepAction defaultAction = ProSimprepAction::include;
  std::vector<ProSimprepdataitem> items;  // features that are treated in another way than by default
};
// The data of a representation that is kept with its model. By default a component is included or excluded: Creo
// promises no other action there. ProBadInputs: an empty name, one over 31 characters, or an action that can't be.
Got<ProSimprepdata> ProSimprepdataAlloc(const std::wstring& name, ProSimprepAction defaultAction);
// ProBadInputs: the item names no feature.
ProError ProSimprepdataitemAdd(ProSimprepdata& data, const ProSimprepdataitem& item);
// ProBadInputs: no simplified representation, or one of a part; ProNotFound: it has gone.
Got<ProSimprepdata> ProSimprepdataGet(const ProModelitem& rep);
// Describes a representation anew, its name too; all of it or nothing. An item that the data lacks keeps its action:
// one goes by the action none. ProExists: another one has the name; ProNotFound: it has gone, or the feature of an
// item of another action; ProBadInputs: it would be substituted by itself, or is of a part.
ProError ProSimprepdataSet(const ProModelitem& rep, const ProSimprepdata& data);

// As ProSimprepdataSet for a new one. ProBadInputs: a part.
Got<ProModelitem> ProSimprepCreate(ProMdl solid, const ProSimprepdata& data);
// Combined states don't refer to it any more. ProNotFound: it has gone; ProBadInputs: one that Creo makes by itself;
// ProGeneralError: it is in use, as newer releases say.
ProError ProSimprepDelete(const ProModelitem& rep);

// The model in one of its representations; that representation is active then, unless a higher one is in memory, which
// wins. It isn't displayed, and what couldn't be regenerated comes suppressed. The first is for the master and for
// those that users made of parts alone; the second comes with the active components alone. ProNotFound: no model, or no
// representation of that name; ProGeneralError: no permission for the model.
Got<ProMdl> ProSimprepMdlnameRetrieve(const std::wstring& model, ProMdlType type, const std::wstring& rep);
Got<ProMdl> ProAssemblySimprepMdlnameRetrieve(const std::wstring& assembly, const std::wstring& rep);
Got<ProMdl> ProPartSimprepRetrieve(const std::wstring& part, const std::wstring& rep);
// The same in the forms that Creo makes by itself: by graphics, by geometry, by symbols alone. ProBadInputs: neither a
// part nor an assembly.
Got<ProMdl> ProGraphicsSimprepRetrieve(const std::wstring& model, ProMdlType type);
Got<ProMdl> ProGeomSimprepRetrieve(const std::wstring& model, ProMdlType type);
Got<ProMdl> ProSymbSimprepRetrieve(const std::wstring& model, ProMdlType type);
// Brings what a representation needs into memory. ProNotFound: it has gone.
ProError ProMdlRepresentationLoad(const ProModelitem& rep);

}  // namespace creo
