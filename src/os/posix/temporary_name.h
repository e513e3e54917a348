// What temporary files beside their targets are called: ".kvd-4711-3.tmp", with the number of the process.
#pragma once

#include <string_view>

namespace os {

constexpr std::string_view kTemporaryStart = ".kvd-", kTemporaryEnd = ".tmp";

inline bool isTemporaryName(std::string_view name) {
  return name.starts_with(kTemporaryStart) && name.ends_with(kTemporaryEnd);
}

}  // namespace os
