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
    const std::wstring bare = headless::modelName(name).name;
    const auto model = state.models.inMemory(bare, type);
    const std::wstring key = headless::modelKey(bare, type);
    if (model)
      if (const int there = state.windows.of(model.value, key)) return there;
    return state.windows.create(key);
  });
}

Got<int> ProWindowCurrentGet() {
  return operation("ProWindowCurrentGet", [](State& state) -> Got<int> {
    if (state.windows.current() == 0) return ProNotFound;
    return state.windows.current();
  });
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
    if (window == 0) return ProNotFound;
    state.queue(ProNotifyType::windowClosed, state.windows.model(window), window);
    state.windows.close(window);
    return ProNoError;
  });
}

ProError ProWindowActivate(int window) {
  return operation("ProWindowActivate", [&](State& state) -> ProError {
    if (!state.options.graphics) return ProNoGraphics;
    if (!isWindow(state, window)) return ProBadInputs;
    headless::Event event;
    event.notification.type = ProNotifyType::windowActivated;
    event.notification.window = window == kAnyWindow ? state.windows.current() : window;
    event.activates = true;
    state.events.queue(std::move(event));
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
  return operation("ProWindowRefit", [&](State& state) { return isWindow(state, window) ? ProNoError : ProBadInputs; });
}

}  // namespace creo
