// kelvane ui: the dialogs of the plug-in in a browser.
#include "kelvane/base/fault.h"
#include "kelvane/base/verb.h"
#include "kelvane/run/option_rows.h"
#include "kelvane/ui/view.h"

namespace kelvane {
namespace {

class UiVerb : public Verb {
 public:
  std::vector<OptionRow> options() override {
    RunOptions& o = options_.surroundings;
    std::vector<OptionRow> rows = {
        {"--models", "DIR", "folder of models", &o.folder},
        {"--packages", "DIR", "a folder of packages: .kvz files, and folders of that layout", &options_.packages},
        {"--open", "NAME.EXT", "opens this model first", &options_.open},
        {"--port", "N", "the port on 127.0.0.1; without it a free one", &options_.port},
        {"--language", "en|de", "the language of the dialogs", &options_.language},
        {"--vault", "VAULT", "a PDM folder whose workspace the folder of models is; the first one is active",
         &o.vaults},
        {"--workspace", "NAME", "the workspace's name; without it that of the folder", &o.workspace},
        {"--user", "NAME", "who works; without it who is logged in", &o.user},
        {"--no-programs", "", "starts no program; an action that asks for one gets an error line", &o.noPrograms},
        {"--no-web", "", "asks nothing of the web; an action that does gets an error line", &o.noWeb},
    };
    for (const auto& more : {surroundingRows(o), confinementRows(o.grants)})
      rows.insert(rows.end(), more.begin(), more.end());
    rows.push_back(trustRow(o.grants));
    return rows;
  }

  int run(Console& console) override {
    if (options_.surroundings.folder.empty()) throw Fault("ui: --models DIR is missing");
    if (options_.packages.empty()) throw Fault("ui: --packages DIR is missing");
    return view::show(options_, console);
  }

 private:
  view::ViewOptions options_;
};

}  // namespace

std::unique_ptr<Verb> makeUi() { return std::make_unique<UiVerb>(); }

}  // namespace kelvane
