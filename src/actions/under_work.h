// Which models a run works on: one that is taken out of memory meanwhile would be lost for the actions that follow.
#pragma once

#include <vector>

#include "creo/ProTypes.h"

namespace actions {

// From the row's model to that of the innermost group; none for a task without a model.
const std::vector<creo::ProMdl>& modelsUnderWork();

// The model is under work for as long as it lives.
class UnderWork {
 public:
  explicit UnderWork(creo::ProMdl model);
  ~UnderWork();
  UnderWork(const UnderWork&) = delete;
  UnderWork& operator=(const UnderWork&) = delete;
};

}  // namespace actions
