// Failures that come to something and may do so without a line, each with its reason.
#pragma once

#include <string>
#include <vector>

#include "sweep/place.h"

namespace sweep {

struct Silence {
  std::string action, operation, caller;  // "*": any
  std::string reason;
  int uses = 0;
};
// The rows of silences.txt. A row that isn't whole is a std::runtime_error.
std::vector<Silence> silences();
// The row that tells of this place; null for none.
Silence* silenceOf(std::vector<Silence>& rows, const Place& place, const std::string& caller);

}  // namespace sweep
