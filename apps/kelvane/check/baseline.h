// Findings that are known: those of a package as it was when somebody last looked at them.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "kelvane/check/finding.h"

namespace kelvane {

// Of the JSON that `kelvane check --json` writes. A Fault where it is none.
class Baseline {
 public:
  explicit Baseline(const std::string& path);
  // By rule, file, action and attribute; lines may have moved since.
  [[nodiscard]] bool holds(const Finding& finding) const;

 private:
  std::set<std::string> known_;
};

}  // namespace kelvane
