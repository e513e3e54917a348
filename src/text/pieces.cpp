#include "text/pieces.h"

namespace text {
namespace {

template <class C>
std::basic_string<C> replaced(std::basic_string_view<C> text, std::basic_string_view<C> find,
                              std::basic_string_view<C> by) {
  std::basic_string<C> result;
  result.reserve(text.size());
  std::size_t from = 0;
  if (!find.empty()) {
    for (std::size_t at; (at = text.find(find, from)) != text.npos; from = at + find.size()) {
      result.append(text.substr(from, at - from)).append(by);
    }
  }
  return result.append(text.substr(from));
}

}  // namespace

std::wstring replaceAll(std::wstring_view text, std::wstring_view find, std::wstring_view by) {
  return replaced(text, find, by);
}
std::string replaceAll(std::string_view text, std::string_view find, std::string_view by) {
  return replaced(text, find, by);
}

std::vector<std::wstring> split(std::wstring_view text, wchar_t separator) {
  std::vector<std::wstring> pieces;
  std::size_t from = 0;
  for (std::size_t at; (at = text.find(separator, from)) != text.npos; from = at + 1) {
    pieces.emplace_back(text.substr(from, at - from));
  }
  pieces.emplace_back(text.substr(from));
  return pieces;
}

std::vector<std::wstring> lines(std::wstring_view text) {
  std::vector<std::wstring> result;
  while (!text.empty()) {
    const std::size_t end = text.find(L'\n');
    std::wstring_view line = text.substr(0, end);
    if (end != text.npos && line.ends_with(L'\r')) line.remove_suffix(1);
    result.emplace_back(line);
    text.remove_prefix(end == text.npos ? text.size() : end + 1);
  }
  return result;
}

std::wstring join(const std::vector<std::wstring>& pieces, std::wstring_view separator) {
  std::wstring result;
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    if (i > 0) result += separator;
    result += pieces[i];
  }
  return result;
}

std::wstring_view trimmed(std::wstring_view text) {
  constexpr std::wstring_view kBlanks = L" \t\r\n";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == text.npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

}  // namespace text
