// Units of parameters.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "creo/ProUnitsystem.h"

namespace headless {

// What a unit measures and how it compares with metre, kilogram, second, kelvin, ampere and degree: value * factor +
// offset.
struct UnitScale {
  static constexpr std::size_t kBases = 6;  // length, mass, time, temperature, current, angle
  std::array<int, kBases> powers{};
  double factor = 1;
  double offset = 0;
};

// "mm", "kg/m^3", "N*mm". Nothing for a unit that isn't known.
std::optional<UnitScale> unitScale(std::string_view unit);
// A value of a unit in a system of units ("mmKs" where `system` is empty or unknown). The value itself for a unit that
// isn't known.
double inSystem(double value, std::string_view unit, std::string_view system);
// A system's name in full: "millimeter Newton Second (mmNs)". A text that isn't a known system's is a name itself.
std::string systemName(std::string_view system);

// Is it one of Creo's own? Nothing is: it is the default.
bool isStandardSystem(std::string_view system);
// A system's own unit: "mm". One that isn't known has those of "mmKs".
std::string_view systemUnit(std::string_view system, creo::ProUnitType type);

}  // namespace headless
