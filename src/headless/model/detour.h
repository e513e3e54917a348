// Steps that are meant to be taken back: who goes through a drawing's sheets and comes back leaves it as it was.
#pragma once

#include <string>

#include "headless/model/model.h"

namespace headless {

// Makes another sheet, which the drawing has, or another of its models the current one; texts stay about the former
// model until the drawing is regenerated. Once it is back where the detour began, without the tables that were made on
// the way, and nothing else was changed meanwhile, the drawing is to the letter what it was, and not modified by it.
void showSheet(Model& drawing, int sheet);
void showModel(Model& drawing, const creo::ProDependency& model);
// A table was made, was written into, or has gone.
void tableMade(Model& drawing, int id);
void tableWritten(Model& drawing, int id);
void tableGone(Model& drawing, int id);

}  // namespace headless
