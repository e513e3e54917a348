// The session itself: folders, files of settings, sizes.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// The folder that holds the application's folder "text", as it was registered.
Got<std::wstring> ProToolkitApplTextPathGet();
// Size of a wide character in Creo, in bytes.
int ProWcharSizeGet();

// The whole path of the working folder, with its closing backslash. It fails where that folder has gone.
Got<std::wstring> ProDirectoryCurrentGet();
// From here on models are searched there first, and new ones saved there. path: whole, or from the working folder.
// Anything but ProNoError: no such folder, or none that can be entered; the working folder is what it was.
ProError ProDirectoryChange(const std::wstring& path);

// The value of an option, its name case-blind; of several the first. ProNotFound: it isn't set.
Got<std::wstring> ProConfigoptGet(const std::wstring& option);
// All its values, in the order in which they came. ProNotFound: it isn't set.
Got<std::vector<std::wstring>> ProConfigoptArrayGet(const std::wstring& option);
// Sets an option; of one that may have several values this one comes behind the others. What it changes on the screen
// is seen with a window's next drawing. ProNotFound: there is no option of that name; ProBadInputs: it can't have the
// value, or can't be set now.
ProError ProConfigoptSet(const std::wstring& option, const std::wstring& value);

enum class ProInputFileType : int { program = 4, configuration = 5, detailOptions = 15 };
// Reads a file of settings: into the session (configuration, the model doesn't matter), or into a drawing, whose
// message dialog then tells of lines that are none. A file of detail options lies in the working folder and is given by
// name and extension alone; nothing is repainted behind it. Without a model they go into the current drawing.
// ProNotFound: no such file. ProBadInputs: detail options of a model that is no drawing, or a path with folders.
ProError ProInputFileRead(ProMdl model, const std::wstring& path, ProInputFileType type);

}  // namespace creo
