// Each family of actions contributes the functions of its keys; the table of keys in engine/dispatch.h has their order.
#pragma once

#include <span>
#include <string_view>

#include "engine/dispatch.h"

namespace actions {

struct ActionFunction {
  std::wstring_view key;
  engine::Outcome (*function)(const engine::Task& task);
};

using Family = std::span<const ActionFunction> (*)();
// The families below.
std::span<const Family> allFamilies();

// clang-format off
std::span<const ActionFunction> creoLogActions();  // environment/creo_log.cpp
std::span<const ActionFunction> workingFolderActions();  // environment/working_folder.cpp
std::span<const ActionFunction> userVariableActions();  // environment/user_variables.cpp
std::span<const ActionFunction> boundingBoxActions();  // environment/bounding_box.cpp
std::span<const ActionFunction> groupActionsFamily();  // environment/groups.cpp
std::span<const ActionFunction> saveActions();  // model/save.cpp
std::span<const ActionFunction> parameterActions();  // model/parameters.cpp
std::span<const ActionFunction> editParameterActions();  // model/edit_parameters.cpp
std::span<const ActionFunction> deleteParameterActions();  // model/delete_parameters.cpp
std::span<const ActionFunction> openReportActions();  // reports/open_report.cpp
std::span<const ActionFunction> geometryReportActions();  // reports/geometry_report.cpp
// clang-format on

}  // namespace actions
