// Start and end of the plug-in behind its two entries.
#pragma once

#include <string>
#include <string_view>

namespace plugin {

// 0: started. -1: not; fault is the text for Creo to show.
struct StartResult {
  int status = 0;
  std::wstring fault;
};
StartResult startPlugin(std::string_view version, std::string_view build);
void endPlugin();

}  // namespace plugin
