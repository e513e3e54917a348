// Asked before a program is started or a variable of the environment is set, where lists are confined (confine.h).
#pragma once

#include <string_view>
#include <system_error>

namespace os {

class Gate {
 public:
  virtual ~Gate() = default;
  // No error: it may be done. Else operation_not_permitted, which has been told.
  // The command line of a shell, in that folder.
  virtual std::error_code run(std::wstring_view command, std::wstring_view folder) = 0;
  // A program with its arguments.
  virtual std::error_code start(std::wstring_view program, std::wstring_view arguments, std::wstring_view folder) = 0;
  // A document, with the desktop's program for it.
  virtual std::error_code open(std::wstring_view path) = 0;
  virtual std::error_code set(std::wstring_view variable) = 0;
};

// The one in force; null: nothing is confined.
inline Gate*& gate() {
  static Gate* current = nullptr;
  return current;
}

}  // namespace os
