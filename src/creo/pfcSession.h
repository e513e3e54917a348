// The few calls of the session's object interface.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// The file name of the current model, "bracket.prt", in lower case. ProNotFound: none.
Got<std::wstring> pfcGetCurrentModelFileName();
// Full paths of the folders in a folder, of the files that match a pattern ("*.paj"); sorted. ProNotFound: no such
// folder.
Got<std::vector<std::wstring>> pfcListSubdirectories(const std::wstring& path);
Got<std::vector<std::wstring>> pfcListFiles(const std::wstring& path, const std::wstring& pattern);

}  // namespace creo
