// Tabular reports. A report collects rows of values by column key and writes them when it is closed, so that a column
// can appear after many rows; the column side file remembers its columns between runs.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "creo/ProTypes.h"
#include "reports/csv_data.h"

namespace reports {

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
