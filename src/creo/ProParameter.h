// Parameters of models, features and materials.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// Creo's numbers of value kinds.
enum class ProParamvalueType : int { none = 0, real = 50, string = 51, integer = 52, boolean = 53, noteId = 54 };

struct ProParamvalue {
  ProParamvalueType type = ProParamvalueType::none;
  std::wstring string;
  double real = 0;
  int integer = 0;
  bool boolean = false;
};

// A parameter, by its owner and its name; of two of one name the ordinal (from 0) tells which.
struct ProParameter {
  std::wstring id;
  ProModelitem owner;
  int ordinal = 0;
};

// What drives a value.
enum class ProParameterDriver : int { none = 0, parameter = 1, function = 2, relation = 3 };

// Puts a value together from a text: a number's text is converted. ProBadInputs: the type is none of the five, or
// the number isn't finite.
ProError ProParamvalueSet(ProParamvalue& value, const std::wstring& text, ProParamvalueType type);

// All parameters of an owner, in their order.
ProError ProParameterVisit(const ProModelitem& owner, Visitor<ProParameter> visitor);
// The first of that name (case-blind). ProNotFound.
Got<ProParameter> ProParameterInit(const ProModelitem& owner, const std::wstring& name);
// ProExists: the owner has one of that name. ProBadInputs: the name is empty, over 31 characters or not a name
// (letters, digits, "_", not beginning with a digit), or the owner has gone.
Got<ProParameter> ProParameterCreate(const ProModelitem& owner, const std::wstring& name, const ProParamvalue& value);
// units: at most 32 characters. ProGeneralError: a unit that isn't known.
Got<ProParameter> ProParameterWithUnitsCreate(const ProModelitem& owner, const std::wstring& name,
                                              const ProParamvalue& value, const std::wstring& units);
// With its column, if there is one. ProGeneralError: a driver or a relation holds it, or it is the generic's, seen from
// an instance.
ProError ProParameterDelete(const ProParameter& parameter);
// The stored value, in the parameter's own units. ProNotFound: it has gone.
Got<ProParamvalue> ProParameterValueGet(const ProParameter& parameter);
// The value in the model's units; that of a parameter without units is its value.
Got<ProParamvalue> ProParameterScaledvalueGet(const ProParameter& parameter);
// ProBadInputs: a value of another kind, or a number that isn't finite. ProGeneralError: it is driven.
ProError ProParameterValueSet(const ProParameter& parameter, const ProParamvalue& value);
// ProNotFound: it has no units.
Got<std::wstring> ProParameterUnitsGet(const ProParameter& parameter);
Got<std::wstring> ProParameterDescriptionGet(const ProParameter& parameter);
// At most 80 characters, else ProBadInputs.
ProError ProParameterDescriptionSet(const ProParameter& parameter, const std::wstring& description);
Got<bool> ProParameterDesignationVerify(const ProParameter& parameter);
ProError ProParameterDesignationAdd(const ProParameter& parameter);
ProError ProParameterDesignationRemove(const ProParameter& parameter);
Got<ProParameterDriver> ProParameterDriverGet(const ProParameter& parameter);
// Is its value held within a range?
Got<bool> ProParameterRangeGet(const ProParameter& parameter);
// Is its value one of a list?
Got<bool> ProParameterIsEnumerated(const ProParameter& parameter);

}  // namespace creo
