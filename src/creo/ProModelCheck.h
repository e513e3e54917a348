// The check of a model as a whole.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// What the check found.
struct ProModelcheckFinding {
  bool isError = false;  // else a warning
  std::wstring text;     // "the feature HOLE has geometry checks"
};

// Looks at a model and changes nothing; empty for a model with nothing to say about. Errors are features that can't be
// built, models that it uses and that aren't there, sets of relations with a fault, features with geometry checks;
// warnings suppressed features, a model that isn't regenerated, a part without material. settings: a file of lines
// "check error", "check warning" or "check off" that says otherwise for failed_features, missing_models, bad_relations,
// geometry_checks, suppressed_features, unregenerated or no_material; empty: as told here. ProNotFound: no such file;
// ProNoLicense: Creo's option for checks isn't there; ProGeneralError: a line of it is otherwise, the message area has
// its number.
Got<std::vector<ProModelcheckFinding>> ProModelcheckExecute(ProMdl model, const std::wstring& settings);

}  // namespace creo
