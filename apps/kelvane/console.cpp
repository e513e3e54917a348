#include "kelvane/console.h"

#include "os/processes.h"

namespace kelvane {
namespace {

constexpr const char* kEraseLine = "\r\x1b[K";

const char* code(Ink ink) {
  switch (ink) {
    case Ink::bold:
      return "\x1b[1m";
    case Ink::dim:
      return "\x1b[2m";
    case Ink::red:
      return "\x1b[31m";
    case Ink::green:
      return "\x1b[32m";
    case Ink::yellow:
      return "\x1b[33m";
    case Ink::cyan:
      return "\x1b[36m";
    case Ink::plain:
      break;
  }
  return "";
}

}  // namespace

std::ostream& Console::clearedErr() {
  if (passing_) err_ << kEraseLine;
  passing_ = false;
  return err_;
}

void Console::passing(std::string_view line) {
  if (!live()) return;
  err_ << kEraseLine << line << std::flush;
  passing_ = true;
}

void Console::flush() {
  out_ << std::flush;
  clearedErr() << std::flush;
}

std::string Console::inked(Ink ink, std::string_view text) const {
  if (!colours_ || ink == Ink::plain) return std::string(text);
  return std::string(code(ink)).append(text).append("\x1b[0m");
}

void Console::colours(const std::string& when, bool outIsTerminal) {
  const auto refused = os::environment(L"NO_COLOR");
  colours_ = when == "always" || (when == "auto" && outIsTerminal && (!refused || refused->empty()));
}

}  // namespace kelvane
