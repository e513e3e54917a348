// Symbol definitions that are made line by line.
#include "creo/ProDtlentity.h"

#include <algorithm>
#include <cmath>

#include "headless/creo/drawing_operation.h"
#include "headless/model/symbols.h"
#include "text/encoding.h"

namespace creo {

using headless::Model;
using headless::onDrawing;
using headless::operation;
using headless::SymbolDefinitionRecord;
using State = headless::Session::State;

namespace {

bool isFinite(const ProPoint& point) { return std::isfinite(point.x) && std::isfinite(point.y); }

}  // namespace

Got<ProDtlsymdefdata> ProDtlsymdefdataAlloc(ProMdl drawing) {
  return onDrawing("ProDtlsymdefdataAlloc", drawing, [](State&, Model& m) -> Got<ProDtlsymdefdata> {
    return ProDtlsymdefdata{m.handle, {}};
  });
}

ProError ProDtlsymdefdataPathSet(ProDtlsymdefdata& data, const std::wstring& path) {
  return operation("ProDtlsymdefdataPathSet", [&](State&) {
    if (path.empty() || std::any_of(path.begin(), path.end(), [](wchar_t c) { return c < L' '; })) return ProBadInputs;
    data.path = path;
    return ProNoError;
  });
}

Got<ProDtlsymdef> ProDtlsymdefCreate(const ProDtlsymdefdata& data) {
  return onDrawing("ProDtlsymdefCreate", data.drawing, [&](State&, Model& m) -> Got<ProDtlsymdef> {
    if (data.path.empty()) return ProBadInputs;
    auto& definitions = m.document->record.symbolDefinitions;
    const std::string name = text::toUtf8(data.path);
    if (headless::symbolDefinitionNamed(*m.document, name)) return ProExists;
    const int id = headless::nextId(definitions);
    if (id == 0) return ProGeneralError;
    SymbolDefinitionRecord& fresh = definitions.emplace_back();
    fresh.id = id;
    fresh.name = name;
    m.document->touch(nullptr);
    return ProDtlsymdef{m.handle, id};
  });
}

ProError ProDtlsymdefDelete(const ProDtlsymdef& definition) {
  return onDrawing("ProDtlsymdefDelete", definition.drawing, [&](State&, Model& m) {
    auto& definitions = m.document->record.symbolDefinitions;
    if (std::erase_if(definitions, [&](const auto& entry) { return entry.id == definition.id; }) == 0)
      return ProNotFound;
    m.document->touch(nullptr);
    return ProNoError;
  });
}

Got<ProCurvedata> ProCurvedataAlloc(const ProPoint& from, const ProPoint& to) {
  return operation("ProCurvedataAlloc", [&](State&) -> Got<ProCurvedata> {
    if (!isFinite(from) || !isFinite(to)) return ProBadInputs;
    return ProCurvedata{from, to};
  });
}

Got<ProDtlentitydata> ProDtlentitydataAlloc(ProMdl drawing) {
  return onDrawing("ProDtlentitydataAlloc", drawing, [](State&, Model& m) -> Got<ProDtlentitydata> {
    ProDtlentitydata data;
    data.drawing = m.handle;
    return data;
  });
}

ProError ProDtlentitydataCurveSet(ProDtlentitydata& data, const ProCurvedata& curve) {
  return operation("ProDtlentitydataCurveSet", [&](State&) {
    data.curve = curve;
    return ProNoError;
  });
}

ProError ProDtlentitydataConstructionSet(ProDtlentitydata&, bool isConstruction) {
  return operation("ProDtlentitydataConstructionSet",
                   [&](State&) { return isConstruction ? ProBadInputs : ProNoError; });
}

ProError ProDtlentitydataViewSet(ProDtlentitydata& data, const ProView& view) {
  return operation("ProDtlentitydataViewSet", [&](State&) {
    if (view.drawing != data.drawing || view.id == 0) return ProBadInputs;
    data.view = view.id;
    return ProNoError;
  });
}

ProError ProDtlentitydataColorSet(ProDtlentitydata& data, ProColorMethod method, int color) {
  return operation("ProDtlentitydataColorSet", [&](State&) {
    data.colorMethod = method;
    data.color = method == ProColorMethod::type ? color : 0;
    return ProNoError;
  });
}

ProError ProDtlentitydataWidthSet(ProDtlentitydata& data, double width) {
  return operation("ProDtlentitydataWidthSet", [&](State&) {
    if (!std::isfinite(width) || width < 0) return ProBadInputs;
    data.width = width;
    return ProNoError;
  });
}

Got<ProDtlentity> ProDtlentityCreate(const ProDtlsymdef& definition, const ProDtlentitydata& data) {
  return onDrawing("ProDtlentityCreate", definition.drawing, [&](State&, Model& m) -> Got<ProDtlentity> {
    if (!data.curve || data.drawing != m.handle) return ProBadInputs;
    SymbolDefinitionRecord* const record = headless::symbolDefinitionOf(*m.document, definition.id);
    if (!record) return ProNotFound;
    headless::LineRecord& line = record->lines.emplace_back();
    line.x1 = data.curve->from.x;
    line.y1 = data.curve->from.y;
    line.x2 = data.curve->to.x;
    line.y2 = data.curve->to.y;
    line.width = data.width;
    line.colorMethod = static_cast<int>(data.colorMethod);
    line.color = data.color;
    m.document->touch(nullptr);
    return ProDtlentity{definition, static_cast<int>(record->lines.size())};
  });
}

}  // namespace creo
