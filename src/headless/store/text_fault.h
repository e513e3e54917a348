// Why a text in a file can't be taken, and in which line: what the readers of this folder give.
#pragma once

#include <cstddef>
#include <string>

namespace headless {

// reason empty: there is no fault.
struct TextFault {
  std::size_t line = 0;  // from 1
  std::wstring reason;
  explicit operator bool() const { return !reason.empty(); }
};

}  // namespace headless
