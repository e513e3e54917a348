// Other programs, and the environment they inherit.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "os/result.h"

namespace os {

class Processes {
 public:
  virtual ~Processes() = default;
  // Opens a file or folder with the program that the system has for it, without waiting. Without such a program:
  // function_not_supported.
  virtual std::error_code open(std::wstring_view path) = 0;
};
std::unique_ptr<Processes> machineProcesses();

// Starts nothing and keeps what was asked.
class RecordedProcesses : public Processes {
 public:
  std::error_code open(std::wstring_view path) override {
    asked_.emplace_back(path);
    return {};
  }
  [[nodiscard]] const std::vector<std::wstring>& asked() const { return asked_; }

 private:
  std::vector<std::wstring> asked_;
};

// The value of an environment variable; nothing when it isn't set. The exact name wins, else its case doesn't count.
// Where the machine doesn't know `username` and `appdata` (compared case-blind) they are the user's name and
// configuration folder, in the system's form.
std::optional<std::wstring> environment(std::wstring_view name);
// A variable known under another spelling keeps it and takes the value.
std::error_code setEnvironment(std::wstring_view name, std::wstring_view value);

}  // namespace os
