// Dialogs in which a person picks a file or a folder, and the parts of a file's name.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// Each blocks until the person has chosen; the path in the system's form. ProUserAbort: nothing was chosen, or what
// can't be: a file to open that isn't there, a place to save in a folder that isn't there. ProBadInputs: a file's name
// of over 80 characters.
// title: empty takes Creo's own. filter: "*.csv,*.txt". folder: where the dialog starts, empty for the
// working directory; proposal: a name in it.
Got<std::wstring> ProFileMdlnameOpen(const std::wstring& title, const std::wstring& filter, const std::wstring& folder,
                                     const std::wstring& proposal);
Got<std::wstring> ProFileMdlnameSave(const std::wstring& title, const std::wstring& filter, const std::wstring& folder,
                                     const std::wstring& proposal);
// As ProFileMdlnameSave, for a file of any kind.
Got<std::wstring> ProFileSave(const std::wstring& title, const std::wstring& filter, const std::wstring& folder,
                              const std::wstring& proposal);
Got<std::wstring> ProDirectoryChoose(const std::wstring& title, const std::wstring& folder);

// "d:\parts\", "bracket", "prt", 3 of "d:\parts\bracket.prt.3". What isn't there is empty, the version 0.
struct ProFilename {
  std::wstring directory, name, extension;
  int version = 0;
};
ProFilename ProFilenameParse(const std::wstring& path);

}  // namespace creo
