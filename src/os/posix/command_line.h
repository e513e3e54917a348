// Command lines of the system's form for this machine's shell.
#pragma once

#include <string>
#include <string_view>

namespace os {

// Each path with a letter that begins a word or a quoted text becomes the machine's, written so that the shell takes it
// as it is: in quotes up to the closing one, else up to a blank or a sign of the shell ("*" and "?" keep their
// meaning). The rest isn't changed.
std::string shellCommand(std::wstring_view command);

}  // namespace os
