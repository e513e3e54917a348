// A parameter's type and name can't be changed in place: it is deleted and built again, with all that belongs to it.
#pragma once

#include "actions/model/parameter_context.h"
#include "actions/model/parameter_values.h"

namespace actions {

// target: the new kind; null gives it the name `workingName` and leaves the kind. Description, designation, units,
// restriction, what else its model keeps with it, the family table's column and each instance's own value go with it.
// What can be seen to be refused is refused before anything is deleted; where Creo refuses later, the parameter is put
// back whole and at its place. A line says so.
void convertParameter(ParameterEditContext& context, const creo::ProParameter& parameter, const ParameterKind* target);

}  // namespace actions
