// The frame of operations on assemblies alone.
#pragma once

#include "headless/creo/solid_operation.h"

namespace headless {

// As onSolid; ProBadInputs for a part too.
template <class Body>
auto onAssembly(std::string_view name, creo::ProMdl handle, Body&& body)
    -> std::invoke_result_t<Body, Session::State&, Model&> {
  using Result = std::invoke_result_t<Body, Session::State&, Model&>;
  return onSolid(name, handle, [&](Session::State& state, Model& model) -> Result {
    if (model.type() == creo::ProMdlType::part) return Result(creo::ProBadInputs);
    return body(state, model);
  });
}

}  // namespace headless
