#include "os/windows/child.h"

#include <array>
#include <cstddef>
#include <vector>

namespace os {
namespace {

Handle openNothing(DWORD access) {
  SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
  return Handle(::CreateFileW(L"NUL", access, kShared, &inherited, OPEN_EXISTING, 0, nullptr));
}

// The handles that a child gets: without such a list it would get all that are open for another one at that moment.
class HandleList {
 public:
  explicit HandleList(std::vector<HANDLE> handles) : handles_(std::move(handles)) {
    SIZE_T size = 0;
    ::InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
    memory_.resize(size);
    auto* const list = reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(memory_.data());
    if (!::InitializeProcThreadAttributeList(list, 1, 0, &size)) return;
    list_ = list;
    ::UpdateProcThreadAttribute(list_, 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, handles_.data(),
                                handles_.size() * sizeof(HANDLE), nullptr, nullptr);
  }
  ~HandleList() {
    if (list_) ::DeleteProcThreadAttributeList(list_);
  }
  HandleList(const HandleList&) = delete;
  HandleList& operator=(const HandleList&) = delete;
  [[nodiscard]] LPPROC_THREAD_ATTRIBUTE_LIST get() const { return list_; }

 private:
  std::vector<HANDLE> handles_;
  std::vector<std::byte> memory_;
  LPPROC_THREAD_ATTRIBUTE_LIST list_ = nullptr;
};

}  // namespace

Handle inheritable(HANDLE handle) {
  HANDLE copy = nullptr;
  const HANDLE self = ::GetCurrentProcess();
  if (!handle || !::DuplicateHandle(self, handle, self, &copy, 0, TRUE, DUPLICATE_SAME_ACCESS)) return {};
  return Handle(copy);
}

ChildStreams closedStreams() {
  return {openNothing(GENERIC_READ), openNothing(GENERIC_WRITE), openNothing(GENERIC_WRITE)};
}

ChildStreams quietStreams() {
  ChildStreams streams = closedStreams();
  const HANDLE fault = ::GetStdHandle(STD_ERROR_HANDLE);
  for (Handle* const stream : {&streams.output, &streams.fault})
    if (Handle own = inheritable(fault)) *stream = std::move(own);
  return streams;
}

Result<Child> startChild(ChildStart start, const ChildStreams* streams) {
  STARTUPINFOEXW how{};
  how.StartupInfo.cb = sizeof how;
  std::vector<HANDLE> handles;
  if (streams) {
    handles = {streams->input.get(), streams->output.get(), streams->fault.get()};
    how.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
    how.StartupInfo.hStdInput = handles[0];
    how.StartupInfo.hStdOutput = handles[1];
    how.StartupInfo.hStdError = handles[2];
  }
  const HandleList list(handles);
  if (streams) how.lpAttributeList = list.get();
  PROCESS_INFORMATION made{};
  const DWORD flags = start.flags | CREATE_UNICODE_ENVIRONMENT | (streams ? EXTENDED_STARTUPINFO_PRESENT : 0);
  const BOOL isMade = ::CreateProcessW(start.program.c_str(), start.line.data(), nullptr, nullptr, streams != nullptr,
                                       flags, start.environment.empty() ? nullptr : start.environment.data(),
                                       start.folder.empty() ? nullptr : start.folder.c_str(), &how.StartupInfo, &made);
  if (!isMade) return {{}, lastError()};
  return {{Handle(made.hProcess), Handle(made.hThread)}, {}};
}

}  // namespace os
