// The frames of the operations on drawings, on their sheets and on their tables.
#pragma once

#include "headless/creo/operation.h"
#include "headless/model/drawing.h"

namespace headless {

// As onModel; ProBadInputs for a model that is no drawing and no format.
template <class Body>
auto onDrawing(std::string_view name, creo::ProMdl drawing, Body&& body)
    -> std::invoke_result_t<Body, Session::State&, Model&> {
  using Result = std::invoke_result_t<Body, Session::State&, Model&>;
  return onModel(name, drawing, [&](Session::State& state, Model& model) -> Result {
    if (!hasSheets(model.type())) return Result(creo::ProBadInputs);
    return body(state, model);
  });
}

// body: (state, model, sheet). ProNotFound for a sheet that isn't there.
template <class Body>
auto onSheet(std::string_view name, creo::ProMdl drawing, int sheet, Body&& body)
    -> std::invoke_result_t<Body, Session::State&, Model&, const SheetRecord&> {
  using Result = std::invoke_result_t<Body, Session::State&, Model&, const SheetRecord&>;
  return onDrawing(name, drawing, [&](Session::State& state, Model& model) -> Result {
    const SheetRecord* record = sheetOf(*model.document, sheet);
    if (!record) return Result(creo::ProNotFound);
    return body(state, model, *record);
  });
}

// body: (state, model, table). ProNotFound for a table that isn't there.
template <class Body>
auto onTable(std::string_view name, const creo::ProDwgtable& table, Body&& body)
    -> std::invoke_result_t<Body, Session::State&, Model&, TableRecord&> {
  using Result = std::invoke_result_t<Body, Session::State&, Model&, TableRecord&>;
  return onDrawing(name, table.drawing, [&](Session::State& state, Model& model) -> Result {
    TableRecord* record = tableOf(*model.document, table.id);
    if (!record) return Result(creo::ProNotFound);
    return body(state, model, *record);
  });
}

}  // namespace headless
