// The frame of operations on solids: parts, assemblies and manufacturing models.
#pragma once

#include "headless/creo/operation.h"
#include "headless/model/drawing.h"

namespace headless {

// As onModel; ProBadInputs for a drawing or a format too.
template <class Body>
auto onSolid(std::string_view name, creo::ProMdl handle, Body&& body)
    -> std::invoke_result_t<Body, Session::State&, Model&> {
  using Result = std::invoke_result_t<Body, Session::State&, Model&>;
  return onModel(name, handle, [&](Session::State& state, Model& model) -> Result {
    if (hasSheets(model.type())) return Result(creo::ProBadInputs);
    return body(state, model);
  });
}

}  // namespace headless
