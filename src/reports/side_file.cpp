#include "reports/side_file.h"

#include "core/log.h"
#include "os/surroundings.h"
#include "reports/csv_text.h"
#include "text/encoding.h"
#include "text/pieces.h"

namespace reports {
namespace {

constexpr std::wstring_view kSeparator = L"|||||";

std::string columnLine(const CsvReport& report, std::size_t column) {
  return encodedText(report.form, report.columnKeys[column] + std::wstring(kSeparator) + report.columnTitles[column]) +
         "\r\n";
}

}  // namespace

std::wstring sideFilePath(const CsvReport& report) { return report.path + L"header"; }

void writeSideFile(CsvReport& report) {
  const std::wstring path = sideFilePath(report);
  // Once it is ours a new column is one more line: writing all anew would give the same bytes.
  if (report.sideFileIsOurs && os::files().exists(path)) {
    auto end = os::files().append(path);
    if (end && !end.value->write(columnLine(report, report.columnKeys.size() - 1))) return;
  }
  std::string content;
  for (std::size_t i = 0; i < report.columnKeys.size(); ++i) content += columnLine(report, i);
  report.sideFileIsOurs = !os::files().write(path, content);
}

bool readSideFile(CsvReport& report, creo::FunctionRef<void(std::wstring_view, std::wstring_view)> take) {
  const auto file = os::files().read(sideFilePath(report));
  if (!file) return false;
  const std::wstring content = report.form.charsetUtf ? text::fromUtf8(file.value) : text::fromLatin1(file.value);
  bool isWhole = content.empty() || content.ends_with(L'\n');
  for (const std::wstring& line : text::lines(content)) {
    const std::size_t at = line.find(kSeparator);
    if (at == line.npos) {
      core::logWrite(L"A line of the column file has no separator: " + line, core::kWarning);
      isWhole = false;
      continue;
    }
    take(std::wstring_view(line).substr(0, at), std::wstring_view(line).substr(at + kSeparator.size()));
  }
  report.sideFileIsOurs = isWhole;
  return true;
}

}  // namespace reports
