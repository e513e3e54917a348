// Copies of models' files, and names of files taken apart.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// Writes the model as it is in memory into another folder, as the next version of its name there; the model itself and
// its own files stay as they are. Gives the file that was written. ProNotFound: no such folder; ProGeneralError: not
// written, the message area says why.
Got<std::wstring> ProMdlnameBackup(ProMdl model, const std::wstring& folder);

// "d:\models\a.prt.3": "d:\models\", "a", "prt", 3. Whatever isn't there is empty; version 0: none.
struct ProFilename {
  std::wstring folder, name, extension;
  int version = 0;
};
// ProBadInputs: an empty path.
Got<ProFilename> ProFilenameParse(const std::wstring& path);

}  // namespace creo
