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
    &saveActions,
    &editParameterActions,
    &deleteParameterActions,
    &editFromTableActions,
    &editFromFileActions,
    &drawingParameterActions,
    &relationLineActions,
    &programLineActions,
    &solidSettingActions,
    &regenerationActions,
    &familyTableActions,
    &breakUpActions,
    &materialActions,
    &replaceMaterialActions,
    &editMaterialActions,
    &symbolActions,
    &noteActions,
    &noteTableActions,
    &drawingModelActions,
    &combinedStateActions,
    &explodeStateActions,
    &simplifiedRepActions,
    &editSimplifiedRepActions,
    &crossSectionActions,
    &codeActions,
    &drawingTableActions,
    &replaceFormatActions,
    &viewerExportActions,
    &drawingExportActions,
    &pdfExportActions,
    &featureActions,
    &componentActions,
    &modelFileActions,
    &replaceModelActions,
    &pictureExportActions,
    &viewActions,
    &annotationActions,
    &appearanceActions,
    &modelCheckActions,
    &sheetScaleActions,
    &exchangeExportActions,
    &dotMatrixActions,
};
constexpr Family kFamilies[] = {
    &layerActions,
    &layerStateActions,
    &layerTemplateActions,
    &parameterActions,
    &featureReportActions,
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
    &informationSheetActions,
};
// clang-format on

}  // namespace

std::span<const OldFamily> oldFamilies() { return kOldFamilies; }
std::span<const Family> allFamilies() { return kFamilies; }

}  // namespace actions
