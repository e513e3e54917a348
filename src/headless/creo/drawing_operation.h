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

// body: (state, model, sheet). ProBadInputs for a sheet that isn't there.
template <class Body>
auto onSheet(std::string_view name, creo::ProMdl drawing, int sheet, Body&& body)
    -> std::invoke_result_t<Body, Session::State&, Model&, const SheetRecord&> {
  using Result = std::invoke_result_t<Body, Session::State&, Model&, const SheetRecord&>;
  return onDrawing(name, drawing, [&](Session::State& state, Model& model) -> Result {
    const SheetRecord* record = sheetOf(*model.document, sheet);
    if (!record) return Result(creo::ProBadInputs);
    return body(state, model, *record);
  });
}

// As onSheet, for the operations to which a sheet below 1 is the current one. body: (state, model, number of the
// sheet).
template <class Body>
auto onSheetOrCurrent(std::string_view name, creo::ProMdl drawing, int sheet, Body&& body)
    -> std::invoke_result_t<Body, Session::State&, Model&, int> {
  using Result = std::invoke_result_t<Body, Session::State&, Model&, int>;
  return onDrawing(name, drawing, [&](Session::State& state, Model& model) -> Result {
    const int number = sheet < 1 ? currentSheetOf(*model.document) : sheet;
    if (!sheetOf(*model.document, number)) return Result(creo::ProBadInputs);
    return body(state, model, number);
  });
}

// A list that Creo hands out; one of nothing isn't found.
template <class Item>
creo::Got<std::vector<Item>> collected(std::vector<Item> items) {
  if (items.empty()) return creo::ProNotFound;
  return items;
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
