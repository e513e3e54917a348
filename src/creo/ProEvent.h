// Functions that Creo calls again and again from its event loop.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// Called whenever Creo has nothing else to do, as often as ten times a second. It may open no dialog. Gives the
// callback's number.
Got<int> ProEventCallbackAdd(std::function<void()> callback);
// ProNotFound: there is none of that number.
ProError ProEventCallbackRemove(int callback);

}  // namespace creo
