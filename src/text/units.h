// Lengths of wide texts. Sizes, cuts and positions count UTF-16 units on every system, so that a text is cut at the
// same place wherever a list runs; a character beyond the basic plane counts two and is never split.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace text {

// Sizes of the system's texts in UTF-16 units, the closing zero included: a text fits when it is strictly shorter.
constexpr std::size_t kTextSize = 260;
constexpr std::size_t kNameSize = 32;      // names of parameters, options, symbols
constexpr std::size_t kTypeSize = 80;      // an action's `type`
constexpr std::size_t kLogLineSize = 520;  // a line of the log

// Number of UTF-16 units of a text.
std::size_t units(std::wstring_view text);

// The longest start of text of at most `most` units that splits no character.
std::wstring_view cut(std::wstring_view text, std::size_t most);

// True when the text and a closing zero fit into a buffer of `size` units.
inline bool fits(std::wstring_view text, std::size_t size) { return units(text) < size; }

// The part of a text from unit `from` up to but not including unit `to`; a character that a border would split is
// left out. Borders past the end are the end.
std::wstring_view slice(std::wstring_view text, std::size_t from, std::size_t to);

}  // namespace text
