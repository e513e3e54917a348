#include "os/local_time.h"

namespace os {

std::optional<std::tm> localFields(std::int64_t seconds) {
  ::tzset();
  const std::time_t at = seconds;
  std::tm fields{};
  if (!::localtime_r(&at, &fields)) return std::nullopt;
  return fields;
}

}  // namespace os
