#include "os/text_files.h"

#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/pieces.h"

namespace os {
namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

// Only a file's first line may begin with the mark.
std::string_view withoutMark(std::string_view line, bool first) {
  if (first && line.starts_with(kUtf8Mark)) line.remove_prefix(kUtf8Mark.size());
  return line;
}

}  // namespace

Result<std::wstring> readText(std::wstring_view path) {
  const auto bytes = files().read(path);
  if (bytes.error) return {{}, bytes.error};
  return {text::fromTextFile(bytes.value), {}};
}

std::error_code readLines(std::wstring_view path, const std::function<void(std::wstring_view)>& take) {
  std::wstring wide;
  const auto takeLine = [&](std::string_view line) {
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (text::isUtf8(line)) {
      wide.resize(line.size());
      wide.resize(text::fromUtf8(line, wide.data()));
    } else {
      wide = text::fromWindows1252(line);
    }
    take(wide);
  };
  std::string open;  // the start of a line that the last piece cut
  bool first = true;
  const auto error = files().readPieces(path, [&](std::string_view piece) {
    for (auto end = piece.find('\n'); end != std::string_view::npos; end = piece.find('\n')) {
      if (open.empty()) {
        takeLine(withoutMark(piece.substr(0, end), first));
      } else {
        takeLine(withoutMark(open.append(piece, 0, end), first));
        open.clear();
      }
      first = false;
      piece.remove_prefix(end + 1);
    }
    open.append(piece);
  });
  if (!open.empty()) takeLine(withoutMark(open, first));
  return error;
}

std::error_code writeText(std::wstring_view path, std::wstring_view content, const TextForm& form) {
  const bool mark = form.mark && form.encoding == Encoding::utf8;
  return files().write(path, std::string(mark ? kUtf8Mark : std::string_view()) + encoded(content, form));
}

std::string encoded(std::wstring_view content, const TextForm& form) {
  std::string bytes;
  switch (form.encoding) {
    case Encoding::utf8:
      bytes = text::toUtf8(content);
      break;
    case Encoding::latin1:
      bytes = text::toLatin1(content);
      break;
    case Encoding::windows1252:
      bytes = text::toWindows1252(content);
      break;
  }
  return form.crlf ? text::replaceAll(std::string_view(bytes), "\n", "\r\n") : bytes;
}

}  // namespace os
