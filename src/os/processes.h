// Other programs, and the environment they inherit.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "os/result.h"

namespace os {

// Paths stand in the system's own form, also inside command lines. Behind the door for programs (doors.h).
class Processes {
 public:
  virtual ~Processes() = default;
  // Opens a file or folder with the program that the system has for it, without waiting. Without such a program:
  // function_not_supported.
  std::error_code open(std::wstring_view path);
  // Runs a command line by the system's command processor and waits; its exit status, kNoProgram where the command
  // processor finds no such program. The program reads nothing, and what it prints goes to standard error.
  // folder: where it runs, this process's own if it is empty; no_such_file_or_directory when it isn't there.
  Result<int> run(std::wstring_view command, std::wstring_view folder);
  // Starts a program with its arguments, or opens a document, without waiting. program: a path, in quotes or not, or a
  // name that the system looks for. no_such_file_or_directory: no such program, document or folder.
  std::error_code start(std::wstring_view program, std::wstring_view arguments, std::wstring_view folder);

 private:
  virtual std::error_code doOpen(std::wstring_view path) = 0;
  virtual Result<int> doRun(std::wstring_view command, std::wstring_view folder) = 0;
  virtual std::error_code doStart(std::wstring_view program, std::wstring_view arguments, std::wstring_view folder) = 0;
};
constexpr int kNoProgram = 127;
std::unique_ptr<Processes> machineProcesses();

// Starts nothing and keeps what was asked: a path to open as it stands, "run COMMAND", "start PROGRAM ARGUMENTS".
class RecordedProcesses : public Processes {
 public:
  // How the runs that follow end.
  void endWith(int status) { status_ = status; }
  [[nodiscard]] const std::vector<std::wstring>& asked() const { return asked_; }

 private:
  std::error_code doOpen(std::wstring_view path) override;
  Result<int> doRun(std::wstring_view command, std::wstring_view folder) override;
  std::error_code doStart(std::wstring_view program, std::wstring_view arguments, std::wstring_view folder) override;

  int status_ = 0;
  std::vector<std::wstring> asked_;
};

// The value of an environment variable; nothing when it isn't set. The exact name wins, else its case doesn't count.
// Where the machine doesn't know `username` and `appdata` (compared case-blind) they are the user's name and
// configuration folder, in the system's form.
std::optional<std::wstring> environment(std::wstring_view name);
// A variable known under another spelling keeps it and takes the value.
std::error_code setEnvironment(std::wstring_view name, std::wstring_view value);

}  // namespace os
