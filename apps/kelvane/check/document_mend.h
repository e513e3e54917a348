// A list or a filter, mended where what it should be is sure.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "kelvane/check/finding.h"

namespace kelvane {

struct MendedDocument {
  std::string bytes;  // the given ones where nothing is mended; each line is still the same one
  // One that isn't mended, as what the plug-in would read then is a fault of its own, says so.
  std::vector<Finding> left;
};
// check: what is found in a document of these bytes. isMeant: whether to mend what was found. Mends until nothing is
// left that can be. What is found in the end was found before: an element whose mends would leave new findings (uses
// aren't meant) keeps its bytes; where such a finding stands in an element that wasn't mended, all keep theirs.
MendedDocument mendedDocument(const std::string& bytes,
                              const std::function<std::vector<Finding>(const std::string& bytes)>& check,
                              const std::function<bool(const Finding& finding)>& isMeant);

}  // namespace kelvane
