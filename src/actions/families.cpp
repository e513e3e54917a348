// The families that make up the table of actions; their order doesn't matter.
#include "actions/families.h"

namespace actions {
namespace {

// clang-format off
constexpr OldFamily kOldFamilies[] = {
    &saveActions,
    &featureReportActions,
    &solidSettingActions,
    &regenerationActions,
    &openReportActions,
    &reportTablecellActions,
    &modelDataReportActions,
    &universalReportActions,
    &familyTableReportActions,
    &parameterReportActions,
    &materialReportActions,
    &layerReportActions,
    &dependencyReportActions,
    &relationReportActions,
    &listReportActions,
    &drawingReportActions,
    &geometryReportActions,
    &combinedStateActions,
    &explodeStateActions,
    &simplifiedRepActions,
    &editSimplifiedRepActions,
    &crossSectionActions,
    &featureActions,
    &componentActions,
    &modelFileActions,
    &replaceModelActions,
    &informationSheetActions,
    &viewActions,
    &annotationActions,
    &appearanceActions,
    &modelCheckActions,
};
constexpr Family kFamilies[] = {
    &creoLogActions,
    &workingFolderActions,
    &configOptionActions,
    &macroActions,
    &trailFileActions,
    &programActions,
    &sessionActions,
    &detailOptionActions,
    &insertPositionActions,
    &userVariableActions,
    &boundingBoxActions,
    &pdmActions,
    &questionActions,
    &webRequestActions,
    &groupActionsFamily,
    &actionsWithoutEffect,
    &layerActions,
    &layerStateActions,
    &layerTemplateActions,
    &parameterActions,
    &codeActions,
    &dotMatrixActions,
    &drawingExportActions,
    &drawingModelActions,
    &drawingTableActions,
    &exchangeExportActions,
    &noteActions,
    &noteTableActions,
    &pdfExportActions,
    &pictureExportActions,
    &replaceFormatActions,
    &sheetScaleActions,
    &symbolActions,
    &viewerExportActions,
    &editParameterActions,
    &deleteParameterActions,
    &editFromTableActions,
    &editFromFileActions,
    &drawingParameterActions,
    &relationLineActions,
    &programLineActions,
    &materialActions,
    &replaceMaterialActions,
    &editMaterialActions,
    &familyTableActions,
    &breakUpActions,
};
// clang-format on

}  // namespace

std::span<const OldFamily> oldFamilies() { return kOldFamilies; }
std::span<const Family> allFamilies() { return kFamilies; }

}  // namespace actions
