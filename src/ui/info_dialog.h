// The info dialog: the plug-in's version and what its configuration says.
#pragma once

namespace ui {

void openInfoDialog();

}  // namespace ui
