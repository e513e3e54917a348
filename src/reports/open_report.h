// Opening a report: by the action that names one, and by the list report.
#pragma once

#include "engine/task.h"
#include "reports/csv_report.h"

namespace reports {

// What the attributes of the two differ in.
struct OpeningAttributes {
  std::wstring_view changeComma;  // the attribute that asks for it
  bool hasFileNameFirst = false;  // is there one that asks for a leading "File name"?
};

// Reads path and form from the task, opens the file once to test it, and takes up the columns of earlier runs. False,
// with one error line: there is no file, or it mayn't be written; what is then collected goes nowhere, silently.
bool openReport(CsvReport& report, const engine::Task& task, const OpeningAttributes& attributes);

}  // namespace reports
