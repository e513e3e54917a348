// A parameter as documents hold it.
#pragma once

#include <string>

#include "creo/ProParameter.h"
#include "headless/store/fields.h"

namespace headless {

struct ParameterRecord : Open {
  std::string name;
  creo::ProParamvalueType type = creo::ProParamvalueType::none;
  Scalar value;
  std::string units, description;
  bool designated = false;
  creo::ProParameterDriver driver = creo::ProParameterDriver::none;
};
// A double's value may stand there without its point; any other value must be of its type.
bool fitsType(const Scalar& value, creo::ProParamvalueType type);
using ParameterList = NamedList<ParameterRecord>;

}  // namespace headless
