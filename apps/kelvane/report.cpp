// kelvane report: a report as an aligned table.
#include <algorithm>
#include <nlohmann/json.hpp>

#include "kelvane/base/columns.h"
#include "kelvane/base/display_width.h"
#include "kelvane/base/escapes.h"
#include "kelvane/base/verb.h"
#include "kelvane/base/words.h"
#include "kelvane/log/report_file.h"
#include "text/code_points.h"
#include "text/encoding.h"
#include "text/pieces.h"

namespace kelvane {
namespace {

using Json = nlohmann::ordered_json;
using Lines = std::vector<std::wstring>;

// The lines of a field. What a terminal would take as a command is an escape, what else has no form a sign.
Lines shownLines(std::wstring_view field) {
  Lines lines = text::lines(field);
  if (lines.empty()) lines.emplace_back();
  for (std::wstring& line : lines) {
    std::replace(line.begin(), line.end(), L'\t', L' ');
    line = text::fromUtf8(withEscapes(text::toUtf8(line)));
    line = text::keptCharacters(
        std::wstring_view(line), [](char32_t c) { return text::isPrintable(c); }, std::wstring_view(L"\uFFFD"));
  }
  return lines;
}

std::string separatorWord(wchar_t separator) {
  return separator == L'\t' ? "tab" : "\"" + text::toUtf8(std::wstring(1, separator)) + "\"";
}

class Report : public Verb {
 public:
  std::vector<OptionRow> options() override {
    return {{"file", "FILE.csv", "a report; its column file FILE.csvheader is read where it is there", &file_},
            {"--columns", "", "the columns with their keys, in place of the rows", &columns_},
            {"--json", "", "as JSON", &json_}};
  }
  // kErrors when something is wrong with the report or its column file.
  int run(Console& console) override {
    const ReportFile report = readReportFile(file_);
    if (json_) {
      console.resultJson(json(report).dump(2, ' ', false, Json::error_handler_t::replace));
    } else if (columns_) {
      showColumns(console, report);
    } else {
      showTable(console, report);
    }
    if (!json_) tell(console, report);
    for (const std::string& fault : report.faults) console.trouble("warning: " + fault);
    return report.faults.empty() ? kFine : kErrors;
  }

 private:
  void tell(Console& console, const ReportFile& report) const {
    const auto inHeader = std::count_if(report.columns.begin(), report.columns.end(),
                                        [](const ReportFileColumn& column) { return column.inHeader; });
    std::string line = file_ + ": " + counted(report.rows.size(), "row") + ", " +
                       counted(static_cast<std::size_t>(inHeader), "column") + ", " + report.encoding + ", separator " +
                       separatorWord(report.separator);
    if (!report.hasColumnFile) line += ", no column file";
    console.note(line);
  }

  static void showColumns(Console& console, const ReportFile& report) {
    std::vector<std::vector<std::string>> rows;
    for (std::size_t i = 0; i < report.columns.size(); ++i) {
      const ReportFileColumn& column = report.columns[i];
      rows.push_back({column.inHeader ? std::to_string(i + 1) : "-",
                      column.key.empty() ? "-" : text::toUtf8(shownLines(column.key).front()),
                      text::toUtf8(text::join(shownLines(column.title), L" ")),
                      column.inHeader ? "" : "not in the header"});
    }
    for (const std::string& line : aligned(rows)) console.result(line);
  }

  static void showTable(Console& console, const ReportFile& report) {
    std::vector<Lines> header;
    for (const ReportFileColumn& column : report.columns)
      if (column.inHeader) header.push_back(shownLines(column.title));
    std::vector<std::size_t> widths;
    widen(widths, header);
    for (const auto& row : report.rows) widen(widths, cellsOf(row));
    if (widths.empty()) return;
    showRow(console, header, widths, Ink::bold);
    std::vector<Lines> rule;
    rule.reserve(widths.size());
    for (const std::size_t width : widths) rule.push_back({std::wstring(std::max<std::size_t>(width, 1), L'-')});
    showRow(console, rule, widths, Ink::dim);
    for (const auto& row : report.rows) showRow(console, cellsOf(row), widths, Ink::plain);
  }

  static std::vector<Lines> cellsOf(const std::vector<std::wstring>& row) {
    std::vector<Lines> cells;
    cells.reserve(row.size());
    for (const std::wstring& field : row) cells.push_back(shownLines(field));
    return cells;
  }
  static void widen(std::vector<std::size_t>& widths, const std::vector<Lines>& cells) {
    widths.resize(std::max(widths.size(), cells.size()));
    for (std::size_t i = 0; i < cells.size(); ++i)
      for (const std::wstring& line : cells[i]) widths[i] = std::max(widths[i], displayWidth(line));
  }

  // As many lines as the cell with the most of them has.
  static void showRow(Console& console, const std::vector<Lines>& cells, const std::vector<std::size_t>& widths,
                      Ink ink) {
    std::size_t height = 0;
    for (const Lines& cell : cells) height = std::max(height, cell.size());
    for (std::size_t at = 0; at < height; ++at) {
      std::string line;
      for (std::size_t i = 0; i < cells.size(); ++i) {
        const std::wstring_view piece = at < cells[i].size() ? std::wstring_view(cells[i][at]) : std::wstring_view();
        line += text::toUtf8(piece) + std::string(widths[i] - displayWidth(piece) + 2, ' ');
      }
      line.erase(line.find_last_not_of(' ') + 1);
      console.result(console.inked(ink, line));
    }
  }

  Json json(const ReportFile& report) const {
    Json columns = Json::array(), rows = Json::array();
    for (const ReportFileColumn& column : report.columns) {
      Json entry = {{"title", text::toUtf8(column.title)}};
      if (!column.key.empty()) entry["key"] = text::toUtf8(column.key);
      if (!column.inHeader) entry["inHeader"] = false;
      columns.push_back(std::move(entry));
    }
    for (const auto& row : report.rows) {
      Json fields = Json::array();
      for (const std::wstring& field : row) fields.push_back(text::toUtf8(field));
      rows.push_back(std::move(fields));
    }
    return {{"file", file_},
            {"encoding", report.encoding},
            {"separator", text::toUtf8(std::wstring(1, report.separator))},
            {"columns", std::move(columns)},
            {"rows", std::move(rows)},
            {"faults", report.faults}};
  }

  std::string file_;
  bool columns_ = false, json_ = false;
};

}  // namespace

std::unique_ptr<Verb> makeReport() { return std::make_unique<Report>(); }

}  // namespace kelvane
