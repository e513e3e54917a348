// Between texts of the machine's form (UTF-8, with "/" on every system) and paths of the standard library, which would
// take a narrow text in the charset of the user's country on Windows.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace kelvane {

inline std::filesystem::path nativePath(std::string_view machine) {
  return std::filesystem::path(std::u8string(machine.begin(), machine.end()));
}
inline std::string machinePath(const std::filesystem::path& path) {
  const std::u8string text = path.generic_u8string();
  return {text.begin(), text.end()};
}

}  // namespace kelvane
