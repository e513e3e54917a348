// A text of the log as a row holds it.
#pragma once

#include <optional>
#include <string_view>

#include "core/message_names.h"

namespace core {

// A text of the table of messages, or the text itself.
struct Line {
  constexpr Line() = default;
  constexpr Line(const wchar_t* literal) : text(literal) {}  // NOLINT(google-explicit-constructor)
  constexpr Line(Message named) : message(named) {}          // NOLINT(google-explicit-constructor)
  std::wstring_view text = {};
  std::optional<Message> message = {};
  [[nodiscard]] constexpr bool isThere() const { return message || !text.empty(); }
};
// In the current language.
std::wstring_view lineText(const Line& line);

}  // namespace core
