// A parameter's type and name can't be changed in place: it is deleted and built again, with all that belongs to it.
#pragma once

#include "actions/model/parameter_edit.h"
#include "actions/model/parameter_values.h"

namespace actions {

// target: the new kind; null gives it the name `workingName` and leaves the kind. Description, designation, units of a
// number that stays one, the family table's column and each instance's own value go with it. Where Creo refuses, the
// parameter is put back as it was, and a line says so.
void convertParameter(ParameterEditContext& context, const creo::ProParameter& parameter, const ParameterKind* target);

}  // namespace actions
