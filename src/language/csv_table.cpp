#include "language/csv_table.h"

#include <algorithm>
#include <memory>
#include <unordered_map>
#include <utility>

#include "core/log.h"
#include "core/messages.h"
#include "language/compare.h"
#include "language/pattern_kind.h"
#include "os/paths.h"
#include "os/surroundings.h"
#include "os/text_files.h"
#include "text/csv.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/letters.h"
#include "text/units.h"

namespace language {
namespace {

constexpr std::string_view kMark = "\xEF\xBB\xBF";
constexpr std::wstring_view kUtf8 = L",ccs=UTF-8";

// Semicolons, blanks, and a separator of another kind.
bool holdsNothing(std::string_view record, wchar_t separator) {
  constexpr std::string_view kNothing = "; \t\n\v\f\r";
  return std::all_of(record.begin(), record.end(), [&](char c) {
    return kNothing.find(c) != kNothing.npos || static_cast<wchar_t>(static_cast<unsigned char>(c)) == separator;
  });
}

// fields keeps its texts' room from record to record. What doesn't fit into a cell is left out: false.
bool splitFields(std::wstring_view record, wchar_t separator, std::vector<std::wstring>& fields) {
  constexpr std::size_t kMost = text::kTextSize - 1;
  std::size_t count = 0;
  bool allFit = true;
  text::eachCsvField(record, separator, [&](std::wstring_view field) {
    if (count == fields.size()) fields.emplace_back();
    std::wstring& cell = fields[count++];
    cell.clear();
    text::appendCsvValue(cell, field, kMost + 1);
    const std::size_t kept = text::cut(cell, kMost).size();
    allFit = allFit && kept == cell.size();
    cell.resize(kept);
  });
  fields.resize(count);
  return allFit;
}

// Why a file is no delimited text, by the bytes that it begins with, and what to do; empty: it may be some.
std::wstring_view faultOf(std::string_view bytes) {
  if (bytes.starts_with("PK\x03\x04")) return L"it is a workbook; its name must end in '.xlsx' or '.ods'";
  if (bytes.starts_with("\xD0\xCF\x11\xE0")) return L"it is a workbook; its name must end in '.xls'";
  return {};
}

struct Store {
  std::vector<std::unique_ptr<CsvTable>> tables;
  std::unordered_map<std::wstring, std::size_t> byFile;
};
Store& store() {
  static Store kept;
  return kept;
}

}  // namespace

std::size_t CsvTable::column(std::wstring_view title) const {
  for (std::size_t i = 0; i < columns_; ++i)
    if (text::equalNoCase(header(i), title)) return i;
  return columns_;
}

const CsvTable::ColumnIndex& CsvTable::indexOf(std::size_t column) const {
  const auto [place, isNew] = indexes_.try_emplace(column);
  ColumnIndex& index = place->second;
  for (std::size_t row = 0; isNew && row < rowCount(); ++row) {
    const std::wstring_view text = cell(row, column);
    if (kindOf(text) != PatternKind::plain)
      index.patterns.push_back(row);
    else if (text.empty())
      index.empty.push_back(row);
    else
      index.rows[std::wstring(text)].push_back(row);
  }
  return index;
}

std::vector<std::size_t> CsvTable::rowsFor(std::size_t column, std::span<const std::wstring> texts) const {
  const ColumnIndex& index = indexOf(column);
  std::vector<std::size_t> rows;
  for (const std::wstring& text : texts)
    if (const auto found = index.rows.find(text); found != index.rows.end())
      rows.insert(rows.end(), found->second.begin(), found->second.end());
  for (const std::size_t row : index.patterns)
    if (std::any_of(texts.begin(), texts.end(),
                    [&](const std::wstring& text) { return matches(cell(row, column), text); }))
      rows.push_back(row);
  std::sort(rows.begin(), rows.end());
  return rows;
}

void CsvTable::addRecord(const std::vector<std::wstring>& fields) {
  if (columns_ == 0) columns_ = fields.size();
  indexes_.clear();
  for (std::size_t i = 0; i < columns_; ++i) {
    Span span{text_.size(), 0, i < fields.size()};
    if (span.isThere) {
      span.length = static_cast<std::uint32_t>(fields[i].size());
      text_ += fields[i];
    }
    cells_.push_back(span);
  }
}

std::wstring_view CsvTable::at(std::size_t line, std::size_t column) const {
  if (column >= columns_ || line >= cells_.size() / columns_) return {};
  const Span& span = cells_[line * columns_ + column];
  return std::wstring_view(text_).substr(span.begin, span.length);
}

bool CsvTable::holds(std::size_t row, std::size_t column) const {
  return column < columns_ && row < rowCount() && cells_[(row + 1) * columns_ + column].isThere;
}

CsvTable parseCsv(std::string_view bytes, wchar_t separator, std::wstring_view encoding, std::wstring_view file) {
  std::string recoded;
  if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) {
    recoded = std::string(kMark) + text::toUtf8(text::fromTextFile(bytes));
    bytes = recoded;
  }
  const bool hasMark = bytes.starts_with(kMark);
  if (hasMark) bytes.remove_prefix(kMark.size());
  const bool isUtf8 = hasMark || encoding == kUtf8;
  CsvTable table;
  text::CsvRecords records(bytes);
  // form: with the record's line.
  const auto say = [&](std::wstring_view form, int level) {
    const std::wstring line = text::format(form, static_cast<int>(records.firstLine()));
    core::logWrite(file.empty() ? line : os::nameOf(file) + L": " + line, level);
  };
  std::vector<std::wstring> fields;
  bool toldOfBytes = false, toldOfCut = false;
  for (std::string_view record; records.next(record);) {
    if (records.isUnclosed()) {
      say(L"A quote is never closed: the record of line %d takes in the rest of the file and isn't used", core::kError);
      break;
    }
    if (holdsNothing(record, separator)) continue;
    // As in other text files: no letter of it would be left otherwise.
    const bool isOther = isUtf8 && !text::isUtf8(record);
    if (isOther && !std::exchange(toldOfBytes, true))
      say(L"Line %d isn't UTF-8, it is read as Windows-1252", core::kWarning);
    const std::wstring wide = isUtf8 && !isOther ? text::fromUtf8(record) : text::fromWindows1252(record);
    const bool fit = splitFields(wide, separator, fields);
    if (!fit && !std::exchange(toldOfCut, true))
      say(L"Line %d has a cell of more than 259 characters, the rest of it is left out", core::kWarning);
    table.addRecord(fields);
  }
  return table;
}

