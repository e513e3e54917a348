// The few calls of the session's object interface.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// The file name of the current model, "bracket.prt", in lower case. ProNotFound: none.
Got<std::wstring> pfcGetCurrentModelFileName();
// Full paths of the folders in a folder, of the files that match a pattern ("*.paj"), each version of theirs; an
// adapter sorts them. ProNotFound: no such folder.
Got<std::vector<std::wstring>> pfcListSubdirectories(const std::wstring& path);
Got<std::vector<std::wstring>> pfcListFiles(const std::wstring& path, const std::wstring& pattern);

// A model by its name, as a session tells of one that may not be in memory.
struct pfcModelDescriptor {
  std::wstring name;  // upper case
  ProMdlType type = ProMdlType::unused;
};
// What the session tells beside its notifications, once control is back with Creo; an empty function isn't called. A
// retrieval is told once, however much comes with the model.
struct pfcSessionActionListener {
  std::function<void(const pfcModelDescriptor&)> OnAfterModelRetrieveAll;  // the user opened it; all it uses is there
  std::function<void()> OnAfterModelDisplay;                               // a model is displayed
};
// Gives the listener's number.
Got<int> pfcSessionActionListenerAdd(pfcSessionActionListener listener);
// ProNotFound: there is none of that number.
ProError pfcSessionActionListenerRemove(int listener);

}  // namespace creo
