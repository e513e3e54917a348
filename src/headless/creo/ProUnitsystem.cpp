#include "creo/ProUnitsystem.h"

#include "headless/creo/solid_operation.h"
#include "headless/model/units.h"
#include "text/encoding.h"

namespace creo {

using headless::Model;
using State = headless::Session::State;

namespace {

// Runs a getter's body on the model's own system. get: (short name, as documents have it).
template <class Get>
auto onSystem(std::string_view name, const ProUnitsystem& system, Get get)
    -> std::invoke_result_t<Get, const std::string&> {
  using Result = std::invoke_result_t<Get, const std::string&>;
  return headless::onSolid(name, system.owner, [&](State&, Model& m) -> Result {
    const std::string& held = m.document->record.units;
    if (text::fromUtf8(headless::systemName(held)) != system.name) return Result(ProNotFound);
    return get(held);
  });
}

}  // namespace

Got<bool> ProUnitsystemIsStandard(const ProUnitsystem& system) {
  return onSystem("ProUnitsystemIsStandard", system,
                  [](const std::string& held) -> Got<bool> { return headless::isStandardSystem(held); });
}

Got<std::wstring> ProUnitsystemUnitGet(const ProUnitsystem& system, ProUnitType type) {
  return onSystem("ProUnitsystemUnitGet", system, [type](const std::string& held) -> Got<std::wstring> {
    return text::fromUtf8(headless::systemUnit(held, type));
  });
}

}  // namespace creo
