// Where files of a user's own belong, and those of a site: folders of the machine, in its own form. They needn't be
// there yet.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace os {

// For what can be made again at any time; empty where the machine knows no such folder of this user.
std::string cacheFolder();
// For the user's own settings; empty likewise.
std::string configurationFolder();
// Where an administrator keeps settings for all users. What lies in an earlier one counts.
std::vector<std::string> siteFolders();

// May everybody write that file, or put another one into its place, as permissions tell? False where the system has
// other rules, and for what isn't there.
bool isAnybodys(const std::string& machine);

// Does a path say where it begins: at the root, or at that of a letter or a share where the machine has such?
bool isWhole(std::string_view machine);

}  // namespace os
