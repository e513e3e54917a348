// kelvane watch: models opened, saved and regenerated as told, with the triggers of the configuration hung in.
#include "kelvane/base/verb.h"
#include "kelvane/run/option_rows.h"
#include "kelvane/watch/work.h"

namespace kelvane {
namespace {

class Watch : public Verb {
 public:
  std::vector<OptionRow> options() override {
    RunOptions& o = watched_.surroundings;
    std::vector<OptionRow> rows = {
        {"folder", "DIR", "folder of models", &o.folder},
        {"models", "NAME.EXT", "models that are opened first; then standard input is read, a command a line",
         &watched_.models},
        {"--package", "PACKAGE", "the only package that triggers find; else those of the configured folder",
         &o.package},
        durableRow(o),
        {"--json", "", "a JSON line for each trigger", &watched_.json},
    };
    for (const auto& more : {surroundingRows(o), outputRows(o), confinementRows(o.grants)})
      rows.insert(rows.end(), more.begin(), more.end());
    rows.push_back(trustRow(o.grants));
    return rows;
  }
  int run(Console& console) override { return watch(watched_, console); }

 private:
  WatchOptions watched_;
};

}  // namespace

std::unique_ptr<Verb> makeWatch() { return std::make_unique<Watch>(); }

}  // namespace kelvane
