#include "reports/csv_text.h"

#include <algorithm>

#include "core/log.h"
#include "engine/compare.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/letters.h"
#include "text/pieces.h"

namespace reports {
namespace {

constexpr std::wstring_view kUnprintable = L"can't be printed in the chosen Report-Charset";
constexpr wchar_t kLeftQuote = L'\u201C', kEnDash = L'\u2013';
constexpr wchar_t kLastLatin1 = L'\u00FF';
constexpr std::string_view kMark = "\xEF\xBB\xBF";

char delimiter(const CsvForm& form) { return form.semicolon ? ';' : ','; }

void warnAboutCharacter(std::wstring_view value, std::wstring_view ending, int level) {
  core::logWrite(L"A character in '" + std::wstring(value) + L"' " + std::wstring(kUnprintable) + std::wstring(ending),
                 level);
}

void replaceCharacter(std::wstring& value, wchar_t from, wchar_t to, std::wstring_view original) {
  if (value.find(from) == value.npos) return;
  std::replace(value.begin(), value.end(), from, to);
  warnAboutCharacter(original, L", it is replaced by a similar one.", core::kWarning);
}

// What a byte a character can hold; each kind of change has its line.
std::wstring printable(std::wstring_view original) {
  std::wstring value(original);
  if (std::erase_if(value, [](wchar_t c) { return c != L'\n' && !text::isPrintable(c); }) > 0)
    warnAboutCharacter(original, L".", core::kError);
  replaceCharacter(value, kLeftQuote, L'"', original);
  replaceCharacter(value, kEnDash, L'-', original);
  if (std::any_of(value.begin(), value.end(), [](wchar_t c) { return c > kLastLatin1; }))
    warnAboutCharacter(original, L", it is replaced by a similar one.", core::kWarning);
  return value;
}

bool needsCare(std::wstring_view value) {
  return std::any_of(value.begin(), value.end(), [](wchar_t c) { return c > kLastLatin1 || !text::isPrintable(c); });
}

void appendDoubled(std::string& out, std::string_view bytes) {
  for (std::size_t at = 0; at < bytes.size();) {
    const std::size_t quote = std::min(bytes.find('"', at), bytes.size());
    out.append(bytes.substr(at, quote - at));
    if (quote < bytes.size()) out += "\"\"";
    at = quote + 1;
  }
}

// The header line as a report that is up to date begins with. A quote in a title stands alone here.
std::string wantedHeader(const CsvReport& report) {
  std::string line;
  const auto title = [&](std::wstring_view text) {
    line.append(1, '"').append(encodedText(report.form, text)).append(1, '"');
  };
  if (report.form.fileNameFirst) {
    title(kFileNameColumn);
    line += delimiter(report.form);
  }
  for (std::size_t i = 0; i < report.columnTitles.size(); ++i) {
    if (i > 0) line += delimiter(report.form);
    title(report.columnTitles[i]);
  }
  return line;
}

// Where the first line ends: at a line feed outside quotes, or at the end.
std::size_t firstLineEnd(std::string_view bytes) {
  bool quoted = false;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (bytes[i] == '"') quoted = !quoted;
    if (bytes[i] == '\n' && !quoted) return i;
  }
  return std::min(bytes.find('\n'), bytes.size());  // a quote that is never closed: the first line feed will do
}

}  // namespace

std::string encodedText(const CsvForm& form, std::wstring_view text) {
  return form.charsetUtf ? text::toUtf8(text) : text::toLatin1(text);
}

void appendValue(CsvReport& report, std::wstring_view value) {
  std::wstring changed;
  if (report.form.changeComma && value.find(L'.') != value.npos &&
      engine::wildcardCompare(engine::kDoublePattern, value) == 1) {
    changed = text::replaceAll(value, L".", L",");
    value = changed;
  }
  if (!report.form.charsetUtf && needsCare(value)) {
    changed = printable(value);
    value = changed;
  }
  if (!report.atLineStart) report.pending += delimiter(report.form);
  report.pending += '"';
  appendDoubled(report.pending, encodedText(report.form, value));
  report.pending += '"';
  report.atLineStart = false;
}

void appendLineEnd(CsvReport& report) {
  constexpr std::size_t kMostPending = 1 << 20;
  report.pending += "\r\n";
  report.atLineStart = true;
  if (report.pending.size() > kMostPending) writePending(report);
}

void writePending(CsvReport& report) {
  if (report.stream && !report.pending.empty() && report.stream->write(report.pending)) {
    core::logWrite(L"Failure while write report.", core::kError);
    report.stream.reset();
  }
  report.pending.clear();
}

void replaceHeaderLine(const CsvReport& report) {
  const auto file = os::files().read(report.path);
  if (!file) return;
  std::string_view bytes = file.value;
  if (report.form.charsetUtf && bytes.starts_with(kMark)) bytes.remove_prefix(kMark.size());
  if (bytes.empty()) return;
  const std::size_t end = firstLineEnd(bytes);
  std::string_view first = bytes.substr(0, end);
  if (first.ends_with('\r')) first.remove_suffix(1);
  std::string content = wantedHeader(report);
  if (content == first) return;
  core::logWrite(L"Replace Header Line: " + report.name, core::kNormal);
  content += "\r\n";
  content += bytes.substr(std::min(end + 1, bytes.size()));
  // The report as it will be stands beside it before the report itself is touched.
  if (!os::files().write(report.path + L"t", content)) os::files().write(report.path, content);
}

}  // namespace reports
