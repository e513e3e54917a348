// kelvane replay: the plug-in against a recorded trace, without a session.
#include "kelvane/run/replay.h"

#include "kelvane/base/verb.h"

namespace kelvane {
namespace {

class Replay : public Verb {
 public:
  std::vector<OptionRow> options() override {
    return {{"package", "PACKAGE",
             "the package of the trace, a .kvz or a folder of that layout, or a folder of packages", &package_},
            {"trace", "TRACE", "a file that 'kelvane run --trace' or the plug-in wrote", &trace_}};
  }
  int run(Console& console) override { return replayTrace(package_, trace_, console); }

 private:
  std::string package_, trace_;
};

}  // namespace

std::unique_ptr<Verb> makeReplay() { return std::make_unique<Replay>(); }

}  // namespace kelvane
