// The errno of a failed call as one of the errors that this layer promises.
#pragma once

#include <cerrno>
#include <system_error>

namespace os {

inline std::error_code errorOf(int number) {
  switch (number) {
    case ENOTDIR:
      return std::make_error_code(std::errc::no_such_file_or_directory);
    // operation_not_permitted is this layer's own refusal.
    case EPERM:
      return std::make_error_code(std::errc::permission_denied);
    case EDQUOT:
      return std::make_error_code(std::errc::no_space_on_device);
    default:
      return {number, std::generic_category()};
  }
}
inline std::error_code lastError() { return errorOf(errno); }

}  // namespace os
