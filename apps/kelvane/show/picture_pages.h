// The pictures of changed models before and after, as a folder that a browser shows.
#pragma once

#include <string>
#include <vector>

#include "kelvane/base/console.h"
#include "kelvane/show/changes.h"

namespace kelvane {

// Writes index.html and the pictures of each model into the folder, which is made where it isn't there: before and
// after side by side, with what changed marked, and the changes as lines. before, after: folders of models. What can't
// be shown is told on the page and as trouble. A Fault: a file can't be written.
void writePicturePages(const std::vector<ModelChanges>& differing, const std::string& before, const std::string& after,
                       const std::string& folder, Console& console);

}  // namespace kelvane
