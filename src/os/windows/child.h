// A process that this one starts, with just those handles that are meant for it.
#pragma once

#include <string>

#include "os/windows/native.h"

namespace os {

// What a child has for its streams, made so that it is handed down; null: nothing is said, and it has its own.
struct ChildStreams {
  Handle input, output, fault;
};
// Reads nothing; what it prints goes to standard error, or nowhere where there is none.
ChildStreams quietStreams();
// Reads nothing and prints nowhere.
ChildStreams closedStreams();
// What may be handed down.
Handle inheritable(HANDLE handle);

struct ChildStart {
  std::wstring program;      // its file
  std::wstring line;         // the whole command line, the program's own word first
  std::wstring folder;       // where it runs; empty: where this process does
  DWORD flags = 0;           // of CreateProcessW
  std::wstring environment;  // as a block; empty: this process's
};
struct Child {
  Handle process, thread;
};
// Without streams it has those of its own console.
Result<Child> startChild(ChildStart start, const ChildStreams* streams);

}  // namespace os
