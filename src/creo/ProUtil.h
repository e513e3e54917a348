// The session itself: folders, files of settings, sizes.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// The application's text folder, as it was registered.
Got<std::wstring> ProToolkitApplTextPathGet();
// Size of a wide character in Creo, in bytes.
int ProWcharSizeGet();

// The working folder, with its closing backslash.
Got<std::wstring> ProDirectoryCurrentGet();
// ProNotFound: no such folder.
ProError ProDirectoryChange(const std::wstring& path);

// The first value of an option, its name case-blind. ProNotFound: it isn't set.
Got<std::wstring> ProConfigoptGet(const std::wstring& option);

enum class ProInputFileType : int { configuration = 5 };
// Reads a file of settings into the session. ProNotFound: no such file. The model is that of model settings, or none.
ProError ProInputFileRead(ProMdl model, const std::wstring& path, ProInputFileType type);

}  // namespace creo
