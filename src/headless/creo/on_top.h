// Which model stands in front of the person.
#pragma once

#include "headless/creo/state.h"

namespace headless {

// Is the model on top of the current window, which may be another one than the person's?
inline bool isOnTop(const Session::State& state, const Model& model) {
  return state.windows.model(state.windows.current()) == model.handle;
}
// Is it the one on top of the active window?
inline bool isInFront(const Session::State& state, const Model& model) {
  return state.windows.model(state.windows.active()) == model.handle;
}

}  // namespace headless
