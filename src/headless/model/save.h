// Saving models: a document as its next version, and the documents of what a model uses before its own.
#pragma once

#include <string>

#include "creo/ProMdl.h"
#include "headless/model/document.h"

namespace headless {

class Models;  // models.h

// Which documents a save writes, as the option save_objects says.
enum class SaveObjects {
  changedAndSpecified,  // the model's, and what is changed of those that it uses
  changed,              // what is changed of both
  all                   // all of them
};

// Saves the model with what it uses in memory, directly or not; an instance's document is its generic's. What is used
// and can't be changed (read-only, not checked out) is left out, with a line. ProBadInputs: the handle has gone;
// ProGeneralError: not all was written.
creo::ProError saveModel(Models& models, creo::ProMdl model, SaveObjects which = SaveObjects::changedAndSpecified);
// Writes the model's document once more in place of the version that this session wrote last; no notification.
// ProNotFound: this session hasn't saved it; ProBadInputs and ProGeneralError as saveModel.
creo::ProError saveReplacing(Models& models, creo::ProMdl model);
// Saves the model's document without what it uses, locked or not. Results as saveModel.
creo::ProError saveAlone(Models& models, creo::ProMdl model);
// Changes what lies where the document's saves go, and the same in memory, where other changes stay unsaved: in place
// of the version that this session wrote last, else as the next one. Gives the bytes. ProNotFound: it was never saved;
// ProGeneralError, with a line: it can't be read or written, or another program has written a newer version.
creo::Got<std::string> changeStored(Models& models, ModelDocument& document,
                                    creo::FunctionRef<void(ModelRecord&)> change);

}  // namespace headless
