// Each family of actions contributes the rows of its keys.
#pragma once

#include <span>

#include "actions/action.h"

namespace actions {

using Family = std::span<const actions::Action> (*)();
// The families below.
std::span<const Family> allFamilies();

// clang-format off
std::span<const actions::Action> creoLogActions();  // environment/creo_log.cpp
std::span<const actions::Action> workingFolderActions();  // environment/working_folder.cpp
std::span<const actions::Action> configOptionActions();  // environment/config_options.cpp
std::span<const actions::Action> macroActions();  // environment/mapkeys.cpp
std::span<const actions::Action> trailFileActions();  // environment/trail_file.cpp
std::span<const actions::Action> programActions();  // environment/programs.cpp
std::span<const actions::Action> sessionActions();  // environment/session.cpp
std::span<const actions::Action> detailOptionActions();  // environment/detail_options.cpp
std::span<const actions::Action> insertPositionActions();  // environment/insert_position.cpp
std::span<const actions::Action> userVariableActions();  // environment/user_variables.cpp
std::span<const actions::Action> boundingBoxActions();  // environment/bounding_box.cpp
std::span<const actions::Action> pdmActions();  // environment/pdm.cpp
std::span<const actions::Action> questionActions();  // environment/question.cpp
std::span<const actions::Action> webRequestActions();  // environment/web_request.cpp
std::span<const actions::Action> groupActionsFamily();  // environment/groups.cpp
std::span<const actions::Action> saveActions();  // model/save.cpp
std::span<const actions::Action> parameterActions();  // model/parameters.cpp
std::span<const actions::Action> editParameterActions();  // model/edit_parameters.cpp
std::span<const actions::Action> deleteParameterActions();  // model/delete_parameters.cpp
std::span<const actions::Action> editFromTableActions();  // model/edit_from_table.cpp
std::span<const actions::Action> editFromFileActions();  // model/edit_from_file.cpp
std::span<const actions::Action> drawingParameterActions();  // model/drawing_parameters.cpp
std::span<const actions::Action> featureReportActions();  // model/report_features.cpp
std::span<const actions::Action> relationLineActions();  // model/relation_lines.cpp
std::span<const actions::Action> programLineActions();  // model/program_lines.cpp
std::span<const actions::Action> solidSettingActions();  // model/solid_settings.cpp
std::span<const actions::Action> regenerationActions();  // model/regeneration.cpp
std::span<const actions::Action> openReportActions();  // reports/open_report.cpp
std::span<const actions::Action> reportTablecellActions();  // reports/report_tablecell.cpp
std::span<const actions::Action> modelDataReportActions();  // reports/report_model_data.cpp
std::span<const actions::Action> universalReportActions();  // reports/report_universal.cpp
std::span<const actions::Action> familyTableReportActions();  // reports/report_family_table.cpp
std::span<const actions::Action> parameterReportActions();  // reports/report_parameters.cpp
std::span<const actions::Action> materialReportActions();  // reports/report_materials.cpp
std::span<const actions::Action> layerReportActions();  // reports/report_layer.cpp
std::span<const actions::Action> dependencyReportActions();  // reports/report_dependencies.cpp
std::span<const actions::Action> relationReportActions();  // reports/report_relations.cpp
std::span<const actions::Action> listReportActions();  // reports/list_report.cpp
std::span<const actions::Action> drawingReportActions();  // reports/drawing_data.cpp
std::span<const actions::Action> geometryReportActions();  // reports/geometry_report.cpp
std::span<const actions::Action> familyTableActions();  // model/family_tables.cpp
std::span<const actions::Action> breakUpActions();  // model/break_up.cpp
std::span<const actions::Action> layerActions();  // model/layers.cpp
std::span<const actions::Action> layerStateActions();  // model/layer_states.cpp
std::span<const actions::Action> layerTemplateActions();  // model/layer_template.cpp
std::span<const actions::Action> materialActions();  // model/add_material.cpp
std::span<const actions::Action> replaceMaterialActions();  // model/replace_material.cpp
std::span<const actions::Action> editMaterialActions();  // model/edit_material.cpp
std::span<const actions::Action> symbolActions();  // drawing/symbols.cpp
std::span<const actions::Action> noteActions();  // drawing/notes.cpp
std::span<const actions::Action> noteTableActions();  // drawing/notes_from_file.cpp
std::span<const actions::Action> drawingModelActions();  // drawing/drawing_model.cpp
std::span<const actions::Action> combinedStateActions();  // model/combined_states.cpp
std::span<const actions::Action> explodeStateActions();  // model/explode_states.cpp
std::span<const actions::Action> simplifiedRepActions();  // model/simp_reps.cpp
std::span<const actions::Action> editSimplifiedRepActions();  // model/edit_simp_rep.cpp
std::span<const actions::Action> crossSectionActions();  // model/xsecs.cpp
std::span<const actions::Action> codeActions();  // drawing/codes.cpp
std::span<const actions::Action> drawingTableActions();  // drawing/tables.cpp
std::span<const actions::Action> replaceFormatActions();  // drawing/replace_format.cpp
std::span<const actions::Action> viewerExportActions();  // exports/viewer_exports.cpp
std::span<const actions::Action> drawingExportActions();  // exports/drawing_exports.cpp
std::span<const actions::Action> pdfExportActions();  // exports/pdf_exports.cpp
std::span<const actions::Action> featureActions();  // model/features.cpp
std::span<const actions::Action> componentActions();  // model/components.cpp
std::span<const actions::Action> modelFileActions();  // model/model_files.cpp
std::span<const actions::Action> replaceModelActions();  // model/replace_model.cpp
std::span<const actions::Action> pictureExportActions();  // exports/pictures.cpp
std::span<const actions::Action> informationSheetActions();  // reports/sheet/information_pdf.cpp
std::span<const actions::Action> viewActions();  // model/views.cpp
std::span<const actions::Action> annotationActions();  // model/annotations.cpp
std::span<const actions::Action> appearanceActions();  // model/appearance.cpp
std::span<const actions::Action> modelCheckActions();  // model/model_check.cpp
std::span<const actions::Action> sheetScaleActions();  // drawing/sheet_scale.cpp
std::span<const actions::Action> exchangeExportActions();  // exports/exchange_exports.cpp
std::span<const actions::Action> dotMatrixActions();  // model/dot_matrix.cpp
std::span<const actions::Action> actionsWithoutEffect();  // environment/without_effect.cpp
// clang-format on

}  // namespace actions
