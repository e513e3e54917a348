// What the columns of the model report are read from.
#pragma once

#include <span>

#include "creo/ProMdl.h"
#include "engine/task.h"
#include "reports/report_row.h"

namespace reports {

struct ModelFacts {
  const engine::Task& task;
  creo::ProMdl model;
  creo::Got<creo::ProMdlData> data;
};
using ModelColumn = ReportColumn<ModelFacts>;

// Columns of parts, assemblies and manufacturing models, features among them.
std::span<const ModelColumn> solidColumns();  // solid_columns.cpp
// Values of their features and components.
std::wstring featureNamesAndTypes(const ModelFacts& facts);  // feature_columns.cpp
std::wstring featureCount(const ModelFacts& facts);
std::wstring flexibleComponents(const ModelFacts& facts);
std::wstring patterns(const ModelFacts& facts);

}  // namespace reports
