// The frame of the operations: counted, traced with their result, ended by an arranged fault, and none lets an
// exception out.
#pragma once

#include <string_view>
#include <type_traits>

#include "creo/ProTypes.h"
#include "headless/creo/call.h"
#include "headless/creo/state.h"

namespace headless {

inline creo::ProError resultOf(creo::ProError result) { return result; }
inline creo::ProError resultOf(int) { return creo::ProNoError; }
template <class T>
creo::ProError resultOf(const creo::Got<T>& result) {
  return result.error;
}

// name: a literal. body: given the session's state, gives the operation's result.
template <class Body>
auto operation(std::string_view name, Body&& body) -> std::invoke_result_t<Body, Session::State&> {
  using Result = std::invoke_result_t<Body, Session::State&>;
  Call call(name);
  if (call.failed()) return Result(call.error());
  Session::State& state = Session::current().state();
  try {
    Result result = body(state);
    call.finish(resultOf(result));
    return result;
  } catch (const std::exception& e) {
    state.showMessage(exceptionLine(name, e));
    call.finish(creo::ProGeneralError);
    return Result(creo::ProGeneralError);
  }
}

// As operation, for one that works on a model; ProBadInputs for a handle that has gone. body: (state, model).
template <class Body>
auto onModel(std::string_view name, creo::ProMdl handle, Body&& body)
    -> std::invoke_result_t<Body, Session::State&, Model&> {
  using Result = std::invoke_result_t<Body, Session::State&, Model&>;
  return operation(name, [&](Session::State& state) -> Result {
    Model* model = state.models.find(handle);
    if (!model) return Result(creo::ProBadInputs);
    return body(state, *model);
  });
}

// Visits a snapshot; ProNotFound over nothing, else the first result that isn't 0.
template <class Item, class Items>
creo::ProError visit(const Items& items, creo::Visitor<Item> visitor) {
  if (items.empty()) return creo::ProNotFound;
  for (const Item& item : items)
    if (const creo::ProError result = visitor(item)) return result;
  return creo::ProNoError;
}

}  // namespace headless
