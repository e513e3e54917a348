#include "os/posix/command_line.h"

#include <algorithm>

#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace os {
namespace {

constexpr std::wstring_view kWordEnds = L" \t\n\"'<>|&;()";
constexpr std::string_view kPlain = "/._-+,@%=:~*?";

bool isWordStart(std::wstring_view command, std::size_t at) {
  return at == 0 || kWordEnds.find(command[at - 1]) != kWordEnds.npos || command[at - 1] == L'=';
}

bool isPath(std::wstring_view text) {
  if (text.size() < 3 || text[1] != L':' || (text[2] != L'\\' && text[2] != L'/')) return false;
  const wchar_t letter = text::lower(text[0]);
  return letter >= L'a' && letter <= L'z';
}

bool isPlain(char c) {
  const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
  return isLetter || static_cast<unsigned char>(c) >= 0x80 || kPlain.find(c) != kPlain.npos;
}

// quote: the one around the path, or 0.
std::string escaped(const std::string& path, wchar_t quote) {
  std::string out;
  for (const char c : path) {
    if (quote == L'\'') {
      out += c == '\'' ? std::string("'\\''") : std::string(1, c);
      continue;
    }
    const bool special = quote == L'"' ? std::string_view("\\$`\"").find(c) != std::string_view::npos : !isPlain(c);
    if (special) out += '\\';
    out += c;
  }
  return out;
}

}  // namespace

std::string shellCommand(std::wstring_view command) {
  std::string out;
  wchar_t quote = 0;
  std::size_t kept = 0;  // from here on the text is still to be taken over
  for (std::size_t i = 0; i < command.size(); ++i) {
    const wchar_t c = command[i];
    if (isWordStart(command, i) && isPath(command.substr(i))) {
      const std::size_t end =
          std::min(quote ? command.find(quote, i) : command.find_first_of(kWordEnds, i), command.size());
      out += text::toUtf8(command.substr(kept, i - kept));
      out += escaped(mounts().machine(command.substr(i, end - i)), quote);
      kept = end;
      i = end - 1;
    } else if (quote == 0 && (c == L'"' || c == L'\'')) {
      quote = c;
    } else if (c == quote) {
      quote = 0;
    }
  }
  return out + text::toUtf8(command.substr(kept));
}

}  // namespace os
