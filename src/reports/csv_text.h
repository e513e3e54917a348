// The bytes of a report: values, lines, and the header line at the top of the file.
#pragma once

#include <string>
#include <string_view>

#include "reports/csv_data.h"

namespace reports {

// A text in the report's charset. Latin-1 replaces what it lacks by "?".
std::string encodedText(const CsvForm& form, std::wstring_view text);
// The delimiter unless the line begins, and the value in quotes.
void appendValue(CsvReport& report, std::wstring_view value);
void appendLineEnd(CsvReport& report);
// Hands the pending bytes to the stream, behind the line end that the file lacks. A failure has its line and closes the
// stream.
void writePending(CsvReport& report);

// How a report's file begins and ends.
struct FileEnds {
  bool isEmpty = true;        // it isn't there, can't be read, or holds a byte-order mark alone
  bool lacksLineEnd = false;  // the last line is still open
  std::string firstLine;      // without a mark and its end
  std::size_t topSize = 0;    // bytes of the first line, with both
};
FileEnds fileEnds(const CsvReport& report);

// Replaces the first line of a closed report by one that names all columns, if it says something else. An empty or
// unreadable file stays as it is.
void replaceHeaderLine(const CsvReport& report);
// At opening, with the columns that are known by then: tells that the line is replaced and leaves that to the closing,
// which mostly finds it right. So a run that breaks off leaves the file as it was.
void leaveHeaderLine(CsvReport& report, const FileEnds& ends);

}  // namespace reports
