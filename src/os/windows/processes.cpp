#include "os/processes.h"

#include "os/gate.h"
#include "os/surroundings.h"
#include "os/windows/programs.h"
#include "os/windows_rules.h"
#include "text/encoding.h"

// Behind what it needs.
#include <shellapi.h>

namespace os {
namespace {

const auto kNoSuch = std::make_error_code(std::errc::no_such_file_or_directory);

std::error_code judgeFolder(std::wstring_view folder) {
  return folder.empty() || files().isFolder(folder) ? std::error_code{} : kNoSuch;
}

Result<int> ended(ChildStart start, std::wstring_view folder) {
  start.folder = folderForPrograms(folder);
  start.flags = CREATE_NO_WINDOW;
  const ChildStreams streams = quietStreams();
  const Result<Child> child = startChild(std::move(start), &streams);
  if (!child) return {0, child.error};
  DWORD status = 0;
  if (::WaitForSingleObject(child.value.process.get(), INFINITE) != WAIT_OBJECT_0 ||
      !::GetExitCodeProcess(child.value.process.get(), &status))
    return {0, lastError()};
  return {static_cast<int>(status), {}};
}

// The command processor answers 1 for a program that isn't there, as programs do for much else; 9009 in its scripts.
bool isUnknown(int status, std::wstring_view word, std::wstring_view folder) {
  constexpr int kUnknown = 1, kUnknownInScript = 9009;
  if (status != kUnknown && status != kUnknownInScript) return false;
  const bool isWord = !word.empty() && word.find_first_of(L"(@%&|<>^") == word.npos;
  return isWord && !windows::isBuiltIn(word) && findProgram(word, folder, true).kind == Program::Kind::none;
}

std::error_code openDocument(const std::wstring& file, const std::wstring& arguments, const std::wstring& folder) {
  SHELLEXECUTEINFOW how{};
  how.cbSize = sizeof how;
  how.fMask = SEE_MASK_NOASYNC | SEE_MASK_FLAG_NO_UI;
  how.lpVerb = L"open";
  how.lpFile = file.c_str();
  how.lpParameters = arguments.empty() ? nullptr : arguments.c_str();
  how.lpDirectory = folder.empty() ? nullptr : folder.c_str();
  how.nShow = SW_SHOWNORMAL;
  if (::ShellExecuteExW(&how)) return {};
  const DWORD error = ::GetLastError();
  return error == ERROR_NO_ASSOCIATION ? std::make_error_code(std::errc::function_not_supported) : errorOf(error);
}

class MachineProcesses : public Processes {
  // Asked here, as whoever opens nothing needs no grant for it.
  std::error_code doOpen(std::wstring_view path) override {
    if (Gate* const asked = gate())
      if (const auto error = asked->open(path)) return error;
    if (!files().exists(path)) return kNoSuch;
    return openDocument(windows::forPrograms(text::fromUtf8(mounts().machine(path))), {}, {});
  }

  Result<int> doRun(std::wstring_view command, std::wstring_view folder) override {
    if (const auto error = judgeFolder(folder)) return {0, error};
    const std::wstring line = withMachinePaths(command);
    const windows::FirstWord first = windows::firstWord(line);
    // A confined list's name is never a file that lies where it runs.
    const bool alsoInFolder = !gate();
    if (!windows::needsProcessor(line) && !windows::isBuiltIn(first.word)) {
      const Program program = findProgram(first.word, folder, alsoInFolder);
      if (program.kind == Program::Kind::none) return {first.word.empty() ? 0 : kNoProgram, {}};
      return ended(startOf(program, line.substr(first.end)), folder);
    }
    Result<int> result = ended(startOfProcessor(line), folder);
    if (result && isUnknown(result.value, first.word, folder)) result.value = kNoProgram;
    return result;
  }

  std::error_code doStart(std::wstring_view program, std::wstring_view arguments, std::wstring_view folder) override {
    if (const auto error = judgeFolder(folder)) return error;
    if (program.size() > 1 && program.front() == L'"' && program.back() == L'"')
      program = program.substr(1, program.size() - 2);
    if (files().isFolder(wholeFrom(folder, program))) return doOpen(wholeFrom(folder, program));
    // A confined list's name is one of the folder where just that file lies there, as it was judged: none with an end
    // put behind it.
    const Program found = findProgram(program, folder, !gate() || files().exists(joined(folder, program)));
    if (found.kind == Program::Kind::none) return kNoSuch;
    if (found.kind == Program::Kind::document) return doOpen(wholeFrom(folder, program));
    ChildStart start = startOf(found, arguments.empty() ? std::wstring() : L" " + withMachinePaths(arguments));
    start.folder = folderForPrograms(folder);
    start.flags = CREATE_NEW_PROCESS_GROUP | CREATE_NEW_CONSOLE;
    return startChild(std::move(start), nullptr).error;
  }
};

}  // namespace

std::unique_ptr<Processes> machineProcesses() { return std::make_unique<MachineProcesses>(); }

}  // namespace os
