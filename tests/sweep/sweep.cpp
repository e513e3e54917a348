#include "sweep/sweep.h"

#include <fcntl.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <filesystem>
#include <sstream>
#include <stdexcept>

#include "core/state.h"
#include "creo/operations.h"
#include "kelvane/program.h"
#include "os/clock.h"
#include "os/processes.h"
#include "os/quiet_thread.h"
#include "os/surroundings.h"
#include "os/web.h"
#include "support/folders.h"
#include "support/world.h"
#include "sweep/session_state.h"
#include "text/encoding.h"

namespace sweep {
namespace {

constexpr std::int64_t kNow = 1'700'000'000;  // of every run, so that all write the same

// The price service that a list asks.
class Prices : public os::Web {
 public:
  text::Result<std::string> send(const os::WebRequest&) override { return std::string("2.10"); }
};

// The machine of a run: a clock that stands, no programs, a service that answers, and no thread beside the one that
// forks: the process of a failure has that one alone, and files are asked for in one order.
class Machine {
 public:
  Machine() : web_(std::make_shared<Prices>()) {
    os::surroundings().clock = std::make_shared<os::FixedClock>(kNow);
    os::surroundings().processes = std::make_shared<os::RecordedProcesses>();
  }

 private:
  os::SurroundingsGuard surroundings_;
  os::WebGuard web_;
  os::NoQuietThreads alone_;
};

std::map<std::string_view, std::vector<int>> codesOfAll() {
  std::map<std::string_view, std::vector<int>> all;
  for (const creo::Operation& row : creo::operations())
    for (const creo::ProError code : row.codes) all[row.name].push_back(code);
  return all;
}

void say(int file, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = ::write(file, text.data(), text.size());
    if (written <= 0) return;
    text.remove_prefix(static_cast<std::size_t>(written));
  }
}

std::string readAll(int file) {
  std::string all;
  std::array<char, 4096> some{};
  for (ssize_t count = 0; (count = ::read(file, some.data(), some.size())) > 0;)
    all.append(some.data(), static_cast<std::size_t>(count));
  return all;
}

// What a process that broke off has said last: the sanitizers' report, or an exception.
std::string reportOf(const std::string& errors) {
  const std::size_t summary = errors.find("SUMMARY:"), runtime = errors.find("runtime error:");
  const std::size_t at = summary != errors.npos ? summary : runtime != errors.npos ? runtime : 0;
  return errors.substr(at, errors.find('\n', at) - at);
}

}  // namespace

Sweep::Sweep(Choice choice, std::string place, std::function<void(const Finding&)> found)
    : choice_(std::move(choice)),
      place_(std::move(place)),
      found_(std::move(found)),
      codes_(codesOfAll()),
      tree_(place_ + "/run", place_ + "/kept") {
  os::setEnvironment(L"XDG_CACHE_HOME", text::fromUtf8(tree_.folder() + "/cache"));
  os::setEnvironment(L"KELVANE_INSTALLATION", text::fromUtf8(test::sourceFolder() + "/installation"));
}

void Sweep::prepareAnew(const Run& run) {
  const Machine machine;  // what a vault notes is dated too
  tree_.clear();
  prepare(run, tree_, kNow);
  before_.clear();
}

Outcome Sweep::run(const Run& run) {
  const Machine machine;
  std::ostringstream out, err;
  const int code = kelvane::program(wordsOf(run, tree_.folder()), out, err);
  if (mode_ == Mode::sweeping) mode_ = Mode::plain;  // what is looked at from here on is no call of the run
  Outcome outcome = outcomeAt(tree_.folder(), code, err.str());
  outcome.state = std::move(end_);
  return outcome;
}

// The same, from which the process of a failure doesn't return.
Outcome Sweep::runToAnswer(const Run& entry) {
  try {
    Outcome outcome = run(entry);
    if (mode_ == Mode::failed) answer(outcome);
    return outcome;
  } catch (const std::exception& fault) {
    if (mode_ != Mode::failed) throw;
    say(STDERR_FILENO, fault.what());
    ::_exit(1);
  }
}

void Sweep::work(const Run& entry) {
  run_ = &entry;
  mode_ = Mode::plain;
  prepareAnew(entry);
  const headless::CallWatchGuard watch(*this);
  plain_ = run(entry);
  if (plain_.code == 2) throw std::runtime_error(entry.name + " can't be run");
  prepareAnew(entry);
  mode_ = Mode::sweeping;
  watchFiles(choice_.disk && entry.onDisk ? this : nullptr);
  const Outcome again = runToAnswer(entry);
  watchFiles(nullptr);
  mode_ = Mode::plain;
  if (const Judgement judgement = judge(plain_, again, before_); judgement.verdict != Verdict::same)
    throw std::runtime_error(entry.name + " gives something else when it is run again: " + judgement.detail);
}

