// Units of parameters.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "creo/ProUnitsystem.h"
#include "headless/store/records.h"

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
// A value of a unit in a model's principal system ("mmKs" where it has none or one that isn't known). The value itself
// for a unit that isn't known.
double inSystem(double value, std::string_view unit, const ModelRecord& model);
// The other way round: a number of the model's principal system in a unit.
double fromSystem(double value, std::string_view unit, const ModelRecord& model);
// The number of a parameter in the model's units, and the other way round: without the digits that only the conversion
// gives, so that 3 in are 76.2 mm, and such that the one gives back what the other was given, to 15 digits.
double inModelUnits(double value, std::string_view unit, const ModelRecord& model);
double inOwnUnits(double value, std::string_view unit, const ModelRecord& model);
// A system's name in full: "millimeter Newton Second (mmNs)". A text that isn't a known system's is a name itself.
std::string systemName(std::string_view system);

// Is it one of Creo's own? Nothing is: it is the default.
bool isStandardSystem(std::string_view system);
// The unit of a system: one of the model's own, or one that Creo brings: "mm". One that isn't known has those of
// "mmKs".
std::string systemUnit(const ModelRecord& model, std::string_view system, creo::ProUnitType type);
// As documents have the systems that Creo brings: "mmNs".
std::vector<std::string> standardSystems();

}  // namespace headless
