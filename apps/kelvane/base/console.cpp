#include "kelvane/base/console.h"

#include <random>

#include "kelvane/base/escapes.h"
#include "os/processes.h"

namespace kelvane {
namespace {

constexpr const char* kEraseLine = "\r\x1b[K";
// Stands for a colour's own sequence, with the colour's digit behind it, until what is shown has been escaped. Names of
// files hold any bytes, but none can know this number.
const std::string& inkMark() {
  static const std::string mark = '\xFF' + std::to_string(std::random_device()()) + ':';
  return mark;
}

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
  return "\x1b[0m";
}

std::string marked(Ink ink) { return inkMark() + static_cast<char>('0' + static_cast<int>(ink)); }

// What stands between the marks is escaped.
std::string withInks(std::string_view text, std::string (*escaped)(std::string_view)) {
  std::string result;
  for (std::size_t at = text.find(inkMark()); at != text.npos; at = text.find(inkMark())) {
    result += escaped(text.substr(0, at));
    text.remove_prefix(at + inkMark().size());
    result += code(static_cast<Ink>(text.front() - '0'));
    text.remove_prefix(1);
  }
  return result += escaped(text);
}

std::string shownLine(std::string_view line) { return withInks(line, withEscapes) + '\n'; }

}  // namespace

std::ostream& Console::clearedErr() {
  if (passing_) err_ << kEraseLine;
  passing_ = false;
  return err_;
}

void Console::result(std::string_view line) {
  if (passing_) clearedErr() << std::flush;
  out_ << shownLine(line);
}

void Console::resultLines(std::string_view text) {
  if (passing_) clearedErr() << std::flush;
  out_ << withInks(text, escapedLines) << '\n';
}

void Console::resultJson(std::string_view text) {
  if (passing_) clearedErr() << std::flush;
  out_ << escapedJson(text) << '\n';
}

void Console::resultBytes(std::string_view bytes) {
  if (passing_) clearedErr() << std::flush;
  out_ << bytes;
}

void Console::note(std::string_view line) {
  if (!quiet_) clearedErr() << shownLine(line);
}

void Console::trouble(std::string_view line) { clearedErr() << shownLine(line); }

void Console::passing(std::string_view line) {
  if (!live()) return;
  err_ << kEraseLine << withInks(line, withEscapes) << std::flush;
  passing_ = true;
}

void Console::flush() {
  out_ << std::flush;
  clearedErr() << std::flush;
}

std::string Console::inked(Ink ink, std::string_view text) const {
  if (!colours_ || ink == Ink::plain) return std::string(text);
  return marked(ink).append(text).append(marked(Ink::plain));
}

void Console::colours(const std::string& when, bool outIsTerminal) {
  const auto refused = os::environment(L"NO_COLOR");
  colours_ = when == "always" || (when == "auto" && outIsTerminal && (!refused || refused->empty()));
}

}  // namespace kelvane
