// The gears of a part, as drawings show them.
#pragma once

#include <vector>

#include "headless/geometry/sight.h"
#include "headless/model/model.h"

namespace headless {

struct PartGear {
  int feature = 0;  // that makes its teeth; 0: none
  geometry::Gear teeth;
};
// With all numbers worked out, in the part's unit; those whose feature is suppressed are left out, as such a part has
// no teeth. Throws MeasureFault, also where a number isn't over 0 or the tip is as wide as the root.
std::vector<PartGear> gearsOf(const Model& part);

}  // namespace headless
