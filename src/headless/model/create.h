// Models that are made in memory.
#pragma once

#include <memory>
#include <string_view>

#include "headless/model/document.h"

namespace headless {

class Models;  // models.h

// A new drawing of a solid, with what a drawing on disk holds as template: sheets, tables, symbols, parameters. It has
// no folder until it is saved; then it lies in the working folder. ProBadInputs: no solid, or no name of a
// model; ProExists: in memory; ProNotFound: no such template; ProGeneralError, with a line: the template can't be read.
creo::Got<creo::ProMdl> createDrawing(Models& models, std::wstring_view name, std::wstring_view templateName,
                                      creo::ProMdl solid);
// A new, empty model as createDrawing makes one. ProExists: in memory, or in a folder that is searched.
creo::Got<creo::ProMdl> createModel(Models& models, std::wstring_view name, creo::ProMdlType type);
// The same for a document that was filled already, as newDocument makes it.
creo::Got<creo::ProMdl> createModel(Models& models, std::shared_ptr<ModelDocument> document);
// Is a model of that name in memory, or in a folder that is searched?
[[nodiscard]] bool isNameKnown(Models& models, std::wstring_view name, creo::ProMdlType type);

}  // namespace headless
