// Placed symbols, and the groups that they show.
#include <cmath>

#include "creo/ProDtlsym.h"
#include "headless/creo/drawing_operation.h"
#include "headless/model/symbols.h"
#include "text/encoding.h"

namespace creo {

using headless::Model;
using headless::onDrawing;
using headless::operation;
using headless::SymbolDefinitionRecord;
using headless::SymbolRecord;
using State = headless::Session::State;

namespace {

// body: (model, record). ProNotFound for a symbol that has gone.
template <class Body>
auto onSymbol(std::string_view name, const ProDtlsyminst& symbol, Body body)
    -> std::invoke_result_t<Body, Model&, SymbolRecord&> {
  using Result = std::invoke_result_t<Body, Model&, SymbolRecord&>;
  return onDrawing(name, symbol.drawing, [&](State&, Model& m) -> Result {
    SymbolRecord* record = headless::symbolOf(*m.document, symbol.id);
    if (!record) return Result(ProNotFound);
    return body(m, *record);
  });
}

// A setter of a record that was allocated.
template <class Body>
ProError onData(std::string_view name, const ProDtlsyminstdata& data, Body body) {
  return operation(name, [&](State&) -> ProError { return data.drawing ? body() : ProBadInputs; });
}

// body: (model, place). ProNotFound for a group that has gone.
template <class Body>
auto onGroup(std::string_view name, const ProDtlsymgroup& group, Body body)
    -> std::invoke_result_t<Body, const headless::SymbolGroupPlace&> {
  using Result = std::invoke_result_t<Body, const headless::SymbolGroupPlace&>;
  return onDrawing(name, group.definition.drawing, [&](State&, Model& m) -> Result {
    const SymbolDefinitionRecord* definition = headless::symbolDefinitionOf(*m.document, group.definition.id);
    if (definition)
      for (const headless::SymbolGroupPlace& place : headless::groupsOf(*definition))
        if (place.group->id == group.id) return body(place);
    return Result(ProNotFound);
  });
}

bool sameDefinition(const ProDtlsymdef& a, const ProDtlsymdef& b) { return a.drawing == b.drawing && a.id == b.id; }

// An attachment as documents hold it: 0 for one that stands freely.
int storedType(ProDtlattachType type) { return type == ProDtlattachType::free ? 0 : static_cast<int>(type); }
ProDtlattachType typeOfStored(int stored) {
  return stored == 0 ? ProDtlattachType::free : static_cast<ProDtlattachType>(stored);
}

// Puts the record's data into the symbol; nothing is changed where it fails.
ProError take(Model& m, SymbolRecord& symbol, const ProDtlsyminstdata& data, int sheetWithoutView) {
  const SymbolDefinitionRecord* definition = headless::symbolDefinitionOf(*m.document, data.definition.id);
  const bool isLost = !definition && data.definition.id == 0 && symbol.id != 0;  // it keeps the name that it has
  if ((!definition && !isLost) || data.attachment.type == ProDtlattachType::none) return ProBadInputs;
  const int sheet = headless::sheetOfView(*m.document, data.attachment.view, sheetWithoutView);
  if (sheet == 0) return ProNotFound;
  if (definition) symbol.definition = definition->name;
  symbol.sheet = sheet;
  symbol.view = data.attachment.view;
  symbol.attachment = storedType(data.attachment.type);
  symbol.position.x = data.attachment.position.x;
  symbol.position.y = data.attachment.position.y;
  symbol.groupOption = data.groupOption;
  symbol.groups.clear();
  for (const ProDtlsymgroup& group : data.groups) symbol.groups.push_back(group.id);
  m.document->touch(nullptr);
  return ProNoError;
}

}  // namespace

Got<ProDtlattach> ProDtlattachAlloc(ProDtlattachType type, int view, const ProPoint& position) {
  return operation("ProDtlattachAlloc", [&](State&) -> Got<ProDtlattach> {
    const bool isPlace = std::isfinite(position.x) && std::isfinite(position.y);
    if (type == ProDtlattachType::none || !isPlace) return ProBadInputs;
    return ProDtlattach{type, view, position};
  });
}

ProError ProDrawingDtlsyminstVisit(ProMdl drawing, int sheet, Visitor<ProDtlsyminst> visitor) {
  return headless::onSheet("ProDrawingDtlsyminstVisit", drawing, sheet,
                           [&](State&, Model& m, const headless::SheetRecord&) -> ProError {
                             std::vector<ProDtlsyminst> symbols;
                             for (const SymbolRecord& symbol : m.document->record.symbols)
                               if (symbol.sheet == sheet) symbols.push_back({m.handle, symbol.id});
                             return headless::visit<ProDtlsyminst>(symbols, visitor);
                           });
}

Got<ProDtlsyminstdata> ProDtlsyminstDataGet(const ProDtlsyminst& symbol) {
  return onSymbol("ProDtlsyminstDataGet", symbol, [](Model& m, SymbolRecord& record) -> Got<ProDtlsyminstdata> {
    ProDtlsyminstdata data;
    data.drawing = m.handle;
    data.definition.drawing = m.handle;
    if (const auto* definition = headless::symbolDefinitionNamed(*m.document, record.definition))
      data.definition.id = definition->id;
    data.groupOption = record.groupOption;
    for (const int id : record.groups) data.groups.push_back({data.definition, id});
    data.attachment = {typeOfStored(record.attachment), record.view, {record.position.x, record.position.y}};
    return data;
  });
}

Got<ProDtlsyminstdata> ProDtlsyminstdataAlloc(ProMdl drawing) {
  return onDrawing("ProDtlsyminstdataAlloc", drawing, [](State&, Model& m) -> Got<ProDtlsyminstdata> {
    ProDtlsyminstdata data;
    data.drawing = m.handle;
    return data;
  });
}

ProError ProDtlsyminstdataDefSet(ProDtlsyminstdata& data, const ProDtlsymdef& definition) {
  return onData("ProDtlsyminstdataDefSet", data, [&] {
    if (definition.drawing != data.drawing || definition.id == 0) return ProBadInputs;
    data.definition = definition;
    return ProNoError;
  });
}

ProError ProDtlsyminstdataGroupoptionsSet(ProDtlsyminstdata& data, ProSymbolGroups option,
                                          const std::vector<ProDtlsymgroup>& groups) {
  return onData("ProDtlsyminstdataGroupoptionsSet", data, [&] {
    for (const ProDtlsymgroup& group : groups)
      if (!sameDefinition(group.definition, data.definition)) return ProBadInputs;
    data.groupOption = option;
    data.groups = groups;
    return ProNoError;
  });
}

ProError ProDtlsyminstdataAttachtypeSet(ProDtlsyminstdata& data, ProDtlsymattach type) {
  return onData("ProDtlsyminstdataAttachtypeSet", data,
                [&] { return type == ProDtlsymattach::free ? ProNoError : ProBadInputs; });
}

ProError ProDtlsyminstdataAttachmentSet(ProDtlsyminstdata& data, const ProDtlattach& attachment) {
  return onData("ProDtlsyminstdataAttachmentSet", data, [&] {
    if (attachment.type == ProDtlattachType::none) return ProBadInputs;
    data.attachment = attachment;
    return ProNoError;
  });
}

Got<ProDtlsyminst> ProDtlsyminstCreate(const ProDtlsyminstdata& data) {
  return onDrawing("ProDtlsyminstCreate", data.drawing, [&](State&, Model& m) -> Got<ProDtlsyminst> {
    auto& symbols = m.document->record.symbols;
    SymbolRecord symbol;
    if (const ProError taken = take(m, symbol, data, headless::currentSheetOf(*m.document))) return taken;
    symbol.id = headless::nextId(symbols);
    if (symbol.id == 0) return ProGeneralError;
    symbol.erased = true;
    symbols.push_back(std::move(symbol));
    return ProDtlsyminst{m.handle, symbols.back().id};
  });
}

ProError ProDtlsyminstShow(const ProDtlsyminst& symbol) {
  return onSymbol("ProDtlsyminstShow", symbol, [](Model& m, SymbolRecord& record) {
    if (record.erased) m.document->touch(nullptr);
    record.erased = false;
    return ProNoError;
  });
}

ProError ProDtlsyminstModify(const ProDtlsyminst& symbol, const ProDtlsyminstdata& data) {
  return onSymbol("ProDtlsyminstModify", symbol, [&](Model& m, SymbolRecord& record) -> ProError {
    if (data.drawing != m.handle) return ProBadInputs;
    return take(m, record, data, record.sheet);
  });
}

ProError ProDtlsyminstDelete(const ProDtlsyminst& symbol) {
  return onSymbol("ProDtlsyminstDelete", symbol, [](Model& m, SymbolRecord& record) -> ProError {
    auto& symbols = m.document->record.symbols;
    symbols.erase(symbols.begin() + (&record - symbols.data()));
    m.document->touch(nullptr);
    return ProNoError;
  });
}

Got<std::vector<ProDtlsymgroup>> ProDtlsyminstSymgroupsCollect(const ProDtlsyminst& symbol) {
  using Groups = std::vector<ProDtlsymgroup>;
  return onSymbol("ProDtlsyminstSymgroupsCollect", symbol, [](Model& m, SymbolRecord& record) -> Got<Groups> {
    const auto* definition = headless::symbolDefinitionNamed(*m.document, record.definition);
    if (!definition || definition->groups.empty()) return ProNotFound;
    Groups groups;
    for (const headless::SymbolGroupPlace& place : headless::groupsOf(*definition))
      groups.push_back({{m.handle, definition->id}, place.group->id});
    return groups;
  });
}

Got<std::wstring> ProDtlsymgroupNameGet(const ProDtlsymgroup& group) {
  return onGroup("ProDtlsymgroupNameGet", group, [](const headless::SymbolGroupPlace& place) -> Got<std::wstring> {
    return text::fromUtf8(place.group->name);
  });
}

Got<ProDtlsymgroup> ProDtlsymgroupParentGet(const ProDtlsymgroup& group) {
  return onGroup("ProDtlsymgroupParentGet", group, [&](const headless::SymbolGroupPlace& place) -> Got<ProDtlsymgroup> {
    if (!place.parent) return ProNotFound;
    return ProDtlsymgroup{group.definition, place.parent->id};
  });
}

}  // namespace creo
