// Creo's message area, and message files: keyed texts in the text folder of the application.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// Shows the text of a key, its "%0s" replaced. The key is given without the mark of its class ("%CI"). ProNotFound: no
// such file or key.
ProError ProMessageDisplay(const std::wstring& file, const std::string& key, const std::wstring& argument);
// Moves the message area up by a line; several calls in a row move it once.
ProError ProMessageClear();
// The text of a key of a message file, in Creo's language, whole. ProNotFound: no such file, key or text.
Got<std::wstring> ProMessageToBuffer(const std::wstring& file, const std::string& key);

// A dialog with a title, a text and buttons that blocks until one is pressed; the pressed button's number, from 0. In
// the text "&&" stands for "&"; the buttons are those of Creo's own list: "OK", "Cancel" ...
Got<int> ProUIMessageDialogDisplay(const std::wstring& title, const std::wstring& text,
                                   const std::vector<std::wstring>& buttons);

}  // namespace creo
