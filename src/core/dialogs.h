// Dialogs of the plug-in's own.
#pragma once

#include <string>

#include "creo/ProTypes.h"

namespace core {

// Creates the dialog from the resource. Creo doesn't tell whether a name is in use: where creating fails and a dialog
// of that name was left standing, that one goes and creating is tried once more.
creo::ProError createDialog(const std::string& dialog, const std::string& resource);

}  // namespace core
