// The families that make up the table of actions; their order doesn't matter.
#include "actions/families.h"

namespace actions {
namespace {

// clang-format off
constexpr Family kFamilies[] = {
    &creoLogActions,
    &workingFolderActions,
    &userVariableActions,
    &boundingBoxActions,
    &groupActionsFamily,
    &saveActions,
    &parameterActions,
    &editParameterActions,
    &deleteParameterActions,
    &openReportActions,
    &geometryReportActions,
};
// clang-format on

}  // namespace

std::span<const Family> allFamilies() { return kFamilies; }

}  // namespace actions
