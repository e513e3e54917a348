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

// All parameters of an owner, in their order, without those of mass properties. Ends at the visitor's first answer that
// isn't 0, and gives that. ProNotFound: there are none; ProBadInputs: the owner has gone.
ProError ProParameterVisit(const ProModelitem& owner, Visitor<ProParameter> visitor);
// The first of that name (case-blind). ProNotFound: none; ProBadInputs: the owner has gone.
Got<ProParameter> ProParameterInit(const ProModelitem& owner, const std::wstring& name);
// ProExists: the owner has one of that name. ProBadInputs: the name is empty, over 31 characters or not a name
// (letters, digits, "_", not beginning with a digit), or the owner has gone. ProGeneralError: it is a locked instance.
Got<ProParameter> ProParameterCreate(const ProModelitem& owner, const std::wstring& name, const ProParamvalue& value);
// The value is taken to be in these units; nothing promises it. units: at most 32 characters; none: without units.
// ProGeneralError, too: a unit that isn't known.
Got<ProParameter> ProParameterWithUnitsCreate(const ProModelitem& owner, const std::wstring& name,
                                              const ProParamvalue& value, const std::wstring& units);
// With its column, if there is one and no other of that name needs it. ProGeneralError: a driver or a relation holds
// it, it is the generic's, seen from an instance, or a locked instance's own. ProNotFound: it has gone; Creo gives that
// for one that can't go, too.
ProError ProParameterDelete(const ProParameter& parameter);
// Puts the parameter back that ProParameterDelete took last, whole and at its place, with its columns and the values
// that rows had in them. successor: one that was made in its place meanwhile and goes again; null: none.
// ProNotFound: the last one wasn't of that owner, or the successor has gone. ProExists: another one has its name now,
// which isn't the successor.
ProError ProParameterDeleteUndo(const ProModelitem& owner, const ProParameter* successor);
// Gives a parameter what the one that was deleted last, of the same owner, had beside name, kind, value, units,
// description and designation: its restriction, what else its model keeps with it, and the places of its columns.
// ProNotFound: none was deleted. ProBadInputs: the restriction isn't for values of that kind, or doesn't allow the
// value.
ProError ProParameterRemainsTake(const ProParameter& parameter);
// The value in the units of the owner's model. ProNotFound: it has gone. ProGeneralError: it is too large there.
Got<ProParamvalue> ProParameterValueGet(const ProParameter& parameter);
// The value in the parameter's own units, as it is stored; one without units has those of the model.
Got<ProParamvalue> ProParameterScaledvalueGet(const ProParameter& parameter);
// Takes the value in the units of the owner's model, which follows when it is regenerated. ProBadInputs: a value of
// another kind, one that isn't finite, one that the restriction doesn't allow, or one that is too large in the
// parameter's units. ProGeneralError: it is driven, or a locked instance's.
ProError ProParameterValueSet(const ProParameter& parameter, const ProParamvalue& value);
// The same for a value in the parameter's own units.
ProError ProParameterScaledvalueSet(const ProParameter& parameter, const ProParamvalue& value);
// ProNotFound: it has no units.
Got<std::wstring> ProParameterUnitsGet(const ProParameter& parameter);
// ProNotFound: it has no description.
Got<std::wstring> ProParameterDescriptionGet(const ProParameter& parameter);
// At most 80 characters, else ProBadInputs.
ProError ProParameterDescriptionSet(const ProParameter& parameter, const std::wstring& description);
// Does the server see the parameter? For parameters of models.
Got<bool> ProParameterDesignationVerify(const ProParameter& parameter);
// ProExists: it is designated already.
ProError ProParameterDesignationAdd(const ProParameter& parameter);
// Of one that isn't designated: ProNotFound, or nothing happens.
ProError ProParameterDesignationRemove(const ProParameter& parameter);
// Sees nothing of what drives it from another model.
Got<ProParameterDriver> ProParameterDriverGet(const ProParameter& parameter);
// Is its value held within a range?
Got<bool> ProParameterRangeGet(const ProParameter& parameter);
// Is its value one of a list?
Got<bool> ProParameterIsEnumerated(const ProParameter& parameter);

}  // namespace creo
