// Watches a run from outside: saves worked models once more, compares them, follows the log, tells events, and lets the
// run end early when the user asks for it.
#pragma once

#include <deque>
#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "headless/session.h"
#include "kelvane/base/progress.h"
#include "kelvane/log/events.h"
#include "kelvane/log/teller.h"
#include "kelvane/run/options.h"
#include "kelvane/run/recap.h"
#include "kelvane/show/changes.h"
#include "os/durable.h"

namespace headless {
class ModelDocument;
struct Model;
}  // namespace headless
namespace kelvane {

// Takes the check marks from rows that haven't had their turn, so that the run comes to its own end: Foot, reports
// closed.
void leaveOut(headless::Session& session, const std::vector<std::string>& rows);

class RunWatch : public headless::SessionObserver {
 public:
  // durable: the one in force.
  RunWatch(headless::Session& session, const RunOptions& options, Console& console, Events& events,
           os::Durable& durable);
  ~RunWatch() override;
  RunWatch(const RunWatch&) = delete;
  RunWatch& operator=(const RunWatch&) = delete;

  // An error line, once only. False: it was told before.
  bool tellTrouble(const std::string& line);
  // A model that can't be read: an error line, and it counts as failed, however often it is told.
  void tellDamaged(const std::string& model, const std::string& fault);
  // Adds those to a recap.
  void countDamaged(Recap& recap) const;
  // The errors that filling the table has left in the log, each once: those of the filters that judged.
  void tellFilling();
  // The expressions that don't compile, each once: they match nothing, which the log doesn't tell.
  void tellRefusedExpressions();
  // Failures of these exports count as warnings.
  void accept(AcceptedExports accepted) { log_.accept(std::move(accepted)); }
  // Hears of each model whose turn is over: "model", "outcome", "errors", "wrote".
  void tellOutcomes(std::function<void(const nlohmann::ordered_json&)> finished) { finished_ = std::move(finished); }
  // The rows that are about to be worked, in the run's order.
  void begin(std::vector<std::string> rows);
  // An error line for each file that the disk didn't take; the model of a document counts as failed, whatever was told
  // of it before. Files that the disk still has to get are told at the next call.
  void tellUnsafe();
  // The run is over: what came behind the last model, and the models that never had their turn. Waits until the disk
  // has all that was written.
  void end(Recap& recap);

  void message(const std::wstring& text) override;
  void saved(const headless::SavedDocument& document) override;
  void renamed(const headless::RenamedDocument& model) override;
  void unreadable(const std::wstring& path) override;
  void progress(int value, int maximum) override;
  void operation(std::string_view name, int result, long long nanoseconds) override;

  // Of a dry run: what would be renamed, then what would differ, by name of the document. The lines of ten thousand
  // models that are written would fill the memory, and on disk they can be compared.
  void showChanges() const;
  // Errors and warnings of the log so far, equal lines once, and members of the package that weren't unpacked.
  [[nodiscard]] core::LogCounts counts() const;
  [[nodiscard]] const std::wstring& logFile() const { return log_.path(); }
  // Names of the files of reports that lost what they held.
  [[nodiscard]] const std::set<std::string>& reportsBegunAnew() const { return reportsBegunAnew_; }
  // Were there error lines about documents or views, which no log has?
  [[nodiscard]] bool hadFaults() const { return faults_ > 0; }
  // True for a path of a model's document that was saved or renamed.
  [[nodiscard]] bool isModel(const std::wstring& path) const;

 private:
  // One that was met, whatever it is called by now.
  struct Document {
    std::string label;       // "BRACKET.PRT", as it is now
    std::string before;      // what it was called before the run; empty: the same
    std::wstring stem;       // "d:\bracket.prt", where the versions that the run found lie
    std::wstring path;       // of the version that was saved last
    bool isMoved = false;    // to a backup's folder
    int firstVersion = 0;    // that this run wrote; 0: none
    bool compared = true;    // since it was written
    ModelChanges changes{};  // of a dry run
    bool differs = false;
    Told told{};  // what the events said of it
    [[nodiscard]] bool isSaved() const { return firstVersion > 0; }
    [[nodiscard]] bool isChanged() const { return differs || !before.empty(); }
  };
  struct Worked {
    std::string row;
    const Document* document = nullptr;  // null: it isn't in memory
    bool failed = false;
    bool passedOver = false;  // it can't be modified
    int errors = 0;           // that its actions had; without any, those about documents
    [[nodiscard]] bool isChanged() const { return document && document->isChanged(); }
  };

  // In memory, with its document; null: it isn't. One that can't be read any more has its line.
  const headless::Model* modelOf(const std::string& row);
  void finishModel(const std::string& row);
  static std::string outcomeOf(const Worked& worked);
  // By its name of now, "BRACKET.PRT".
  Document& documentOf(const std::string& model);
  [[nodiscard]] bool isPassedOver(creo::ProMdl model);
  bool keepHistory(creo::ProMdl model, Document& document);
  void noteWritten(Document& document);
  void compareSaved();
  void tellUnworked();
  [[nodiscard]] ModelChanges changesOf(const Document& document) const;
  void tellUnknownSteps();
  void tellMoved();
  [[nodiscard]] bool isSafe(const Document& document) const { return !unsafe_.contains(document.path); }
  [[nodiscard]] bool isLeftChanged(const headless::ModelDocument& document, creo::ProMdl model) const;
  void noteErased(const std::string& model);
  void tellUnsaved();

  headless::Session& session_;
  const RunOptions& options_;
  Console& console_;
  Events& events_;
  Progress progress_;
  LogTeller log_;
  std::vector<std::string> rows_;
  std::size_t done_ = 0;
  std::vector<Worked> worked_;
  std::deque<Document> documents_;                      // they stay where they are
  std::unordered_map<std::string, Document*> byLabel_;  // by their names of now
  std::vector<Document*> uncompared_;
  std::set<std::string> told_;
  std::vector<std::wstring> vaults_;    // machine paths of their folders
  int faults_ = 0, countedFaults_ = 0;  // error lines that no log has; those that models behind their turn have had
  std::string lastMessage_;
  os::Durable& durable_;
  std::set<std::wstring> unsafe_;                // files that the disk didn't take
  std::set<std::wstring> paths_, renamedStems_;  // of documents that this run wrote, or renamed
  std::set<std::string> damaged_;                // models that couldn't be read before the first one is worked
  std::set<std::string> erasedChanged_;          // models that left the memory with changes
  std::set<std::string> reportsBegunAnew_;
  std::function<void(const nlohmann::ordered_json&)> finished_;  // may be empty
  int notUnpacked_ = 0;                                          // members of the package
  bool running_ = false;
};

}  // namespace kelvane
