// Letters without the process's locale. Case-blind means ASCII and the three German umlauts, here and everywhere.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace text {

wchar_t lower(wchar_t c);
wchar_t upper(wchar_t c);
std::wstring lower(std::wstring_view text);
std::wstring upper(std::wstring_view text);
// ASCII only; for names of components, files and members.
std::string lower(std::string_view text);
std::string upper(std::string_view text);

bool equalNoCase(std::wstring_view a, std::wstring_view b);
bool equalNoCase(std::string_view a, std::string_view b);
bool startsWithNoCase(std::wstring_view text, std::wstring_view start);
bool endsWithNoCase(std::wstring_view text, std::wstring_view end);

// True for what a report or a note may hold: no control character (C0, DEL, C1), no surrogate, no non-character.
bool isPrintable(wchar_t c);

// What parameters may be called, but for the length: letters, digits and "_", not beginning with a digit. Beyond ASCII
// letters are what can be shown from U+00C0 on.
bool isName(std::wstring_view text);

constexpr std::size_t kLongestModelName = 31;  // in UTF-16 units, of models and instances
// What Creo takes as a model's new name, in either case: at most 31 characters, of ASCII letters, digits, "_" and "-",
// the latter not in front; beyond ASCII all but blanks and control characters.
bool isModelName(std::wstring_view name);

// Hash and equality for case-blind tables.
struct HashNoCase {
  using is_transparent = void;
  std::size_t operator()(std::wstring_view text) const;
};
struct EqualNoCase {
  using is_transparent = void;
  bool operator()(std::wstring_view a, std::wstring_view b) const { return equalNoCase(a, b); }
};

}  // namespace text
