// A report as it is kept in memory.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "os/files.h"

namespace reports {

constexpr std::wstring_view kFileNameColumn = L"File name";

// A value of a row: the number of its key, and the text.
struct Cell {
  std::uint32_t key = 0;
  std::wstring value;
};
struct Row {
  std::vector<Cell> cells;   // keys ascending, each once
  std::uint32_t source = 0;  // in the report's sources: what was worked when the first cell came
};

// How the text is formed.
struct CsvForm {
  bool charsetUtf = false;     // UTF-8, else Latin-1
  bool semicolon = false;      // else a comma
  bool fileNameFirst = false;  // a leading "File name" value on every line
  bool changeComma = false;    // numbers are written with a comma
  bool winUnix = false;        // kept; nothing asks for it
};

struct CsvReport {
  std::wstring name;
  std::wstring path;  // empty: no file was allowed, which was told once; what is collected goes nowhere
  CsvForm form;
  bool newRowAtNewModel = false;
  bool beginsAnew = false;  // what the file held is gone
  bool overwrite = false;   // a header line is written; also where the side file is missing or the file is new
  bool openAfterCreation = false;

  std::vector<std::wstring> columnKeys, columnTitles;  // side by side, in column order
  std::vector<Row> rows;
  std::size_t currentRow = 0;
  std::vector<std::wstring> sources;  // models, as lines of the log name them
  bool namesItself = false;           // lines of the log that writing gives are about this report and its rows
  std::wstring lastModelName, lastModelType;

  std::unique_ptr<os::Appender> stream;  // null while it is closed
  std::string pending;                   // bytes on their way into the stream
  bool atLineStart = true;
  bool headerPending = true;
  bool headerIfEmpty = false;   // it is for a new file, and another report may have written it meanwhile
  bool topIsKept = false;       // opening left the header line of earlier runs in the file
  bool lacksLineEnd = false;    // as the file was found: its last line is still open
  bool sideFileIsOurs = false;  // written whole by this record: further columns are lines at its end

  // Columns of a Latin-1 side file with "?" in the key as it was written, each until an action takes it up: the key may
  // have held a letter that Latin-1 lacks.
  std::vector<std::pair<std::wstring, std::uint32_t>> maskedKeys;
  // Numbers of keys, of columns and of values alike.
  std::unordered_map<std::wstring, std::uint32_t> keyNumbers;
  std::vector<std::uint32_t> columnNumbers;  // side by side with columnKeys
  std::vector<bool> isColumn;                // by number, of which there are as many

  [[nodiscard]] bool isOpen() const { return stream != nullptr; }
};

}  // namespace reports
