#include "headless/model/stored_value.h"

#include <cmath>
#include <limits>

#include "headless/model/units.h"

namespace headless {
namespace {

// What the type makes of a value; nothing for a value that it can't hold.
std::optional<Scalar> scalarOf(const RelationValue& value, creo::ProParamvalueType type) {
  const auto asNumber = number(value);
  switch (type) {
    case creo::ProParamvalueType::string:
      if (const auto* text = std::get_if<std::string>(&value)) return Scalar(*text);
      break;
    case creo::ProParamvalueType::real:
      if (asNumber) return Scalar(*asNumber);
      break;
    case creo::ProParamvalueType::integer:
      if (asNumber && std::abs(*asNumber) <= std::numeric_limits<int>::max())
        return Scalar(static_cast<int>(std::lround(*asNumber)));
      break;
    case creo::ProParamvalueType::boolean:
      if (asNumber) return Scalar(*asNumber != 0);
      break;
    case creo::ProParamvalueType::noteId:
    case creo::ProParamvalueType::none:
      break;
  }
  return {};
}

bool hasUnits(const ParameterRecord* parameter) {
  return parameter && parameter->type == creo::ProParamvalueType::real && !parameter->units.empty();
}

}  // namespace

RelationValue relationValue(const Scalar& value) {
  if (const auto* text = std::get_if<std::string>(&value)) return *text;
  if (const auto* real = std::get_if<double>(&value)) return *real;
  if (const auto* integer = std::get_if<int>(&value)) return static_cast<double>(*integer);
  if (const auto* flag = std::get_if<bool>(&value)) return *flag;
  return {};
}

RelationValue countedIn(const Scalar& scalar, const ParameterRecord* parameter, const ModelRecord& model) {
  RelationValue value = relationValue(scalar);
  if (!hasUnits(parameter) || !std::holds_alternative<double>(value)) return value;
  const double there = inModelUnits(std::get<double>(value), parameter->units, model);
  return std::isfinite(there) ? RelationValue(there) : RelationValue();
}

std::optional<Scalar> givenBack(const RelationValue& value, creo::ProParamvalueType type,
                                const ParameterRecord* parameter, const ModelRecord& model) {
  auto wanted = scalarOf(value, type);
  if (!wanted || !hasUnits(parameter)) return wanted;
  const double own = inOwnUnits(std::get<double>(*wanted), parameter->units, model);
  return std::isfinite(own) ? std::optional<Scalar>(own) : std::nullopt;
}

RelationValue unitless(const RelationValue& value, const ParameterRecord* parameter, const ModelRecord& model) {
  const auto* real = std::get_if<double>(&value);
  return real && hasUnits(parameter) ? RelationValue(inOwnUnits(*real, parameter->units, model)) : value;
}
RelationValue withUnits(const RelationValue& value, const ParameterRecord* parameter, const ModelRecord& model) {
  const auto asNumber = number(value);
  return asNumber && hasUnits(parameter) ? RelationValue(inModelUnits(*asNumber, parameter->units, model)) : value;
}

}  // namespace headless
