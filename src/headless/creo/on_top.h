// Which model stands in front of the person.
#pragma once

#include "headless/creo/state.h"

namespace headless {

// Is the model on top of the current window? An active one apart from it isn't known here.
inline bool isOnTop(const Session::State& state, const Model& model) {
  return state.windows.model(state.windows.current()) == model.handle;
}

}  // namespace headless
