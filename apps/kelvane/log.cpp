// kelvane log: a run's log as an indented tree.
#include "kelvane/base/fault.h"
#include "kelvane/base/places.h"
#include "kelvane/base/verb.h"
#include "kelvane/log/lines.h"
#include "os/text_files.h"
#include "text/encoding.h"

namespace kelvane {
namespace {

class Log : public Verb {
 public:
  std::vector<OptionRow> options() override {
    return {{"file", "FILE", "a log of a run", &file_},
            {"--level", "0|1|2|8", "0: all but debug lines, 1: warnings and errors, 2: errors, 8: all", &level_}};
  }
  // kErrors when the log holds errors.
  int run(Console& console) override {
    const auto read = os::readText(systemPath(file_));
    if (!read) throw Fault(file_ + " can't be read: " + read.error.message());
    const std::vector<LogLine> lines = logLines(read.value);
    if (lines.empty()) throw Fault(file_ + " is no log: no line begins with a level");
    const int level = level_[0] - '0';
    bool errors = false;
    for (const LogLine& line : lines) {
      errors = errors || line.level == 2;
      if (isShown(line, level)) console.result(drawn(console, line));
    }
    return errors ? kErrors : kFine;
  }

 private:
  static std::string drawn(const Console& console, const LogLine& line) {
    const std::string indent(2 * line.depth, ' ');
    return indent + console.inked(ink(line.level), text::toUtf8(line.text));
  }
  static Ink ink(int level) {
    switch (level) {
      case 1:
      case 3:
        return Ink::yellow;
      case 2:
        return Ink::red;
      case 8:
        return Ink::dim;
      case 9:
        return Ink::bold;
      default:
        return Ink::plain;
    }
  }

  std::string file_, level_ = "0";
};

}  // namespace

std::unique_ptr<Verb> makeLog() { return std::make_unique<Log>(); }

}  // namespace kelvane
