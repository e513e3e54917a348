// What actions may know of the run that they are part of: that it goes on, and what its models are called now.
#pragma once

#include <string>

namespace actions {

// A run begins, or is over. What was renamed before is forgotten.
void noteRun(bool goesOn);
bool runGoesOn();
// The run renamed a model: rows keep their names, and those that are still to come find it under its new one.
// "BRACKET.PRT" and "WHEEL.PRT".
void followRename(const std::string& before, const std::string& now);
// What a row's model is called now.
std::string rowNow(const std::string& row);

}  // namespace actions
