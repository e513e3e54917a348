// The help program beside the plug-in's folder, in the user's language.
#pragma once

namespace ui {

void openHelp();

}  // namespace ui
