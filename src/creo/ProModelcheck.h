// The check of a model that Creo brings.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

struct ProModelcheckResult {
  int errors = 0, warnings = 0;
  bool saved = false;
};
// Looks a model through and tells each finding in the message area. Errors: a feature that fails, a model that can't be
// retrieved, relations that fail, geometry checks. Warnings: features that are suppressed or not regenerated, a part
// without a material. config: a file that gives kinds another weight, a line each, as "MATERIAL error"; empty: as told.
// save: the model is saved where there is no error. ProNotFound: no such file; ProGeneralError: it can't be read, or
// the model can't be saved, and the message area says why.
Got<ProModelcheckResult> ProModelcheckExecute(ProMdl model, const std::wstring& config, bool save);

}  // namespace creo
