// The words of the command line and what the program prints, in UTF-8 on every system.
#pragma once

#include <string>
#include <vector>

namespace os {

// The words behind the program's own name. argc, argv: as main got them; a system that hands over narrower words than
// were written is asked itself.
std::vector<std::string> commandLineWords(int argc, char** argv);

// From now on the bytes that are printed are shown and piped as they are: UTF-8, with a line feed at the end of a line.
void printUtf8();

}  // namespace os
