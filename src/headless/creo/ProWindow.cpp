#include "creo/ProWindow.h"

#include "headless/creo/operation.h"

namespace creo {

using headless::operation;
using State = headless::Session::State;

namespace {

// kAnyWindow stands for the current one.
bool isWindow(State& state, int window) {
  return state.windows.has(window == kAnyWindow ? state.windows.current() : window);
}

}  // namespace

Got<int> ProObjectwindowCreate(const std::wstring& name, ProMdlType type) {
  return operation("ProObjectwindowCreate", [&](State& state) -> Got<int> {
    if (!state.options.graphics) return ProNoGraphics;
    if (name.empty() || type == ProMdlType::unused) return ProBadInputs;
    const auto model = state.models.inMemory(name, type);
    if (!model) return model.error;
    if (const int there = state.windows.of(model.value)) return there;
    const int window = state.windows.create();
    state.windows.show(window, model.value);
    state.queue(ProNotifyType::currentModelChanged, model.value, window);
    state.raise(ProNotifyType::windowOccupied, model.value, window);
    return window;
  });
}

Got<int> ProWindowCurrentGet() {
  return operation("ProWindowCurrentGet", [](State& state) -> Got<int> { return state.windows.current(); });
}

ProError ProWindowCurrentSet(int window) {
  return operation("ProWindowCurrentSet", [&](State& state) -> ProError {
    if (!state.windows.has(window)) return ProBadInputs;
    state.windows.setCurrent(window);
    return ProNoError;
  });
}

ProError ProWindowCurrentClose() {
  return operation("ProWindowCurrentClose", [](State& state) -> ProError {
    const int window = state.windows.current();
    const ProMdl shown = state.windows.model(window);
    if (window == headless::Windows::kFirst && !shown) return ProNotFound;
    state.queue(ProNotifyType::windowClosed, shown, window, headless::Event::Does::closes);
    return ProNoError;
  });
}

ProError ProWindowDelete(int window) {
  return operation("ProWindowDelete", [&](State& state) -> ProError {
    if (!state.windows.has(window)) return ProBadInputs;
    if (window == state.windows.current() || window == state.windows.active()) return ProGeneralError;
    state.queue(ProNotifyType::windowClosed, state.windows.model(window), window);
    state.windows.close(window);
    return ProNoError;
  });
}

ProError ProWindowActivate(int window) {
  return operation("ProWindowActivate", [&](State& state) -> ProError {
    if (!state.options.graphics) return ProNoGraphics;
    if (!state.windows.has(window)) return ProBadInputs;
    state.queue(ProNotifyType::windowActivated, {}, window, headless::Event::Does::activates);
    return ProNoError;
  });
}

ProError ProWindowRepaint(int window) {
  return operation("ProWindowRepaint", [&](State& state) {
    if (!isWindow(state, window)) return ProBadInputs;
    state.highlights.clear();
    return ProNoError;
  });
}

ProError ProWindowClear(int window) {
  return operation("ProWindowClear", [&](State& state) { return isWindow(state, window) ? ProNoError : ProBadInputs; });
}

ProError ProWindowRefit(int window) {
  return operation("ProWindowRefit", [&](State& state) -> ProError {
    if (!state.windows.has(window)) return ProBadInputs;
    return state.windows.model(window) ? ProNoError : ProNotFound;
  });
}

}  // namespace creo
