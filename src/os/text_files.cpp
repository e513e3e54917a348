#include "os/text_files.h"

#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/pieces.h"

namespace os {

Result<std::wstring> readText(std::wstring_view path) {
  const auto bytes = files().read(path);
  if (bytes.error) return {{}, bytes.error};
  return {text::fromTextFile(bytes.value), {}};
}

std::error_code writeText(std::wstring_view path, std::wstring_view content, const TextForm& form) {
  const bool mark = form.mark && form.encoding == Encoding::utf8;
  return files().write(path, (mark ? "\xEF\xBB\xBF" : "") + encoded(content, form));
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
