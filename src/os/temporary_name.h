// What temporary files beside their targets are called: ".kvd-4711-3.tmp", with the number of the process.
#pragma once

#include <charconv>
#include <cstdint>
#include <string>
#include <string_view>

namespace os {

constexpr std::string_view kTemporaryStart = ".kvd-", kTemporaryEnd = ".tmp";

// Short and of its own, as the target's name may be as long as names can be.
inline std::string temporaryName(std::uint32_t process, unsigned number) {
  std::string name(kTemporaryStart);
  name.append(std::to_string(process)).append("-").append(std::to_string(number)).append(kTemporaryEnd);
  return name;
}

inline bool isTemporaryName(std::string_view name) {
  return name.starts_with(kTemporaryStart) && name.ends_with(kTemporaryEnd);
}

// The process of such a name; 0 for any other one.
inline std::uint32_t processOfTemporary(std::string_view name) {
  if (!isTemporaryName(name)) return 0;
  name.remove_prefix(kTemporaryStart.size());
  std::uint32_t process = 0;
  const auto read = std::from_chars(name.data(), name.data() + name.size(), process);
  return read.ec == std::errc() && *read.ptr == '-' ? process : 0;
}

}  // namespace os
