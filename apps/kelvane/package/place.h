// The package folder that a run shows to the plug-in.
#pragma once

#include <string>
#include <vector>

#include "kelvane/package/source.h"

namespace kelvane {

// Puts the package, packed if it is a folder, alone into WORK/packages, mounted as p:. What is there already, or stands
// aside since an earlier run, with the same content stays, with its time, so that the plug-in unpacks it no second
// time; if it is another content, what was unpacked before (under t:) goes, as does that of packages that weren't used
// for long, or whose name is the same but for its capitals. By path, size and time the same content is told from
// another; byContent: by its bytes. A damaged package is a Fault.
void placePackage(const std::string& path, const PackageSource& package, const std::string& work, bool byContent);

// The same for all packages of a folder: .kvz files as they are, and folders that hold a package. Gives what is wrong
// with those that can't be placed, a line each.
std::vector<std::string> placePackages(const std::string& folder, const std::string& work);
// Puts aside one that is shown, until packages are placed again.
void hidePackage(const std::string& name, const std::string& work);
// Where the plug-in unpacks it, in the system's form.
std::wstring unpackedFolder(const std::string& name);

}  // namespace kelvane
