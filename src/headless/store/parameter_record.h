// A parameter as documents hold it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "creo/ProParameter.h"
#include "headless/store/fields.h"

namespace headless {

// What a value may be: within a range, or one of a list.
struct RestrictionRecord : Open {
  Scalar minimum, maximum;  // either may be absent
  std::vector<Scalar> values;
};

struct ParameterRecord : Open {
  std::string name;
  creo::ProParamvalueType type = creo::ProParamvalueType::none;
  Scalar value;
  std::string units, description;
  bool designated = false;
  creo::ProParameterDriver driver = creo::ProParameterDriver::none;
  std::unique_ptr<RestrictionRecord> restriction;
};
// A double's value may stand there without its point; any other value must be of its type.
bool fitsType(const Scalar& value, creo::ProParamvalueType type);
using ParameterList = NamedList<ParameterRecord>;

}  // namespace headless
