// What a dialog asks a person.
#pragma once

#include <string>
#include <vector>

namespace headless {

// A question that blocks: a modal dialog was activated, or a message dialog shown. Returns when it is answered.
struct Question {
  std::string dialog;        // name of the modal dialog; empty for a message dialog
  std::wstring title, text;  // of a message dialog
  std::vector<std::wstring> buttons;
};

// One in which a file or a folder is picked; it blocks, too.
struct FileQuestion {
  enum class What { open, save, folder };
  What what = What::open;
  std::wstring title, filter;
  std::wstring folder, proposal;  // where the dialog starts, and a name in it
};

// A dialog offers only what can be chosen: a file that is there, a place in a folder that is there, such a folder.
bool canBeChosen(FileQuestion::What what, const std::wstring& path);

}  // namespace headless
