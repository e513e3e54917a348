#include "text/letters.h"

#include <algorithm>

#include "text/code_points.h"
#include "text/units.h"

namespace text {
namespace {

// The umlauts lie as far from their capitals as the ASCII letters do.
constexpr int kCaseDistance = L'a' - L'A';

char lowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + kCaseDistance) : c; }
char upperAscii(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - kCaseDistance) : c; }

template <class String, class Change>
String changed(std::basic_string_view<typename String::value_type> text, Change change) {
  String result(text);
  for (auto& c : result) c = change(c);
  return result;
}

template <class View>
bool equal(View a, View b) {
  return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](auto x, auto y) {
           if constexpr (sizeof(x) == 1) {
             return lowerAscii(x) == lowerAscii(y);
           } else {
             return x == y || lower(x) == lower(y);
           }
         });
}

}  // namespace

wchar_t lower(wchar_t c) {
  if ((c >= L'A' && c <= L'Z') || c == L'\u00C4' || c == L'\u00D6' || c == L'\u00DC') {
    return static_cast<wchar_t>(c + kCaseDistance);
  }
  return c;
}

wchar_t upper(wchar_t c) {
  if ((c >= L'a' && c <= L'z') || c == L'\u00E4' || c == L'\u00F6' || c == L'\u00FC') {
    return static_cast<wchar_t>(c - kCaseDistance);
  }
  return c;
}

std::wstring lower(std::wstring_view text) {
  return changed<std::wstring>(text, [](wchar_t c) { return lower(c); });
}
std::wstring upper(std::wstring_view text) {
  return changed<std::wstring>(text, [](wchar_t c) { return upper(c); });
}
std::string lower(std::string_view text) { return changed<std::string>(text, lowerAscii); }
std::string upper(std::string_view text) { return changed<std::string>(text, upperAscii); }

bool equalNoCase(std::wstring_view a, std::wstring_view b) { return equal(a, b); }
bool equalNoCase(std::string_view a, std::string_view b) { return equal(a, b); }

bool startsWithNoCase(std::wstring_view text, std::wstring_view start) {
  return text.size() >= start.size() && equal(text.substr(0, start.size()), start);
}
bool endsWithNoCase(std::wstring_view text, std::wstring_view end) {
  return text.size() >= end.size() && equal(text.substr(text.size() - end.size()), end);
}

bool isPrintable(wchar_t c) { return isPrintable(codeOf(c)); }

bool isName(std::wstring_view text) {
  if (text.empty() || (text.front() >= L'0' && text.front() <= L'9')) return false;
  return allCharacters(text, [](char32_t c) {
    return (c >= U'a' && c <= U'z') || (c >= U'A' && c <= U'Z') || (c >= U'0' && c <= U'9') || c == U'_' ||
           (c >= 0xC0 && c != 0xD7 && c != 0xF7 && isPrintable(c));
  });
}

namespace {

constexpr wchar_t kBeyondAscii = 0x80;

bool isBlankOrControl(wchar_t c) {
  constexpr std::wstring_view kBlanks =
      L"\u1680\u2000\u2001\u2002\u2003\u2004\u2005\u2006\u2007\u2008\u2009\u200A\u200B\u2028\u2029\u202F\u205F"
      L"\u2060\u3000\uFEFF";
  return c <= 0xA0 || kBlanks.find(c) != kBlanks.npos;
}

}  // namespace

bool isModelName(std::wstring_view name) {
  if (name.empty() || name.front() == L'-' || units(name) > kLongestModelName) return false;
  return std::all_of(name.begin(), name.end(), [](wchar_t c) {
    const bool isPlain = (c >= L'0' && c <= L'9') || (c >= L'A' && c <= L'Z') || (c >= L'a' && c <= L'z');
    return isPlain || c == L'_' || c == L'-' || (c >= kBeyondAscii && !isBlankOrControl(c));
  });
}

std::size_t HashNoCase::operator()(std::wstring_view text) const {
  std::uint64_t hash = 14695981039346656037ULL;  // FNV-1a
  for (const wchar_t c : text) hash = (hash ^ codeOf(lower(c))) * 1099511628211ULL;
  return static_cast<std::size_t>(hash ^ (hash >> 32));
}

}  // namespace text
