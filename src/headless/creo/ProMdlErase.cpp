#include "creo/ProMdl.h"
#include "headless/creo/operation.h"
#include "headless/model/erase.h"

namespace creo {

using headless::operation;
using State = headless::Session::State;

ProError ProMdlEraseAll(ProMdl model) {
  return operation("ProMdlEraseAll", [&](State& state) -> ProError {
    if (const ProError forbidden = state.mayGoOn(ProNotifyType::eraseBefore, model)) return forbidden;
    // Creo keeps a model that stands in a window.
    return headless::eraseWithUsed(state.models, model, [&](ProMdl used) { return state.windows.shows(used); });
  });
}

ProError ProMdlEraseNotDisplayed() {
  return operation("ProMdlEraseNotDisplayed", [](State& state) {
    headless::eraseUnless(state.models, [&](ProMdl model) { return state.windows.shows(model); });
    return ProNoError;
  });
}

}  // namespace creo
