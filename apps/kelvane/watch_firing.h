// Shows the triggers that fire in a session: which list ran on which model, and what came of it.
#pragma once

#include <chrono>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "core/log.h"
#include "engine/triggers.h"
#include "headless/session/session.h"
#include "kelvane/console.h"
#include "kelvane/events.h"
#include "kelvane/log_teller.h"
#include "kelvane/recap.h"
#include "kelvane/run_options.h"

namespace kelvane {

class FiringWatch : public headless::SessionObserver, public engine::TriggerObserver {
 public:
  FiringWatch(headless::Session& session, const RunOptions& options, bool json, Console& console, Events& events);
  ~FiringWatch() override;
  FiringWatch(const FiringWatch&) = delete;
  FiringWatch& operator=(const FiringWatch&) = delete;

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
    std::string name;    // "SHAFT.PRT"
    std::string before;  // the document's text; empty: the model isn't in memory
    std::string now{};   // what it is called since it was renamed; empty: the same
  };
  struct Running {
    Firing told;
    std::string model, name;
    std::vector<Row> rows;  // those that are worked, in the run's order
    std::size_t done = 0;
    std::set<std::string> saved;
    std::set<std::wstring> unreadable;  // paths of documents
    core::LogCounts logBefore;
    std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
    Recap recap;
  };

  [[nodiscard]] std::string documentOf(const std::string& row) const;
  void takeRows();
  void finishRow(const Row& row);
  void showEnd(int result);

  headless::Session& session_;
  Console& console_;
  Events& events_;
  bool json_;
  LogTeller log_;
  std::optional<Running> running_;
  std::string lastMessage_;
  bool troubled_ = false;
};

}  // namespace kelvane
