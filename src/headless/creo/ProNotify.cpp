#include "creo/ProNotify.h"

#include "headless/creo/operation.h"

namespace creo {

using headless::operation;
using State = headless::Session::State;

ProError ProNotificationSet(ProNotifyType type, ProNotificationHandler handler) {
  return operation("ProNotificationSet", [&](State& state) -> ProError {
    if (!handler) return ProBadInputs;
    state.events.set(type, std::move(handler));
    return ProNoError;
  });
}

ProError ProNotificationUnset(ProNotifyType type) {
  return operation("ProNotificationUnset",
                   [&](State& state) { return state.events.unset(type) ? ProNoError : ProNotFound; });
}

}  // namespace creo
