// kelvane why: why a model is or isn't worked by a list, from the table to each action.
#include "core/state.h"
#include "documents/action_list.h"
#include "kelvane/base/columns.h"
#include "kelvane/base/fault.h"
#include "kelvane/base/verb.h"
#include "kelvane/run/config.h"
#include "kelvane/run/driver.h"
#include "kelvane/run/filter_explanation.h"
#include "kelvane/run/place.h"
#include "kelvane/run/task_verdict.h"
#include "run/choosers.h"
#include "run/model_table.h"
#include "text/encoding.h"

namespace kelvane {
namespace {

struct TableVerdict {
  bool worked = false;
  std::string reason;
};

TableVerdict judgedByTable(creo::ProMdl model) {
  using enum run::RowVerdict;
  switch (run::judgeModel(model)) {
    case typeIsOff:
      return {false, "no row: the button of its type is off"};
    case filterUnreadable:
      return {false, "no row: the filter file can't be read"};
    case filterRefuses:
      return {false, "no row: the filter file refuses it"};
    case listFilterRefuses:
      return {false, "no row: the list's filter refuses it"};
    case instancesAreOff:
      return {false, "no row: it is an instance, and the button of instances is off"};
    case alreadyReworked:
      return {false, "a row, not selected: its history says that this list has worked it"};
    case selected:
      break;
  }
  const auto& state = core::pluginState();
  if (state.checkModifiable && !creo::ProMdlIsModifiable(model, false).value) {
    return {false, "a row, selected, but passed over: the model can't be modified"};
  }
  return {true, "a row, selected"};
}

class Why : public Verb {
 public:
  std::vector<OptionRow> options() override {
    return {{"package", "PACKAGE", "a .kvz, or a folder of that layout", &options_.package},
            {"list", "LIST", "an action list of it, with or without .xml", &options_.list},
            {"folder", "DIR", "folder of models", &options_.folder},
            {"model", "NAME.EXT", "the model", &model_},
            {"--filter", "FILE", "as with run: a filter file of the package", &options_.filter},
            {"--config", "DIR", "a folder with kvd_main.cfg", &options_.config},
            {"--set", "KVD_KEY=VALUE", "a key of the configuration", &options_.settings}};
  }

  int run(Console& console) override {
    options_.dryRun = true;
    const ModelFileName wanted = modelFileName(model_);
    const RunPlace place = prepareRun(options_);
    tellConfigFaults(options_, console);
    headless::SessionOptions sessionOptions = lookingAt(place.models);
    sessionOptions.textFolder = L"i:\\text\\";
    headless::Session session(sessionOptions);
    const creo::ProMdl model = retrieved(session, model_);
    RunDriver driver(session, place);
    driver.openTool();
    driver.open({wanted});
    console.result(console.inked(Ink::bold, label(wanted.name, wanted.type)) + "  " + place.list + " of " +
                   place.package);
    const TableVerdict table = judgedByTable(model);
    show(console, "table", table.worked, table.reason);
    if (const core::XmlNode* filter = run::filterInForce()) {
      for (const std::string& line : explainFilter(*filter, model).lines) detail(console, line);
    }
    showActions(console, model);
    return table.worked ? kFine : kErrors;
  }

 private:
  static void show(Console& console, const std::string& what, bool yes, const std::string& reason) {
    console.result(console.inked(yes ? Ink::green : Ink::red, yes ? "yes  " : "no   ") + what +
                   (reason.empty() ? "" : ": " + reason));
  }
  static void detail(Console& console, const std::string& line) {
    console.result("       " + console.inked(Ink::dim, line));
  }

  static void showActions(Console& console, creo::ProMdl model) {
    const auto loaded = core::xmlLoadFile(run::selectedListPath());
    if (!loaded) throw Fault(readable(loaded.fault.sentence()));
    const documents::ActionList list = documents::actionList(*loaded.value);
    if (!list.body) return;
    for (const TaskVerdict& verdict : judgeSection(*list.body, 'B', model)) {
      show(console, verdict.place + " " + verdict.type, verdict.runs, verdict.reason);
      for (const std::string& line : verdict.details) detail(console, line);
    }
  }

  RunOptions options_;
  std::string model_;
};

}  // namespace

std::unique_ptr<Verb> makeWhy() { return std::make_unique<Why>(); }

}  // namespace kelvane
