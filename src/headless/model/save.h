// Saving models: a document as its next version, and the documents of what a model uses before its own.
#pragma once

#include "creo/ProMdl.h"

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

}  // namespace headless
