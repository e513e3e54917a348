// Values as documents hold them, and as relations count with them.
#pragma once

#include <optional>

#include "creo/ProParameter.h"
#include "headless/model/expression.h"
#include "headless/store/records.h"

namespace headless {

// The number, text or flag as it stands.
RelationValue relationValue(const Scalar& value);
// What relations count with: a parameter with units in those of the model, as dimensions are. Null: no parameter.
RelationValue countedIn(const Scalar& scalar, const ParameterRecord* parameter, const ModelRecord& model);
// The way back. Nothing for a value that the parameter can't hold.
std::optional<Scalar> givenBack(const RelationValue& value, creo::ProParamvalueType type,
                                const ParameterRecord* parameter, const ModelRecord& model);
// What relations that don't heed units count with, and the other way round: a parameter with units in its own.
RelationValue unitless(const RelationValue& value, const ParameterRecord* parameter, const ModelRecord& model);
RelationValue withUnits(const RelationValue& value, const ParameterRecord* parameter, const ModelRecord& model);

}  // namespace headless
