// Command lines of the system's own form ("d:\tools\a.cmd \"d:\out x\\"") for this machine's shell.
#pragma once

#include <string>
#include <string_view>

namespace os {

// Paths with a mounted letter become the machine's, kept in one piece whatever characters they hold ("*" and "?" still
// stand for files outside quotes). Any other backslash separates names and becomes "/", but for one before a quote.
std::string shellCommand(std::wstring_view command);
// A text as one word of a shell's line.
std::string shellWord(std::string_view text);

}  // namespace os
