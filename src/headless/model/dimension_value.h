// The numbers of dimensions, of solids and of drawings.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "headless/model/model.h"

namespace headless {

// In the model's units, degrees for angles; an instance's own where its row or a relation gives it one. Nothing: it has
// no number.
std::optional<double> dimensionValue(const Model& model, const DimensionRecord& dimension);
// By its symbol, case-blind, "d12" and "rd12" for those without one; null: the model has none.
const DimensionRecord* dimensionCalled(const Model& model, std::string_view symbol);
// As sheets show it: at most four decimals, none that is 0 at the end.
std::wstring shownNumber(double value);

}  // namespace headless
