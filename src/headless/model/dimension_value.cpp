#include "headless/model/dimension_value.h"

#include <cmath>
#include <variant>

#include "headless/model/family.h"
#include "headless/model/models.h"
#include "headless/store/names.h"
#include "text/numbers.h"

namespace headless {

std::optional<double> dimensionValue(const Model& model, const DimensionRecord& dimension) {
  const Scalar& value = heldValue(model, creo::ProFamitemType::dimension, symbolOf(dimension), dimension.value);
  if (const auto* integer = std::get_if<int>(&value)) return *integer;
  if (const auto* real = std::get_if<double>(&value)) return *real;
  return std::nullopt;
}

const DimensionRecord* dimensionCalled(const Model& model, std::string_view symbol) {
  for (const DimensionRecord& dimension : model.document->record.dimensions)
    if (sameName(symbolOf(dimension), symbol)) return &dimension;
  return nullptr;
}

std::wstring shownNumber(double value) {
  constexpr double kDecimals = 1e4;
  const double rounded = std::round(value * kDecimals) / kDecimals;
  return text::shortest(rounded == 0 ? 0.0 : rounded);
}

}  // namespace headless
