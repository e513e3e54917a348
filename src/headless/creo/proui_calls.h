// What the operations on components share: the call's first line, and the way to the component.
#pragma once

#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "headless/proui/ui_state.h"
#include "headless/session/call.h"
#include "headless/session/session.h"

namespace headless {

inline Ui::State& uiState() { return Session::current().ui().state(); }

// Does `change` to the component of that kind and gives its result, where it has one. operation: a literal.
template <class Change>
creo::ProError change(std::string_view operation, const std::string& dialog, const std::string& component, Kind kind,
                      Change&& change) {
  Call call(operation);
  if (call.failed()) return call.error();
  const auto found = uiState().find(dialog, component, kind);
  if (!found) return found.error;
  if constexpr (std::is_void_v<std::invoke_result_t<Change, Component&>>) {
    std::forward<Change>(change)(*found.value);
    return creo::ProNoError;
  } else {
    return std::forward<Change>(change)(*found.value);
  }
}

// What `read` gives of the component: a value, or a Got of one.
template <class T, class Read>
creo::Got<T> ask(std::string_view operation, const std::string& dialog, const std::string& component, Kind kind,
                 Read&& read) {
  Call call(operation);
  if (call.failed()) return call.error();
  const auto found = uiState().find(dialog, component, kind);
  if (!found) return found.error;
  return std::forward<Read>(read)(std::as_const(*found.value));
}

// Does `change` to a dialog.
template <class Change>
creo::ProError changeDialog(std::string_view operation, const std::string& dialog, Change&& change) {
  Call call(operation);
  if (call.failed()) return call.error();
  const auto found = uiState().find(dialog);
  if (found) std::forward<Change>(change)(*found.value);
  return found.error;
}

inline Action shared(creo::ProUIAction action) { return std::make_shared<const creo::ProUIAction>(std::move(action)); }

}  // namespace headless
