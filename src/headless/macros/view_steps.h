// The dialog of what the view shows: "visual_dlg0", opened by `ProCmdViewVisTool`.
#pragma once

#include "headless/macros/step.h"

namespace headless {

// Its cross sections: one that is selected in the table is made active, shown or hidden; "no cross section" activated
// makes none active.
bool viewSteps(const MacroContext& context, const MacroStep& step, DialogState& dialogs);

}  // namespace headless
