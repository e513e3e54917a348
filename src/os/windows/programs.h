// Where a program lies, and how it is started.
#pragma once

#include <string>
#include <string_view>

#include "os/windows/child.h"

namespace os {

struct Program {
  enum class Kind { none, program, script, document };
  Kind kind = Kind::none;
  std::wstring file;  // as programs are given it: "C:\tools\mail.exe"
};
// name: a path of the system's form, or a name that is looked for where PATH leads, with each end of PATHEXT that it
// may lack. folder: where a path that isn't whole goes on from; a name is looked for there first where that is asked.
Program findProgram(std::wstring_view name, std::wstring_view folder, bool alsoInFolder);

// A folder of the system's form, as programs are given it; empty for none.
std::wstring folderForPrograms(std::wstring_view folder);
// A command line with the paths of mounted letters as the machine has them.
std::wstring withMachinePaths(std::wstring_view command);

// arguments: what follows the program's own word, as it stands.
ChildStart startOf(const Program& program, std::wstring_view arguments);
// By the command processor: the system's own, whatever the environment says.
ChildStart startOfProcessor(std::wstring_view command);

}  // namespace os
