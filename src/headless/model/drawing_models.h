// The list of a drawing's models: what refers to its entries, by name or by number.
#pragma once

#include "creo/ProReplace.h"
#include "headless/model/model.h"

namespace headless {

// The model's number in the drawing, from 1, as in "&model_name:2"; 0: the drawing has no such model.
int modelNumber(const Model& drawing, const creo::ProDependency& model);
creo::ProDrawingModelUse modelUse(Model& drawing, const creo::ProDependency& model);
// Nothing refers to the model, and the drawing has it.
void removeModel(Model& drawing, const creo::ProDependency& model);
// The drawing has `from` and not `to`, a solid.
void replaceModel(Model& drawing, const creo::ProDependency& from, const Model& to);
// "NAME", or "NAME<GENERIC>" of an instance.
std::string usedName(const Model& model);

}  // namespace headless
