// The file beside a report that remembers its columns: "KEY|||||TITLE", a line each, in column order.
#pragma once

#include <string>
#include <string_view>

#include "creo/ProTypes.h"
#include "reports/csv_data.h"

namespace reports {

std::wstring sideFilePath(const CsvReport& report);
// Brings the file up to the report's columns. One that can't be written is left: the columns are in memory.
void writeSideFile(CsvReport& report);
// Hands over the columns that the file remembers, in their order. False: there is no such file. A line without a
// separator is passed over with a warning.
bool readSideFile(CsvReport& report, creo::FunctionRef<void(std::wstring_view key, std::wstring_view title)> take);

}  // namespace reports
