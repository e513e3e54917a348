// Actions that add parameters, and columns for them.
#include "actions/families.h"
#include "actions/model/feature_choice.h"
#include "actions/model/instances.h"
#include "actions/model/materials.h"
#include "actions/model/parameter_list.h"
#include "core/log.h"
#include "core/messages.h"
#include "creo/ProFamtable.h"
#include "creo/ProFeature.h"
#include "creo/ProMacro.h"
#include "creo/ProMdl.h"
#include "documents/predicates.h"
#include "engine/task.h"
#include "text/format.h"
#include "text/letters.h"

namespace actions {
namespace {

using namespace engine;

constexpr int kAddTitle = 58, kAddToFeatureTitle = 222, kAlternativeTitle = 406;
constexpr int kDesignateTitle = 10, kDesignate = 11, kSetToFalse = 12, kSetToTrue = 13, kDesignationFailed = 14;
constexpr int kAllTrue = 15, kAllFalse = 16;
constexpr int kInstanceRefused = 5, kIsSkeleton = 420, kNoTable = 407, kColumnAdded = 408, kColumnIsThere = 409,
              kColumnFailed = 410;
constexpr std::wstring_view kNoOwner = L"Failure while ProMdlToMdlitem";

Outcome addModelParameter(const Task& task) {
  if (const auto ended = begin(task, {.title = core::msgText(kAddTitle)})) return *ended;
  bool generic = false;
  if (const auto ended = passInstances(task, generic)) return *ended;
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
  if (const auto ended = begin(task, {.title = L"Add material parameter"})) return *ended;
  if (documents::isSkeleton(task.model()) == documents::kTrue) {
    core::logMsgPlain(kIsSkeleton, core::kWarning);
    return refused;
  }
  if (documents::isInstance(task.model()) == documents::kTrue) {
    core::logMsgPlain(kInstanceRefused, core::kWarning);
    return done;
  }
  if (const auto owner = currentMaterial(task.model(), core::kError))
    addParametersFromAction(task, {.model = task.model(), .owner = *owner});
  return done;
}

Outcome addFeatureParameter(const Task& task) {
  if (const auto ended = begin(task, {.title = core::msgText(kAddToFeatureTitle)})) return *ended;
  visitChosenFeatures(task, [&](const creo::ProFeature& feature, const std::wstring& name) {
    core::logIndented(text::format(L"KE: %d %s", feature.id, name), core::kNormal, 1);
    addParametersFromAction(
        task,
        {.model = task.model(), .owner = {creo::ProItemType::feature, feature.id, feature.owner, {}}, .logDepth = 2});
  });
  return done;
}

Outcome changeAllDesignationFlags(const Task& task) {
  if (const auto ended = begin(task, {.title = core::msgText(kDesignateTitle)})) return *ended;
  bool generic = false;
  if (const auto ended = passInstances(task, generic)) return *ended;
  const bool wanted = task.isTrue(L"to");
  core::logMsgId(kDesignate, core::kNormal, 1);
  const auto owner = creo::ProMdlToModelitem(task.model());
  bool allSet = static_cast<bool>(owner);
  creo::ProParameterVisit(owner.value, [&](const creo::ProParameter& parameter) {
    const auto now = creo::ProParameterDesignationVerify(parameter);
    if (now && now.value == wanted) return creo::ProNoError;
    core::logIndented(text::format(core::msgText(wanted ? kSetToTrue : kSetToFalse), parameter.id), core::kNormal, 2);
    const creo::ProError result =
        wanted ? creo::ProParameterDesignationAdd(parameter) : creo::ProParameterDesignationRemove(parameter);
    if (result == creo::ProNoError) return creo::ProNoError;
    core::logWrite(text::format(core::msgText(kDesignationFailed), parameter.id), core::kError);
    allSet = false;
    return creo::ProNoError;
  });
  if (allSet) core::logMsgId(wanted ? kAllTrue : kAllFalse, core::kNormal, 1);
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
  if (hasColumn(table, name)) return core::logWrite(text::format(core::msgText(kColumnIsThere), name), core::kWarning);
  creo::ProMacroLoad(text::format(kColumnMacro, name));
  creo::ProMacroExecute();
  if (hasColumn(table, name))
    core::logIndented(text::format(core::msgText(kColumnAdded), name), core::kNormal, 1);
  else
    core::logWrite(text::format(core::msgText(kColumnFailed), name), core::kError);
}

Outcome addModelParameterToFamilyTable(const Task& task) {
  if (const auto ended = beginUnfiltered(task, {.title = core::msgText(kAlternativeTitle)})) return *ended;
  if (documents::isInstance(task.model()) == documents::kTrue) {
    core::logMsgPlain(kInstanceRefused, core::kWarning);
    return done;
  }
  if (const auto ended = passFilter(task)) return *ended;
  const auto table = creo::ProFamtableInit(task.model());
  if (!table) {
    core::logMsgPlain(kNoTable, core::kWarning);
    return done;
  }
  for (const AlternativeColumn& row : kAlternatives)
    if (task.isTrue(row.attribute)) addAlternativeColumn(table.value, row.column);
  return done;
}

constexpr ActionFunction kActions[] = {{L"addModelParameter", &addModelParameter},
                                       {L"addMaterialParameter", &addMaterialParameter},
                                       {L"addKEParameter", &addFeatureParameter},
                                       {L"changeAllDesignationFlags", &changeAllDesignationFlags},
                                       {L"addModelParameterToFamilyTable", &addModelParameterToFamilyTable}};

}  // namespace

std::span<const ActionFunction> parameterActions() { return kActions; }

}  // namespace actions
