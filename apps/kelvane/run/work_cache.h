// The folders of runs in the user's cache, one for each folder of models.
#pragma once

#include <string>

namespace kelvane {

// Notes for whose models a work folder is, and that it is used now. It is locked meanwhile.
void noteUse(const std::string& work, const std::string& models);

// Removes those beside it that nobody needs: their models are gone, or many others were used since. One that a run has
// locked, or that can't be removed, stays.
void tidyBeside(const std::string& work);

}  // namespace kelvane
