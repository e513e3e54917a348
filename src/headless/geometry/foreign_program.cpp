#include "headless/geometry/foreign_program.h"

#include <array>
#include <atomic>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <system_error>
#include <thread>

#include "headless/geometry/foreign_place.h"
#include "os/executable.h"
#include "os/helper.h"
#include "os/machine_path.h"
#include "os/program.h"
#include "os/quiet_thread.h"
#include "text/encoding.h"

namespace headless::geometry {
namespace {

constexpr const char* kProgram = "kelvane-import";

std::string programFor(const ForeignPlace& place) {
  if (!place.program.empty()) return place.program;
  const std::string name = os::executableName(kProgram), here = os::parentOf(os::codeFile());
  std::error_code error;
  for (const std::string& folder : {here, os::parentOf(here)}) {
    std::string file = os::withSlash(folder) + name;
    if (std::filesystem::is_regular_file(std::u8string(file.begin(), file.end()), error)) return file;
  }
  return os::withSlash(here) + name;
}

class Asked {
 public:
  ForeignAnswer ask(const std::string& request, std::chrono::milliseconds time) {
    const bool isUsed = helper_ != nullptr && program_ == programFor(foreignPlace());
    ForeignAnswer answer = askOnce(request, time);
    return answer.end == ForeignEnd::ended && isUsed ? askOnce(request, time) : answer;
  }
  // Why it doesn't start.
  std::optional<ForeignAnswer> start() {
    if (program_ != programFor(foreignPlace())) helper_.reset();
    if (helper_) return std::nullopt;
    program_ = programFor(foreignPlace());
    auto started = os::startHelper(program_);
    if (!started)
      return ForeignAnswer{ForeignEnd::notStarted, {}, text::fromUtf8(program_ + ": " + started.error.message())};
    helper_ = std::move(started.value);
    return std::nullopt;
  }
  void end() { helper_.reset(); }

 private:
  static ForeignEnd endOf(const std::error_code& error) {
    if (!error) return ForeignEnd::answered;
    return error == std::errc::timed_out ? ForeignEnd::late : ForeignEnd::ended;
  }
  ForeignAnswer askOnce(const std::string& request, std::chrono::milliseconds time) {
    if (auto failure = start()) return *std::move(failure);
    auto told = helper_->ask(request, time);
    if (told.error) helper_.reset();
    return {endOf(told.error), std::move(told.value), {}};
  }

  std::string program_;
  std::unique_ptr<os::Helper> helper_;
};

// What is done beside this thread as long as this lives, or not at all where the system has no more threads.
class Beside {
 public:
  explicit Beside(const std::function<void()>& work) {
    try {
      thread_ = os::quietThread([work] {
        try {
          work();
        } catch (const std::exception&) {
          // What it left stays unanswered.
        }
      });
    } catch (const std::system_error&) {
      // Then all is done here.
    }
  }
  ~Beside() {
    if (thread_.joinable()) thread_.join();
  }
  Beside(const Beside&) = delete;
  Beside& operator=(const Beside&) = delete;

 private:
  std::thread thread_;
};

// Most requests go to the first.
constexpr std::size_t kPrograms = 2;
std::array<Asked, kPrograms>& programs() {
  static std::array<Asked, kPrograms> entries;
  return entries;
}

}  // namespace

ForeignPlace& foreignPlace() {
  static ForeignPlace place;
  return place;
}

ForeignAnswer askForeign(const std::string& request, std::chrono::milliseconds time) {
  if (time <= std::chrono::milliseconds(0)) return {ForeignEnd::late, {}, {}};
  return programs().front().ask(request, time);
}

std::vector<ForeignAnswer> askForeign(const std::vector<std::string>& requests, std::chrono::milliseconds time) {
  if (time <= std::chrono::milliseconds(0)) return {requests.size(), ForeignAnswer{ForeignEnd::late, {}, {}}};
  std::vector<ForeignAnswer> answers(requests.size(), ForeignAnswer{ForeignEnd::ended, {}, {}});
  std::atomic<std::size_t> next = 0;
  const auto work = [&](Asked& program) {
    for (std::size_t i = next++; i < requests.size(); i = next++) answers[i] = program.ask(requests[i], time);
  };
  {
    const Beside second([&] { work(programs().back()); });  // ends before the answers go
    work(programs().front());
  }
  return answers;
}

void startForeign() {
  for (Asked& program : programs()) program.start();
}

void endForeign() {
  for (Asked& program : programs()) program.end();
}

}  // namespace headless::geometry
