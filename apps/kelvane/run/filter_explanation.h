// How a filter decides on a model, for a person to read.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/xml.h"
#include "creo/ProTypes.h"
#include "kelvane/log/captured_log.h"

namespace kelvane {

struct FilterExplanation {
  bool holds = false;
  std::string reason;              // "items 1 and 2 hold", "item 2 fails"
  std::vector<std::string> lines;  // item by item: what it asks, what was compared, what it gave, the link
};
// Evaluates the block as the plug-in does. troubleOf: warnings and errors of the log since its last call, if given.
FilterExplanation explainFilter(const core::XmlNode& block, creo::ProMdl model,
                                const std::function<std::vector<TroubleLine>()>& troubleOf = {});

}  // namespace kelvane
