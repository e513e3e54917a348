// Carries out the road back of a group through the door in force.
#pragma once

#include <string>
#include <vector>

#include "kelvane/journal/effects.h"

namespace kelvane {

// What is at a path of the journal now.
Present lookAt(const std::string& path);

// Why what comes back can't: the first file that isn't there any more as it was kept. kept: the folder of what the
// journal keeps. Empty: all is there.
std::string keptFault(const Back& back, const std::wstring& kept);
// Empty, or what failed; what was done until then stays.
std::string takeBack(const Back& back, const std::wstring& kept);
// Removes the folders that are empty, the last made first.
void removeEmptyFolders(const std::vector<std::string>& folders);

}  // namespace kelvane
