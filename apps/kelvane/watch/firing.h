// Shows the triggers that fire in a session: which list ran on which model, and what came of it.
#pragma once

#include <chrono>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "core/log.h"
#include "headless/session.h"
#include "kelvane/base/console.h"
#include "kelvane/log/events.h"
#include "kelvane/log/teller.h"
#include "kelvane/run/options.h"
#include "kelvane/run/recap.h"
#include "kelvane/show/changes.h"
#include "os/durable.h"
#include "run/triggers.h"

namespace kelvane {

class FiringWatch : public headless::SessionObserver, public run::TriggerObserver {
 public:
  // durable: the one in force.
  FiringWatch(headless::Session& session, const RunOptions& options, bool json, Console& console, Events& events,
              os::Durable& durable);
  ~FiringWatch() override;
  FiringWatch(const FiringWatch&) = delete;
  FiringWatch& operator=(const FiringWatch&) = delete;

  // Waits until the disk has all that was written. False: an error line for each file that it didn't take.
  bool settle();
  // A trigger couldn't start, a model failed, or a log has error lines.
  [[nodiscard]] bool troubled() const { return troubled_; }

  void message(const std::wstring& text) override;
  void saved(const headless::SavedDocument& document) override;
  void renamed(const headless::RenamedDocument& model) override;
  void unreadable(const std::wstring& path) override;
  void progress(int value, int maximum) override;
  void operation(std::string_view name, int result, long long nanoseconds) override;
  void triggerBegins(const Firing& firing) override;
  void triggerEnds(int result) override;

 private:
  struct Row {
    std::string name;      // "SHAFT.PRT"
    bool isThere = false;  // in memory, before the first row is worked
    std::string now{};     // what it is called since it was renamed; empty: the same
  };
  struct Saved {
    std::wstring stem, path;  // of its documents, and of the one that was saved last
    int firstVersion = 0;     // that was saved since the trigger fired
  };
  struct Running {
    Firing told;
    std::string model, name;
    std::vector<Row> rows;  // those that are worked, in the run's order
    std::size_t done = 0;
    // By labels of documents, "SHAFT.PRT". What isn't unsaved when the trigger fires lies on disk.
    std::map<std::string, std::string> unsavedBefore;  // their texts
    std::map<std::string, Saved> saved;
    std::map<std::string, Told> changesTold;
    std::set<std::wstring> unreadable;  // paths of documents
    core::LogCounts logBefore;
    std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
    Recap recap;
  };

  void noteUnsaved();
  void takeRows();
  // The label of the document that the row is kept in: that of its generic for an instance in memory.
  [[nodiscard]] std::string documentOf(const std::string& name) const;
  // What the row's document was when the trigger fired and what it is now; empty where nobody changed it, or it can't
  // be had.
  [[nodiscard]] std::pair<std::string, std::string> beforeAndNow(const std::string& name) const;
  void finishRow(const Row& row);
  void showEnd(int result);

  headless::Session& session_;
  Console& console_;
  Events& events_;
  os::Durable& durable_;
  bool json_;
  LogTeller log_;
  std::optional<Running> running_;
  std::string lastMessage_;
  bool troubled_ = false;
};

}  // namespace kelvane
