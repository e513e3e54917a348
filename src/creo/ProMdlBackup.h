// Copies of models' files.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// Writes the model as it is in memory into another folder, as the next version of its name there; its own files stay as
// they are, and later saves of the model go to that folder. An empty folder is the working folder. Gives the file that
// was written. ProNotFound: no such folder; ProCantWrite: not written, the message area says why; ProGeneralError: it
// can't be put together.
Got<std::wstring> ProMdlnameBackup(ProMdl model, const std::wstring& folder);

}  // namespace creo
