// The bytes of a report: values, lines, and the header line at the top of the file.
#pragma once

#include <string>
#include <string_view>

#include "reports/csv_report.h"

namespace reports {

// A text in the report's charset. Latin-1 replaces what it lacks by "?".
std::string encodedText(const CsvForm& form, std::wstring_view text);
// The delimiter unless the line begins, and the value in quotes.
void appendValue(CsvReport& report, std::wstring_view value);
void appendLineEnd(CsvReport& report);
// Hands the pending bytes to the stream. A failure has its line and closes the stream.
void writePending(CsvReport& report);

// Replaces the first line of a closed report by one that names all columns, if it says something else. An empty or
// unreadable file stays as it is.
void replaceHeaderLine(const CsvReport& report);

}  // namespace reports
