#include "os/processes.h"

#include <utility>

#include "os/doors.h"
#include "os/durable.h"
#include "os/environment_door.h"
#include "os/gate.h"

namespace os {
namespace {

std::wstring startLine(std::wstring_view program, std::wstring_view arguments) {
  std::wstring line = L"start " + std::wstring(program);
  if (!arguments.empty()) line.append(L" ").append(arguments);
  return line;
}

EnvironmentDoor& environmentDoor() {
  static EnvironmentDoor door = &machineEnvironment;
  return door;
}

}  // namespace

EnvironmentGuard::EnvironmentGuard(EnvironmentDoor other)
    : saved_(std::exchange(environmentDoor(), std::move(other))) {}
EnvironmentGuard::~EnvironmentGuard() { environmentDoor() = std::move(saved_); }

std::optional<std::wstring> environment(std::wstring_view name) { return environmentDoor()(name); }

std::error_code Processes::open(std::wstring_view path) {
  if (const auto withheld = heldBack(doors().programs, L"open " + std::wstring(path))) return *withheld;
  if (const auto unsafe = settleWritten()) return unsafe;
  return doOpen(path);
}

// What a confined list may not start is refused in a dry run too, before it would be noted.
Result<int> Processes::run(std::wstring_view command, std::wstring_view folder) {
  if (Gate* const asked = gate())
    if (const auto error = asked->run(command, folder)) return {0, error};
  if (const auto withheld = heldBack(doors().programs, L"run " + std::wstring(command))) return {0, *withheld};
  if (const auto unsafe = settleWritten()) return {0, unsafe};
  return doRun(command, folder);
}

std::error_code Processes::start(std::wstring_view program, std::wstring_view arguments, std::wstring_view folder) {
  if (Gate* const asked = gate())
    if (const auto error = asked->start(program, arguments, folder)) return error;
  if (const auto withheld = heldBack(doors().programs, startLine(program, arguments))) return *withheld;
  if (const auto unsafe = settleWritten()) return unsafe;
  return doStart(program, arguments, folder);
}

std::error_code RecordedProcesses::doOpen(std::wstring_view path) {
  asked_.emplace_back(path);
  return {};
}

Result<int> RecordedProcesses::doRun(std::wstring_view command, std::wstring_view /*folder*/) {
  asked_.push_back(L"run " + std::wstring(command));
  return {status_, {}};
}

std::error_code RecordedProcesses::doStart(std::wstring_view program, std::wstring_view arguments,
                                           std::wstring_view /*folder*/) {
  asked_.push_back(startLine(program, arguments));
  return {};
}

}  // namespace os
