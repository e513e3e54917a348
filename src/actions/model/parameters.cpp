// Actions that add parameters, and columns for them.
#include "actions/model/feature_choice.h"
#include "actions/model/instances.h"
#include "actions/model/materials.h"
#include "actions/model/parameter_list.h"
#include "actions/task.h"
#include "actions/visits.h"
#include "core/log.h"
#include "core/messages.h"
#include "creo/ProFamtable.h"
#include "creo/ProFeature.h"
#include "creo/ProMacro.h"
#include "creo/ProMdl.h"
#include "documents/predicates.h"
#include "text/format.h"
#include "text/letters.h"

namespace actions {
namespace {

constexpr std::wstring_view kNoOwner = L"Failure while ProMdlToMdlitem";

Outcome addModelParameter(const Task& task) {
  const bool generic = announceFamily(task);
  const auto owner = creo::ProMdlToModelitem(task.model());
  if (!owner) {
    core::logWrite(kNoOwner, core::kError);
    return done;
  }
  addParametersFromAction(task,
                          {.model = task.model(), .owner = owner.value, .addToFamilyTable = generic, .logDepth = 1});
  return done;
}

Outcome addMaterialParameter(const Task& task) {
  if (const auto owner = currentMaterial(task.model(), core::kError))
    addParametersFromAction(task, {.model = task.model(), .owner = *owner});
  return done;
}

Outcome addFeatureParameter(const Task& task) {
  visitChosenFeatures(task, [&](const creo::ProFeature& feature, const std::wstring& name) {
    core::logIndented(text::format(L"KE: %d %s", feature.id, name), core::kNormal, 1);
    addParametersFromAction(
        task,
        {.model = task.model(), .owner = {creo::ProItemType::feature, feature.id, feature.owner, {}}, .logDepth = 2});
  });
  return done;
}

Outcome changeAllDesignationFlags(const Task& task) {
  announceFamily(task);
  const bool wanted = task.isTrue(L"to");
  core::logMsgId(Message::changeAllDesignations, core::kNormal, 1);
  const auto owner = creo::ProMdlToModelitem(task.model());
  bool allSet = static_cast<bool>(owner);
  const auto visited = creo::ProParameterVisit(owner.value, [&](const creo::ProParameter& parameter) {
    const auto now = creo::ProParameterDesignationVerify(parameter);
    if (now && now.value == wanted) return creo::ProNoError;
    core::logIndented(
        text::format(core::msgText(wanted ? Message::designationToTrue : Message::designationToFalse), parameter.id),
        core::kNormal, 2);
    if (setDesignation(parameter, wanted) == creo::ProNoError) return creo::ProNoError;
    core::logWrite(text::format(core::msgText(Message::designationFailed), parameter.id), core::kError);
    allSet = false;
    return creo::ProNoError;
  });
  allSet = isWhole(visited, L"The parameters") && allSet;
  if (allSet) core::logMsgId(wanted ? Message::allDesignationsTrue : Message::allDesignationsFalse, core::kNormal, 1);
  return done;
}

struct AlternativeColumn {
  std::wstring_view attribute, column;
};
constexpr AlternativeColumn kAlternatives[] = {
    {L"source", L"PRO_MP_SOURCE"}, {L"mass", L"PRO_MP_ALT_MASS"}, {L"volume", L"PRO_MP_ALT_VOLUME"},
    {L"area", L"PRO_MP_ALT_AREA"}, {L"cogx", L"PRO_MP_ALT_COGX"}, {L"cogy", L"PRO_MP_ALT_COGY"},
    {L"cogz", L"PRO_MP_ALT_COGZ"}, {L"ixx", L"PRO_MP_ALT_IXX"},   {L"iyy", L"PRO_MP_ALT_IYY"},
    {L"izz", L"PRO_MP_ALT_IZZ"},   {L"ixz", L"PRO_MP_ALT_IXZ"},   {L"iyz", L"PRO_MP_ALT_IYZ"},
    {L"ixy", L"PRO_MP_ALT_IXY"},
};
// No operation adds such a column: the family table's dialog does, worked by a macro.
constexpr std::wstring_view kColumnMacro =
    L"~ Command `ProCmdMmFamTab` ; ~ Activate `ftb_edit_table` `TBAddItem`; ~ Activate `ftb_delete_item` `CBParameter` "
    L"1; ~ FocusIn `params_dlg` `ParamsPHLay.ParTable`; ~ Open `params_dlg` `ParamsPHLay.OMPrmType`; ~ Close "
    L"`params_dlg` `ParamsPHLay.OMPrmType`; ~ Select `params_dlg` `ParamsPHLay.OMPrmType` 1 `alternative_mp`; ~ Select "
    L"`params_dlg` `ParamsPHLay.ParTable` 2 `row%s` `name`; ~ Activate `params_dlg` `PBInsert`;~ Activate `params_dlg` "
    L"`PBQuit`; ~ Activate `ftb_delete_item` `Ok`;~ Activate `ftb_edit_table` `OK`;";

bool hasColumn(const creo::ProFamtable& table, std::wstring_view name) {
  return creo::ProFamtableItemVisit(table, [&](const creo::ProFamtableItem& item) {
           return text::equalNoCase(item.name, name) ? creo::ProStopVisit : creo::ProNoError;
         }) == creo::ProStopVisit;
}

void addAlternativeColumn(const creo::ProFamtable& table, std::wstring_view name) {
  if (hasColumn(table, name))
    return core::logWrite(text::format(core::msgText(Message::columnExists), name), core::kWarning);
  // No parameter has such a name, and behind it anything could follow in the macro.
  if (name.find_first_of(L"`;") == name.npos) {
    creo::ProMacroLoad(text::format(kColumnMacro, name));
    creo::ProMacroExecute();
  }
  if (hasColumn(table, name))
    core::logIndented(text::format(core::msgText(Message::columnAdded), name), core::kNormal, 1);
  else
    core::logWrite(text::format(core::msgText(Message::columnNotAdded), name), core::kError);
}

Outcome addModelParameterToFamilyTable(const Task& task) {
  const auto table = creo::ProFamtableInit(task.model());
  if (!table) {
    core::logMsgPlain(Message::noTableFound, core::kWarning);
    return done;
  }
  for (const AlternativeColumn& row : kAlternatives)
    if (task.isTrue(row.attribute)) addAlternativeColumn(table.value, row.column);
  return done;
}

constexpr Attribute kForInstances[] = {{.name = L"forInstances",
                                        .kind = Kind::flag,
                                        .words = L"true",
                                        .about = "false: instances are left alone; true: in a generic each parameter "
                                                 "becomes a column of the family table"}};
constexpr Attribute kNewParameters[] = {
    {.name = L"count", .kind = Kind::integer, .about = "how many numbers are looked at; 100 when absent or empty"},
    {.name = L"name_%d",
     .variables = true,
     .need = Need::needed,
     .numbers = Numbers::counted,
     .counter = L"count",
     .about = "the name"},
    {.name = L"type_%d",
     .kind = Kind::word,
     .words = L"String|Integer|Double|Boolean",
     .need = Need::needed,
     .numbers = Numbers::counted,
     .counter = L"count",
     .about = "the type"},
    {.name = L"value_%d", .numbers = Numbers::counted, .counter = L"count", .about = "the value, without variables"},
    {.name = L"unit_%d",
     .kind = Kind::unit,
     .numbers = Numbers::counted,
     .counter = L"count",
     .about = "a unit such as mm; numbers alone have one"},
    {.name = L"description_%d",
     .numbers = Numbers::counted,
     .counter = L"count",
     .about = "a description of at most 80 characters"},
    {.name = L"designated_%d",
     .kind = Kind::flag,
     .words = L"true",
     .numbers = Numbers::counted,
     .counter = L"count",
     .about = "designates the parameter"},
    {.name = L"desig",
     .kind = Kind::present,
     .about = "present: new parameters are designated as told; true: existing ones too"},
    {.name = L"descr", .kind = Kind::flag, .words = L"true", .about = "existing parameters get the description too"},
};
constexpr Attribute kDesignation[] = {
    {.name = L"to",
     .kind = Kind::flag,
     .words = L"true",
     .need = Need::needed,
     .about = "true designates, anything else takes it away"},
};
constexpr auto kModelAttributes = joined(kForInstances, kNewParameters);
constexpr auto kFeatureAttributes = joined(kWhichFeatures, kChosenFeatures, kNewParameters);
constexpr auto kDesignationAttributes = joined(kDesignation, kInstancesToo);

constexpr Effects kCreates{.changes = Touched::model | Touched::family};

// One of Creo's alternative mass properties.
constexpr Attribute alternative(std::wstring_view name, std::string_view about) {
  return {.name = name, .kind = Kind::flag, .words = L"true", .need = Need::oneOf, .about = about};
}
constexpr Attribute kAlternativeAttributes[] = {
    alternative(L"source", "the column PRO_MP_SOURCE"),
    alternative(L"mass", "the column PRO_MP_ALT_MASS"),
    alternative(L"volume", "the column PRO_MP_ALT_VOLUME"),
    alternative(L"area", "the column PRO_MP_ALT_AREA"),
    alternative(L"cogx", "the centre of gravity, PRO_MP_ALT_COGX"),
    alternative(L"cogy", "PRO_MP_ALT_COGY"),
    alternative(L"cogz", "PRO_MP_ALT_COGZ"),
    alternative(L"ixx", "the inertia, PRO_MP_ALT_IXX"),
    alternative(L"iyy", "PRO_MP_ALT_IYY"),
    alternative(L"izz", "PRO_MP_ALT_IZZ"),
    alternative(L"ixz", "PRO_MP_ALT_IXZ"),
    alternative(L"iyz", "PRO_MP_ALT_IYZ"),
    alternative(L"ixy", "PRO_MP_ALT_IXY"),
};

constexpr Action kActions[] = {
    {.key = L"changeAllDesignationFlags",
     .place = 93,
     .title = Message::changeDesignations,
     .conditions = {kFilter, kInstancesAsTold},
     .attributes = kDesignationAttributes,
     .effects = {.changes = Touched::model},
     .about = "designates all parameters of the model, or takes the designation from all",
     .function = &changeAllDesignationFlags},
    {.key = L"addModelParameter",
     .place = 94,
     .title = Message::addModelParameter,
     .conditions = {kFilter, kInstancesAsTold},
     .attributes = kModelAttributes,
     .effects = kCreates,
     .about = "creates parameters in the model; one that is there keeps its value",
     .function = &addModelParameter},
    {.key = L"addMaterialParameter",
     .place = 95,
     .title = L"Add material parameter",
     .conditions = {kFilter,
                    {.test = Test::notSkeleton, .line = Message::skeletonRefused},
                    {.test = Test::notInstance, .line = Message::instanceRefused, .outcome = done}},
     .attributes = kNewParameters,
     .effects = kCreates,
     .about = "creates parameters in the current material of a part",
     .function = &addMaterialParameter},
    {.key = L"addKEParameter",
     .place = 97,
     .title = Message::addFeatureParameter,
     .attributes = kFeatureAttributes,
     .effects = kCreates,
     .about = "creates parameters in features",
     .function = &addFeatureParameter},
    {.key = L"addModelParameterToFamilyTable",
     .place = 98,
     .title = Message::addAlternativeParameter,
     .conditions = {{.test = Test::notInstance, .line = Message::instanceRefused, .outcome = done}, kFilter},
     .attributes = kAlternativeAttributes,
     .effects = kCreates,
     .about = "makes alternative mass properties columns of a generic's family table",
     .function = &addModelParameterToFamilyTable},
};

}  // namespace

std::span<const Action> parameterActions() { return kActions; }

}  // namespace actions
