// The package folder that a run shows to the plug-in.
#pragma once

#include <string>

#include "kelvane/package_source.h"

namespace kelvane {

// Puts the package, packed if it is a folder, alone into WORK/packages, mounted as p:. What is there already with the
// same content stays, with its time, so that the plug-in unpacks it no second time; if it is another content, what was
// unpacked before (under t:) goes. A damaged package is a Fault.
void placePackage(const std::string& path, const PackageSource& package, const std::string& work);

}  // namespace kelvane
