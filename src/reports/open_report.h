// Opening a report: by the action that names one, and by the list report.
#pragma once

#include "engine/task.h"
#include "reports/csv_report.h"

namespace reports {

// Reads path and form from the task, opens the file once to test it, and takes up the columns of earlier runs.
// changeComma: the attribute that asks for it.
void openReport(CsvReport& report, const engine::Task& task, std::wstring_view changeComma);

}  // namespace reports
