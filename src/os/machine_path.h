// Text work on paths in the machine's form: absolute, with "/" between their parts, also where a letter or a server
// stands in front ("C:/models", "//server/share").
#pragma once

#include <string>
#include <string_view>

namespace os {

// The folder that holds it; the root itself for what lies there: "/" of "/a", "C:/" of "C:/a".
inline std::string parentOf(std::string_view path) {
  const std::size_t at = path.rfind('/');
  if (at == path.npos || at == 0) return "/";
  const bool isDrive = at == 2 && path[1] == ':';
  return std::string(path.substr(0, isDrive ? at + 1 : at));
}
// What follows the last separator.
inline std::string_view lastName(std::string_view path) { return path.substr(path.rfind('/') + 1); }

inline std::string withSlash(std::string folder) {
  if (!folder.ends_with('/')) folder += '/';
  return folder;
}

}  // namespace os
