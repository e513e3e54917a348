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

using OldFamily = std::span<const ActionFunction> (*)();
std::span<const OldFamily> oldFamilies();
using Family = std::span<const engine::Action> (*)();
// The families below.
std::span<const Family> allFamilies();

// clang-format off
std::span<const ActionFunction> creoLogActions();  // environment/creo_log.cpp
std::span<const ActionFunction> workingFolderActions();  // environment/working_folder.cpp
std::span<const ActionFunction> configOptionActions();  // environment/config_options.cpp
std::span<const ActionFunction> macroActions();  // environment/mapkeys.cpp
std::span<const ActionFunction> trailFileActions();  // environment/trail_file.cpp
std::span<const ActionFunction> programActions();  // environment/programs.cpp
std::span<const ActionFunction> sessionActions();  // environment/session.cpp
std::span<const ActionFunction> detailOptionActions();  // environment/detail_options.cpp
std::span<const ActionFunction> insertPositionActions();  // environment/insert_position.cpp
std::span<const ActionFunction> userVariableActions();  // environment/user_variables.cpp
std::span<const ActionFunction> boundingBoxActions();  // environment/bounding_box.cpp
std::span<const ActionFunction> pdmActions();  // environment/pdm.cpp
std::span<const ActionFunction> questionActions();  // environment/question.cpp
std::span<const ActionFunction> webRequestActions();  // environment/web_request.cpp
std::span<const ActionFunction> groupActionsFamily();  // environment/groups.cpp
std::span<const ActionFunction> saveActions();  // model/save.cpp
std::span<const engine::Action> parameterActions();  // model/parameters.cpp
std::span<const ActionFunction> editParameterActions();  // model/edit_parameters.cpp
std::span<const ActionFunction> deleteParameterActions();  // model/delete_parameters.cpp
std::span<const ActionFunction> editFromTableActions();  // model/edit_from_table.cpp
std::span<const ActionFunction> editFromFileActions();  // model/edit_from_file.cpp
std::span<const ActionFunction> drawingParameterActions();  // model/drawing_parameters.cpp
std::span<const engine::Action> featureReportActions();  // model/report_features.cpp
std::span<const ActionFunction> relationLineActions();  // model/relation_lines.cpp
std::span<const ActionFunction> programLineActions();  // model/program_lines.cpp
std::span<const ActionFunction> solidSettingActions();  // model/solid_settings.cpp
std::span<const ActionFunction> regenerationActions();  // model/regeneration.cpp
std::span<const engine::Action> openReportActions();  // reports/open_report.cpp
std::span<const engine::Action> reportTablecellActions();  // reports/report_tablecell.cpp
std::span<const engine::Action> modelDataReportActions();  // reports/report_model_data.cpp
std::span<const engine::Action> universalReportActions();  // reports/report_universal.cpp
std::span<const engine::Action> familyTableReportActions();  // reports/report_family_table.cpp
std::span<const engine::Action> parameterReportActions();  // reports/report_parameters.cpp
std::span<const engine::Action> materialReportActions();  // reports/report_materials.cpp
std::span<const engine::Action> layerReportActions();  // reports/report_layer.cpp
std::span<const engine::Action> dependencyReportActions();  // reports/report_dependencies.cpp
std::span<const engine::Action> relationReportActions();  // reports/report_relations.cpp
std::span<const engine::Action> listReportActions();  // reports/list_report.cpp
std::span<const engine::Action> drawingReportActions();  // reports/drawing_data.cpp
std::span<const engine::Action> geometryReportActions();  // reports/geometry_report.cpp
std::span<const ActionFunction> familyTableActions();  // model/family_tables.cpp
std::span<const ActionFunction> breakUpActions();  // model/break_up.cpp
std::span<const engine::Action> layerActions();  // model/layers.cpp
std::span<const engine::Action> layerStateActions();  // model/layer_states.cpp
std::span<const engine::Action> layerTemplateActions();  // model/layer_template.cpp
std::span<const ActionFunction> materialActions();  // model/add_material.cpp
std::span<const ActionFunction> replaceMaterialActions();  // model/replace_material.cpp
std::span<const ActionFunction> editMaterialActions();  // model/edit_material.cpp
std::span<const ActionFunction> symbolActions();  // drawing/symbols.cpp
std::span<const ActionFunction> noteActions();  // drawing/notes.cpp
std::span<const ActionFunction> noteTableActions();  // drawing/notes_from_file.cpp
std::span<const ActionFunction> drawingModelActions();  // drawing/drawing_model.cpp
std::span<const ActionFunction> combinedStateActions();  // model/combined_states.cpp
std::span<const ActionFunction> explodeStateActions();  // model/explode_states.cpp
std::span<const ActionFunction> simplifiedRepActions();  // model/simp_reps.cpp
std::span<const ActionFunction> editSimplifiedRepActions();  // model/edit_simp_rep.cpp
std::span<const ActionFunction> crossSectionActions();  // model/xsecs.cpp
std::span<const ActionFunction> codeActions();  // drawing/codes.cpp
std::span<const ActionFunction> drawingTableActions();  // drawing/tables.cpp
std::span<const ActionFunction> replaceFormatActions();  // drawing/replace_format.cpp
std::span<const ActionFunction> viewerExportActions();  // exports/viewer_exports.cpp
std::span<const ActionFunction> drawingExportActions();  // exports/drawing_exports.cpp
std::span<const ActionFunction> pdfExportActions();  // exports/pdf_exports.cpp
std::span<const ActionFunction> featureActions();  // model/features.cpp
std::span<const ActionFunction> componentActions();  // model/components.cpp
std::span<const ActionFunction> modelFileActions();  // model/model_files.cpp
std::span<const ActionFunction> replaceModelActions();  // model/replace_model.cpp
std::span<const ActionFunction> pictureExportActions();  // exports/pictures.cpp
std::span<const engine::Action> informationSheetActions();  // reports/sheet/information_pdf.cpp
std::span<const ActionFunction> viewActions();  // model/views.cpp
std::span<const ActionFunction> annotationActions();  // model/annotations.cpp
std::span<const ActionFunction> appearanceActions();  // model/appearance.cpp
std::span<const ActionFunction> modelCheckActions();  // model/model_check.cpp
std::span<const ActionFunction> sheetScaleActions();  // drawing/sheet_scale.cpp
std::span<const ActionFunction> exchangeExportActions();  // exports/exchange_exports.cpp
std::span<const ActionFunction> dotMatrixActions();  // model/dot_matrix.cpp
// clang-format on

}  // namespace actions
