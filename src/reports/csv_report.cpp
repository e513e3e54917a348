#include "reports/csv_report.h"

#include <algorithm>
#include <optional>

#include "core/log.h"
#include "core/state.h"
#include "creo/ProMdl.h"
#include "os/surroundings.h"
#include "reports/csv_text.h"
#include "reports/file_name.h"
#include "reports/side_file.h"
#include "text/encoding.h"
#include "text/format.h"

namespace reports {
namespace {

std::uint32_t newNumber(CsvReport& report) {
  report.isColumn.push_back(false);
  return static_cast<std::uint32_t>(report.isColumn.size() - 1);
}

// The column of an earlier run whose key was this one before it was written; no later key gets it.
std::optional<std::uint32_t> takeMasked(CsvReport& report, std::wstring_view key) {
  if (report.maskedKeys.empty()) return std::nullopt;
  const std::wstring written = text::fromLatin1(text::toLatin1(key));
  const auto at = std::find_if(report.maskedKeys.begin(), report.maskedKeys.end(),
                               [&](const auto& masked) { return masked.first == written; });
  if (at == report.maskedKeys.end()) return std::nullopt;
  const std::uint32_t number = at->second;
  report.maskedKeys.erase(at);
  return number;
}

std::uint32_t keyNumber(CsvReport& report, std::wstring_view key) {
  const auto [at, isNew] = report.keyNumbers.try_emplace(std::wstring(key), 0);
  if (isNew) {
    const auto masked = takeMasked(report, key);
    at->second = masked ? *masked : newNumber(report);
  }
  return at->second;
}

// Of a side file: each line is a column, also where two keys were written alike.
std::uint32_t sideFileNumber(CsvReport& report, std::wstring_view key) {
  const bool mayBeMasked = !report.form.charsetUtf && key.find(L'?') != key.npos;
  if (!mayBeMasked) return keyNumber(report, key);
  const std::uint32_t number = newNumber(report);
  report.maskedKeys.emplace_back(key, number);
  return number;
}

// Null for a row without a value of that key.
const std::wstring* valueOf(const Row& row, std::uint32_t key) {
  const auto at = std::lower_bound(row.cells.begin(), row.cells.end(), key,
                                   [](const Cell& c, std::uint32_t k) { return c.key < k; });
  return at != row.cells.end() && at->key == key ? &at->value : nullptr;
}

// The model under work, among the report's sources.
std::uint32_t currentSource(CsvReport& report) {
  const std::wstring& text = core::pluginState().currentModelText;
  if (report.sources.empty() || report.sources.back() != text) report.sources.push_back(text);
  return static_cast<std::uint32_t>(report.sources.size() - 1);
}

// Whoever writes rows behind their models' work names them in the lines of the log that follow.
void nameInLog(const CsvReport& report, std::wstring_view place) {
  if (report.namesItself) core::pluginState().currentModelText = place;
}
void nameRowInLog(const CsvReport& report, const Row& row, int number) {
  if (!report.namesItself) return;
  const std::wstring& source = report.sources[row.source];
  nameInLog(report, source.empty() ? text::format(L"row %d", number) : text::format(L"row %d (%s)", number, source));
}

void beginModel(CsvReport& report, const creo::ProMdlData& data) {
  if (!report.newRowAtNewModel) return;
  if (report.lastModelName == data.name && report.lastModelType == data.type) return;
  report.lastModelName = data.name;
  report.lastModelType = data.type;
  reportNextRow(report);
}

// leadingFileName: the "File name" value stands before the columns too.
void writeRows(CsvReport& report, bool leadingFileName) {
  const std::uint32_t fileName = leadingFileName ? keyNumber(report, kFileNameColumn) : 0;
  static const std::wstring none;
  const auto value = [](const std::wstring* text) { return text ? std::wstring_view(*text) : std::wstring_view(none); };
  if (report.headerPending && report.headerIfEmpty && !fileEnds(report).isEmpty)
    report.overwrite = report.headerIfEmpty = false;
  if (report.headerPending && report.overwrite) {
    nameInLog(report, L"header line");
    if (leadingFileName) appendValue(report, kFileNameColumn);
    for (const std::wstring& title : report.columnTitles) appendValue(report, title);
    appendLineEnd(report);
  }
  int number = 0;
  for (std::size_t i = 0; i < report.rows.size() && i <= report.currentRow; ++i) {
    const Row& row = report.rows[i];
    if (row.cells.empty()) continue;
    nameRowInLog(report, row, ++number);
    if (leadingFileName) appendValue(report, value(valueOf(row, fileName)));
    for (const std::uint32_t column : report.columnNumbers) appendValue(report, value(valueOf(row, column)));
    appendLineEnd(report);
  }
  nameInLog(report, report.path);
  writePending(report);
}

// Writing comes behind the last action: its lines of the log are about the report, for as long as this lives.
class ClosingName {
 public:
  explicit ClosingName(CsvReport& report) : report_(report) {
    report.namesItself = true;
    core::PluginState& state = core::pluginState();
    state.currentAction = L"Close report " + report.name;
    state.currentModelText = report.path;
  }
  ~ClosingName() {
    report_.namesItself = false;
    core::pluginState().currentAction = std::move(action_);
    core::pluginState().currentModelText = std::move(model_);
  }
  ClosingName(const ClosingName&) = delete;
  ClosingName& operator=(const ClosingName&) = delete;

