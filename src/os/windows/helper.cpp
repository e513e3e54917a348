// A helper is a process with one pipe in both directions, its standard input, in a job that ends with this process.
#include "os/helper.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>
#include <optional>

#include "os/windows/child.h"
#include "os/windows/own_environment.h"
#include "os/windows_rules.h"
#include "text/encoding.h"

// Behind what it needs.
#include <psapi.h>

namespace os {
namespace {

using Steady = std::chrono::steady_clock;

// What is sent is its length, then its bytes. Length as the machine has it: both ends are one build.
using Length = std::uint64_t;
constexpr DWORD kPiece = 1 << 16;
const auto kBroken = std::make_error_code(std::errc::broken_pipe);

// One end of the wire. Nothing is waited for beyond the deadline, where there is one; then the handle must be one that
// is opened for it.
class Wire {
 public:
  explicit Wire(HANDLE pipe) : pipe_(pipe) {}
  void until(Steady::time_point deadline) {
    deadline_ = deadline;
    event_ = Handle(::CreateEventW(nullptr, TRUE, FALSE, nullptr));
  }

  std::error_code send(std::string_view bytes) {
    const Length length = bytes.size();
    if (const auto error = sendAll({reinterpret_cast<const char*>(&length), sizeof length})) return error;
    return sendAll(bytes);
  }
  // Grows with what comes, so that a length alone takes no memory.
  Result<std::string> receive() {
    std::string head, bytes;
    if (const auto error = receiveInto(head, sizeof(Length))) return {{}, error};
    Length length = 0;
    std::memcpy(&length, head.data(), sizeof length);
    if (const auto error = receiveInto(bytes, length)) return {{}, error};
    return {std::move(bytes), {}};
  }

 private:
  // One transfer to its end; how many bytes it moved.
  template <class Transfer>
  Result<DWORD> moved(Transfer transfer) {
    DWORD count = 0;
    if (!deadline_)
      return transfer(&count, nullptr) && count > 0 ? Result<DWORD>{count, {}} : Result<DWORD>{0, kBroken};
    OVERLAPPED state{};
    state.hEvent = event_.get();
    if (!transfer(nullptr, &state) && ::GetLastError() != ERROR_IO_PENDING) return {0, kBroken};
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(*deadline_ - Steady::now()).count();
    const auto wait = static_cast<DWORD>(std::clamp<long long>(left, 0, 1 << 30));
    const bool isLate = ::WaitForSingleObject(event_.get(), wait) != WAIT_OBJECT_0;
    if (isLate) ::CancelIoEx(pipe_, &state);
    // Its memory is this function's, so that its end is waited for.
    const bool isMoved = ::GetOverlappedResult(pipe_, &state, &count, TRUE) && count > 0;
    if (isMoved) return {count, {}};
    return {0, isLate ? std::make_error_code(std::errc::timed_out) : kBroken};
  }

  std::error_code sendAll(std::string_view bytes) {
    while (!bytes.empty()) {
      const auto most = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), kPiece));
      const Result<DWORD> sent = moved(
          [&](DWORD* count, OVERLAPPED* state) { return ::WriteFile(pipe_, bytes.data(), most, count, state) != 0; });
      if (!sent) return sent.error;
      bytes.remove_prefix(sent.value);
    }
    return {};
  }
  std::error_code receiveInto(std::string& bytes, Length length) {
    std::array<char, kPiece> piece{};
    while (bytes.size() < length) {
      const auto most = static_cast<DWORD>(std::min<Length>(piece.size(), length - bytes.size()));
      const Result<DWORD> got = moved(
          [&](DWORD* count, OVERLAPPED* state) { return ::ReadFile(pipe_, piece.data(), most, count, state) != 0; });
      if (!got) return got.error;
      bytes.append(piece.data(), got.value);
    }
    return {};
  }

  HANDLE pipe_;
  std::optional<Steady::time_point> deadline_;
  Handle event_;
};

// A job whose processes end with its last handle, so with this process, however that ends.
Handle makeJob() {
  Handle job(::CreateJobObjectW(nullptr, nullptr));
  JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
  limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
  ::SetInformationJobObject(job.get(), JobObjectExtendedLimitInformation, &limits, sizeof limits);
  return job;
}

class RunningHelper : public Helper {
 public:
  RunningHelper(Handle process, Handle job, Handle pipe)
      : process_(std::move(process)), job_(std::move(job)), pipe_(std::move(pipe)) {}
  ~RunningHelper() override { end(); }

  Result<std::string> ask(std::string_view request, std::chrono::milliseconds time) override {
    if (!process_) return {{}, kBroken};
    Wire wire(pipe_.get());
    wire.until(Steady::now() + time);
    Result<std::string> answer{{}, wire.send(request)};
    if (!answer.error) answer = wire.receive();
    if (answer.error) end();
    return answer;
  }

