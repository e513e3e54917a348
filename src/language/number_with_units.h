// What is kept of a parameter's number beside the text that it became.
#pragma once

#include <string>

#include "creo/ProParameter.h"

namespace language {

// A number that a parameter with units gave a text: the number alone stands there.
struct NumberWithUnits {
  std::wstring token;  // "%LENGTH%"
  double value = 0;
  std::wstring units;
  creo::ProParameter parameter;
};

}  // namespace language
