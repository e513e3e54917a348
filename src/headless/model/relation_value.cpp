#include "headless/model/relation_value.h"

namespace headless {

std::optional<bool> truth(const RelationValue& value) {
  const auto asNumber = number(value);
  return asNumber ? std::optional<bool>(*asNumber != 0) : std::nullopt;
}

std::optional<double> number(const RelationValue& value) {
  if (const double* real = std::get_if<double>(&value)) return *real;
  if (const bool* flag = std::get_if<bool>(&value)) return *flag ? 1.0 : 0.0;
  return {};
}

}  // namespace headless
