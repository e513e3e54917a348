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
// All its values, in the order in which they came. ProNotFound: it isn't set.
Got<std::vector<std::wstring>> ProConfigoptArrayGet(const std::wstring& option);
// Sets an option; of one that may have several values this one comes behind the others. ProNotFound: no option can be
// called so; ProBadInputs: no option can have the value.
ProError ProConfigoptSet(const std::wstring& option, const std::wstring& value);

enum class ProInputFileType : int { program = 4, configuration = 5, detailOptions = 15 };
// Reads a file of settings: into the session (configuration), or into a drawing, whose message dialog then tells of
// lines that are none. ProNotFound: no such file. ProBadInputs: detail options of a model that is no drawing.
ProError ProInputFileRead(ProMdl model, const std::wstring& path, ProInputFileType type);

}  // namespace creo
