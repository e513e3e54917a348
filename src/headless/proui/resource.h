// Dialog resources: a JSON file a dialog, in the resource folder of the application's text folder. docs/ describes
// the format.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "headless/proui/dialog.h"

namespace headless {

// The path of a resource (an image, a dialog's file) by its name with extension: in the folder of the language, then
// in that of all languages. Empty when there is none.
std::wstring findResource(const std::wstring& textFolder, const std::string& language, const std::string& name);

// A dialog made from a resource; null with the fault as one line "FILE:LINE: what is wrong".
struct ReadDialog {
  std::shared_ptr<Dialog> dialog;
  std::wstring fault;
};
// content: of the file `path`, which only serves the fault's line.
ReadDialog readDialog(const std::string& name, std::string_view content, const std::wstring& path,
                      const std::string& language);

}  // namespace headless
