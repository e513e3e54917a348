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
  // Runs a command line by the system's command processor, waits, and gives its exit status; one that a signal ended
  // has 128 and the signal's number. Paths with a letter, t:\a.csv or "t:\a b.csv", become the machine's, and what they
  // hold means nothing else to the command processor; the rest stays as it stands, with its quotes. Its output goes to
  // standard error.
  virtual Result<int> run(std::wstring_view command) = 0;
};
std::unique_ptr<Processes> machineProcesses();

// Starts nothing and keeps what was asked.
class RecordedProcesses : public Processes {
 public:
  std::error_code open(std::wstring_view path) override {
    asked_.emplace_back(path);
    return {};
  }
  // As if it had ended well.
  Result<int> run(std::wstring_view command) override {
    asked_.emplace_back(command);
    return {};
  }
  [[nodiscard]] const std::vector<std::wstring>& asked() const { return asked_; }

 private:
  std::vector<std::wstring> asked_;
};

// Starts nothing and keeps what was asked; a program that a caller waits for is operation_canceled. For the dry run.
class DryProcesses : public RecordedProcesses {
 public:
  Result<int> run(std::wstring_view command) override {
    RecordedProcesses::run(command);
    return {0, std::make_error_code(std::errc::operation_canceled)};
  }
};

// The value of an environment variable; nothing when it isn't set. The exact name wins, else its case doesn't count.
// Where the machine doesn't know `username` and `appdata` (compared case-blind) they are the user's name and
// configuration folder, in the system's form.
std::optional<std::wstring> environment(std::wstring_view name);
// A variable known under another spelling keeps it and takes the value.
std::error_code setEnvironment(std::wstring_view name, std::wstring_view value);

}  // namespace os
