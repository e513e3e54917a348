#include "headless/geometry/foreign_program.h"

#include <array>
#include <filesystem>
#include <memory>
#include <optional>

#include "headless/geometry/foreign_place.h"
#include "os/executable.h"
#include "os/helper.h"
#include "os/machine_path.h"
#include "os/program.h"
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
    begin(request, time);
    return answer(request, time);
  }
  // What was begun is answered before the next begins.
  void begin(const std::string& request, std::chrono::milliseconds time) {
    isUsed_ = helper_ != nullptr && program_ == programFor(foreignPlace());
    failure_ = start();
    if (!failure_) end_ = endOf(helper_->begin(request, time));
  }
  ForeignAnswer answer(const std::string& request, std::chrono::milliseconds time) {
    ForeignAnswer answer = received();
    if (answer.end != ForeignEnd::ended || !isUsed_) return answer;
    begin(request, time);
    return received();
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
  ForeignAnswer received() {
    if (failure_) return *failure_;
    ForeignAnswer answer{end_, {}, {}};
    if (end_ == ForeignEnd::answered) {
      auto told = helper_->answer();
      answer.end = endOf(told.error);
      answer.wire = std::move(told.value);
    }
    if (answer.end != ForeignEnd::answered) helper_.reset();
    return answer;
  }

  std::string program_;
  std::unique_ptr<os::Helper> helper_;
  // Of what was begun.
  bool isUsed_ = false;
  std::optional<ForeignAnswer> failure_;
  ForeignEnd end_ = ForeignEnd::answered;
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
  std::vector<ForeignAnswer> answers;
  const auto begin = [&](std::size_t i) {
    if (i < requests.size()) programs().at(i % kPrograms).begin(requests[i], time);
  };
  for (std::size_t i = 0; i < kPrograms; ++i) begin(i);
  for (std::size_t i = 0; i < requests.size(); ++i) {
    answers.push_back(programs().at(i % kPrograms).answer(requests[i], time));
    begin(i + kPrograms);
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
