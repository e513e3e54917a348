#include "headless/model/units.h"

#include <charconv>
#include <cmath>
#include <numbers>

namespace headless {
namespace {

using Powers = std::array<int, UnitScale::kBases>;
struct Row {
  std::string_view name;
  Powers powers;  // length, mass, time, temperature, current, angle
  double factor;
  double offset = 0;
};

constexpr double kInch = 0.0254, kPound = 0.45359237, kGravity = 9.80665;
constexpr Powers kLength{1, 0, 0, 0, 0, 0}, kMass{0, 1, 0, 0, 0, 0}, kTime{0, 0, 1, 0, 0, 0}, kHeat{0, 0, 0, 1, 0, 0},
    kCurrent{0, 0, 0, 0, 1, 0}, kAngle{0, 0, 0, 0, 0, 1}, kVolume{3, 0, 0, 0, 0, 0}, kForce{1, 1, -2, 0, 0, 0},
    kPressure{-1, 1, -2, 0, 0, 0}, kEnergy{2, 1, -2, 0, 0, 0}, kPower{2, 1, -3, 0, 0, 0}, kRate{0, 0, -1, 0, 0, 0},
    kVoltage{2, 1, -3, 0, -1, 0}, kResistance{2, 1, -3, 0, -2, 0};

constexpr Row kUnits[] = {
    {"m", kLength, 1},
    {"mm", kLength, 1e-3},
    {"cm", kLength, 1e-2},
    {"dm", kLength, 1e-1},
    {"km", kLength, 1e3},
    {"micron", kLength, 1e-6},
    {"in", kLength, kInch},
    {"ft", kLength, 12 * kInch},
    {"yd", kLength, 36 * kInch},
    {"kg", kMass, 1},
    {"g", kMass, 1e-3},
    {"mg", kMass, 1e-6},
    {"t", kMass, 1e3},
    {"tonne", kMass, 1e3},
    {"lbm", kMass, kPound},
    {"lb", kMass, kPound},
    {"oz", kMass, kPound / 16},
    {"s", kTime, 1},
    {"sec", kTime, 1},
    {"ms", kTime, 1e-3},
    {"min", kTime, 60},
    {"h", kTime, 3600},
    {"hr", kTime, 3600},
    {"hour", kTime, 3600},
    {"K", kHeat, 1},
    {"C", kHeat, 1, 273.15},
    {"F", kHeat, 5.0 / 9, 459.67 * 5 / 9},
    {"A", kCurrent, 1},
    {"mA", kCurrent, 1e-3},
    {"deg", kAngle, 1},
    {"rad", kAngle, 180 / std::numbers::pi},
    {"l", kVolume, 1e-3},
    {"N", kForce, 1},
    {"kN", kForce, 1e3},
    {"lbf", kForce, kPound* kGravity},
    {"Pa", kPressure, 1},
    {"kPa", kPressure, 1e3},
    {"MPa", kPressure, 1e6},
    {"GPa", kPressure, 1e9},
    {"bar", kPressure, 1e5},
    {"psi", kPressure, kPound* kGravity / (kInch * kInch)},
    {"J", kEnergy, 1},
    {"kJ", kEnergy, 1e3},
    {"W", kPower, 1},
    {"kW", kPower, 1e3},
    {"Hz", kRate, 1},
    {"rpm", kRate, 1.0 / 60},
    {"V", kVoltage, 1},
    {"Ohm", kResistance, 1},
};

// How large a system's own length, mass and time are in metre, kilogram and second, and which temperature it uses.
struct System {
  std::string_view name, fullName;
  double length, mass, time;
  std::string_view temperature;
  std::string_view lengthUnit, massUnit, timeUnit;
};
constexpr System kSystems[] = {
    {"mmKs", "millimeter Kilogram Sec (mmKs)", 1e-3, 1, 1, "C", "mm", "kg", "sec"},
    {"mmNs", "millimeter Newton Second (mmNs)", 1e-3, 1e3, 1, "C", "mm", "tonne", "sec"},
    {"mks", "meter Kilogram Second (MKS)", 1, 1, 1, "K", "m", "kg", "sec"},
    {"cgs", "centimeter Gram Second (CGS)", 1e-2, 1e-3, 1, "C", "cm", "g", "sec"},
    {"inlbs", "Inch lbm Second (Creo Parametric Default)", kInch, kPound, 1, "F", "in", "lbm", "sec"},
    {"fps", "Foot Pound Second (FPS)", 12 * kInch, kPound, 1, "F", "ft", "lbm", "sec"},
};

const Row* rowOf(std::string_view name) {
  for (const Row& row : kUnits)
    if (row.name == name) return &row;
  return nullptr;
}

// Takes "mm^2" from the front of `rest`; false: no unit is known there.
bool takeFactor(std::string_view& rest, int sign, UnitScale& into, bool alone) {
  const auto end = rest.find_first_of("*/^");
  const Row* row = rowOf(rest.substr(0, end));
  if (!row) return false;
  rest.remove_prefix(end == std::string_view::npos ? rest.size() : end);
  int power = 1;
  if (rest.size() >= 2 && rest[0] == '^') {
    if (rest[1] < '1' || rest[1] > '9') return false;
    power = rest[1] - '0';
    rest.remove_prefix(2);
  }
  if (!rest.empty() && rest[0] != '*' && rest[0] != '/') return false;
  for (std::size_t i = 0; i < UnitScale::kBases; ++i) into.powers[i] += sign * power * row->powers[i];
  into.factor *= std::pow(row->factor, sign * power);
  // A temperature in a product is a difference of temperatures.
  if (alone && rest.empty() && power == 1) into.offset = row->offset;
  return true;
}

// A system that isn't known counts as the first one.
const System& systemOf(std::string_view name) {
  for (const System& system : kSystems)
    if (system.name == name) return system;
  return kSystems[0];
}

const UnitSystemRecord* ownSystem(const ModelRecord& model, std::string_view name) {
  for (const UnitSystemRecord& system : model.unitSystems)
    if (sameName(system.name, name)) return &system;
  return nullptr;
}

// How large a system's length, mass and time are in metre, kilogram and second, and which temperature it uses.
struct SystemScale {
  double length = 1, mass = 1, time = 1;
  std::string_view temperature;
};
SystemScale scaleOf(const ModelRecord& model, std::string_view system) {
  const System& standard = systemOf(system);
  SystemScale scale{standard.length, standard.mass, standard.time, standard.temperature};
  const UnitSystemRecord* own = ownSystem(model, system);
  if (!own) return scale;
  if (const Row* row = rowOf(own->length)) scale.length = row->factor;
  if (const Row* row = rowOf(own->mass)) scale.mass = row->factor;
  if (const Row* row = rowOf(own->time)) scale.time = row->factor;
  if (const Row* row = rowOf(own->temperature)) scale.temperature = row->name;
  return scale;
}

// How a number of a unit becomes one of a model's system: (number * unit + offset) / system. A unit that isn't known
// is the system's own.
struct Conversion {
  double unit = 1, system = 1, offset = 0;
};
Conversion conversionOf(std::string_view unit, const ModelRecord& model) {
  const auto scale = unitScale(unit);
  if (!scale) return {};
  const SystemScale target = scaleOf(model, model.units);
  if (scale->powers == kHeat) {
    const Row* own = rowOf(target.temperature);
    if (own->name == unit) return {};
    return {scale->factor, own->factor, scale->offset - own->offset};
  }
  double system = std::pow(target.length, scale->powers[0]) * std::pow(target.mass, scale->powers[1]) *
                  std::pow(target.time, scale->powers[2]);
  if (scale->powers[3] != 0 && target.temperature == "F") system *= std::pow(5.0 / 9, scale->powers[3]);
  return {scale->factor, system, 0};
}

// A converted number without the digits that only the conversion gives it: 3 in are 76.2 mm, not 76.19999999999999.
double cleaned(double value) {
  constexpr int kDigits = 15;  // what a double holds of any decimal number
  std::array<char, 32> text{};
  const auto end =
      std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::scientific, kDigits - 1);
  std::from_chars(text.data(), end.ptr, value);
  return value;
}

}  // namespace

