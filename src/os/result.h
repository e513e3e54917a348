// How this layer answers: a standard error_code (false is success), and beside it a value where one is asked for.
// Callers tell codes apart, as they do with Creo's. Above this layer a code becomes a fault (text/fault.h).
#pragma once

#include <optional>
#include <string>
#include <system_error>
#include <utility>

#include "text/encoding.h"
#include "text/fault.h"

namespace os {

// value is meaningful only when error is false.
template <class T>
struct Result {
  T value{};
  std::error_code error{};
  explicit operator bool() const { return !error; }
};

// An error in the system's words, and the file or folder that it is about.
inline text::Fault faultOf(std::error_code error, std::optional<std::wstring> where = {}) {
  return {text::fromUtf8(error.message()), std::move(where)};
}

}  // namespace os
