// The frame of operations on solids: parts, assemblies and manufacturing models.
#pragma once

#include "headless/creo/operation.h"

namespace headless {

// As onModel; ProBadInputs for a drawing too.
template <class Body>
auto onSolid(std::string_view name, creo::ProMdl handle, Body&& body)
    -> std::invoke_result_t<Body, Session::State&, Model&> {
  using Result = std::invoke_result_t<Body, Session::State&, Model&>;
  return onModel(name, handle, [&](Session::State& state, Model& model) -> Result {
    if (model.type() == creo::ProMdlType::drawing) return Result(creo::ProBadInputs);
    return body(state, model);
  });
}

}  // namespace headless
