// Watches a run from outside: saves worked models once more, compares them, follows the log, tells events, and lets the
// run end early when the user asks for it.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "headless/session/session.h"
#include "kelvane/changes.h"
#include "kelvane/events.h"
#include "kelvane/log_teller.h"
#include "kelvane/progress.h"
#include "kelvane/recap.h"
#include "kelvane/run_options.h"

namespace kelvane {

// Takes the check marks from rows that haven't had their turn, so that the run comes to its own end: Foot, reports
// closed.
void leaveOut(headless::Session& session, const std::vector<std::string>& rows);

class RunWatch : public headless::SessionObserver {
 public:
  RunWatch(headless::Session& session, const RunOptions& options, Console& console, Events& events);

  // An error line, once only.
  void tellTrouble(const std::string& line);
  // The errors that filling the table has left in the log, each once: those of the filters that judged.
  void tellFilling();
  // The expressions that don't compile, each once: they match nothing, which the log doesn't tell.
  void tellRefusedExpressions();
  // The rows that are about to be worked, in the run's order.
  void begin(std::vector<std::string> rows);
  // The run is over: what came behind the last model, and the models that never had their turn.
  void end(Recap& recap);

  void message(const std::wstring& text) override;
  void saved(const headless::SavedDocument& document) override;
  void progress(int value, int maximum) override;
  void operation(std::string_view name, int result, long long nanoseconds) override;

  // Of a dry run, by name of the document, those that differ. The lines of ten thousand models that are written would
  // fill the memory, and on disk they can be compared.
  [[nodiscard]] const std::map<std::string, ModelChanges>& changes() const { return changes_; }
  [[nodiscard]] const std::wstring& logFile() const { return log_.path(); }
  // Names of the files of reports that lost what they held.
  [[nodiscard]] const std::set<std::string>& reportsBegunAnew() const { return reportsBegunAnew_; }
  // True for a path of a model's document that was saved.
  [[nodiscard]] bool isModel(const std::wstring& path) const { return paths_.contains(path); }

 private:
  struct Document {
    std::wstring name;
    creo::ProMdlType type = creo::ProMdlType::unused;
    int firstVersion = 0;
    std::wstring path;
    std::string withheld;  // where models aren't written
  };
  struct Worked {
    std::string row, document;
    bool failed = false;
    bool passedOver = false;  // it can't be modified
  };

  void finishModel(const std::string& row);
  [[nodiscard]] bool isPassedOver(creo::ProMdl model) const;
  bool keepHistory(creo::ProMdl model, const std::string& document);
  void noteWritten(const std::string& name);
  void compareSaved();
  ModelChanges changesOf(const std::string& label, const Document& document) const;
  void tellUnknownSteps();

  headless::Session& session_;
  const RunOptions& options_;
  Console& console_;
  Events& events_;
  Progress progress_;
  LogTeller log_;
  std::vector<std::string> rows_;
  std::size_t done_ = 0;
  std::vector<Worked> worked_;
  std::map<std::string, Document> saved_;  // by label of the document
  std::set<std::string> uncompared_;
  std::set<std::string> told_;
  std::set<std::wstring> paths_;
  std::set<std::string> reportsBegunAnew_;
  std::set<std::string> changed_;  // names of documents that differ
  std::map<std::string, ModelChanges> changes_;
  bool running_ = false;
};

}  // namespace kelvane
