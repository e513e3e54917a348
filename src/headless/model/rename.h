// Models under other names: renamed and copied.
#pragma once

#include <string>
#include <string_view>

#include "creo/ProMdlCopy.h"
#include "headless/model/model.h"

namespace headless {

class Models;  // models.h

// As ProMdlRename and ProMdlCopy; creo/ProMdlCopy.h has the results.
creo::ProError renameModel(Models& models, creo::ProMdl model, std::wstring_view name);
creo::Got<creo::ProMdl> copyModel(Models& models, creo::ProMdl model, std::wstring_view name);
// As ProMdlnameRename, with its results: the model's own documents, and those of its folder that use it. All is read
// and made ready first; then the users' next versions are written, and the model's own files are renamed last.
creo::ProError renameOnDisk(Models& models, creo::ProMdl model, std::wstring_view name, creo::ProRenamed& renamed);
// Has another model the name (upper case): in memory, in the folder that the model comes from, that of its saves or one
// that is searched, in the model's own family table, or, byInstances, in those of the folders' documents?
bool isNameTaken(Models& models, const Model& model, const std::wstring& name, bool byInstances);

}  // namespace headless
