// What a document calls another model, when that model gets another name.
#pragma once

#include <string>

#include "headless/store/document.h"

namespace headless {

struct Model;  // model.h
class Models;  // models.h

// Names in upper case.
struct RenamedModel {
  std::wstring before, now;
  creo::ProMdlType type = creo::ProMdlType::unused;
};
// The document of a model of type `user` follows: components or models, rows of the family table that have the model in
// a component's place, views, shown dimensions, the current model, sheets that have the drawing as their format. False:
// it doesn't name the model.
bool followRename(ModelRecord& record, creo::ProMdlType user, const RenamedModel& renamed);
// The same for the models in memory that use it, with what they are counted by, and for the model that a drawing's
// texts are about.
void followRename(Models& models, const RenamedModel& renamed);
// A cross section of a solid has another name: the views that it cuts follow, of drawings in memory.
void followSectionRename(Models& models, const Model& solid, const std::string& before, const std::string& now);
// Components called `before` become `now`, as documents write names ("NAME<GENERIC>"), and columns of the family table
// that are called by them follow. False: there is none.
bool replaceComponents(ModelRecord& record, creo::ProMdlType beforeType, const std::string& before,
                       creo::ProMdlType nowType, const std::string& now);

}  // namespace headless
