// Values of parameters as the editing actions read, compare and convert them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/message_names.h"
#include "creo/ProParameter.h"

namespace actions {

// The kinds that can be edited, with the digit and the word by which lists name them.
struct ParameterKind {
  creo::ProParamvalueType type;
  std::wstring_view digit;  // of `totype`
  std::wstring_view word;
};
// Null for a kind or digit that isn't one of the four.
const ParameterKind* kindOfType(creo::ProParamvalueType type);
const ParameterKind* kindOfDigit(std::wstring_view digit);

// What the editing actions take for the value, and what they write: in the units of the owner's model.
creo::Got<creo::ProParamvalue> editedValue(const creo::ProParameter& parameter);
// The value as a text: "%d", "%f", "true" or "false".
std::wstring textOf(const creo::ProParamvalue& value);
// The same, but a number that "%f" would round stands there with all its digits.
std::wstring exactTextOf(const creo::ProParamvalue& value);
// The value as one of another kind: its text is read, and what is cut of a number has a warning line. No number counts
// as 0, and true is "true", "1", "1.000000", "yes", "y" or "ja". Nothing: a number that isn't finite or out of range.
std::optional<creo::ProParamvalue> convertedValue(const creo::ProParamvalue& value, creo::ProParamvalueType type);
// The message for a text that is no number of that kind: '%s' is the parameter, then the text.
core::Message noNumberMessage(creo::ProParamvalueType type);

// Does an entry name that state: a pattern for "true" or "yes", or "1"; for "false" or "no", or "0"?
bool namesTruth(std::wstring_view entry, bool state);

}  // namespace actions
