// Dimensions, of solids and of drawings.
#include "creo/ProDimension.h"

#include <algorithm>
#include <cmath>

#include "creo/ProDrawing.h"
#include "creo/ProSolid.h"
#include "headless/creo/drawing_operation.h"
#include "headless/model/dimension_value.h"
#include "headless/model/family.h"
#include "headless/model/parameters.h"
#include "headless/store/names.h"
#include "text/encoding.h"

namespace creo {

using headless::DimensionRecord;
using headless::Model;
using headless::onModel;
using State = headless::Session::State;

namespace {

ProError visitDimensions(const Model& model, bool reference, Visitor<ProDimension> visitor) {
  std::vector<ProDimension> dimensions;
  for (const DimensionRecord& dimension : model.document->record.dimensions)
    if (dimension.reference == reference) dimensions.push_back({model.handle, dimension.id, reference});
  return headless::visit<ProDimension>(dimensions, visitor);
}

// body: (record). ProNotFound for a dimension that has gone.
template <class Body>
auto onDimension(std::string_view name, const ProDimension& dimension, Body&& body)
    -> std::invoke_result_t<Body, const DimensionRecord&> {
  using Result = std::invoke_result_t<Body, const DimensionRecord&>;
  return onModel(name, dimension.owner, [&](State&, Model& m) -> Result {
    const DimensionRecord* record = m.document->dimension(dimension.id, dimension.reference);
    if (!record) return Result(ProNotFound);
    return body(*record);
  });
}

// By a relation that assigns to its symbol; a parameter of that name would take the value instead.
bool isDriven(headless::ModelDocument& document, const std::string& symbol) {
  const auto& names = document.relationNames();
  const std::string key = headless::folded(symbol);
  return (names.assigned.contains(key) || names.assignedAfter.contains(key)) &&
         !headless::findParameter(document, nullptr, symbol);
}

Got<double> valueOf(const Model& model, const DimensionRecord& record) {
  const auto value = headless::dimensionValue(model, record);
  return value ? Got<double>(*value) : Got<double>(ProNotFound);
}

}  // namespace

ProError ProSolidDimensionVisit(ProMdl solid, bool reference, Visitor<ProDimension> visitor) {
  return onModel("ProSolidDimensionVisit", solid, [&](State&, Model& m) -> ProError {
    if (m.type() != ProMdlType::part && m.type() != ProMdlType::assembly) return ProBadInputs;
    return visitDimensions(m, reference, visitor);
  });
}

ProError ProDrawingDimensionVisit(ProMdl drawing, bool reference, Visitor<ProDimension> visitor) {
  return headless::onDrawing("ProDrawingDimensionVisit", drawing,
                             [&](State&, Model& m) -> ProError { return visitDimensions(m, reference, visitor); });
}

Got<bool> ProAnnotationIsShown(const ProDimension& dimension, ProMdl drawing) {
  return headless::onDrawing("ProAnnotationIsShown", drawing, [&](State& state, Model& m) -> Got<bool> {
    const Model* owner = state.models.find(dimension.owner);
    if (!owner) return ProBadInputs;
    if (!owner->document->dimension(dimension.id, dimension.reference)) return ProNotFound;
    if (owner == &m) return true;
    const auto& shown = m.document->record.shownDimensions;
    return std::any_of(shown.begin(), shown.end(), [&](const headless::ShownDimensionRecord& entry) {
      return entry.id == dimension.id && entry.reference == dimension.reference &&
             headless::isLabelOf(entry.model, owner->name, owner->type());
    });
  });
}

Got<std::wstring> ProDimensionSymbolGet(const ProDimension& dimension) {
  return onDimension("ProDimensionSymbolGet", dimension, [](const DimensionRecord& record) -> Got<std::wstring> {
    if (record.symbol.empty()) return (record.reference ? L"rd" : L"d") + std::to_wstring(record.id);
    return text::fromUtf8(record.symbol);
  });
}

Got<std::vector<std::wstring>> ProDimensionTextGet(const ProDimension& dimension) {
  using Lines = std::vector<std::wstring>;
  return onDimension("ProDimensionTextGet", dimension, [](const DimensionRecord& record) -> Got<Lines> {
    if (record.text.empty()) return Lines{L"@D"};
    Lines lines;
    for (const std::string& line : record.text) lines.push_back(text::fromUtf8(line));
    return lines;
  });
}

Got<ProDimensionTolerance> ProDimensionToleranceGet(const ProDimension& dimension) {
  return onDimension("ProDimensionToleranceGet", dimension,
                     [](const DimensionRecord& record) -> Got<ProDimensionTolerance> {
                       if (!record.tolerance) return ProNotFound;
                       return ProDimensionTolerance{record.tolerance->upper, record.tolerance->lower};
                     });
}

Got<ProToleranceType> ProDimensionTolTypeGet(const ProDimension& dimension) {
  return onDimension("ProDimensionTolTypeGet", dimension, [](const DimensionRecord& record) -> Got<ProToleranceType> {
    if (record.reference) return ProGeneralError;
    if (!record.tolerance || record.tolerance->type != ProToleranceType::none)
      return record.tolerance ? record.tolerance->type : ProToleranceType::none;
    const bool isEven = record.tolerance->upper == record.tolerance->lower;
    return isEven ? ProToleranceType::symmetric : ProToleranceType::plusMinus;
  });
}

Got<bool> ProDimensionIsAssociative(const ProDimension& dimension) {
  return onDimension("ProDimensionIsAssociative", dimension,
                     [](const DimensionRecord& record) -> Got<bool> { return record.associative; });
}

Got<double> ProDimensionValueGet(const ProDimension& dimension) {
  return onModel("ProDimensionValueGet", dimension.owner, [&](State&, Model& m) -> Got<double> {
    const DimensionRecord* record = m.document->dimension(dimension.id, dimension.reference);
    if (!record) return ProNotFound;
    return valueOf(m, *record);
  });
}

ProError ProDimensionValueSet(const ProDimension& dimension, double value) {
  return onModel("ProDimensionValueSet", dimension.owner, [&](State& state, Model& m) -> ProError {
    DimensionRecord* record = m.document->dimension(dimension.id, dimension.reference);
    if (!record) return ProNotFound;
    if (!std::isfinite(value)) return ProBadInputs;
    const std::string symbol = headless::symbolOf(*record);
    if (dimension.reference || isDriven(*m.document, symbol)) {
      state.showMessage(text::fromUtf8(symbol) +
                        (dimension.reference ? L" is a reference dimension" : L" is driven by a relation"));
      return ProGeneralError;
    }
    if (const auto present = valueOf(m, *record); present && present.value == value) return ProNoError;
    if (m.row)
      headless::setRowValue(*m.document, *m.row, ProFamitemType::dimension, symbol, value);
    else
      record->value = value;
    m.document->touch(m.row);
    return ProNoError;
  });
}

Got<bool> ProDimensionIsReldriven(const ProDimension& dimension) {
  return onModel("ProDimensionIsReldriven", dimension.owner, [&](State&, Model& m) -> Got<bool> {
    const DimensionRecord* record = m.document->dimension(dimension.id, dimension.reference);
    if (!record) return ProNotFound;
    return isDriven(*m.document, headless::symbolOf(*record));
  });
}

}  // namespace creo
