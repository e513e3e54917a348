// Creo's message area, and message files: keyed texts in the text folder of the application.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// Shows the text of a key, its "%0s" replaced. ProNotFound: no such file or key.
ProError ProMessageDisplay(const std::wstring& file, const std::string& key, const std::wstring& argument);
ProError ProMessageClear();
// The text of a key of a message file, in Creo's language. ProNotFound.
Got<std::wstring> ProMessageToBuffer(const std::wstring& file, const std::string& key);

// A dialog with a title, a text and buttons that blocks until one is pressed; the pressed button's number, from 0.
Got<int> ProUIMessageDialogDisplay(const std::wstring& title, const std::wstring& text,
                                   const std::vector<std::wstring>& buttons);

}  // namespace creo
