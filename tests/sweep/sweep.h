// Runs a list, and at each place where an operation is asked goes on in a process of its own, in which that one call
// fails: everything else is as in the plain run, and what becomes of it is judged beside that.
#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "headless/session/call_watch.h"
#include "sweep/faults.h"
#include "sweep/outcome.h"
#include "sweep/place.h"
#include "sweep/runs.h"
#include "sweep/tree.h"

namespace sweep {

struct Choice {
  std::vector<std::string> lists;  // none: all
  std::string operation;           // empty: all
  unsigned seed = 1;
  unsigned part = 1;      // one of so many failures, drawn by the seed
  bool drawn = false;     // so are the lists: of one whose runs take long fewer failures are tried
  unsigned jobs = 1;      // processes that share the failures
  unsigned job = 0;       // this one's number
  unsigned seconds = 60;  // of a processor that a run with a failure may take
  bool disk = true, operations = true;
};

// One failure and what came of it.
struct Finding {
  std::string list;
  Place place;
  int code = 0;
  Judgement judgement;
};

class Sweep : public headless::CallWatch, public Asked {
 public:
  // place: an empty folder, better in memory than on a disk. found: told of each failure that was tried.
  Sweep(Choice choice, std::string place, std::function<void(const Finding&)> found);

  // Works one run. A fault of the plain run is a std::runtime_error.
  void work(const Run& run);
  // Places that were met, and failures that they have; with those of the other processes that share the work.
  [[nodiscard]] std::size_t places() const { return places_; }
  [[nodiscard]] std::size_t failures() const { return failures_; }

  creo::ProError called(std::string_view operation) override;
  void ends(headless::Session& session) override;
  int pass(std::string_view call, std::span<const int> codes) override;

 private:
  enum class Mode {
    plain,     // calls go through
    sweeping,  // each new place is tried
    failed,    // in a process of a failure: calls go through again
  };
  Outcome run(const Run& run);
  Outcome runToAnswer(const Run& run);
  void prepareAnew(const Run& run);
  int tryAt(const Place& place, std::span<const int> codes);
  bool isChosen(std::uint64_t hash, int code);
  int tryCode(const Place& place, int code);
  [[noreturn]] void answer(const Outcome& failed) const;
  Judgement awaited(int process, int answers) const;

  const Choice choice_;
  const std::string place_;
  const std::function<void(const Finding&)> found_;
  std::map<std::string_view, std::vector<int>> codes_;  // of each operation
  Tree tree_;
  Mode mode_ = Mode::plain;
  const Run* run_ = nullptr;
  Outcome plain_;
  std::set<std::string> before_, end_;  // states of the session
  std::unordered_set<std::uint64_t> seen_;
  std::size_t places_ = 0, failures_ = 0, chosen_ = 0;
  int answers_ = -1;  // in a process of a failure: where its judgement goes
};

}  // namespace sweep
