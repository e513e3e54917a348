#include "reports/report_row.h"

#include "core/state.h"
#include "text/format.h"

namespace reports {

std::wstring actionTag() {
  const core::PluginState& state = core::pluginState();
  return text::format(L"%c%d", state.section, state.actionIndex);
}

std::optional<ReportRow> ReportRow::of(const actions::Task& task) {
  CsvReport* report = reportForModel(task.attribute(L"reporter"), task.model());
  if (report == nullptr) return std::nullopt;
  return ReportRow(*report);
}

void ReportRow::column(std::wstring_view suffix, std::wstring_view title) const {
  reportAddColumn(*report_, tag_ + std::wstring(suffix), title);
}

void ReportRow::value(std::wstring_view suffix, std::wstring_view value) const {
  if (!value.empty()) reportSetValue(*report_, tag_ + std::wstring(suffix), value);
}

std::wstring truth(const creo::Got<bool>& value) {
  if (!value) return {};
  return value.value ? L"true" : L"false";
}

std::wstring countOf(creo::ProError visited, int count) {
  const bool isWhole = visited == creo::ProNoError || visited == creo::ProNotFound;
  return isWhole ? text::format(L"%d", count) : std::wstring();
}

void appendLine(std::wstring& field, std::wstring_view entry) {
  if (!field.empty()) field += L'\n';
  field += entry;
}

}  // namespace reports
