// Fails each call that the lists of the example make of an operation, once with each code that it can give, and looks
// what becomes of it: sweep [--list NAME]... [--operation NAME] [--seed N] [--part N] [--draw N] [--jobs N] ...
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>

#include "plugin/action_table.h"
#include "support/world.h"
#include "sweep/findings.h"

namespace sweep {
namespace {

constexpr const char* kUsage =
    "usage: sweep [options]\n"
    "  --list NAME       this list alone; several times for several\n"
    "  --operation NAME  calls of this operation alone\n"
    "  --files           calls of the machine's files alone\n"
    "  --seed N          draws the failures of a part; 0, and without one, the clock does\n"
    "  --part N          one of N failures; 1: all\n"
    "  --draw N          N of the lists, drawn by the seed; of those whose runs take long fewer failures\n"
    "  --jobs N          processes at once\n"
    "  --seconds N       of a processor that a run with a failure may take\n"
    "  --all             a line for each failure, not for faults alone\n";

struct Options {
  Choice choice;
  unsigned drawn = 0;  // so many of the lists; 0: as named
  bool all = false;
};

unsigned number(const std::string& option, const std::string& text) {
  if (text.empty() || text.find_first_not_of("0123456789") != text.npos || text.size() > 9)
    throw std::invalid_argument(option + " needs a number");
  return static_cast<unsigned>(std::stoul(text));
}

Options optionsOf(const std::vector<std::string>& words) {
  Options options;
  Choice& choice = options.choice;
  choice.seed = 0;
  const std::map<std::string, unsigned*> numbers = {{"--seed", &choice.seed},
                                                    {"--part", &choice.part},
                                                    {"--draw", &options.drawn},
                                                    {"--jobs", &choice.jobs},
                                                    {"--seconds", &choice.seconds}};
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string& option = words[i];
    const auto value = [&]() -> const std::string& {
      if (++i == words.size()) throw std::invalid_argument(option + " needs a value");
      return words[i];
    };
    if (option == "--all") {
      options.all = true;
    } else if (option == "--files") {
      choice.operations = false;
    } else if (option == "--list") {
      choice.lists.push_back(value());
    } else if (option == "--operation") {
      choice.operation = value();
    } else if (const auto known = numbers.find(option); known != numbers.end()) {
      *known->second = number(option, value());
    } else {
      throw std::invalid_argument("there is no option " + option);
    }
  }
  if (choice.part == 0 || choice.jobs == 0) throw std::invalid_argument("--part and --jobs begin at 1");
  if (choice.seed == 0) choice.seed = static_cast<unsigned>(std::time(nullptr) % 1'000'000) + 1;
  for (const std::string& list : choice.lists)
    if (std::none_of(runs().begin(), runs().end(), [&](const Run& run) { return run.name == list; }))
      throw std::invalid_argument("there is no list " + list);
  // Neighbouring seeds take neighbouring lists, so that a row of runs comes to all of them.
  choice.drawn = options.drawn > 0;
  for (unsigned i = 0; i < options.drawn && i < runs().size(); ++i)
    choice.lists.push_back(runs()[(choice.seed + i) % runs().size()].name);
  return options;
}

bool isWanted(const Choice& choice, const Run& run) {
  const auto& lists = choice.lists;
  return lists.empty() || std::find(lists.begin(), lists.end(), run.name) != lists.end();
}

// In a process of its own: works its share and writes what it found.
int share(const Choice& choice, const std::string& place) {
  try {
    std::filesystem::create_directories(place);
    std::ofstream file(place + "/findings", std::ios::binary);
    Sweep sweep(choice, place, [&](const Finding& finding) { write(file, finding); });
    for (const Run& run : runs()) {
      if (!isWanted(choice, run)) continue;
      const std::time_t start = std::time(nullptr);
      sweep.work(run);
      if (choice.job == 0)
        std::cerr << run.name << ": " << sweep.places() << " places so far, " << std::time(nullptr) - start << " s\n";
    }
    std::ofstream(place + "/counts") << sweep.places() << ' ' << sweep.failures() << '\n';
    return 0;
  } catch (const std::exception& fault) {
    std::cerr << "sweep: " << fault.what() << '\n';
    return 2;
  }
}

int sweepAll(const Options& options) {
  const Choice& choice = options.choice;
  std::cout << "sweep: seed " << choice.seed << ", one of " << choice.part << " failures, " << choice.jobs
            << " processes\n"
            << std::flush;
  const test::TempFolder folder;
  std::vector<pid_t> processes;
  for (unsigned job = 0; job < choice.jobs; ++job) {
    Choice mine = choice;
    mine.job = job;
    const pid_t process = ::fork();
    if (process < 0) throw std::runtime_error("no process");
    if (process == 0) ::_exit(share(mine, folder.path() + "/" + std::to_string(job)));
    processes.push_back(process);
  }
  bool whole = true;
  for (const pid_t process : processes) {
    int status = 0;
    ::waitpid(process, &status, 0);
    whole = whole && status == 0;
  }
  std::vector<Finding> findings;
  Report report{options.all, choice.part == 1 && choice.lists.empty() && choice.operation.empty() && choice.operations,
                0, 0};
  for (unsigned job = 0; job < choice.jobs; ++job) {
    const std::string place = folder.path() + "/" + std::to_string(job);
    for (Finding& finding : findingsOf(place + "/findings")) findings.push_back(std::move(finding));
    std::ifstream(place + "/counts") >> report.places >> report.failures;
  }
  const int faults = tell(std::cout, findings, report);
  if (!whole) std::cout << "sweep: a process of it broke off\n";
  return !whole ? 2 : faults > 0 ? 1 : 0;
}

}  // namespace
}  // namespace sweep

// A process of a failure copies each page that it writes: memory is used again soon, isn't filled, and who asked for it
// isn't kept. A crash tells more when it is run again with other ASAN_OPTIONS.
extern "C" const char* __asan_default_options();   // NOLINT(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
extern "C" const char* __asan_default_options() {  // NOLINT(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
  return "quarantine_size_mb=1:thread_local_quarantine_size_kb=16:malloc_context_size=0:max_malloc_fill_size=0";
}

int main(int argc, char** argv) {
  const std::vector<std::string> words(argv + 1, argv + argc);
  if (!words.empty() && (words.front() == "-h" || words.front() == "--help")) {
    std::cout << sweep::kUsage;
    return 0;
  }
  try {
    const sweep::Options options = sweep::optionsOf(words);
    // Thousands of folders are made and put back: a disk in memory does that in no time.
    if (std::filesystem::is_directory("/dev/shm")) ::setenv("TMPDIR", "/dev/shm", 0);
    plugin::handDownActions();
    return sweep::sweepAll(options);
  } catch (const std::exception& fault) {
    std::cerr << "sweep: " << fault.what() << '\n' << sweep::kUsage;
    return 2;
  }
}
