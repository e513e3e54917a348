// A simplified representation described anew: what it does with each feature that the list chooses.
#include <optional>
#include <set>

#include "actions/model/named_states.h"
#include "actions/visits.h"
#include "core/feature_codes.h"
#include "core/log.h"
#include "core/messages.h"
#include "creo/ProFeature.h"
#include "creo/ProMdl.h"
#include "creo/ProSimprep.h"
#include "documents/filter.h"
#include "text/format.h"

namespace actions {
namespace {

using creo::ProFeature;
using creo::ProMdl;
using creo::ProSimprepAction;

struct ChosenAction {
  std::wstring_view jc;
  ProSimprepAction action;
};
constexpr ChosenAction kChosenActions[] = {
    {L"1", ProSimprepAction::geometry},   {L"2", ProSimprepAction::graphics},     {L"3", ProSimprepAction::symbolic},
    {L"4", ProSimprepAction::exclude},    {L"5", ProSimprepAction::reverse},      {L"6", ProSimprepAction::boundaryBox},
    {L"7", ProSimprepAction::substitute}, {L"8", ProSimprepAction::lightGraphics}};

// Nothing: `jc` means no action.
std::optional<ProSimprepAction> actionFor(std::wstring_view jc, ProSimprepAction byDefault) {
  if (jc == L"0") return byDefault;
  for (const ChosenAction& row : kChosenActions)
    if (row.jc == jc) return row.action;
  return std::nullopt;
}

// What the list chooses and does, read once for all features.
struct Edit {
  const Task& task;
  bool byType, byName;
  int type;
  std::wstring name;
  std::wstring_view jc;
  std::wstring substitute;  // the representation of a component that takes its place

