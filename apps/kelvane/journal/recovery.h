// Journals that a kill or a loss of power left without an end.
#pragma once

#include <string>
#include <vector>

#include "kelvane/journal/book.h"

namespace kelvane {

struct Recovered {
  std::string run;
  std::string package, list, listSum;
  bool wasInFoot = false;          // all of its models had had their turn
  std::vector<std::string> lines;  // what was found and done
};

// Takes back what stands behind the last boundary of each, removes torn versions and temporary files, and closes the
// journal. What it would remove or replace and the run didn't write is put aside, and told. Needs the folder's lock, so
// that no run is at work. A Fault where that fails; asked again it goes on.
std::vector<Recovered> recoverOpenEnds(const std::wstring& models);
// Those that it would take back. Where the folder isn't locked, one of them may be at work.
std::vector<std::string> openEnds(const std::wstring& models);

}  // namespace kelvane
