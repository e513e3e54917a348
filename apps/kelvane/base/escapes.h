// Names and values as they can be shown: a terminal would take their control characters as commands, and
// other marks would make them look like other names.
#pragma once

#include <string>
#include <string_view>

namespace kelvane {

// "\n", "\r", "\t", else "\x1b" for each control character; "\u202e" for what turns the direction of writing, parts
// lines or takes no room. Bytes that are no UTF-8 stay, but for those that are control characters of other encodings.
std::string withEscapes(std::string_view text);
// The same, but line feeds and tabs stay: for what is a text of lines.
std::string escapedLines(std::string_view text);
// Of JSON that is written already: what may stand in its texts, as JSON writes it.
std::string escapedJson(std::string_view text);

}  // namespace kelvane
