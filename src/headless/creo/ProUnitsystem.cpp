#include "creo/ProUnitsystem.h"

#include <array>
#include <optional>

#include "headless/creo/solid_operation.h"
#include "headless/model/convert_units.h"
#include "headless/model/regenerate.h"
#include "headless/model/units.h"
#include "text/encoding.h"

namespace creo {

using headless::Model;
using State = headless::Session::State;

namespace {

// The name as documents have it, of one that the model may have. Nothing: there is none.
std::optional<std::string> heldName(const headless::ModelRecord& model, const std::wstring& name) {
  for (const std::string& system : headless::standardSystems())
    if (text::fromUtf8(headless::systemName(system)) == name) return system;
  const std::string own = text::toUtf8(name);
  for (const headless::UnitSystemRecord& record : model.unitSystems)
    if (headless::sameName(record.name, own)) return record.name;
  // A document may name a system of a site's own without its units.
  if (model.units == own) return own;
  return std::nullopt;
}

// Runs a getter's body on one of the model's systems. get: (model, name as documents have it).
template <class Get>
auto onSystem(std::string_view name, const ProUnitsystem& system, Get get)
    -> std::invoke_result_t<Get, const headless::ModelRecord&, const std::string&> {
  using Result = std::invoke_result_t<Get, const headless::ModelRecord&, const std::string&>;
  return headless::onSolid(name, system.owner, [&](State&, Model& m) -> Result {
    const auto storedName = heldName(m.document->record, system.name);
    if (!storedName) return Result(ProNotFound);
    return get(m.document->record, *storedName);
  });
}

// Creo's default gives a new system the units that it isn't told.
constexpr std::string_view kDefaultSystem = "inlbs";

bool measures(const std::wstring& unit, std::size_t base) {
  if (unit.empty()) return true;
  const auto scale = headless::unitScale(text::toUtf8(unit));
  if (!scale) return false;
  std::array<int, headless::UnitScale::kBases> powers{};
  powers[base] = 1;
  return scale->powers == powers;
}

}  // namespace

Got<std::vector<ProUnitsystem>> ProMdlUnitsystemsCollect(ProMdl solid) {
  using Systems = std::vector<ProUnitsystem>;
  return headless::onSolid("ProMdlUnitsystemsCollect", solid, [](State&, Model& m) -> Got<Systems> {
    Systems systems;
    for (const std::string& system : headless::standardSystems())
      systems.push_back({m.handle, text::fromUtf8(headless::systemName(system))});
    for (const headless::UnitSystemRecord& entry : m.document->record.unitSystems)
      systems.push_back({m.handle, text::fromUtf8(entry.name)});
    return systems;
  });
}

Got<ProUnitsystem> ProUnitsystemCreate(ProMdl solid, const std::wstring& name, const ProUnits& units) {
  return headless::onSolid("ProUnitsystemCreate", solid, [&](State&, Model& m) -> Got<ProUnitsystem> {
    const bool isGood = measures(units.length, 0) && measures(units.mass, 1) && measures(units.time, 2) &&
                        measures(units.temperature, 3);
    if (name.empty() || !isGood) return ProBadInputs;
    if (heldName(m.document->record, name)) return ProExists;
    headless::UnitSystemRecord made;
    made.name = text::toUtf8(name);
    const auto unit = [&](const std::wstring& given, ProUnitType type) {
      return given.empty() ? headless::systemUnit(m.document->record, kDefaultSystem, type) : text::toUtf8(given);
    };
    made.length = unit(units.length, ProUnitType::length);
    made.mass = unit(units.mass, ProUnitType::mass);
    made.time = unit(units.time, ProUnitType::time);
    made.temperature = unit(units.temperature, ProUnitType::temperature);
    m.document->record.unitSystems.push_back(std::move(made));
    m.document->touch(nullptr);
    return ProUnitsystem{m.handle, name};
  });
}

ProError ProMdlPrincipalunitsystemSet(ProMdl solid, const ProUnitsystem& system, ProUnitConversion conversion) {
  return headless::onSolid("ProMdlPrincipalunitsystemSet", solid, [&](State& state, Model& m) -> ProError {
    const auto storedName = heldName(m.document->record, system.name);
    if (!storedName) return ProNotFound;
    const bool keepSizes = conversion == ProUnitConversion::sameSize;
    if (const ProError error = headless::setPrincipalSystem(state.models, m, *storedName, keepSizes)) return error;
    // Where that fails the status says so, as nobody is asked to mend it.
    headless::regenerate(state.models, state.bodies, solid, false);
    return ProNoError;
  });
}

Got<bool> ProUnitsystemIsStandard(const ProUnitsystem& system) {
  return onSystem("ProUnitsystemIsStandard", system,
                  [](const headless::ModelRecord&, const std::string& text) -> Got<bool> {
                    return headless::isStandardSystem(text);
                  });
}

Got<std::wstring> ProUnitsystemUnitGet(const ProUnitsystem& system, ProUnitType type) {
  return onSystem("ProUnitsystemUnitGet", system,
                  [type](const headless::ModelRecord& model, const std::string& storedName) -> Got<std::wstring> {
                    return text::fromUtf8(headless::systemUnit(model, storedName, type));
                  });
}

}  // namespace creo
