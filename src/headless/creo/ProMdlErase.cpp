#include "creo/ProMdl.h"
#include "headless/creo/operation.h"
#include "headless/model/erase.h"

namespace creo {

using headless::operation;
using State = headless::Session::State;

namespace {

ProError askToErase(State& state, ProMdl model, bool withUsed) {
  if (const ProError forbidden = state.mayGoOn(ProNotifyType::eraseBefore, model)) return forbidden;
  if (const ProError refused = state.erasures.ask(model, withUsed)) return refused;
  state.queue(ProNotifyType::eraseBefore, model, 0, headless::Event::Does::erases);
  return ProNoError;
}

}  // namespace

ProError ProMdlErase(ProMdl model) {
  return operation("ProMdlErase", [&](State& state) { return askToErase(state, model, false); });
}

ProError ProMdlEraseAll(ProMdl model) {
  return operation("ProMdlEraseAll", [&](State& state) { return askToErase(state, model, true); });
}

ProError ProMdlEraseNotDisplayed() {
  return operation("ProMdlEraseNotDisplayed", [](State& state) {
    headless::eraseUnless(state.models, [&](ProMdl model) { return state.windows.shows(model); });
    return ProNoError;
  });
}

}  // namespace creo
