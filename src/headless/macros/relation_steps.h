// The dialog of relations, for sketches: "relation_dlg", opened by `ProCmdMmRels`.
#pragma once

#include "headless/macros/step.h"

namespace headless {

// A feature is found by its id in the search dialog, and its sketch's relations are exported to a file, in UTF-8 with a
// mark; a sketch without relations makes no file. Of a feature with several sketches the dialog takes the next one each
// time that it is opened for it.
bool relationSteps(const MacroContext& context, const MacroStep& step, DialogState& dialogs);

}  // namespace headless
