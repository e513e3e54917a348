// Bringing models into memory: the document itself, or a row over it, then, without recursion, whatever it uses.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "creo/ProMdl.h"
#include "headless/model/document.h"

namespace headless {

class Models;  // models.h

// The model in memory of that name, else the one that the folders have, or the PDM server. name: plain, or
// "NAME<GENERIC>". ProBadInputs: no name or no type; ProNotFound: there is none; ProGeneralError, with a line of the
// message area: it can't be read, or be built from its row. What it uses and can't be retrieved has a line each.
creo::Got<creo::ProMdl> retrieveModel(Models& models, std::wstring_view name, creo::ProMdlType type);
// The row's model, made where it isn't in memory. ProGeneralError, with a line of the message area: a value doesn't fit
// its column, another model in memory has the name, or a component that the row puts in can't be retrieved.
creo::Got<creo::ProMdl> retrieveInstance(Models& models, const std::shared_ptr<ModelDocument>& document,
                                         RowRecord& row);
// Why the row can't be built, with the column's name; empty: it can.
std::wstring rowFault(const ModelDocument& document, const RowRecord& row);

}  // namespace headless
