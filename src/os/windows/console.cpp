#include "os/console.h"

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

#include <memory>

#include "os/freed.h"
#include "text/encoding.h"

namespace os {

// Of the narrow words a letter that the user's charset lacks is lost.
std::vector<std::string> commandLineWords(int /*argc*/, char** /*argv*/) {
  int count = 0;
  const std::unique_ptr<LPWSTR, Freed<&::LocalFree>> wide(::CommandLineToArgvW(::GetCommandLineW(), &count));
  std::vector<std::string> words;
  for (int i = 1; wide && i < count; ++i) words.push_back(text::toUtf8(wide.get()[i]));
  return words;
}

void printUtf8() {
  ::SetConsoleOutputCP(CP_UTF8);
  for (const int stream : {1, 2}) ::_setmode(stream, _O_BINARY);
}

}  // namespace os
