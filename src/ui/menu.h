// The plug-in's menu in Creo and the commands behind it.
#pragma once

#include "creo/ProTypes.h"

namespace ui {

// Adds the menu with its start and help entries. Each failure writes its line and gives Creo's status.
creo::ProError setUpMenu();
// The command that installs a site's user interface; only where the package folder has kvuser_config.pro.
void addInstallCommand();
// The invisible command of the parameter indicator; only where a parameter is to be checked.
void addIndicatorCommand();

}  // namespace ui
