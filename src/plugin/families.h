// Each family of actions contributes the rows of its keys.
#pragma once

#include <span>

#include "engine/action.h"

namespace actions {

using Family = std::span<const engine::Action> (*)();
// The families below.
std::span<const Family> allFamilies();

// clang-format off
std::span<const engine::Action> creoLogActions();  // environment/creo_log.cpp
std::span<const engine::Action> workingFolderActions();  // environment/working_folder.cpp
std::span<const engine::Action> configOptionActions();  // environment/config_options.cpp
std::span<const engine::Action> macroActions();  // environment/mapkeys.cpp
std::span<const engine::Action> trailFileActions();  // environment/trail_file.cpp
std::span<const engine::Action> programActions();  // environment/programs.cpp
std::span<const engine::Action> sessionActions();  // environment/session.cpp
std::span<const engine::Action> detailOptionActions();  // environment/detail_options.cpp
std::span<const engine::Action> insertPositionActions();  // environment/insert_position.cpp
std::span<const engine::Action> userVariableActions();  // environment/user_variables.cpp
std::span<const engine::Action> boundingBoxActions();  // environment/bounding_box.cpp
std::span<const engine::Action> pdmActions();  // environment/pdm.cpp
std::span<const engine::Action> questionActions();  // environment/question.cpp
std::span<const engine::Action> webRequestActions();  // environment/web_request.cpp
std::span<const engine::Action> groupActionsFamily();  // environment/groups.cpp
std::span<const engine::Action> saveActions();  // model/save.cpp
std::span<const engine::Action> parameterActions();  // model/parameters.cpp
std::span<const engine::Action> editParameterActions();  // model/edit_parameters.cpp
std::span<const engine::Action> deleteParameterActions();  // model/delete_parameters.cpp
std::span<const engine::Action> editFromTableActions();  // model/edit_from_table.cpp
std::span<const engine::Action> editFromFileActions();  // model/edit_from_file.cpp
std::span<const engine::Action> drawingParameterActions();  // model/drawing_parameters.cpp
std::span<const engine::Action> featureReportActions();  // model/report_features.cpp
std::span<const engine::Action> relationLineActions();  // model/relation_lines.cpp
std::span<const engine::Action> programLineActions();  // model/program_lines.cpp
std::span<const engine::Action> solidSettingActions();  // model/solid_settings.cpp
std::span<const engine::Action> regenerationActions();  // model/regeneration.cpp
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
std::span<const engine::Action> familyTableActions();  // model/family_tables.cpp
std::span<const engine::Action> breakUpActions();  // model/break_up.cpp
std::span<const engine::Action> layerActions();  // model/layers.cpp
std::span<const engine::Action> layerStateActions();  // model/layer_states.cpp
std::span<const engine::Action> layerTemplateActions();  // model/layer_template.cpp
std::span<const engine::Action> materialActions();  // model/add_material.cpp
std::span<const engine::Action> replaceMaterialActions();  // model/replace_material.cpp
std::span<const engine::Action> editMaterialActions();  // model/edit_material.cpp
std::span<const engine::Action> symbolActions();  // drawing/symbols.cpp
std::span<const engine::Action> noteActions();  // drawing/notes.cpp
std::span<const engine::Action> noteTableActions();  // drawing/notes_from_file.cpp
std::span<const engine::Action> drawingModelActions();  // drawing/drawing_model.cpp
std::span<const engine::Action> combinedStateActions();  // model/combined_states.cpp
std::span<const engine::Action> explodeStateActions();  // model/explode_states.cpp
std::span<const engine::Action> simplifiedRepActions();  // model/simp_reps.cpp
std::span<const engine::Action> editSimplifiedRepActions();  // model/edit_simp_rep.cpp
std::span<const engine::Action> crossSectionActions();  // model/xsecs.cpp
std::span<const engine::Action> codeActions();  // drawing/codes.cpp
std::span<const engine::Action> drawingTableActions();  // drawing/tables.cpp
std::span<const engine::Action> replaceFormatActions();  // drawing/replace_format.cpp
std::span<const engine::Action> viewerExportActions();  // exports/viewer_exports.cpp
std::span<const engine::Action> drawingExportActions();  // exports/drawing_exports.cpp
std::span<const engine::Action> pdfExportActions();  // exports/pdf_exports.cpp
std::span<const engine::Action> featureActions();  // model/features.cpp
std::span<const engine::Action> componentActions();  // model/components.cpp
std::span<const engine::Action> modelFileActions();  // model/model_files.cpp
std::span<const engine::Action> replaceModelActions();  // model/replace_model.cpp
std::span<const engine::Action> pictureExportActions();  // exports/pictures.cpp
std::span<const engine::Action> informationSheetActions();  // reports/sheet/information_pdf.cpp
std::span<const engine::Action> viewActions();  // model/views.cpp
std::span<const engine::Action> annotationActions();  // model/annotations.cpp
std::span<const engine::Action> appearanceActions();  // model/appearance.cpp
std::span<const engine::Action> modelCheckActions();  // model/model_check.cpp
std::span<const engine::Action> sheetScaleActions();  // drawing/sheet_scale.cpp
std::span<const engine::Action> exchangeExportActions();  // exports/exchange_exports.cpp
std::span<const engine::Action> dotMatrixActions();  // model/dot_matrix.cpp
std::span<const engine::Action> actionsWithoutEffect();  // environment/without_effect.cpp
// clang-format on

}  // namespace actions
