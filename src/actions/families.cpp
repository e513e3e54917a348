// The families that make up the table of actions; their order doesn't matter.
#include "actions/families.h"

namespace actions {
namespace {

// clang-format off
constexpr OldFamily kOldFamilies[] = {
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
    &editParameterActions,
    &deleteParameterActions,
    &editFromTableActions,
    &editFromFileActions,
    &drawingParameterActions,
    &featureReportActions,
    &relationLineActions,
    &programLineActions,
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
    &familyTableActions,
    &breakUpActions,
    &materialActions,
    &replaceMaterialActions,
    &editMaterialActions,
    &informationSheetActions,
};
constexpr Family kFamilies[] = {
    &layerActions,
    &layerStateActions,
    &layerTemplateActions,
    &parameterActions,
    &annotationActions,
    &appearanceActions,
    &combinedStateActions,
    &componentActions,
    &crossSectionActions,
    &editSimplifiedRepActions,
    &explodeStateActions,
    &featureActions,
    &modelCheckActions,
    &modelFileActions,
    &regenerationActions,
    &replaceModelActions,
    &saveActions,
    &simplifiedRepActions,
    &solidSettingActions,
    &viewActions,
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
};
// clang-format on

}  // namespace

std::span<const OldFamily> oldFamilies() { return kOldFamilies; }
std::span<const Family> allFamilies() { return kFamilies; }

}  // namespace actions
