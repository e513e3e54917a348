// How this layer reports: a standard error_code (false is success), and beside it a value where one is asked for.
#pragma once

#include <system_error>
#include <utility>

namespace os {

// value is meaningful only when error is false.
template <class T>
struct Result {
  T value{};
  std::error_code error{};
  explicit operator bool() const { return !error; }
};

}  // namespace os
