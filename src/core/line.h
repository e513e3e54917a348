// A text of the log as a row holds it.
#pragma once

#include <string_view>

namespace core {

// A number of the tables of messages, or the text itself.
struct Line {
  constexpr Line() = default;
  constexpr Line(const wchar_t* literal) : text(literal) {}  // NOLINT(google-explicit-constructor)
  constexpr Line(int number) : message(number) {}            // NOLINT(google-explicit-constructor)
  std::wstring_view text = {};
  int message = -1;
  [[nodiscard]] constexpr bool isThere() const { return message >= 0 || !text.empty(); }
};
// In the current language.
std::wstring_view lineText(const Line& line);

}  // namespace core
