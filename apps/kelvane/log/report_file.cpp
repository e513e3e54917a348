#include "kelvane/log/report_file.h"

#include <algorithm>
#include <map>

#include "kelvane/base/fault.h"
#include "kelvane/base/places.h"
#include "os/surroundings.h"
#include "text/csv.h"
#include "text/encoding.h"
#include "text/pieces.h"

namespace kelvane {
namespace {

constexpr std::string_view kMark = "\xEF\xBB\xBF";
constexpr std::wstring_view kSeparatorLine = L"sep=";
constexpr std::wstring_view kKeyEnd = L"|||||";  // between key and title in a column file

// The separator that stands most often outside quotes in a record; 0 for a record of one field.
wchar_t separatorIn(std::wstring_view record) {
  constexpr wchar_t kSeparators[] = {L',', L';', L'\t'};
  wchar_t best = 0;
  std::size_t most = 0;
  for (const wchar_t separator : kSeparators) {
    std::size_t fields = 0;
    text::eachCsvField(record, separator, [&](std::wstring_view) { ++fields; });
    if (fields - 1 > most) {
      most = fields - 1;
      best = separator;
    }
  }
  return best;
}

std::vector<std::wstring> fieldsOf(std::wstring_view record, wchar_t separator) {
  std::vector<std::wstring> fields;
  text::eachCsvField(record, separator,
                     [&](std::wstring_view field) { text::appendCsvValue(fields.emplace_back(), field); });
  return fields;
}

std::string lineOf(std::size_t line, const std::string& fault) { return ":" + std::to_string(line) + ": " + fault; }

// The content in UTF-8, or in Latin-1; its mark goes. Lines that end in CR alone, as old programs write them, get a LF.
std::string takeEncoding(ReportFile& report, std::string_view bytes) {
  std::string content;
  if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) {
    report.encoding = "UTF-16";
    content = text::toUtf8(text::fromTextFile(bytes));
  } else {
    const bool hasMark = bytes.starts_with(kMark);
    if (hasMark) bytes.remove_prefix(kMark.size());
    report.encoding = hasMark ? "UTF-8 with mark" : text::isUtf8(bytes) ? "UTF-8" : "Latin-1";
    content = bytes;
  }
  if (content.find('\n') == content.npos) std::replace(content.begin(), content.end(), '\r', '\n');
  return content;
}

// The records as texts. The separator is what a first line "sep=;" says, else it is told by the first record that has
// several fields.
void readRecords(ReportFile& report, std::string_view bytes, const std::string& path) {
  const std::string content = takeEncoding(report, bytes);
  const bool isUtf8 = report.encoding != "Latin-1";
  std::vector<std::wstring> records;
  text::CsvRecords reader(content);
  for (std::string_view record; reader.next(record);) {
    if (reader.isUnclosed())
      report.faults.push_back(path + lineOf(reader.firstLine(), "a quote is never closed; it takes in the rest"));
    records.push_back(isUtf8 ? text::fromUtf8(record) : text::fromLatin1(record));
  }
  wchar_t separator = 0;
  if (!records.empty() && records.front().size() == kSeparatorLine.size() + 1 &&
      records.front().starts_with(kSeparatorLine)) {
    separator = records.front().back();
    records.erase(records.begin());
  }
  for (std::size_t i = 0; separator == 0 && i < records.size(); ++i) separator = separatorIn(records[i]);
  if (separator != 0) report.separator = separator;
  for (const std::wstring& record : records) report.rows.push_back(fieldsOf(record, report.separator));
}

void takeHeader(ReportFile& report, const std::string& path) {
  if (report.rows.empty()) return;
  for (std::wstring& title : report.rows.front()) report.columns.push_back({std::move(title), {}});
  report.rows.erase(report.rows.begin());
  const auto isLonger = [&](const auto& row) { return row.size() > report.columns.size(); };
  const auto longer = std::count_if(report.rows.begin(), report.rows.end(), isLonger);
  if (longer > 0) report.faults.push_back(path + ": rows with more fields than the header: " + std::to_string(longer));
}

struct NumberedColumn {
  std::size_t line;
  ReportFileColumn column;
};
std::vector<NumberedColumn> columnLines(ReportFile& report, std::string_view bytes, const std::string& path) {
  const std::wstring content = text::isUtf8(bytes) ? text::fromUtf8(bytes) : text::fromLatin1(bytes);
  std::vector<NumberedColumn> result;
  std::size_t number = 0;
  for (const std::wstring& line : text::lines(content)) {
    ++number;
    const std::size_t at = line.find(kKeyEnd);
    if (at == line.npos) {
      report.faults.push_back(path + lineOf(number, "no '|||||' between key and title"));
    } else {
      result.push_back({number, {line.substr(at + kKeyEnd.size()), line.substr(0, at)}});
    }
  }
  return result;
}

// Titles find their columns from left to right: several columns may have one title. Where the header has a title more
// often than the column file, the first ones are without a key, as the leading "File name" that a report may be opened
// with.
void takeColumnFile(ReportFile& report, std::string_view bytes, const std::string& path) {
  std::map<std::wstring, std::vector<std::size_t>> places;  // of a title, from right to left
  for (std::size_t i = report.columns.size(); i-- > 0;) places[report.columns[i].title].push_back(i);
  std::vector<NumberedColumn> lines = columnLines(report, bytes, path);
  std::map<std::wstring, std::size_t> known;
  for (const NumberedColumn& line : lines) ++known[line.column.title];
  for (auto& [title, free] : places)
    if (free.size() > known[title]) free.resize(known[title]);
  for (auto& [number, column] : lines) {
    auto& free = places[column.title];
    if (!free.empty()) {
      report.columns[free.back()].key = column.key;
      free.pop_back();
      continue;
    }
    report.faults.push_back(path + lineOf(number, "column '" + text::toUtf8(column.title) + "' isn't in the header"));
    column.inHeader = false;
    report.columns.push_back(std::move(column));
  }
}

}  // namespace

ReportFile readReportFile(const std::string& path) {
  const std::wstring system = systemPath(path);
  const auto read = os::files().read(system);
  if (!read) throw Fault(path + " can't be read: " + read.error.message());
  ReportFile report;
  readRecords(report, read.value, path);
  takeHeader(report, path);
  const auto columns = os::files().read(system + L"header");
  report.hasColumnFile = static_cast<bool>(columns);
  if (columns) takeColumnFile(report, columns.value, path + "header");
  return report;
}

}  // namespace kelvane
