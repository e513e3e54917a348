// What reports call the properties of parameters.
#pragma once

#include <string>

#include "creo/ProParameter.h"

namespace reports {

// "String", "Double", "Boolean", "Integer", "Note ID", "Void", "Not Set"; empty where it can't be had.
std::wstring parameterTypeWord(const creo::ProParameter& parameter);
// "Range" or "Enumeration"; empty for a parameter that may have any value.
std::wstring restrictionWord(const creo::ProParameter& parameter);

}  // namespace reports
