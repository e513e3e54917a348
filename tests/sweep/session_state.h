// What a run must leave in the session as it found it, a line a fact.
#pragma once

#include <set>
#include <string>

#include "headless/session.h"

namespace sweep {

// Windows and the current model, the working folder, options, models in memory, what of them is displayed, dialogs,
// what is selected, models under work. Equal in two sessions that stand alike.
std::set<std::string> stateOf(headless::Session& session);

}  // namespace sweep