 private:
  void end() {
    if (!process_) return;
    ::TerminateProcess(process_.get(), 1);
    ::WaitForSingleObject(process_.get(), INFINITE);
    process_ = {};
  }

  Handle process_, job_, pipe_;
};

struct Ends {
  Handle ours, theirs;
};
Result<Ends> makePipe() {
  static std::atomic<unsigned> counter{0};
  const std::wstring name = L"\\\\.\\pipe\\kelvane-" + std::to_wstring(::GetCurrentProcessId()) + L"-" +
                            std::to_wstring(::GetTickCount64()) + L"-" + std::to_wstring(counter++);
  constexpr DWORD kMode = PIPE_ACCESS_DUPLEX | FILE_FLAG_OVERLAPPED | FILE_FLAG_FIRST_PIPE_INSTANCE;
  constexpr DWORD kKind = PIPE_TYPE_BYTE | PIPE_WAIT | PIPE_REJECT_REMOTE_CLIENTS;
  Ends ends;
  ends.ours = Handle(::CreateNamedPipeW(name.c_str(), kMode, kKind, 1, kPiece, kPiece, 0, nullptr));
  if (!ends.ours) return {{}, lastError()};
  SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
  ends.theirs =
      Handle(::CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE, 0, &inherited, OPEN_EXISTING, 0, nullptr));
  if (!ends.theirs) return {{}, lastError()};
  return {std::move(ends), {}};
}

}  // namespace

Result<std::unique_ptr<Helper>> startHelper(const std::string& program) {
  Result<Ends> ends = makePipe();
  if (!ends) return {nullptr, ends.error};
  Handle job = makeJob();
  ChildStart start;
  start.program = windows::forPrograms(text::fromUtf8(program));
  start.line = windows::quoted(start.program);
  // Without a window of its own, and so apart from the keyboard of this one.
  start.flags = CREATE_NO_WINDOW | CREATE_NEW_PROCESS_GROUP | CREATE_SUSPENDED;
  start.environment = ownEnvironment();
  ChildStreams streams = closedStreams();
  streams.input = std::move(ends.value.theirs);
  Result<Child> child = startChild(std::move(start), &streams);
  if (!child) return {nullptr, child.error};
  ::AssignProcessToJobObject(job.get(), child.value.process.get());
  ::ResumeThread(child.value.thread.get());
  return {std::make_unique<RunningHelper>(std::move(child.value.process), std::move(job), std::move(ends.value.ours)),
          {}};
}

// Pipes of a shell are read or written; the wire is both.
bool serveRequests(const std::function<std::string(std::string_view)>& answer) {
  const HANDLE pipe = ::GetStdHandle(STD_INPUT_HANDLE);
  DWORD written = 0;
  if (::GetFileType(pipe) != FILE_TYPE_PIPE || !::WriteFile(pipe, "", 0, &written, nullptr)) return false;
  Wire wire(pipe);
  while (true) {
    const Result<std::string> request = wire.receive();
    if (!request || wire.send(answer(request.value))) return true;
  }
}

// One job holds this process from the first call on; its limits are set anew with each request.
void limitThisProcess(std::uint64_t bytes, std::chrono::seconds processor) {
  static const Handle job = [] {
    Handle made(::CreateJobObjectW(nullptr, nullptr));
    if (made && !::AssignProcessToJobObject(made.get(), ::GetCurrentProcess())) made = {};
    return made;
  }();
  if (!job) return;
  PROCESS_MEMORY_COUNTERS_EX memory{};
  ::K32GetProcessMemoryInfo(::GetCurrentProcess(), reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&memory), sizeof memory);
  FILETIME made{}, ended{}, kernel{}, user{};
  ::GetProcessTimes(::GetCurrentProcess(), &made, &ended, &kernel, &user);
  constexpr LONGLONG kTicks = 10'000'000;  // a second's
  JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
  limits.BasicLimitInformation.LimitFlags =
      JOB_OBJECT_LIMIT_PROCESS_MEMORY | JOB_OBJECT_LIMIT_PROCESS_TIME | JOB_OBJECT_LIMIT_DIE_ON_UNHANDLED_EXCEPTION;
  limits.ProcessMemoryLimit = memory.PrivateUsage + static_cast<SIZE_T>(bytes);
  limits.BasicLimitInformation.PerProcessUserTimeLimit.QuadPart =
      (static_cast<LONGLONG>(user.dwHighDateTime) << 32) + user.dwLowDateTime + (processor.count() + 1) * kTicks;
  ::SetInformationJobObject(job.get(), JobObjectExtendedLimitInformation, &limits, sizeof limits);
}

}  // namespace os