 private:
  CsvReport& report_;
  std::wstring action_ = core::pluginState().currentAction, model_ = core::pluginState().currentModelText;
};

}  // namespace

CsvReport& ReportRegistry::add(std::wstring_view name) {
  reports_.push_back(std::make_unique<CsvReport>());
  reports_.back()->name = name;
  return *reports_.back();
}

CsvReport* ReportRegistry::find(std::wstring_view name) const {
  const auto at =
      std::find_if(reports_.rbegin(), reports_.rend(), [name](const auto& report) { return report->name == name; });
  return at == reports_.rend() ? nullptr : at->get();
}

ReportRegistry& reportRegistry() {
  auto& reports = core::pluginState().reports;
  if (!reports) reports = std::make_shared<ReportRegistry>();
  return *reports;
}

CsvReport* reportForModel(std::wstring_view name, creo::ProMdl model) {
  CsvReport* report = reportRegistry().find(name);
  if (!report) {
    core::logWrite(L"Report can't be found", core::kError);
    return nullptr;
  }
  if (!report->form.fileNameFirst || !model) return report;
  if (const auto data = creo::ProMdlDataGet(model)) {
    beginModel(*report, data.value);
    reportSetValue(*report, kFileNameColumn, fileNameValue(model, data.value));
  }
  return report;
}

void reportAddColumn(CsvReport& report, std::wstring_view key, std::wstring_view title, ColumnSource source) {
  const bool isOld = source == ColumnSource::sideFile;
  const std::uint32_t number = isOld ? sideFileNumber(report, key) : keyNumber(report, key);
  if (report.isColumn[number]) return;
  report.isColumn[number] = true;
  report.columnNumbers.push_back(number);
  report.columnKeys.emplace_back(key);
  report.columnTitles.emplace_back(title);
  core::logIndented(L"Header added: " + std::wstring(title), core::kNormal, 1);
  if (!isOld && !report.path.empty()) writeSideFile(report);
}

void reportSetValue(CsvReport& report, std::wstring_view key, std::wstring_view value) {
  if (report.rows.size() <= report.currentRow) report.rows.emplace_back();
  Row& row = report.rows[std::min(report.currentRow, report.rows.size() - 1)];
  if (row.cells.empty()) row.source = currentSource(report);
  const std::uint32_t number = keyNumber(report, key);
  const auto at = std::lower_bound(row.cells.begin(), row.cells.end(), number,
                                   [](const Cell& c, std::uint32_t k) { return c.key < k; });
  if (at != row.cells.end() && at->key == number)
    at->value = value;
  else
    row.cells.insert(at, {number, std::wstring(value)});
}

void reportNextRow(CsvReport& report) {
  if (!report.rows.empty() && report.rows.back().cells.empty()) return;
  ++report.currentRow;
  if (report.rows.size() <= report.currentRow) report.rows.emplace_back();
}

bool reportOpenStream(CsvReport& report) {
  if (report.path.empty()) return false;
  auto opened = os::files().append(report.path);
  if (opened) report.stream = std::move(opened.value);
  if (!report.isOpen()) core::logWrite(L"Failure while open report.", core::kError);
  return report.isOpen();
}

void reportFlush(CsvReport& report) {
  report.atLineStart = true;
  if (!report.isOpen() && !reportOpenStream(report)) return;
  const bool hasColumn = !report.columnKeys.empty() && report.columnKeys.front() == kFileNameColumn;
  writeRows(report, report.form.fileNameFirst && !hasColumn);
  report.headerPending = false;
  report.rows.clear();
  report.sources.clear();
  report.currentRow = 0;
}

void reportClose(CsvReport& report) {
  report.atLineStart = true;
  if (!report.isOpen() && !reportOpenStream(report)) return;
  writeRows(report, report.form.fileNameFirst);
  report.stream.reset();
  if (!report.overwrite) replaceHeaderLine(report);
  if (report.openAfterCreation) os::processes().open(report.path);
}

void reportsNextRowAll(const ReportRegistry& registry) {
  for (const auto& report : registry.all()) reportNextRow(*report);
}

void reportsCloseAll(ReportRegistry& registry) {
  for (const auto& report : registry.all()) {
    const ClosingName name(*report);
    reportClose(*report);
  }
  registry.clear();
}

}  // namespace reports
