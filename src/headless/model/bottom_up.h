// Models in the order in which what is used comes before what uses it.
#pragma once

#include <set>
#include <vector>

#include "creo/ProTypes.h"

namespace headless {

// The top and all below it, each once; one that is below itself ends there. used: (model), what it uses directly.
template <class Used>
std::vector<creo::ProMdl> bottomUp(creo::ProMdl top, Used used) {
  struct Step {
    creo::ProMdl model;
    bool usedDone = false;
  };
  std::vector<creo::ProMdl> order;
  std::set<creo::ProMdl> seen;
  std::vector<Step> steps{{top}};
  while (!steps.empty()) {
    Step& step = steps.back();
    const creo::ProMdl model = step.model;
    if (step.usedDone || !seen.insert(model).second) {
      if (step.usedDone) order.push_back(model);
      steps.pop_back();
      continue;
    }
    step.usedDone = true;
    for (const creo::ProMdl below : used(model))
      if (!seen.contains(below)) steps.push_back({below});
  }
  return order;
}

}  // namespace headless
