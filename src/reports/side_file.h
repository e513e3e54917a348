// The file beside a report that remembers its columns: "KEY|||||TITLE", a line each, in column order.
#pragma once

#include "reports/csv_report.h"

namespace reports {

std::wstring sideFilePath(const CsvReport& report);
// Brings the file up to the report's columns. One that can't be written is left: the columns are in memory.
void writeSideFile(CsvReport& report);
// Adds the columns that the file remembers. False: there is no such file. A line without a separator is passed over
// with a warning.
bool readSideFile(CsvReport& report);

}  // namespace reports
