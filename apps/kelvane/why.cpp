// kelvane why: why a model is or isn't worked by a list, from the table to each action; or was or wasn't by a run.
#include <algorithm>
#include <filesystem>

#include "documents/action_list.h"
#include "kelvane/base/columns.h"
#include "kelvane/base/fault.h"
#include "kelvane/base/native_path.h"
#include "kelvane/base/verb.h"
#include "kelvane/base/words.h"
#include "kelvane/journal/telling.h"
#include "kelvane/run/config.h"
#include "kelvane/run/driver.h"
#include "kelvane/run/filter_explanation.h"
#include "kelvane/run/place.h"
#include "kelvane/run/table_verdict.h"
#include "kelvane/run/task_verdict.h"
#include "run/choosers.h"
#include "run/model_table.h"
#include "text/encoding.h"

namespace kelvane {
namespace {

// A model's turn as its record tells it: "worked: changed, 2 errors; wrote gear.prt.2".
std::string turnOf(const Record& turn) {
  std::string line = "worked: " + memberText(turn, "outcome");
  if (const int errors = memberNumber(turn, "errors"); errors > 0)
    addPiece(line, counted(static_cast<std::size_t>(errors), "error"));
  addPiece(line, turn.contains("wrote") ? "wrote " + memberText(turn, "wrote") : std::string(), "; ");
  return line;
}

// Why a model was or wasn't worked, in the words of the run's own journal; and whether it was.
TableVerdict toldBy(const RunJournal& journal, const std::string& model) {
  if (journal.verb() == "undo") {
    const bool isTaken = modelsOf(journal).contains(model);
    return {isTaken, std::string(isTaken ? "took it back" : "took nothing of it back")};
  }
  TableVerdict verdict{false, "it had no row: no start of the run leads to it"};
  for (const Record& record : journal.told) {
    const std::string kind = memberText(record, "record");
    const auto rows = record.value("rows", std::vector<std::string>());
    if (kind == "rows" && std::find(rows.begin(), rows.end(), model) != rows.end())
      verdict.reason = journal.end.is_null() ? "its turn didn't come, or was taken back: the run broke off"
                                             : "its turn didn't come before the run ended";
    if (memberText(record, "model") != model) continue;
    if (kind == "left") verdict.reason = memberText(record, "reason");
    if (kind == "model") verdict = {memberText(record, "outcome") != "skipped", turnOf(record)};
  }
  return verdict;
}

class Why : public Verb {
 public:
  std::vector<OptionRow> options() override {
    return {{"package", "PACKAGE", "a .kvz, or a folder of that layout; or a run's journal, and then just NAME.EXT",
             &options_.package},
            {"list", "LIST", "an action list of it, with or without .xml", &options_.list},
            {"folder", "DIR", "folder of models", &folder_},
            {"model", "NAME.EXT", "the model", &model_},
            {"--filter", "FILE", "as with run: a filter file of the package", &options_.filter},
            {"--config", "DIR", "a folder with kvd_main.cfg", &options_.config},
            {"--set", "KVD_KEY=VALUE", "a key of the configuration", &options_.settings}};
  }

  int run(Console& console) override {
    if (!folder_) return tellFromJournal(options_.package, options_.list, console);
    if (!model_) throw Fault("why: NAME.EXT is required ('kelvane why -h' tells more)");
    options_.folder = *folder_;
    options_.dryRun = true;
    const ModelFileName wanted = modelFileName(*model_);
    const RunPlace place = prepareRun(options_);
    tellConfigFaults(options_, console);
    headless::SessionOptions sessionOptions = lookingAt(place.models);
    sessionOptions.textFolder = L"i:\\text\\";
    headless::Session session(sessionOptions);
    const creo::ProMdl model = retrieved(session, *model_);
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
  // path: DIR/kelvane.journal/0003.
  static int tellFromJournal(const std::string& path, const std::string& model, Console& console) {
    const std::filesystem::path run = std::filesystem::absolute(nativePath(path)).lexically_normal();
    const std::filesystem::path folder = run.filename().empty() ? run.parent_path() : run;
    if (folder.parent_path().filename() != "kelvane.journal")
      throw Fault("why: DIR is required, unless " + path + " is a run's journal (DIR/kelvane.journal/0003)");
    const ModelFileName wanted = modelFileName(model);
    const Book book(mountModels(machinePath(folder.parent_path().parent_path())));
    const RunJournal journal = book.read(book.runNamed(machinePath(folder.filename())));
    const std::string name = label(wanted.name, wanted.type);
    console.result(console.inked(Ink::bold, name) + "  run " + journal.run + ": " + whatRan(journal) + ", " +
                   memberText(journal.begin, "at"));
    const TableVerdict verdict = toldBy(journal, name);
    show(console, "run " + journal.run, verdict.worked, verdict.reason);
    return verdict.worked ? kFine : kErrors;
  }

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
  std::optional<std::string> folder_, model_;
};

}  // namespace

std::unique_ptr<Verb> makeWhy() { return std::make_unique<Why>(); }

}  // namespace kelvane
