#include "headless/model/accuracy.h"

#include "headless/model/units.h"

namespace headless {

creo::ProAccuracy accuracyOf(const ModelRecord& solid) {
  constexpr creo::ProAccuracy kDefault{creo::ProAccuracyKind::relative, 0.0012};
  return solid.accuracy ? creo::ProAccuracy{solid.accuracy->kind, solid.accuracy->value} : kDefault;
}

void stateAccuracyOfTemplates(ModelRecord& solid) {
  constexpr double kMillimetres = 0.01, kInches = 0.00039;
  const bool inInches = systemUnit(solid, solid.units, creo::ProUnitType::length) == "in";
  solid.accuracy = std::make_unique<AccuracyRecord>();
  solid.accuracy->kind = creo::ProAccuracyKind::absolute;
  solid.accuracy->value = inInches ? kInches : inModelUnits(kMillimetres, "mm", solid);
}

}  // namespace headless
