// Calls that Creo carries out for the model on top of the active window alone.
#pragma once

#include "creo/ProTypes.h"

namespace actions {

// The call's result. Where it is ProGeneralError because another model stands on top, the model is displayed in the
// current window, the call is made once more, and the window shows again what it showed. It stays as it was where there
// is no window to show the model in, or the model has one of its own.
creo::ProError onTop(creo::ProMdl model, creo::FunctionRef<creo::ProError()> call);
// The same for calls that look at the current window. A model with a window of its own isn't displayed in another one:
// its window is the current one for the second call, then the former window again.
creo::ProError inCurrentWindow(creo::ProMdl model, creo::FunctionRef<creo::ProError()> call);

}  // namespace actions
