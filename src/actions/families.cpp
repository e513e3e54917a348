// The families that make up the table of actions; their order doesn't matter.
#include "actions/families.h"

namespace actions {
namespace {

// clang-format off
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
    &saveActions,
    &parameterActions,
    &editParameterActions,
    &deleteParameterActions,
    &editFromTableActions,
    &editFromFileActions,
    &drawingParameterActions,
    &featureReportActions,
    &relationLineActions,
    &programLineActions,
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
    &familyTableActions,
    &breakUpActions,
    &layerActions,
    &layerStateActions,
    &layerTemplateActions,
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
    &pictureExportActions,
    &informationSheetActions,
};
// clang-format on

}  // namespace

std::span<const Family> allFamilies() { return kFamilies; }

}  // namespace actions
