// Copies of models' files, and names of files taken apart.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// Writes the model as it is in memory into another folder, as the next version of its name there; the model itself and
// its own files stay as they are. Gives the file that was written. ProNotFound: no such folder; ProGeneralError: not
// written, the message area says why.
Got<std::wstring> ProMdlnameBackup(ProMdl model, const std::wstring& folder);

}  // namespace creo
