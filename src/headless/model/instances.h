// Rows of family tables as models in memory.
#pragma once

#include <memory>

#include "creo/ProMdl.h"
#include "headless/model/document.h"

namespace headless {

class Models;  // models.h

// The row's model. ProNotFound: it isn't in memory.
creo::Got<creo::ProMdl> instanceInMemory(const Models& models, const ModelDocument& document, const RowRecord& row);
// The same, made where it isn't in memory. ProGeneralError, with a line of the message area: a value doesn't fit its
// column, another model in memory has the name, or a component that the row puts in can't be retrieved.
creo::Got<creo::ProMdl> retrieveInstance(Models& models, const std::shared_ptr<ModelDocument>& document,
                                         RowRecord& row);
// Takes a row out of its table; what is in memory of it and of the rows below it becomes a model of its own.
void removeRow(Models& models, const std::shared_ptr<ModelDocument>& document, RowRecord& row);

}  // namespace headless
