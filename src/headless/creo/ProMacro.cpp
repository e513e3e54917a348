#include "creo/ProMacro.h"

#include "headless/creo/operation.h"

namespace creo {

using headless::operation;
using State = headless::Session::State;

ProError ProMacroLoad(const std::wstring& text) {
  return operation("ProMacroLoad", [&](State& state) -> ProError {
    state.macros.load(text);
    return ProNoError;
  });
}

ProError ProMacroExecute() {
  return operation("ProMacroExecute", [](State& state) -> ProError {
    if (!state.macros.waiting()) return ProNotFound;
    while (state.macros.waiting()) state.macros.runStep(state.macroContext());
    return ProNoError;
  });
}

}  // namespace creo