int readCSVtoTable(std::size_t& tableIndex, std::wstring_view path, wchar_t separator, std::wstring_view encoding) {
  const std::wstring file(text::cut(path, text::kTextSize - 1));
  if (const auto known = store().byFile.find(file); known != store().byFile.end()) {
    tableIndex = known->second;
    return 0;
  }
  core::logMsgId(core::Message::createMemoryTables, core::kNormal, 1);
  core::logWrite(text::format(L"readCSVtoTable: %d, %s with %c and %s", static_cast<int>(store().tables.size()), file,
                              separator, encoding),
                 core::kDebug);
  const auto bytes = os::files().read(file);
  if (!bytes) {
    core::logWrite(L"Failure while read file", core::kError);
    return 2;
  }
  if (const std::wstring_view fault = faultOf(bytes.value); !fault.empty()) {
    core::logWrite(text::format(L"Failure while read file %s: %s", file, fault), core::kError);
    return 2;
  }
  tableIndex = store().tables.size();
  store().tables.push_back(std::make_unique<CsvTable>(parseCsv(bytes.value, separator, encoding, file)));
  store().byFile.emplace(file, tableIndex);
  return 0;
}

const CsvTable& csvTable(std::size_t tableIndex) {
  static const CsvTable none;
  return tableIndex < store().tables.size() ? *store().tables[tableIndex] : none;
}

void freeCsvTables() {
  store().tables.clear();
  store().byFile.clear();
}

std::optional<std::wstring> readTextFile(std::wstring_view path) {
  auto read = os::readText(path);
  if (!read) {
    core::logWrite(L"Failure while open the file", core::kError);
    return std::nullopt;
  }
  core::logIndented(L"Have read a file", core::kNormal, 1);
  return std::move(read.value);
}

}  // namespace language
