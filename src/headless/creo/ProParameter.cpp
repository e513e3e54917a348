#include "creo/ProParameter.h"

#include <cmath>

#include "headless/creo/operation.h"
#include "text/encoding.h"
#include "text/numbers.h"

namespace creo {

using headless::operation;
using headless::ParameterPlace;
using headless::Parameters;
using State = headless::Session::State;

namespace {

// Runs a getter's body where the parameter is kept. get: (place).
template <class T, class Get>
Got<T> onParameter(std::string_view name, const ProParameter& parameter, Get get) {
  return operation(name, [&](State& state) -> Got<T> {
    const auto place = state.parameters.find(parameter);
    if (!place) return place.error;
    return get(place.value);
  });
}

}  // namespace

ProError ProParamvalueSet(ProParamvalue& value, const std::wstring& text, ProParamvalueType type) {
  return operation("ProParamvalueSet", [&](State&) -> ProError {
    ProParamvalue made;
    made.type = type;
    switch (type) {
      case ProParamvalueType::string:
        made.string = text;
        break;
      case ProParamvalueType::real:
        made.real = text::parseDouble(text);
        if (!std::isfinite(made.real)) return ProBadInputs;
        break;
      case ProParamvalueType::integer:
      case ProParamvalueType::noteId:
        made.integer = text::parseInt(text);
        break;
      case ProParamvalueType::boolean:
        made.boolean = text == L"true";
        break;
      case ProParamvalueType::none:
      default:
        return ProBadInputs;
    }
    value = std::move(made);
    return ProNoError;
  });
}

ProError ProParameterVisit(const ProModelitem& owner, Visitor<ProParameter> visitor) {
  return operation("ProParameterVisit", [&](State& state) -> ProError {
    const auto parameters = state.parameters.all(owner);
    if (!parameters) return parameters.error;
    return headless::visit<ProParameter>(parameters.value, visitor);
  });
}

Got<ProParameter> ProParameterInit(const ProModelitem& owner, const std::wstring& name) {
  return operation("ProParameterInit", [&](State& state) { return state.parameters.first(owner, name); });
}

Got<ProParameter> ProParameterCreate(const ProModelitem& owner, const std::wstring& name, const ProParamvalue& value) {
  return operation("ProParameterCreate", [&](State& state) { return state.parameters.create(owner, name, value, {}); });
}

Got<ProParameter> ProParameterWithUnitsCreate(const ProModelitem& owner, const std::wstring& name,
                                              const ProParamvalue& value, const std::wstring& units) {
  return operation("ProParameterWithUnitsCreate",
                   [&](State& state) { return state.parameters.create(owner, name, value, units); });
}

ProError ProParameterDelete(const ProParameter& parameter) {
  return operation("ProParameterDelete", [&](State& state) { return state.parameters.remove(parameter); });
}

ProError ProParameterDeleteUndo(const ProModelitem& owner, const ProParameter* successor) {
  return operation("ProParameterDeleteUndo",
                   [&](State& state) { return state.parameters.undoRemoval(owner, successor); });
}

ProError ProParameterRemainsTake(const ProParameter& parameter) {
  return operation("ProParameterRemainsTake", [&](State& state) { return state.parameters.takeRemains(parameter); });
}

Got<ProParamvalue> ProParameterValueGet(const ProParameter& parameter) {
  return onParameter<ProParamvalue>("ProParameterValueGet", parameter, &Parameters::valueInModel);
}

Got<ProParamvalue> ProParameterScaledvalueGet(const ProParameter& parameter) {
  return onParameter<ProParamvalue>("ProParameterScaledvalueGet", parameter, &Parameters::value);
}

ProError ProParameterValueSet(const ProParameter& parameter, const ProParamvalue& value) {
  return operation("ProParameterValueSet", [&](State& state) { return state.parameters.setInModel(parameter, value); });
}

ProError ProParameterScaledvalueSet(const ProParameter& parameter, const ProParamvalue& value) {
  return operation("ProParameterScaledvalueSet", [&](State& state) { return state.parameters.set(parameter, value); });
}

Got<std::wstring> ProParameterUnitsGet(const ProParameter& parameter) {
  return onParameter<std::wstring>("ProParameterUnitsGet", parameter,
                                   [](const ParameterPlace& place) -> Got<std::wstring> {
                                     if (place.record().units.empty()) return ProNotFound;
                                     return text::fromUtf8(place.record().units);
                                   });
}

Got<std::wstring> ProParameterDescriptionGet(const ProParameter& parameter) {
  return onParameter<std::wstring>("ProParameterDescriptionGet", parameter,
                                   [](const ParameterPlace& place) -> Got<std::wstring> {
                                     if (place.record().description.empty()) return ProNotFound;
                                     return text::fromUtf8(place.record().description);
                                   });
}

ProError ProParameterDescriptionSet(const ProParameter& parameter, const std::wstring& description) {
  return operation("ProParameterDescriptionSet",
                   [&](State& state) { return state.parameters.describe(parameter, description); });
}

Got<bool> ProParameterDesignationVerify(const ProParameter& parameter) {
  return onParameter<bool>("ProParameterDesignationVerify", parameter,
                           [](const ParameterPlace& place) { return place.record().designated; });
}

ProError ProParameterDesignationAdd(const ProParameter& parameter) {
  return operation("ProParameterDesignationAdd",
                   [&](State& state) { return state.parameters.designate(parameter, true); });
}

ProError ProParameterDesignationRemove(const ProParameter& parameter) {
  return operation("ProParameterDesignationRemove",
                   [&](State& state) { return state.parameters.designate(parameter, false); });
}

Got<ProParameterDriver> ProParameterDriverGet(const ProParameter& parameter) {
  return onParameter<ProParameterDriver>("ProParameterDriverGet", parameter, &Parameters::driver);
}

Got<bool> ProParameterRangeGet(const ProParameter& parameter) {
  return onParameter<bool>("ProParameterRangeGet", parameter, [](const ParameterPlace& place) {
    const auto& restriction = place.record().restriction;
    return restriction && (restriction->minimum.index() != 0 || restriction->maximum.index() != 0);
  });
}

Got<bool> ProParameterIsEnumerated(const ProParameter& parameter) {
  return onParameter<bool>("ProParameterIsEnumerated", parameter, [](const ParameterPlace& place) {
    const auto& restriction = place.record().restriction;
    return restriction && !restriction->values.empty();
  });
}

}  // namespace creo
