// The pattern of the report actions: the report that a task names, and a column with its value for each attribute that
// switches one on.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "actions/task.h"
#include "reports/csv_report.h"
#include "reports/report_attributes.h"

namespace reports {

// "B12" of the section and the action that runs. Column keys begin with it, so that two actions of a list never share a
// column and an action meets its own again on the next model.
std::wstring actionTag();

// The row of the task's model in the report that its attribute `reporter` names.
class ReportRow {
 public:
  // Nothing, with a line, where no such report is open.
  static std::optional<ReportRow> of(const actions::Task& task);

  // Adds the column with the key of action and suffix; a column is there also where its value can't be had.
  void column(std::wstring_view suffix, std::wstring_view title) const;
  // Its value; an empty one isn't set, and the field stays empty.
  void value(std::wstring_view suffix, std::wstring_view value) const;

 private:
  explicit ReportRow(CsvReport& report) : report_(&report), tag_(actionTag()) {}
  CsvReport* report_;
  std::wstring tag_;
};

// A column that an attribute switches on; its key ends with the attribute's name. Source: what its values are read
// from.
template <class Source>
struct ReportColumn {
  std::wstring_view attribute, title;
  std::wstring (*value)(const Source& source);  // empty: it can't be had
  std::string_view about;                       // for people
};

// The columns whose attributes are "true", in their order. A value is read only for them, once its column is there.
template <class Source>
void reportColumns(const ReportRow& row, const actions::Task& task, std::span<const ReportColumn<Source>> columns,
                   const Source& source) {
  for (const ReportColumn<Source>& column : columns) {
    if (!task.isTrue(column.attribute)) continue;
    row.column(column.attribute, column.title);
    row.value(column.attribute, column.value(source));
  }
}

// "true" or "false"; empty where it can't be had.
std::wstring truth(const creo::Got<bool>& value);

// How many a visit met; empty where it failed.
std::wstring countOf(creo::ProError visited, int count);

// Several entries of one field are lines of it.
void appendLine(std::wstring& field, std::wstring_view entry);

}  // namespace reports
