// The runs that are swept: the lists of the example, and one that works in a vault.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "sweep/tree.h"

namespace sweep {

struct Run {
  std::string name;  // the list's, or what of it is run
  std::string list;
  std::vector<std::string> options;  // of `kelvane run`
  bool inVault = false;              // a list of ours, on models that are checked out
  bool onDisk = false;               // calls of the system fail, too
  unsigned dear = 1;                 // what is drawn of it is so many times less, as a failure takes long
};
const std::vector<Run>& runs();

// Puts everything that a run needs into a place, which is empty: models, packages, a vault. All of it is of that time,
// in seconds since 1970: names of working files hold the packages' dates.
void prepare(const Run& run, const Tree& place, std::int64_t now);
// The words of the program for the run there.
std::vector<std::string> wordsOf(const Run& run, const std::string& place);

}  // namespace sweep
