// The frames of the operations on dialogs: operation.h's, with the way to the dialog or component.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "headless/creo/operation.h"
#include "headless/proui/ui_state.h"

namespace headless {

// Applies `apply` to a dialog; gives its result, where it has one. name: a literal.
template <class Apply>
creo::ProError changeDialog(std::string_view name, const std::string& dialog, Apply&& apply) {
  return operation(name, [&](Session::State& state) -> creo::ProError {
    const auto found = state.ui.state().find(dialog);
    if (!found) return found.error;
    if constexpr (std::is_void_v<std::invoke_result_t<Apply, Dialog&>>) {
      apply(*found.value);
      return creo::ProNoError;
    } else {
      return apply(*found.value);
    }
  });
}

// Applies `apply` to the component of that kind; gives its result, where it has one.
template <class Apply>
creo::ProError change(std::string_view name, const std::string& dialog, const std::string& component, Kind kind,
                      Apply&& apply) {
  return changeDialog(name, dialog, [&](Dialog& owner) -> creo::ProError {
    const auto found = owner.find(component, kind);
    if (!found) return found.error;
    if constexpr (std::is_void_v<std::invoke_result_t<Apply, Component&>>) {
      apply(*found.value);
      return creo::ProNoError;
    } else {
      return apply(*found.value);
    }
  });
}

// What `read` gives of the component: a value, or a Got of one.
template <class T, class Read>
creo::Got<T> ask(std::string_view name, const std::string& dialog, const std::string& component, Kind kind,
                 Read&& read) {
  return operation(name, [&](Session::State& state) -> creo::Got<T> {
    const auto found = state.ui.state().find(dialog, component, kind);
    if (!found) return found.error;
    return read(std::as_const(*found.value));
  });
}

inline Action shared(creo::ProUIAction action) { return std::make_shared<const creo::ProUIAction>(std::move(action)); }

}  // namespace headless
