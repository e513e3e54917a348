#include "headless/model/density.h"

#include "headless/model/items.h"
#include "headless/model/units.h"
#include "text/encoding.h"

namespace headless {

std::optional<double> materialDensity(const Model& part) {
  constexpr std::string_view kDensity = "PTC_MASS_DENSITY";
  const ModelRecord& record = part.document->record;
  const std::string current = text::toUtf8(currentMaterial(part));
  for (const MaterialRecord& material : record.materials) {
    if (!sameName(material.name, current)) continue;
    for (const ParameterRecord& one : material.parameters.list) {
      if (!sameName(one.name, kDensity)) continue;
      const double* real = std::get_if<double>(&one.value);
      const int* integer = std::get_if<int>(&one.value);
      if (!real && !integer) return std::nullopt;
      return inSystem(real ? *real : *integer, one.units, record);
    }
  }
  return std::nullopt;
}

std::optional<double> partDensity(const Model& part) {
  const double own = part.document->record.density;
  return own > 0 ? std::optional(own) : materialDensity(part);
}

}  // namespace headless
