// Tabular reports. A report collects rows of values by column key and writes them when it is closed, so that a column
// can appear after many rows; the column side file remembers its columns between runs.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "creo/ProTypes.h"
#include "os/files.h"

namespace reports {

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

// The open reports of a run.
class ReportRegistry {
 public:
  // Also where a report of that name is open: lookups reach the new one.
  CsvReport& add(std::wstring_view name);
  // The last one of that name, or null.
  [[nodiscard]] CsvReport* find(std::wstring_view name) const;
  [[nodiscard]] const std::vector<std::unique_ptr<CsvReport>>& all() const { return reports_; }
  void clear() { reports_.clear(); }

 private:
  std::vector<std::unique_ptr<CsvReport>> reports_;
};
// That of the plug-in's state; made at the first call.
ReportRegistry& reportRegistry();

constexpr std::wstring_view kFileNameColumn = L"File name";

// The report of that name, with the model's row begun and its "File name" set where the report has that. Null, with a
// line, where none is open. A null model leaves the row alone.
CsvReport* reportForModel(std::wstring_view name, creo::ProMdl model);
// A key that is there keeps its title and place; so does one that an earlier run wrote in Latin-1, which may lack a
// letter of it. A new one is put into the side file, unless it comes from there.
enum class ColumnSource { action, sideFile };
void reportAddColumn(CsvReport& report, std::wstring_view key, std::wstring_view title,
                     ColumnSource source = ColumnSource::action);
// A value of the current row; an earlier one of that key is replaced. Values without a column aren't written.
void reportSetValue(CsvReport& report, std::wstring_view key, std::wstring_view value);
// Goes on to a new row unless the last one is still empty.
void reportNextRow(CsvReport& report);

// Opens the stream at the file's end. False, with a line: it can't be.
bool reportOpenStream(CsvReport& report);
// Writes what is collected and forgets it; the stream stays open.
void reportFlush(CsvReport& report);
// Writes what is collected, closes the file and brings its header line up to date. Where it can't be opened the rows
// stay in memory.
void reportClose(CsvReport& report);

void reportsNextRowAll(const ReportRegistry& registry);
// Closes all in their order and empties the registry. Lines of the log that come of it name the report in the place of
// the action, and its row with the model that gave it, or its file.
void reportsCloseAll(ReportRegistry& registry);

}  // namespace reports
