// Cross sections. Which one is active, and which are visible, is set by Creo's dialog, worked by macros.
#include <optional>

#include "actions/environment/macro.h"
#include "actions/model/named_states.h"
#include "actions/visits.h"
#include "core/log.h"
#include "creo/ProXsec.h"
#include "language/read_number.h"
#include "text/format.h"

namespace actions {
namespace {

using namespace language;

constexpr std::wstring_view kUnsetMacro =
    L"~Command `ProCmdViewVisTool`; ~Arm `visual_dlg0` `Table` 2 `no cross section` `name_column`; ~Select "
    L"`visual_dlg0` `Table` 2 `no cross section` `name_column`; ~Arm `visual_dlg0` `Table` 2 `no cross section` "
    L"`name_column`; ~Activate `visual_dlg0` `Table` 2 `no cross section` `name_column`; ~Activate `visual_dlg0` "
    L"`CloseBtn`;";
constexpr std::wstring_view kActivateMacro =
    L"~Command `ProCmdViewVisTool`; ~Select `visual_dlg0` `RadioSelApplMgr` 1 `xsec`; ~Select `visual_dlg0` `Table` 2 "
    L"`%s` `name_column`;~Activate `visual_dlg0` `Activate`;~Activate `visual_dlg0` `CloseBtn`;";
constexpr std::wstring_view kShowMacro =
    L"~Command `ProCmdViewVisTool`; ~Select `visual_dlg0` `RadioSelApplMgr` 1 `xsec`; ~Select `visual_dlg0` `Table` 2 "
    L"`%s` `name_column`;~Activate `visual_dlg0` `K03_VisibilityRMB` %d;~Activate `visual_dlg0` `CloseBtn`;";
constexpr std::wstring_view kNotFound = L"The cross section can't be found";

void runDialog(const std::wstring& macro) {
  runMacro(macro, L"Failure while load the macro of the cross section",
           L"Failure while execute the macro of the cross section");
}

// Behind a backquote in it a name would be steps of its own.
bool fitsMacro(const std::wstring& name) {
  if (name.find(L'`') == std::wstring::npos) return true;
  core::logWrite(text::format(L"%s can't be selected: there is a backquote in its name", name), core::kError);
  return false;
}

std::optional<creo::ProFeature> planeNamed(creo::ProMdl solid, std::wstring_view pattern) {
  std::optional<creo::ProFeature> plane;
  const creo::ProError visited = creo::ProSolidFeatVisit(solid, [&](const creo::ProFeature& feature) {
    const auto name = creo::ProFeatureNameGet(feature);
    if (!creo::isTold(name)) cantRead(L"The name of a feature");
    if (!name || !fitsName(pattern, name.value)) return creo::ProNoError;
    plane = feature;
    return creo::ProStopVisit;
  });
  isWhole(visited, L"The features");
  return plane;
}

void tellCreated(creo::ProError result) {
  switch (result) {
    case creo::ProNoError:
      return core::logIndented(L"Created cross section", core::kNormal, 1);
    case creo::ProExists:
      return core::logWrite(L"Can't create cross section (Name be already in use)", core::kError);
    case creo::ProBadInputs:
      return core::logWrite(L"Can't create cross section (Plane failure)", core::kError);
    default:
      return core::logWrite(L"Can't create cross section", core::kError);
  }
}

Outcome addXsec(const Task& task) {
  const auto plane = planeNamed(task.model(), nameIn(task, L"planename"));
  if (!plane) {
    core::logWrite(L"Plane couldn't be found", core::kError);
    return done;
  }
  const std::wstring name = nameIn(task, L"name");
  if (task.attribute(L"xsectype") != L"parallel") {
    tellCreated(creo::ProXsecPlanarCreate(task.model(), name, *plane).error);
    return done;
  }
  const std::wstring written = nameIn(task, L"distance");
  if (const auto distance = numberIn(written))
    tellCreated(creo::ProXsecParallelCreate(task.model(), name, *plane, *distance).error);
  else
    core::logWrite(text::format(L"Can't create cross section (The distance '%s' is no number)", written), core::kError);
  return done;
}

void activate(const NamedState& section) {
  core::logIndented(text::format(L"Try Activate %s", section.name), core::kNormal, 1);
  if (fitsMacro(section.name)) runDialog(text::format(kActivateMacro, section.name));
}

Outcome setXsec(const Task& task) {
  if (task.isTrue(L"unsetall")) {
    runDialog(std::wstring(kUnsetMacro));
    return done;
  }
  if (const auto hit = firstState(task.model(), &creo::ProSolidXsecVisit, nameIn(task, L"statename")))
    activate(*hit);
  else
    core::logWrite(kNotFound, core::kError);
  return done;
}

// The dialog's rows are called so.
std::wstring rowName(std::wstring name) {
  for (wchar_t& c : name)
    if (c >= L'A' && c <= L'Z') c = static_cast<wchar_t>(c - L'A' + L'a');
  return name;
}

Outcome showXsec(const Task& task) {
  const std::wstring wanted = nameIn(task, L"statename");
  bool found = false;
  visitStates(task.model(), &creo::ProSolidXsecVisit, [&](const NamedState& section) {
    if (!fitsName(wanted, section.name)) return creo::ProNoError;
    found = true;
    core::logIndented(text::format(L"Try Activate %s", section.name), core::kNormal, 1);
    if (fitsMacro(section.name))
      runDialog(text::format(kShowMacro, rowName(section.name), task.isTrue(L"show") ? 1 : 0));
    return creo::ProNoError;
  });
  if (!found) core::logWrite(kNotFound, core::kError);
  return done;
}

Outcome deleteXsec(const Task& task) {
  for (const std::wstring& wanted : namesIn(task))
    visitStates(task.model(), &creo::ProSolidXsecVisit, [&](const NamedState& section) {
      core::logIndented(section.name, core::kNormal, 1);
      if (!fitsName(wanted, section.name)) return creo::ProNoError;
      if (creo::ProXsecDelete(section.item) == creo::ProNoError)
        core::logIndented(text::format(L"Delete %s", section.name), core::kNormal, 1);
      else
        core::logWrite(text::format(L"%s can't be deleted", section.name), core::kError);
      return creo::ProNoError;
    });
  return done;
}

Outcome updateXsec(const Task& task) {
  if (creo::ProXsecOldToNewConvert(task.model()) == creo::ProNoError)
    core::logIndented(L"Updated cross sections", core::kNormal, 1);
  else
    core::logWrite(L"Failure while updating cross sections", core::kError);
  return done;
}

constexpr Attribute kAddAttributes[] = {
    {.name = L"planename",
     .kind = Kind::pattern,
     .variables = true,
     .need = Need::needed,
     .about = "the datum plane; the first feature that fits is taken"},
    {.name = L"name", .variables = true, .need = Need::needed, .about = "the new cross section's name"},
    {.name = L"xsectype", .about = "parallel: at a distance from the plane; anything else: at the plane"},
    {.name = L"distance",
     .kind = Kind::number,
     .variables = true,
     .about = "with xsectype parallel: the distance, in the model's units"},
};
constexpr Attribute kSetAttributes[] = {
    {.name = L"statename",
     .kind = Kind::pattern,
     .variables = true,
     .need = Need::oneOf,
     .about = "its name; the first that fits is taken"},
    {.name = L"unsetall",
     .kind = Kind::flag,
     .words = L"true",
     .need = Need::oneOf,
     .about = "then none is active any more"},
};
constexpr Attribute kShowAttributes[] = {
    {.name = L"statename", .kind = Kind::pattern, .variables = true, .need = Need::needed, .about = "cross sections"},
    {.name = L"show", .kind = Kind::flag, .words = L"true", .about = "true: they show; anything else: they don't"},
};
constexpr Effects kEffects{.changes = Touched::model};
constexpr Effects kByDialog{.changes = Touched::model | Touched::session};

constexpr Action kActions[] = {
    {.key = L"addXsec",
     .place = 127,
     .group = Group::ownModelTest,
     .title = L"Add Xsec",
     .attributes = kAddAttributes,
     .effects = kEffects,
     .about = "adds a cross section at a datum plane or parallel to it",
     .function = &addXsec},
    {.key = L"setXsec",
     .place = 128,
     .group = Group::ownModelTest,
     .title = L"Activate Xsec",
     .attributes = kSetAttributes,
     .effects = kByDialog,
     .about = "makes the first cross section that fits the active one, through Creo's dialog",
     .function = &setXsec},
    {.key = L"deleteXsec",
     .place = 129,
     .group = Group::ownModelTest,
     .title = L"Delete Xsec",
     .attributes = kStatesThatGo,
     .effects = kEffects,
     .about = "deletes cross sections",
     .function = &deleteXsec},
    {.key = L"updateXsec",
     .place = 130,
     .group = Group::ownModelTest,
     .title = L"Update Xsec's",
     .effects = kEffects,
     .about = "converts cross sections of older releases",
     .function = &updateXsec},
    {.key = L"showXsec",
     .place = 131,
     .group = Group::ownModelTest,
     .title = L"Show Xsec",
     .attributes = kShowAttributes,
     .effects = kByDialog,
     .about = "shows or hides cross sections, through Creo's dialog",
     .function = &showXsec},
};

}  // namespace

std::span<const Action> crossSectionActions() { return kActions; }

}  // namespace actions
