// Failures that come to something without a line, or leave something, and may do so, each with its reason.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "sweep/findings.h"

namespace sweep {

struct Silence {
  std::string action, operation, code, caller;  // a "*" stands for anything
  std::set<Verdict> excused;                    // of silent and left
  std::string reason;
  int uses = 0;
};
// The rows of silences.txt. A row that isn't whole is a std::runtime_error.
std::vector<Silence> silences();
// The first row that excuses what came of this failure, of that caller; null for none.
Silence* silenceOf(std::vector<Silence>& rows, const Finding& finding, const std::string& caller);

}  // namespace sweep
