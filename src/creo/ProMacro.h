// Macros: Creo's recorded steps, such as "~ Command `ProCmdViewRepaint`;".
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// Puts a macro behind those that wait; it runs when control is back with Creo, or on ProMacroExecute.
ProError ProMacroLoad(const std::wstring& text);
// Runs what was loaded, now. ProNotFound: nothing was.
ProError ProMacroExecute();

}  // namespace creo