  explicit Edit(const Task& of)
      : task(of),
        byType(of.isTrue(L"filter_type")),
        byName(of.isTrue(L"filter_name")),
        type(byType ? core::featureTypeOf(L"filter_type_sel", of.attribute(L"filter_type_sel")) : 0),
        jc(of.attribute(L"jc")) {
    if (byName) name = nameIn(task, L"filter_name_text");
    if (jc == L"7") substitute = nameIn(task, L"nameTwo", text::kNameSize);
  }
};

// A feature that is looked at; of a component with its model.
struct Subject {
  ProFeature feature;
  bool isComponent = false;
  ProMdl model;
  creo::ProMdlType type = creo::ProMdlType::unused;
};

bool passesInsideFilters(const Task& task, const Subject& component) {
  bool passes = true;
  core::xmlEachChild(task.node(), [&](const core::XmlNode& child) {
    if (passes && child.name == L"insideFilter")
      passes = documents::filterCheck(child, creo::typeExtension(component.type), component.model) ==
               documents::kFilterHolds;
  });
  return passes;
}

// Nothing: a component that is left out, because it is a skeleton or, with a line, its model or its kind can't be had.
std::optional<Subject> subjectOf(const ProFeature& feature, int type) {
  Subject subject{feature, type == creo::kComponentFeature, {}, {}};
  if (!subject.isComponent) return subject;
  const auto model = creo::ProAsmcompMdlGet(feature);
  if (!model) {
    core::logWrite(text::format(L"The model of the component %d can't be retrieved", feature.id), core::kError);
    return {};
  }
  const auto isSkeleton = creo::ProMdlIsSkeleton(model.value);
  const auto modelType = creo::ProMdlTypeGet(model.value);
  // Creo may not tell for want of a license: then it is taken for none.
  const bool isKnown = modelType && (isSkeleton || isSkeleton.error == creo::ProNoLicense);
  if (!isKnown) cantRead(text::format(L"The kind of the component %d", feature.id));
  if (!isKnown || isSkeleton.value) return {};
  subject.model = model.value;
  subject.type = modelType.value;
  return subject;
}

bool isChosen(const Edit& edit, const Subject& subject) {
  if (edit.byName) {
    const auto name =
        subject.isComponent ? creo::ProMdlNameGet(subject.model) : creo::ProFeatureNameGet(subject.feature);
    if (!fitsName(edit.name, nameOrNone(name, L"The name of a feature"))) return false;
  }
  return !edit.byType || !subject.isComponent || passesInsideFilters(edit.task, subject);
}

// The representation that takes the component's place, in memory. Nothing, with a line: there is none.
std::optional<creo::ProSubstitution> substitution(const Edit& edit, const Subject& component) {
  const bool isPart = component.type == creo::ProMdlType::part;
  const auto retrieved = isPart
                             ? creo::ProPartSimprepRetrieve(creo::ProMdlNameGet(component.model).value, edit.substitute)
                             : creo::Got<ProMdl>(component.model);
  auto rep = retrieved && !edit.substitute.empty() ? creo::ProSimprepInit(edit.substitute, 0, component.model)
                                                   : creo::Got<creo::ProModelitem>(creo::ProNotFound);
  if (rep && !isPart) rep.error = creo::ProSimprepActivate(rep.value);
  if (!rep) {
    core::logWrite(isPart ? L"Failure while set SimpRep for prt" : L"Failure while set SimpRep for asm",
                   core::kWarning);
    return {};
  }
  const auto kind = isPart ? creo::ProSubstitutionKind::partRep : creo::ProSubstitutionKind::assemblyRep;
  const auto made = creo::ProSubstitutionInit(kind, rep.value);
  return made ? std::optional(made.value) : std::nullopt;
}

creo::Got<creo::ProSimprepdataitem> itemOf(const Subject& subject, const creo::ProSimprepItemAction& action) {
  if (!subject.isComponent) return creo::ProSimprepdataitemInit({}, subject.feature.id, action);
  const auto path = creo::ProAsmcomppathInit(subject.feature.owner, {subject.feature.id});
  return path ? creo::ProSimprepdataitemInit(path.value, 0, action) : path.error;
}

void addItem(const Edit& edit, const Subject& subject, creo::ProSimprepdata& data) {
  std::optional<creo::ProSubstitution> by;
  if (edit.jc == L"7" && subject.isComponent) by = substitution(edit, subject);
  const auto wanted = actionFor(edit.jc, data.defaultAction);
  const auto action =
      wanted ? creo::ProSimprepActionInit(*wanted, by) : creo::Got<creo::ProSimprepItemAction>(creo::ProBadInputs);
  if (!action) return core::logWrite(L"Failure occured while create Simprep action", core::kWarning);
  const auto item = itemOf(subject, action.value);
  if (!item) return core::logWrite(L"Failure occured while ProSimprepdataitemInit", core::kError);
  if (creo::ProSimprepdataitemAdd(data, item.value) != creo::ProNoError)
    core::logWrite(L"Failure occured while ProSimprepdataitemAdd", core::kError);
}

// What the representation did with other features goes by the action none: Creo keeps what new data doesn't name.
void takeBackOthers(const std::vector<creo::ProSimprepdataitem>& former, creo::ProSimprepdata& data) {
  std::set<int> described;
  for (const creo::ProSimprepdataitem& item : data.items) described.insert(item.feature);
  for (creo::ProSimprepdataitem item : former) {
    if (described.contains(item.feature)) continue;
    item.action = {};
    if (creo::ProSimprepdataitemAdd(data, item) != creo::ProNoError)
      core::logWrite(L"Failure occured while ProSimprepdataitemAdd", core::kError);
  }
}

creo::ProError describeAnew(const Edit& edit, const creo::ProModelitem& rep) {
  const auto simprepdata = creo::ProSimprepdataGet(rep);
  if (!simprepdata) return simprepdata.error;
  auto data = creo::ProSimprepdataAlloc(simprepdata.value.name, simprepdata.value.defaultAction);
  if (!data) return data.error;
  const auto visited = creo::ProSolidFeatVisit(edit.task.model(), [&](const ProFeature& feature) {
    const auto type = creo::ProFeatureTypeGet(feature);
    if (!type) cantRead(L"The type of a feature");
    if (!type || (edit.byType && type.value != edit.type)) return creo::ProNoError;
    const auto subject = subjectOf(feature, type.value);
    if (subject && isChosen(edit, *subject)) addItem(edit, *subject, data.value);
    return creo::ProNoError;
  });
  if (!isWhole(visited, L"The features")) return visited;
  takeBackOthers(simprepdata.value.items, data.value);
  core::logIndented(simprepdata.value.name, core::kNormal, 1);
  return creo::ProSimprepdataSet(rep, data.value);
}

Outcome editSimpRep(const Task& task) {
  const Edit edit(task);
  const std::wstring wanted = nameIn(task, L"nameOne");
  const creo::ProError visited = visitStates(task.model(), &creo::ProSolidSimprepVisit, [&](const NamedState& rep) {
    if (!fitsName(wanted, rep.name)) return creo::ProNoError;
    if (describeAnew(edit, rep.item) == creo::ProNoError)
      core::logMsgId(Message::repRedefined, core::kNormal, 1);
    else
      core::logMsgPlain(Message::repNotRedefined, core::kError);
    return creo::ProNoError;
  });
  if (visited == creo::ProNotFound) core::logMsgId(Message::noSimplifiedReps, core::kNormal, 1);
  return done;
}

constexpr Attribute kAttributes[] = {
    {.name = L"nameOne", .kind = Kind::pattern, .variables = true, .need = Need::needed, .about = "representations"},
    {.name = L"filter_type",
     .kind = Kind::flag,
     .words = L"true",
     .about =
         "only features of the type in filter_type_sel, and components whose models pass the elements insideFilter"},
    {.name = L"filter_type_sel", .kind = Kind::feature, .about = "a code of a feature type; 28 is a component"},
    {.name = L"filter_name",
     .kind = Kind::flag,
     .words = L"true",
     .about = "only features whose names fit filter_name_text, components by their models' names"},
    {.name = L"filter_name_text", .kind = Kind::pattern, .variables = true, .about = "names of features and models"},
    {.name = L"jc",
     .kind = Kind::word,
     .words = L"0|1|2|3|4|5|6|7|8",
     .need = Need::needed,
     .about = "what becomes of them: 0 the representation's default, 1 geometry, 2 graphics, 3 symbolic, 4 exclude, "
              "5 the reverse, 6 boundary box, 7 substitute, 8 light graphics"},
    {.name = L"nameTwo",
     .variables = true,
     .about = "with jc 7: the representation of the component that takes its place"},
};

constexpr Action kActions[] = {
    {.key = L"editSimpRep",
     .place = 148,
     .group = Group::ownModelTest,
     .title = Message::editSimplifiedReps,
     .version = L"4",
     .attributes = kAttributes,
     .effects = {.reads = Touched::model | Touched::users, .changes = Touched::model | Touched::session},
     .about = "describes simplified representations anew: what they do with each component",
     .forAssembliesAlone = true,
     .function = &editSimpRep},
};

}  // namespace

std::span<const Action> editSimplifiedRepActions() { return kActions; }

}  // namespace actions
