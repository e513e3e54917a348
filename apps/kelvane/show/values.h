// Values of parameters as texts, and back.
#pragma once

#include <string>

#include "creo/ProParameter.h"

namespace kelvane {

// "2.5", "true", a text as it is.
std::string valueText(const creo::ProParamvalue& value);
// "String", "Integer", "Double", "Boolean", "Note".
std::string typeWord(creo::ProParamvalueType type);

// What "--param NAME[:Type]=VALUE" says; without a type it is a text. A Fault for another type, or a value that isn't
// one of its type.
struct GivenParameter {
  std::string name;
  creo::ProParamvalue value;
};
GivenParameter givenParameter(const std::string& written);

}  // namespace kelvane
