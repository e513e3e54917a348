// The running program itself.
#pragma once

#include <string>

namespace os {

// Its own file, in the machine's form; empty where the system doesn't tell.
std::string programFile();
// The file that holds this code, likewise: the program's, or that of a library which a host has loaded.
std::string codeFile();
// "linux" or "windows": the folder of an installation that holds what differs between systems.
std::string systemName();
// True when standard output (1) or standard error (2) is shown to a person, or standard input (0) comes from one.
bool isTerminal(int stream);

}  // namespace os
