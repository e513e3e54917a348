// Failures that come to something without a line, or leave something, and may do so, each with its reason.
#pragma once

#include <string>
#include <vector>

#include "sweep/place.h"

namespace sweep {

struct Silence {
  std::string action, operation, code, caller;  // a "*" stands for anything
  std::string reason;
  int uses = 0;
};
// The rows of silences.txt. A row that isn't whole is a std::runtime_error.
std::vector<Silence> silences();
// The row that tells of this failure; null for none.
Silence* silenceOf(std::vector<Silence>& rows, const Place& place, int code, const std::string& caller);

}  // namespace sweep
