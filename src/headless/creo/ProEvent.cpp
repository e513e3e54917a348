#include "creo/ProEvent.h"

#include "headless/creo/operation.h"

namespace creo {

using headless::operation;
using State = headless::Session::State;

Got<int> ProEventCallbackAdd(std::function<void()> callback) {
  return operation("ProEventCallbackAdd", [&](State& state) -> Got<int> {
    if (!callback) return ProBadInputs;
    return state.events.repeat(std::move(callback));
  });
}

ProError ProEventCallbackRemove(int callback) {
  return operation("ProEventCallbackRemove",
                   [&](State& state) { return state.events.stopRepeating(callback) ? ProNoError : ProNotFound; });
}

}  // namespace creo
