// Text files, read and written in one place.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "os/result.h"

namespace os {

enum class Encoding { utf8, latin1, windows1252 };
struct TextForm {
  Encoding encoding = Encoding::utf8;
  bool mark = false;  // a UTF-8 byte-order mark at the start
  bool crlf = false;  // each LF is written as CR LF, as where the system opens files as text
};

// The content as a wide text: by the mark, else as valid UTF-8, else as Windows-1252.
Result<std::wstring> readText(std::wstring_view path);
// The lines of such a file one by one, without their ends, each read as UTF-8 or Windows-1252 by itself; the memory is
// that of one line. A line is valid until the next.
std::error_code readLines(std::wstring_view path, const std::function<void(std::wstring_view)>& take);
std::error_code writeText(std::wstring_view path, std::wstring_view content, const TextForm& form = {});
// The bytes of one text in that form, without the mark.
std::string encoded(std::wstring_view content, const TextForm& form);

}  // namespace os
