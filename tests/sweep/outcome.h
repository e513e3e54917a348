// What a run came to, and how one in which something failed stands beside the plain one.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

namespace sweep {

struct Outcome {
  int code = 0;
  std::map<std::string, std::string> files;     // that the run leaves to its user, by path, with their bytes
  std::multiset<std::string> errors, warnings;  // lines of the log and of the program
  std::set<std::string> working;                // paths of its own working files
  std::set<std::string> state;                  // of its session when it ended
  std::vector<std::string> damaged;             // documents that can't be read
};

// Of what stands in a place: models, what was collected, and a cache. `code` and `err` are the program's.
Outcome outcomeAt(const std::string& place, int code, const std::string& err);

enum class Verdict {
  same,     // nothing came of it
  told,     // an error line, and the exit code says so
  warned,   // a warning alone
  silent,   // it came to something else without a line
  exit,     // an error line, and exit code 0
  damaged,  // a document can't be read
  left,     // something isn't put back
  hang,
  crash,
};
constexpr int kVerdicts = 9;
const char* wordOf(Verdict verdict);

struct Judgement {
  Verdict verdict = Verdict::same;
  std::string detail;  // in a line
};
// before: the state of the session when the run began its work; empty: it never did.
Judgement judge(const Outcome& plain, const Outcome& failed, const std::set<std::string>& before);

}  // namespace sweep
