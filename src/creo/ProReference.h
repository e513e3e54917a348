// What a new feature refers to: something that was selected.
#pragma once

#include "creo/ProSelection.h"

namespace creo {

struct ProReference {
  ProModelitem item;
};

// A thing of a model as if it had been selected there, in the model itself and not as a component's. ProBadInputs: its
// model has gone.
Got<ProSelection> ProSelectionAlloc(const ProModelitem& item);
// ProBadInputs: its model has gone; ProNotFound: there is no such thing in it.
Got<ProReference> ProSelectionToReference(const ProSelection& selection);

}  // namespace creo
