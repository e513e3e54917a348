// Simplified representations: created, renamed, activated, deleted.
#include <iterator>

#include "actions/model/named_states.h"
#include "core/log.h"
#include "core/messages.h"
#include "creo/ProDrawingView.h"
#include "creo/ProMdl.h"
#include "creo/ProSimprep.h"
#include "creo/ProWindow.h"
#include "text/format.h"

namespace actions {
namespace {

using creo::ProSimprepAction;

struct DefaultAction {
  std::wstring_view type2;
  ProSimprepAction action;
};
constexpr DefaultAction kDefaultActions[] = {
    {L"1", ProSimprepAction::exclude},  {L"2", ProSimprepAction::geometry},     {L"3", ProSimprepAction::substitute},
    {L"4", ProSimprepAction::graphics}, {L"5", ProSimprepAction::symbolic},     {L"6", ProSimprepAction::boundaryBox},
    {L"7", ProSimprepAction::reverse},  {L"8", ProSimprepAction::lightGraphics}};

ProSimprepAction defaultAction(std::wstring_view type2) {
  for (const DefaultAction& row : kDefaultActions)
    if (row.type2 == type2) return row.action;
  return ProSimprepAction::include;
}

Outcome createSimpRep(const Task& task) {
  const std::wstring name = nameIn(task, L"view", text::kNameSize);
  const auto data = creo::ProSimprepdataAlloc(name, defaultAction(task.attribute(L"type2")));
  if (!data)
    core::logWrite(L"Can't allocate simprepdata", core::kError);
  else if (creo::ProSimprepCreate(task.model(), data.value))
    core::logIndented(text::format(core::msgText(Message::created), name), core::kNormal, 1);
  else if (task.extensionIs(L"PRT"))
    core::logWrite(L"Creo makes simplified representations of assemblies alone", core::kError);
  else
    core::logWrite(text::format(core::msgText(Message::existsAlready), name), core::kWarning);
  return done;
}

void rename(const NamedState& rep, std::wstring_view wanted) {
  const std::wstring name(text::cut(wanted, text::kNameSize - 1));
  core::logIndented(text::format(core::msgText(Message::renameFromTo), rep.name, name), core::kNormal, 1);
  if (creo::ProModelitemNameSet(rep.item, name) != creo::ProNoError)
    core::logWrite(L"Can't rename the simp rep", core::kError);
}

Outcome renameSimpRep(const Task& task) {
  struct Pair {
    std::wstring pattern;
    std::wstring_view name;
  };
  std::vector<Pair> pairs;
  for (const Task::Numbered& entry : task.numberedAll(L"name_", kMostNames))
    if (const auto name = task.numbered(L"newname_%d", entry.number))
      pairs.push_back({replacedText(task, entry.value), *name});
  const creo::ProError visited = visitStates(task.model(), &creo::ProSolidSimprepVisit, [&](const NamedState& rep) {
    for (const Pair& pair : pairs)
      if (fitsName(pair.pattern, rep.name)) rename(rep, pair.name);
    return creo::ProNoError;
  });
  if (visited == creo::ProNotFound) core::logMsgId(Message::noSimplifiedReps, core::kNormal, 1);
  return done;
}

void showAnew(creo::ProMdl model) {
  if (const auto window = creo::ProWindowCurrentGet()) creo::ProWindowRepaint(window.value);
  creo::ProTreetoolRefresh(model);
}

void setNamed(const Task& task) {
  const std::wstring wanted = nameIn(task, L"simprep", text::kNameSize);
  if (wanted.empty()) return core::logWrite(L"Can't find the specified simp rep", core::kError);
  if (const auto rep = creo::ProSimprepInit(wanted, 0, task.model())) {
    core::logIndented(L"Simp rep found (by init)", core::kNormal, 1);
    if (creo::ProSimprepActivate(rep.value) == creo::ProNoError)
      core::logIndented(L"Simp rep set", core::kNormal, 1);
    else
      core::logWrite(L"Can't set the specified simp rep", core::kError);
    return;
  }
  const auto hit = firstState(task.model(), &creo::ProSolidSimprepVisit, wanted);
  if (!hit) return core::logWrite(L"Can't find the specified simp rep", core::kError);
  core::logIndented(L"Simp rep found", core::kNormal, 1);
  if (creo::ProMdlRepresentationLoad(hit->item) != creo::ProNoError ||
      creo::ProSimprepActivate(hit->item) != creo::ProNoError)
    core::logWrite(L"Can't set the specified simp rep", core::kError);
  if (const auto window = creo::ProWindowCurrentGet()) creo::ProWindowRepaint(window.value);
}

struct DefaultForm {
  std::wstring_view simprepc;
  creo::Got<creo::ProMdl> (*retrieve)(const std::wstring& model, creo::ProMdlType type);
  const wchar_t* name;  // as Creo calls the form in English
};
constexpr DefaultForm kForms[] = {{L"1", &creo::ProGraphicsSimprepRetrieve, L"Graphics Rep"},
                                  {L"2", &creo::ProGeomSimprepRetrieve, L"Geometry Rep"},
                                  {L"3", &creo::ProSymbSimprepRetrieve, L"Symbolic Rep"}};

bool isActive(creo::ProMdl model, const creo::ProModelitem& rep) {
  const auto active = creo::ProSimprepActiveGet(model);
  return active && active.value.id == rep.id;
}

// Retrieving passes the form over where a higher representation is in memory: then it is activated by its name. A Creo
// of another language has no form of that name, and then the retrieval has to do.
bool putInto(creo::ProMdl model, creo::ProMdlType type, const DefaultForm& form) {
  const auto name = creo::ProMdlNameGet(model);
  if (!name || !form.retrieve(name.value, type)) return false;
  const auto rep = creo::ProSimprepInit(form.name, 0, model);
  if (rep.error == creo::ProNotFound) return true;
  return rep && (isActive(model, rep.value) || creo::ProSimprepActivate(rep.value) == creo::ProNoError);
}

void setDefaultForm(const Task& task, creo::ProMdlType type) {
  for (const DefaultForm& form : kForms)
    if (form.simprepc == task.attribute(L"simprepc") && !putInto(task.model(), type, form))
      core::logWrite(L"Can't set the specified simp rep", core::kError);
  showAnew(task.model());
}

void reset(const Task& task, const creo::Got<creo::ProModelitem>& before) {
  core::logIndented(L"reset simp rep", core::kNormal, 1);
  if (!before || creo::ProSimprepActivate(before.value) != creo::ProNoError)
    core::logWrite(L"can't reset simp rep", core::kWarning);
  showAnew(task.model());
}

Outcome setSimpRep(const Task& task) {
  const auto before = creo::ProSimprepActiveGet(task.model());
  if (task.attribute(L"simprepc") == L"0") {
    setNamed(task);
  } else {
    const auto type = creo::ProMdlTypeGet(task.model());
    if (type.value == creo::ProMdlType::part) {
      core::logWrite(L"This action is not allowed for parts, you can only set usernamed simpreps", core::kError);
      return wrongVersion;
    }
    setDefaultForm(task, type.value);
  }
  if (task.isTrue(L"simprepr")) reset(task, before);
  return done;
}

// One that the model is in goes once the model is in the master; where it can't go, the model is in it again.
bool remove(creo::ProMdl model, const NamedState& rep) {
  if (creo::ProSimprepDelete(rep.item) == creo::ProNoError) return true;
  const auto master = creo::ProSimprepInit(L"", creo::kMasterRep, model);
  if (!master || !isActive(model, rep.item) || creo::ProSimprepActivate(master.value) != creo::ProNoError) return false;
  if (creo::ProSimprepDelete(rep.item) == creo::ProNoError) return true;
  if (creo::ProSimprepActivate(rep.item) != creo::ProNoError) core::logWrite(L"can't reset simp rep", core::kWarning);
  return false;
}

Outcome deleteSimpRep(const Task& task) {
  const std::vector<std::wstring> wanted = namesIn(task);
  visitStates(task.model(), &creo::ProSolidSimprepVisit, [&](const NamedState& rep) {
    if (fitsAny(wanted, rep.name) && !remove(task.model(), rep))
      core::logWrite(text::format(L"Can't delete simplified representation'%s'", rep.name), core::kError);
    return creo::ProNoError;
  });
  return done;
}

constexpr Attribute kCreateAttributes[] = {
    {.name = L"view",
     .variables = true,
     .need = Need::needed,
     .about = "the new representation's name, at most 31 characters"},
    {.name = L"type2",
     .about = "what it does by default: 1 exclude, 2 geometry, 3 substitute, 4 graphics, 5 symbolic, 6 boundary box, "
              "7 the reverse, 8 light graphics; anything else: include"},
};
constexpr Attribute kRenameAttributes[] = {
    {.name = L"name_%d", .kind = Kind::pattern, .variables = true, .need = Need::needed, .about = "representations"},
    {.name = L"newname_%d", .need = Need::needed, .about = "their new name as it stands, cut to 31 characters"},
};
constexpr Attribute kSetAttributes[] = {
    {.name = L"simprepc",
     .kind = Kind::word,
     .words = L"0|1|2|3",
     .need = Need::needed,
     .about = "0: the one that simprep names; of an assembly also 1 graphics, 2 geometry, 3 symbolic"},
    {.name = L"simprep",
     .kind = Kind::pattern,
     .variables = true,
     .about = "with simprepc 0: its name, or else a pattern, of at most 31 characters"},
    {.name = L"simprepr",
     .kind = Kind::flag,
     .words = L"true",
     .about = "afterwards the former representation is active again"},
};
constexpr Effects kEffects{.changes = Touched::model};

constexpr Action kActions[] = {
    {.key = L"createSimpRep",
     .place = 147,
     .group = Group::ownModelTest,
     .title = Message::createSimplifiedRep,
     .conditions = {kFilter,
                    {.test = Test::solidType, .line = L"Only parts and assemblies have simplified representations"}},
     .attributes = kCreateAttributes,
     .effects = kEffects,
     .about = "creates a simplified representation",
     .forAssembliesAlone = true,
     .function = &createSimpRep},
    {.key = L"renameSimpRep",
     .place = 149,
     .group = Group::ownModelTest,
     .title = Message::renameSimplifiedReps,
     .attributes = kRenameAttributes,
     .effects = kEffects,
     .about = "renames simplified representations",
     .function = &renameSimpRep},
    {.key = L"setSimpRep",
     .place = 150,
     .group = Group::ownModelTest,
     .title = L"Set simpliefied representation",
     .attributes = kSetAttributes,
     .effects = {.reads = Touched::model | Touched::users, .changes = Touched::session},
     .about = "puts the model into a simplified representation, for as long as it is in memory",
     .forAssembliesAlone = true,
     .function = &setSimpRep},
    {.key = L"deleteSimpRep",
     .place = 151,
     .group = Group::ownModelTest,
     .title = L"Delete simplified representation",
     .attributes = kStatesThatGo,
     .effects = {.changes = Touched::model | Touched::session},
     .about = "deletes simplified representations",
     .function = &deleteSimpRep},
};

}  // namespace

std::span<const Action> simplifiedRepActions() { return kActions; }

}  // namespace actions