creo::ProError Sweep::called(std::string_view operation) {
  if (before_.empty() && core::pluginState().section != L' ') before_ = stateOf(headless::Session::current());
  if (mode_ != Mode::sweeping || !choice_.operations) return creo::ProNoError;
  const auto codes = codes_.find(operation);
  if (codes == codes_.end()) return creo::ProNoError;
  // Between the place and here: this function, the session's count, the call's constructor.
  return static_cast<creo::ProError>(tryAt(placeHere(operation, 4), codes->second));
}

void Sweep::ends(headless::Session& session) {
  try {
    end_ = stateOf(session);
  } catch (const std::exception& fault) {
    end_ = {std::string("the session's state can't be told: ") + fault.what()};
  }
}

int Sweep::pass(std::string_view call, std::span<const int> codes) {
  if (mode_ != Mode::sweeping) return 0;
  return tryAt(placeHere(call, 4), codes);
}

int Sweep::tryAt(const Place& place, std::span<const int> codes) {
  if (!choice_.operation.empty() && place.operation != choice_.operation) return 0;
  // What is no action's is the same in every list, but for that of a vault.
  const std::uint64_t hash = place.hash();
  const bool isShared = place.action.empty() && !run_->inVault;
  const std::uint64_t known = isShared ? hash : hash ^ std::hash<std::string>()(run_->name);
  if (!seen_.insert(known).second) return 0;
  ++places_;
  for (const int code : codes) {
    ++failures_;
    if (!isChosen(known, code)) continue;
    if (chosen_++ % choice_.jobs != choice_.job) continue;
    if (const int given = tryCode(place, code)) return given;
  }
  return 0;
}

// The multipliers are those of SplitMix64: neighbouring numbers give unlike ones.
bool Sweep::isChosen(std::uint64_t hash, int code) {
  std::uint64_t drawn = hash + 0x9e3779b97f4a7c15u * (static_cast<std::uint64_t>(choice_.seed) + 1) +
                        static_cast<std::uint64_t>(static_cast<std::int64_t>(code));
  drawn = (drawn ^ (drawn >> 30)) * 0xbf58476d1ce4e5b9u;
  drawn = (drawn ^ (drawn >> 27)) * 0x94d049bb133111ebu;
  return (drawn ^ (drawn >> 31)) % (choice_.drawn ? choice_.part * run_->dear : choice_.part) == 0;
}

// Gives the code in the process of the failure, and 0 in this one, behind its end.
int Sweep::tryCode(const Place& place, int code) {
  mode_ = Mode::plain;  // what is done here for it is no call of the run
  tree_.keep();
  int ends[2];
  if (::pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  const pid_t process = ::fork();
  if (process < 0) throw std::runtime_error("no process");
  if (process == 0) {
    ::close(ends[0]);
    answers_ = ends[1];
    const int errors = ::open((place_ + "/errors").c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    ::dup2(errors, STDERR_FILENO);
    // By the clock ten times as long: others may have the processors.
    const itimerval own{{}, {static_cast<time_t>(choice_.seconds), 0}};
    ::setitimer(ITIMER_PROF, &own, nullptr);
    ::alarm(10 * choice_.seconds);
    mode_ = Mode::failed;
    return code;
  }
  ::close(ends[1]);
  const Judgement judgement = awaited(process, ends[0]);
  tree_.putBack();
  mode_ = Mode::sweeping;
  found_({run_->name, place, code, judgement});
  return 0;
}

// The judgement of a process of a failure, or what ended it.
Judgement Sweep::awaited(int process, int answers) const {
  const std::string said = readAll(answers);
  ::close(answers);
  int status = 0;
  ::waitpid(process, &status, 0);
  if (WIFSIGNALED(status) && (WTERMSIG(status) == SIGALRM || WTERMSIG(status) == SIGPROF))
    return {Verdict::hang, "it takes more than " + std::to_string(choice_.seconds) + " s"};
  if (said.empty() || status != 0) {
    const std::string how = WIFSIGNALED(status) ? "signal " + std::to_string(WTERMSIG(status))
                                                : "exit code " + std::to_string(WEXITSTATUS(status));
    return {Verdict::crash, how + ": " + reportOf(test::readBytes(place_ + "/errors"))};
  }
  return {static_cast<Verdict>(said.front() - '0'), said.substr(1)};
}

// Nothing of this process is cleared up: its folders and locks are those of the one that waits.
void Sweep::answer(const Outcome& failed) const {
  const Judgement judgement = judge(plain_, failed, before_);
  say(answers_, std::string(1, static_cast<char>('0' + static_cast<int>(judgement.verdict))) + judgement.detail);
  ::_exit(0);
}

}  // namespace sweep
