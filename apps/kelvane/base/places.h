// Where things lie: what a person writes on the command line, and the program's own folders.
#pragma once

#include <string>

namespace kelvane {

// A path of the command line (the machine's form, perhaps relative) in the system's form.
std::wstring systemPath(const std::string& argument);
// The same for a folder, with its closing backslash. A Fault when there is no such folder.
std::wstring systemFolder(const std::string& argument);
// A path as a person reads it: the machine's form.
std::string shown(std::wstring_view path);

// The folder of what is installed beside the plug-in, in the machine's form. A Fault when it isn't found.
std::string installationFolder();
// A folder of this user's that lasts between runs on the same folder of models, while it is used now and then; made
// when it isn't there.
std::string workFolder(const std::string& models);
// The folder of this user's settings; empty: there is none. A Fault where its name isn't UTF-8.
std::string configurationFolder();

}  // namespace kelvane
