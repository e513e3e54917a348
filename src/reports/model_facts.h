// What the columns of the model report are read from.
#pragma once

#include <string>

#include "actions/task.h"
#include "creo/ProMdl.h"
#include "reports/report_row.h"

namespace reports {

struct ModelFacts {
  const actions::Task& task;
  creo::ProMdl model;
  creo::Got<creo::ProMdlData> data;
};
using ModelColumn = ReportColumn<ModelFacts>;

// Values of parts, assemblies and manufacturing models; of a solid as a whole.
std::wstring accuracy(const ModelFacts& facts);  // solid_columns.cpp
std::wstring tolerance(const ModelFacts& facts);
std::wstring unitSystem(const ModelFacts& facts);
std::wstring crossSections(const ModelFacts& facts);
std::wstring generic(const ModelFacts& facts);
std::wstring simplifiedReps(const ModelFacts& facts);
std::wstring regenerationFeedback(const ModelFacts& facts);
// Of its features and components.
std::wstring featureNamesAndTypes(const ModelFacts& facts);  // feature_columns.cpp
std::wstring featureCount(const ModelFacts& facts);
std::wstring flexibleComponents(const ModelFacts& facts);
std::wstring patterns(const ModelFacts& facts);

}  // namespace reports
