// Keys of the configuration as people write them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kelvane {

// A key, or its short name; case is no difference.
bool isConfigKey(std::wstring_view name);
// "; did you mean 'kvd_log_level'?", or nothing.
std::string nearestConfigKey(const std::string& wrong);

struct ConfigFault {
  std::size_t line = 0;  // from 1
  std::string text;
};
// Lines of kvd_main.cfg that look like keys and aren't, so that they count for nothing, and levels of the log that
// there aren't. Any other line without a known key is a remark.
std::vector<ConfigFault> configFaults(std::wstring_view content);

}  // namespace kelvane
