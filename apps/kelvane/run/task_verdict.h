// Whether an action of a list runs on a model, and why not.
#pragma once

#include <string>
#include <vector>

#include "core/xml.h"
#include "creo/ProTypes.h"

namespace kelvane {

struct TaskVerdict {
  std::string place;  // as the log names it: "B3 - G0"
  std::string type;
  bool runs = false;
  std::string reason;                // the first one, in the order in which the plug-in asks
  std::vector<std::string> details;  // of a filter, item by item
};
// The actions of a section on a model, those inside groups behind their group. letter: 'H', 'B', 'F'.
std::vector<TaskVerdict> judgeSection(const core::XmlNode& section, char letter, creo::ProMdl model);

}  // namespace kelvane
