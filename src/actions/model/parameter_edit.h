// Finding parameters and editing their values, as several actions do it.
#pragma once

#include <string_view>

#include "actions/model/parameter_context.h"

namespace actions {

// A visit's step: edits the parameter if the action's search finds it. ProStopVisit ends the visit.
creo::ProError findAndEditParameter(ParameterEditContext& context, const creo::ProParameter& parameter);
// Retypes the parameter in the retype pass, or sets its value in the other one. Driven parameters stay, with a line.
void editParameterValue(ParameterEditContext& context, const creo::ProParameter& parameter);
// Sets a parameter to a text that the caller has, as the value pass does: with variables, nothing of a driven one.
// Its kind: a parameter of another one stays as it is; none: any kind will do.
void setParameterTo(const Task& task, const creo::ProParameter& parameter, ParameterOverride value);
// A model's own parameter of that name. ProNotFound.
creo::Got<creo::ProParameter> parameterNamed(creo::ProMdl model, std::wstring_view name);
// One visit of an owner's parameters. False: it ended early.
bool visitAndEdit(ParameterEditContext& context, const creo::ProModelitem& owner);

}  // namespace actions
