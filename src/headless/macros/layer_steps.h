// The layer tree and the dialog of a layer's rules.
#pragma once

#include "headless/macros/step.h"

namespace headless {

// A layer is selected in the tree of the current model, its dialog opens for it, and OK gives it what was checked.
bool layerSteps(const MacroContext& context, const MacroStep& step, DialogState& dialogs);

}  // namespace headless
