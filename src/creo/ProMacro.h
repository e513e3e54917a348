// Macros: Creo's recorded steps, such as "~ Command `ProCmdViewRepaint`;".
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// Puts a macro on top of those that wait: it runs before them, when control is back with Creo or on ProMacroExecute.
// Whether its steps can be done shows only then: one whose command is dimmed isn't.
ProError ProMacroLoad(const std::wstring& text);
// Runs what was loaded, now. Not for steps that activate a window, make a model current or erase the current one;
// dialogs that end with "OK" may be cancelled. ProNotFound: nothing was loaded.
ProError ProMacroExecute();

}  // namespace creo
