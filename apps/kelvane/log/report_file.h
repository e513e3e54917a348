// A report as a person finds it on disk, with what its column file remembers.
#pragma once

#include <string>
#include <vector>

namespace kelvane {

// A column of the report. Titles come from the header line, keys from the column file.
struct ReportFileColumn {
  std::wstring title, key;  // an empty key: the column file doesn't know it
  bool inHeader = true;
};

struct ReportFile {
  std::string encoding;  // "UTF-8", "UTF-8 with mark", "UTF-16", "Latin-1"
  wchar_t separator = L',';
  std::vector<ReportFileColumn> columns;        // those of the header line first, in its order
  std::vector<std::vector<std::wstring>> rows;  // a row may have fewer or more fields than there are columns
  bool hasColumnFile = false;
  std::vector<std::string> faults;  // what is wrong with report or column file, a line each
};

// Recognises encoding and separator. A Fault when the file can't be read.
ReportFile readReportFile(const std::string& path);

}  // namespace kelvane
