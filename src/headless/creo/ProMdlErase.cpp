#include "creo/ProMdl.h"
#include "headless/creo/operation.h"

namespace creo {

using headless::operation;
using State = headless::Session::State;

ProError ProMdlEraseAll(ProMdl model) {
  return operation("ProMdlEraseAll", [&](State& state) {
    state.raise(ProNotifyType::eraseBefore, model);
    // Creo keeps a model that stands in a window.
    return state.models.eraseAll(model, [&](ProMdl used) { return state.windows.shows(used); });
  });
}

}  // namespace creo
