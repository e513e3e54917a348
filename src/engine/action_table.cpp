// The keys of all actions in their fixed order, joined with the functions that the families contribute.
#include <unordered_map>
#include <vector>

#include "actions/families.h"
#include "engine/dispatch.h"
#include "engine/task.h"

namespace engine {
namespace {

using Function = Outcome (*)(const Task& task);

struct KeyRow {
  std::wstring_view key;
  Group group;
};
// In the order of comparison.
constexpr KeyRow kKeys[] = {
    // Work without a model.
    {L"clearAllWindows", Group::withoutModel},
    {L"eraseUndisplayedModels", Group::withoutModel},
    {L"setConfigOption", Group::withoutModel},
    {L"saveConfigOptions", Group::withoutModel},
    {L"runTrailfile", Group::withoutModel},
    {L"runMSDOScommand", Group::withoutModel},
    {L"setUserVariable", Group::withoutModel},
    {L"runMapkey", Group::withoutModel},
    {L"groupActions", Group::withoutModel},
    {L"setWorkingDirectory", Group::withoutModel},
    {L"removeModelFromWorkspace", Group::withoutModel},
    {L"openCSVReport", Group::withoutModel},
    {L"setUserVariableDirect", Group::withoutModel},
    {L"setEnvironmentVariable", Group::withoutModel},
    {L"setUserVariableFromUrl", Group::withoutModel},
    {L"setServerActive", Group::withoutModel},
    {L"writeToCreoLog", Group::withoutModel},
    // Known, and empty.
    {L"kv_reportNewRows", Group::withoutEffect},
    {L"kv_reportCloseAll", Group::withoutEffect},
    {L"getRegExpCheck", Group::withoutEffect},
    {L"asmFastOpen", Group::withoutEffect},
    // Refused as one without a model.
    {L"reportModeldata", Group::modelNeeded},
    {L"reportDrawingdata", Group::modelNeeded},
    {L"reportUniversal", Group::modelNeeded},
    {L"reportFamilietable", Group::modelNeeded},
    {L"writeParameters", Group::modelNeeded},
    {L"reportMaterials", Group::modelNeeded},
    {L"reportLayer", Group::modelNeeded},
    {L"reportGeometryProperties", Group::modelNeeded},
    {L"reportDependencies", Group::modelNeeded},
    {L"reportRelations", Group::modelNeeded},
    {L"reportFeaturePositions", Group::modelNeeded},
    {L"reportTablecell", Group::modelNeeded},
    {L"setDTL", Group::modelNeeded},
    {L"setInsertFeaturePosition", Group::modelNeeded},
    {L"cancelFeaturePosition", Group::modelNeeded},
    {L"checkinModel", Group::modelNeeded},
    {L"saveModel", Group::modelNeeded},
    {L"checkoutModel", Group::modelNeeded},
    {L"setAccuracy", Group::modelNeeded},
    {L"setTolerance", Group::modelNeeded},
    {L"regenerateMass", Group::modelNeeded},
    {L"regenerateModel", Group::modelNeeded},
    {L"verifyFamilietable", Group::modelNeeded},
    {L"conflateFamilietable", Group::modelNeeded},
    {L"breakUpFamilytable", Group::modelNeeded},
    {L"addEditViews", Group::modelNeeded},
    {L"renameView", Group::modelNeeded},
    {L"setUnits", Group::modelNeeded},
    {L"setView", Group::modelNeeded},
    {L"add3dannotation", Group::modelNeeded},
    {L"backupAction", Group::modelNeeded},
    {L"editCommonName", Group::modelNeeded},
    {L"unlockAllInstances", Group::modelNeeded},
    {L"rescaleASMPosition", Group::modelNeeded},
    {L"replaceViewModelDisplay", Group::modelNeeded},
    {L"renameFeature", Group::modelNeeded},
    {L"runModelCheck", Group::modelNeeded},
    {L"setAppearance", Group::modelNeeded},
    {L"setAppearanceFromRGB", Group::modelNeeded},
    {L"replaceFormat", Group::modelNeeded},
    {L"editModelNotesFromFile", Group::modelNeeded},
    {L"deleteFamilyTableInstance", Group::modelNeeded},
    {L"renameModel", Group::modelNeeded},
    {L"replaceModel", Group::modelNeeded},
    {L"copyModel", Group::modelNeeded},
    {L"addFirstKEs", Group::modelNeeded},
    {L"addTable", Group::modelNeeded},
    {L"moveTable", Group::modelNeeded},
    {L"deleteTable", Group::modelNeeded},
    {L"addSymbol", Group::modelNeeded},
    {L"moveSymbol", Group::modelNeeded},
    {L"changeSymbolGroup", Group::modelNeeded},
    {L"deleteSymbol", Group::modelNeeded},
    {L"updateSymbolDefinitions", Group::modelNeeded},
    {L"addNote", Group::modelNeeded},
    {L"moveNote", Group::modelNeeded},
    {L"deleteNote", Group::modelNeeded},
    {L"setCurrentDrawingModel", Group::modelNeeded},
    {L"setQRCode", Group::modelNeeded},
    {L"setAllDimensionBounds", Group::modelNeeded},
    {L"addFileToWorkspace", Group::modelNeeded},
    {L"createQRdotmatrix", Group::modelNeeded},
    {L"editModelDimensionFromFile", Group::modelNeeded},
    {L"createPDF417Barcode", Group::modelNeeded},
    {L"setUserVariableFromBoundingBox", Group::modelNeeded},
    {L"loadToleranceTable", Group::modelNeeded},
    {L"removeUnusedDrawingModels", Group::modelNeeded},
    {L"fillComponentParametersByReference", Group::modelNeeded},
    {L"setSheetScale", Group::modelNeeded},
    {L"removeAllAnnotations", Group::modelNeeded},
    {L"showUnbendFeatures", Group::modelNeeded},
    {L"addassociativeparametertoflexibledimension", Group::modelNeeded},
    {L"changeAllDesignationFlags", Group::modelNeeded},
    {L"addModelParameter", Group::modelNeeded},
    {L"addMaterialParameter", Group::modelNeeded},
    {L"deleteModelParameter", Group::modelNeeded},
    {L"addKEParameter", Group::modelNeeded},
    {L"addModelParameterToFamilyTable", Group::modelNeeded},
    {L"deleteKEParameter", Group::modelNeeded},
    {L"editModelParameter", Group::modelNeeded},
    {L"editMaterialParameter", Group::modelNeeded},
    {L"editModelParameterFromTablecell", Group::modelNeeded},
    {L"editModelParameterName", Group::modelNeeded},
    {L"editModelParameterFromFile", Group::modelNeeded},
    {L"editParameterFromDictionary", Group::modelNeeded},
    {L"editDrawingParameterFromModel", Group::modelNeeded},
    {L"deleteDoubleDefinedParameters", Group::modelNeeded},
    // Test their model themselves.
    {L"addMaterial", Group::ownModelTest},
    {L"deleteMaterial", Group::ownModelTest},
    {L"replaceMaterial", Group::ownModelTest},
    {L"editMaterialFromFile", Group::ownModelTest},
    {L"renameLayer", Group::ownModelTest},
    {L"deleteLayer", Group::ownModelTest},
    {L"addLayerFromTemplate", Group::ownModelTest},
    {L"changeLayerStatus", Group::ownModelTest},
    {L"groupLayer", Group::ownModelTest},
    {L"addLayerState", Group::ownModelTest},
    {L"deleteLayerState", Group::ownModelTest},
    {L"setLayerState", Group::ownModelTest},
    {L"addCombState", Group::ownModelTest},
    {L"setCombState", Group::ownModelTest},
    {L"deleteCombState", Group::ownModelTest},
    {L"setCompDisplay", Group::ownModelTest},
    {L"addExplodeState", Group::ownModelTest},
    {L"setExplodeState", Group::ownModelTest},
    {L"deleteExplodeState", Group::ownModelTest},
    {L"addXsec", Group::ownModelTest},
    {L"setXsec", Group::ownModelTest},
    {L"deleteXsec", Group::ownModelTest},
    {L"updateXsec", Group::ownModelTest},
    {L"showXsec", Group::ownModelTest},
    {L"exportjpg", Group::ownModelTest},
    {L"exporttiff", Group::ownModelTest},
    {L"exportStep", Group::ownModelTest},
    {L"exportiges", Group::ownModelTest},
    {L"exportset", Group::ownModelTest},
    {L"exportsat", Group::ownModelTest},
    {L"exportProductView", Group::ownModelTest},
    {L"exportdxf", Group::ownModelTest},
    {L"exportdwg", Group::ownModelTest},
    {L"exportpdf", Group::ownModelTest},
    {L"exportpdf2d", Group::ownModelTest},
    {L"addModelRelationLines", Group::ownModelTest},
    {L"deleteModelRelationLines", Group::ownModelTest},
    {L"editModelRelationLines", Group::ownModelTest},
    {L"setRelationUnitSensitive", Group::ownModelTest},
    {L"createSimpRep", Group::ownModelTest},
    {L"editSimpRep", Group::ownModelTest},
    {L"renameSimpRep", Group::ownModelTest},
    {L"setSimpRep", Group::ownModelTest},
    {L"deleteSimpRep", Group::ownModelTest},
    {L"deleteModelProProgramLines", Group::ownModelTest},
    {L"deleteModelProProgramInputLines", Group::ownModelTest},
    {L"writeInformationPDF", Group::ownModelTest},
    {L"reportFeatureParameter", Group::ownModelTest},
    {L"writeListReport", Group::ownModelTest},
    {L"openXLSReport", Group::ownModelTest},
    {L"editModelParameterFromPrueftrail", Group::ownModelTest},
};

std::vector<Action> buildTable() {
  std::unordered_map<std::wstring_view, Function> functions;
  std::unordered_map<std::wstring_view, const Action*> rows;
  for (const actions::OldFamily family : actions::oldFamilies())
    for (const auto& row : family()) functions.emplace(row.key, row.function);
  for (const actions::Family family : actions::allFamilies())
    for (const Action& row : family()) rows.emplace(row.key, &row);

  std::vector<Action> table;
  table.reserve(std::size(kKeys));
  for (const KeyRow& row : kKeys) {
    if (const auto found = rows.find(row.key); found != rows.end()) {
      table.push_back(*found->second);
      continue;
    }
    table.push_back({.key = row.key,
                     .place = static_cast<int>(table.size()),
                     .group = row.group,
                     .function = functions.at(row.key),
                     .oldFrame = true});
  }
  return table;
}

}  // namespace

std::span<const Action> actionTable() {
  static const std::vector<Action> table = buildTable();
  return table;
}

const Action* findAction(std::wstring_view key) {
  static const auto index = [] {
    std::unordered_map<std::wstring_view, const Action*> rows;
    for (const Action& row : actionTable()) rows.emplace(row.key, &row);
    return rows;
  }();
  const auto found = index.find(key);
  return found == index.end() ? nullptr : found->second;
}

}  // namespace engine
