// Exploded states and component display styles.
#include "actions/model/named_states.h"
#include "core/log.h"
#include "creo/ProExpldstate.h"
#include "text/format.h"

namespace actions {
namespace {

Outcome setCompDisplay(const Task& task) {
  const auto hit = firstState(task.model(), &creo::ProSolidCompdisplayVisit, nameIn(task, L"statename"));
  if (!hit) {
    core::logWrite(L"Style state couldn't be found", core::kError);
    return done;
  }
  const auto style = creo::ProCompdisplayInit(task.model(), hit->item.id);
  if (!style)
    core::logWrite(L"Style state couldn't be found - i", core::kError);
  else if (creo::ProCompdisplayActivate(style.value) != creo::ProNoError)
    core::logWrite(L"Can't set the style", core::kError);
  else
    core::logIndented(L"The style is set", core::kNormal, 1);
  return done;
}

Outcome addExplodeState(const Task& task) {
  if (creo::ProExpldstateCreate(task.model(), nameIn(task, L"statename")))
    core::logIndented(L"Explode state created", core::kNormal, 1);
  else
    core::logWrite(L"Failure while create explode state. (Could be that there is already one with the same name)",
                   core::kError);
  return done;
}

Outcome setExplodeState(const Task& task) {
  const std::wstring wanted = nameIn(task, L"statename");
  const creo::ProError visited =
      visitStates(task.model(), &creo::ProSolidExpldstateVisit, [&](const NamedState& state) {
        core::logIndented(state.name, core::kNormal, 1);
        if (!fitsName(wanted, state.name)) return creo::ProNoError;
        if (creo::ProExpldstateActivate(state.item) != creo::ProNoError)
          core::logWrite(L"Can't set " + state.name, core::kError);
        return creo::ProStopVisit;
      });
  if (visited != creo::ProStopVisit) core::logWrite(L"Can't found the explosion state", core::kError);
  return done;
}

Outcome deleteExplodeState(const Task& task) {
  for (const std::wstring& wanted : namesIn(task))
    visitStates(task.model(), &creo::ProSolidExpldstateVisit, [&](const NamedState& state) {
      if (!fitsName(wanted, state.name)) return creo::ProNoError;
      core::logIndented(state.name, core::kNormal, 1);
      if (creo::ProExpldstateDelete(state.item) != creo::ProNoError)
        core::logWrite(text::format(L"Can't delete %s", state.name), core::kError);
      return creo::ProNoError;
    });
  return done;
}

constexpr Attribute kAddAttributes[] = {
    {.name = L"statename", .variables = true, .need = Need::needed, .about = "the new state's name"},
};
constexpr Effects kEffects{.changes = Touched::model};

constexpr Action kActions[] = {
    {.key = L"setCompDisplay",
     .place = 123,
     .group = Group::ownModelTest,
     .title = L"Set style",
     .attributes = kStateName,
     .effects = kEffects,
     .about = "makes the first style that fits the active one",
     .function = &setCompDisplay},
    {.key = L"addExplodeState",
     .place = 124,
     .group = Group::ownModelTest,
     .title = L"Add explode state",
     .attributes = kAddAttributes,
     .effects = kEffects,
     .about = "adds an exploded state that moves no component yet",
     .function = &addExplodeState},
    {.key = L"setExplodeState",
     .place = 125,
     .group = Group::ownModelTest,
     .title = L"Set explode state",
     .attributes = kStateName,
     .effects = kEffects,
     .about = "makes the first exploded state that fits the active one",
     .function = &setExplodeState},
    {.key = L"deleteExplodeState",
     .place = 126,
     .group = Group::ownModelTest,
     .title = L"Delete explode state",
     .attributes = kStatesThatGo,
     .effects = kEffects,
     .about = "deletes exploded states",
     .function = &deleteExplodeState},
};

}  // namespace

std::span<const Action> explodeStateActions() { return kActions; }

}  // namespace actions