std::optional<UnitScale> unitScale(std::string_view unit) {
  UnitScale scale;
  if (!takeFactor(unit, 1, scale, true)) return std::nullopt;
  while (!unit.empty()) {
    const int sign = unit[0] == '/' ? -1 : 1;
    unit.remove_prefix(1);
    if (!takeFactor(unit, sign, scale, false)) return std::nullopt;
  }
  return scale;
}

double inSystem(double value, std::string_view unit, const ModelRecord& model) {
  const Conversion to = conversionOf(unit, model);
  if (to.unit == to.system && to.offset == 0) return value;
  if (to.offset == 0) return value * (to.unit / to.system);
  return (value * to.unit + to.offset) / to.system;
}

double fromSystem(double value, std::string_view unit, const ModelRecord& model) {
  const Conversion to = conversionOf(unit, model);
  if (to.unit == to.system && to.offset == 0) return value;
  return (value * to.system - to.offset) / to.unit;
}

double inModelUnits(double value, std::string_view unit, const ModelRecord& model) {
  if (unit.empty()) return value;
  const double there = inSystem(value, unit, model);
  return there == value ? value : cleaned(there);
}

double inOwnUnits(double value, std::string_view unit, const ModelRecord& model) {
  const double own = fromSystem(value, unit, model);
  const double clean = own == value ? value : cleaned(own);
  return inModelUnits(clean, unit, model) == cleaned(value) ? clean : own;
}

std::string systemName(std::string_view system) {
  if (system.empty()) return std::string(kSystems[0].fullName);
  for (const System& entry : kSystems)
    if (entry.name == system) return std::string(entry.fullName);
  return std::string(system);
}

bool isStandardSystem(std::string_view system) { return system.empty() || systemOf(system).name == system; }

std::string systemUnit(const ModelRecord& model, std::string_view system, creo::ProUnitType type) {
  const System& known = systemOf(system);
  const UnitSystemRecord* own = ownSystem(model, system);
  const auto chosen = [own](std::string UnitSystemRecord::*member, std::string_view standard) {
    return own && !(own->*member).empty() ? own->*member : std::string(standard);
  };
  switch (type) {
    case creo::ProUnitType::length:
      return chosen(&UnitSystemRecord::length, known.lengthUnit);
    case creo::ProUnitType::mass:
      return chosen(&UnitSystemRecord::mass, known.massUnit);
    case creo::ProUnitType::time:
      return chosen(&UnitSystemRecord::time, known.timeUnit);
    case creo::ProUnitType::temperature:
      return chosen(&UnitSystemRecord::temperature, known.temperature);
  }
  return {};
}

std::vector<std::string> standardSystems() {
  std::vector<std::string> names;
  for (const System& system : kSystems) names.emplace_back(system.name);
  return names;
}

}  // namespace headless
