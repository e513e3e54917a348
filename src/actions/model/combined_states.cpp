// Combined states.
#include "actions/model/named_states.h"
#include "actions/on_top.h"
#include "actions/visits.h"
#include "core/log.h"
#include "creo/ProCombstate.h"
#include "creo/ProExpldstate.h"
#include "creo/ProSimprep.h"
#include "text/format.h"
#include "text/numbers.h"

namespace actions {
namespace {

using creo::ProItemType;
using creo::ProModelitem;
using References = std::vector<creo::ProCombstateReference>;

// A view by its name or its second name; the first that can be had, as a combined state has one orientation.
void addOrientation(const Task& task, References& to) {
  const std::wstring wanted = nameIn(task, L"orientationname");
  if (wanted.empty()) return;
  const auto views = creo::ProViewNamesGet(task.model());
  bool found = false;
  for (std::size_t i = 0; i < views.value.names.size(); ++i) {
    const std::wstring& name = views.value.names[i];
    if (!fitsName(wanted, name) && !fitsName(wanted, views.value.alternateNames[i])) continue;
    found = true;
    const auto id = creo::ProViewIdFromNameGet(task.model(), name);
    if (!id) {
      core::logWrite(L"Can't get view id", core::kError);
      continue;
    }
    const auto item = creo::ProModelitemInit(task.model(), id.value, ProItemType::view);
    if (item) return void(to.emplace_back(item.value));
    core::logWrite(L"Can't init model item", core::kError);
  }
  if (!found) core::logWrite(L"Orientation state couldn't be found", core::kError);
}

void addLayerState(const Task& task, References& to) {
  const std::wstring wanted = nameIn(task, L"layerstatename");
  if (wanted.empty()) return;
  for (const creo::ProLayerstate& state : listOrNone(creo::ProLayerstatesGet(task.model()), L"The layer states")) {
    const auto name = creo::ProLayerstateNameGet(state);
    if (name && fitsName(wanted, name.value)) return void(to.emplace_back(state));
  }
  core::logWrite(L"Layer state couldn't be found", core::kError);
}

// The master and the current representation have words of their own, where no representation is called so.
creo::Got<ProModelitem> representationByWord(const Task& task) {
  const std::wstring_view word = task.attribute(L"simprepname");
  if (auto named = creo::ProSimprepInit(std::wstring(word), 0, task.model())) return named;
  if (word == L"MASTER") {
    core::logIndented(L"Set Master Simp Rep", core::kNormal, 1);
    return creo::ProSimprepInit(L"", creo::kMasterRep, task.model());
  }
  if (word == L"CURRENT") {
    core::logIndented(L"Set current Simp Rep", core::kNormal, 1);
    return creo::ProSimprepActiveGet(task.model());
  }
  return creo::ProNotFound;
}

void addRepresentation(const Task& task, References& to) {
  const std::wstring wanted = nameIn(task, L"simprepname");
  if (wanted.empty()) return;
  const auto hit = firstState(task.model(), &creo::ProSolidSimprepVisit, wanted);
  const auto rep = hit ? creo::ProSimprepInit(L"", hit->item.id, task.model()) : representationByWord(task);
  if (rep)
    to.emplace_back(rep.value);
  else
    core::logWrite(L"Simplified representation couldn't be found", core::kError);
}

// What is found by a visit and made an item by its id.
struct ByVisit {
  std::wstring_view attribute;
  StateVisit visit;
  creo::Got<ProModelitem> (*init)(creo::ProMdl model, int id);
  std::wstring_view initFailure, notFound;
};
constexpr ByVisit kExploded = {
    L"expldname", &creo::ProSolidExpldstateVisit,
    [](creo::ProMdl model, int id) { return creo::ProModelitemInit(model, id, ProItemType::explodedState); },
    L"Exploded state couldn't be found - i", L"Exploded state couldn't be found"};
constexpr ByVisit kStyle = {L"stylename", &creo::ProSolidCompdisplayVisit, &creo::ProCompdisplayInit,
                            L"Style state couldn't be found - i", L"Style state couldn't be found"};
constexpr ByVisit kSection = {
    L"xsecname", &creo::ProSolidXsecVisit,
    [](creo::ProMdl model, int id) { return creo::ProModelitemInit(model, id, ProItemType::crossSection); },
    L"Can't init the cross section", L"Cross section couldn't be found"};

void addByVisit(const Task& task, const ByVisit& how, References& to) {
  const std::wstring wanted = nameIn(task, how.attribute);
  if (wanted.empty()) return;
  const auto hit = firstState(task.model(), how.visit, wanted);
  if (!hit) return core::logWrite(how.notFound, core::kError);
  const auto item = how.init(task.model(), hit->item.id);
  if (!item) return core::logWrite(how.initFailure, core::kError);
  to.emplace_back(item.value);
}

Outcome addCombState(const Task& task) {
  References references;
  addOrientation(task, references);
  addLayerState(task, references);
  addRepresentation(task, references);
  if (task.extensionIs(L"ASM")) {
    addByVisit(task, kExploded, references);
    addByVisit(task, kStyle, references);
  }
  addByVisit(task, kSection, references);
  const auto made = creo::ProMdlCombStateCreate(task.model(), nameIn(task, L"statename"), references,
                                                text::parseInt(task.attribute(L"xsecvisi")), task.isTrue(L"explshow"));
  if (made)
    core::logIndented(L"combined state created", core::kNormal, 1);
  else if (made.error == creo::ProInvalidType)
    core::logWrite(L"Failure while create new state (Name could be already existing) - Invalid type", core::kError);
  else
    core::logWrite(L"Failure while create new state (Name could be existing, or no elements on combined state)",
                   core::kError);
  return done;
}

std::vector<ProModelitem> combinedStates(creo::ProMdl model) {
  return listOrNone(creo::ProMdlCombstatesGet(model), L"The combined states");
}

// Nothing, with a line: its name can't be read.
std::optional<std::wstring> nameOf(const ProModelitem& combinedState) {
  auto data = creo::ProCombstateDataGet(combinedState);
  if (data) return std::move(data.value.name);
  cantRead(L"The name of a combined state");
  return std::nullopt;
}

Outcome setCombState(const Task& task) {
  const std::wstring wanted = nameIn(task, L"statename");
  for (const ProModelitem& state : combinedStates(task.model())) {
    const auto name = nameOf(state);
    if (!name || !fitsName(wanted, *name)) continue;
    if (onTop(task.model(), [&state] { return creo::ProCombstateActivate(state); }) == creo::ProNoError)
      core::logIndented(L"Set combined state: " + *name, core::kNormal, 1);
    else
      core::logWrite(L"Can't set the combined state: " + *name, core::kError);
    return done;
  }
  core::logWrite(L"Combined state couldn't be found: " + wanted, core::kError);
  return done;
}

Outcome deleteCombState(const Task& task) {
  const std::vector<std::wstring> wanted = namesIn(task);
  for (const ProModelitem& state : combinedStates(task.model())) {
    const auto name = nameOf(state);
    if (!name || !fitsAny(wanted, *name)) continue;
    if (creo::ProCombstateDelete(state) == creo::ProNoError)
      core::logIndented(L"Delete combined state: " + *name, core::kNormal, 1);
    else
      core::logWrite(L"Can't delete the combined state (could be active): " + *name, core::kError);
  }
  return done;
}

constexpr Attribute kAddAttributes[] = {
    {.name = L"statename", .variables = true, .need = Need::needed, .about = "the new state's name"},
    {.name = L"orientationname",
     .kind = Kind::pattern,
     .variables = true,
     .need = Need::oneOf,
     .about = "a view by its name or second name; the first that fits is taken, as of the others"},
    {.name = L"layerstatename",
     .kind = Kind::pattern,
     .variables = true,
     .need = Need::oneOf,
     .about = "a layer state"},
    {.name = L"simprepname",
     .kind = Kind::pattern,
     .variables = true,
     .need = Need::oneOf,
     .about = "a simplified representation; MASTER, CURRENT: the master, the one that the model is in"},
    {.name = L"expldname",
     .kind = Kind::pattern,
     .variables = true,
     .need = Need::oneOf,
     .about = "an exploded state of an assembly"},
    {.name = L"stylename",
     .kind = Kind::pattern,
     .variables = true,
     .need = Need::oneOf,
     .about = "a style of an assembly"},
    {.name = L"explshow",
     .kind = Kind::flag,
     .words = L"true",
     .about = "the exploded state shows when the combined state is set"},
    {.name = L"xsecname", .kind = Kind::pattern, .variables = true, .need = Need::oneOf, .about = "a cross section"},
    {.name = L"xsecvisi",
     .kind = Kind::integer,
     .about = "Creo's number of how the cross section shows; 0: not at all"},
};
constexpr Effects kEffects{.changes = Touched::model};

constexpr Action kActions[] = {
    {.key = L"addCombState",
     .place = 120,
     .group = Group::ownModelTest,
     .title = L"add combined state",
     .attributes = kAddAttributes,
     .effects = kEffects,
     .about = "makes a combined state of views, states and representations",
     .function = &addCombState},
    {.key = L"setCombState",
     .place = 121,
     .group = Group::ownModelTest,
     .title = L"set combined state",
     .attributes = kStateName,
     .effects = {.changes = Touched::model | Touched::session},
     .about = "puts the model into the first combined state that fits",
     .function = &setCombState},
    {.key = L"deleteCombState",
     .place = 122,
     .group = Group::ownModelTest,
     .title = L"delete combined state",
     .attributes = kStatesThatGo,
     .effects = kEffects,
     .about = "deletes combined states; the active one stays",
     .function = &deleteCombState},
};

}  // namespace

std::span<const Action> combinedStateActions() { return kActions; }

}  // namespace actions
