#include "reports/csv_text.h"

#include <algorithm>
#include <utility>

#include "core/log.h"
#include "language/compare.h"
#include "os/file_parts.h"
#include "os/surroundings.h"
#include "text/code_points.h"
#include "text/encoding.h"
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
  std::wstring value = text::keptCharacters(original, [](char32_t c) { return c == U'\n' || text::isPrintable(c); });
  if (value.size() < original.size()) warnAboutCharacter(original, L".", core::kError);
  replaceCharacter(value, kLeftQuote, L'"', original);
  replaceCharacter(value, kEnDash, L'-', original);
  if (std::any_of(value.begin(), value.end(), [](wchar_t c) { return c > kLastLatin1; }))
    warnAboutCharacter(original, L", it is replaced by a similar one.", core::kWarning);
  return value;
}

bool needsCare(std::wstring_view value) {
  return !text::allCharacters(value, [](char32_t c) { return c <= kLastLatin1 && text::isPrintable(c); });
}

void appendDoubled(std::string& out, std::string_view bytes) {
  for (std::size_t at = 0; at < bytes.size();) {
    const std::size_t quote = std::min(bytes.find('"', at), bytes.size());
    out.append(bytes.substr(at, quote - at));
    if (quote < bytes.size()) out += "\"\"";
    at = quote + 1;
  }
}

// The header line that a report with these columns begins with. A quote in a title stands alone here.
std::string headerLine(const CsvForm& form, const std::vector<std::wstring>& titles) {
  std::string line;
  const auto title = [&](std::wstring_view text) {
    line.append(1, '"').append(encodedText(form, text)).append(1, '"');
  };
  if (form.fileNameFirst) {
    title(kFileNameColumn);
    line += delimiter(form);
  }
  for (std::size_t i = 0; i < titles.size(); ++i) {
    if (i > 0) line += delimiter(form);
    title(titles[i]);
  }
  return line;
}

// Finds where the first line ends, however the text comes in pieces: at a line feed outside quotes.
class FirstLine {
 public:
  void take(std::string_view piece) {
    std::size_t end = 0;
    while (end < piece.size() && !isWhole_) {
      if (piece[end] == '"') quoted_ = !quoted_;
      isWhole_ = piece[end++] == '\n' && !quoted_;
    }
    text_ += piece.substr(0, end);
  }
  [[nodiscard]] bool isWhole() const { return isWhole_; }
  // With its end. A quote that is never closed: the first line feed ends it.
  [[nodiscard]] std::string_view text() const {
    const std::string_view all = text_;
    const std::size_t feed = isWhole_ ? all.npos : all.find('\n');
    return all.substr(0, feed == all.npos ? feed : feed + 1);
  }

 private:
  std::string text_;
  bool quoted_ = false, isWhole_ = false;
};

void tellOfHeader(const CsvReport& report) { core::logWrite(L"Replace Header Line: " + report.name, core::kNormal); }

}  // namespace

std::string encodedText(const CsvForm& form, std::wstring_view text) {
  return form.charsetUtf ? text::toUtf8(text) : text::toLatin1(text);
}

void appendValue(CsvReport& report, std::wstring_view value) {
  std::wstring changed;
  if (report.form.changeComma && value.find(L'.') != value.npos && language::matches(language::kDoublePattern, value)) {
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
  if (report.pending.empty()) return;
  // Another report may have ended the line since.
  if (std::exchange(report.lacksLineEnd, false) && fileEnds(report).lacksLineEnd) report.pending.insert(0, "\r\n");
  if (report.stream && report.stream->write(report.pending)) {
    core::logWrite(L"Failure while write report.", core::kError);
    report.stream.reset();
  }
  report.pending.clear();
}

FileEnds fileEnds(const CsvReport& report) {
  constexpr std::size_t kFirstPiece = 4096, kMostAtOnce = 1 << 20;  // bytes
  FileEnds ends;
  const auto size = os::files().size(report.path);
  if (!size || size.value == 0) return ends;
  const auto last = os::readPart(report.path, size.value - 1, 1);
  if (!last) return ends;
  // What lies between isn't read: each of thousands of models that append would read all that stands there.
  FirstLine first;
  std::size_t most = kFirstPiece;
  for (std::uint64_t at = 0; at < size.value && !first.isWhole(); most = std::min(2 * most, kMostAtOnce)) {
    const auto piece = os::readPart(report.path, at, most);
    if (!piece) return ends;
    if (piece.value.empty()) break;
    first.take(piece.value);
    at += piece.value.size();
  }
  std::string_view line = first.text();
  ends.topSize = line.size();
  if (report.form.charsetUtf && line.starts_with(kMark)) line.remove_prefix(kMark.size());
  ends.isEmpty = line.empty();
  ends.lacksLineEnd = !ends.isEmpty && last.value != "\n";
  for (const char end : {'\n', '\r'})
    if (line.ends_with(end)) line.remove_suffix(1);
  ends.firstLine = line;
  return ends;
}

void replaceHeaderLine(const CsvReport& report) {
  const FileEnds ends = fileEnds(report);
  if (ends.isEmpty) return;
  std::string content = headerLine(report.form, report.columnTitles);
  const bool isRight = content == ends.firstLine;
  if (report.topIsKept ? content != headerLine(report.form, {}) : !isRight) tellOfHeader(report);
  if (isRight) return;
  const auto file = os::files().read(report.path);
  if (!file) return;
  content += "\r\n";
  content += std::string_view(file.value).substr(std::min(ends.topSize, file.value.size()));
  // The report as it will be stands beside it before the report itself is touched.
  if (!os::files().write(report.path + L"t", content)) os::files().write(report.path, content);
}

void leaveHeaderLine(CsvReport& report, const FileEnds& ends) {
  report.stream.reset();
  report.topIsKept = !ends.isEmpty;
  if (report.topIsKept && ends.firstLine != headerLine(report.form, {})) tellOfHeader(report);
}

}  // namespace reports
