#include "headless/geometry/foreign_program.h"

#include <filesystem>

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
    if (program_ != programFor(foreignPlace())) helper_.reset();
    const bool isUsed = helper_ != nullptr;
    ForeignAnswer answer = askOnce(request, time);
    return answer.end == ForeignEnd::ended && isUsed ? askOnce(request, time) : answer;
  }
  void end() { helper_.reset(); }

 private:
  ForeignAnswer askOnce(const std::string& request, std::chrono::milliseconds time) {
    if (!helper_) {
      program_ = programFor(foreignPlace());
      auto started = os::startHelper(program_);
      if (!started) return {ForeignEnd::notStarted, {}, text::fromUtf8(program_ + ": " + started.error.message())};
      helper_ = std::move(started.value);
    }
    auto answer = helper_->ask(request, time);
    if (answer) return {ForeignEnd::answered, std::move(answer.value), {}};
    helper_.reset();
    return {answer.error == std::errc::timed_out ? ForeignEnd::late : ForeignEnd::ended, {}, {}};
  }

  std::string program_;
  std::unique_ptr<os::Helper> helper_;
};

Asked& program() {
  static Asked entry;
  return entry;
}

}  // namespace

ForeignPlace& foreignPlace() {
  static ForeignPlace place;
  return place;
}

ForeignAnswer askForeign(const std::string& request, std::chrono::milliseconds time) {
  if (time <= std::chrono::milliseconds(0)) return {ForeignEnd::late, {}, {}};
  return program().ask(request, time);
}

void endForeign() { program().end(); }

}  // namespace headless::geometry
