// A C format for one floating number that comes from a list.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace actions {

// "about %8.2f mm": texts around exactly one %f, %e, %g, %F, %E or %G, with flags, a width and a precision, as text's
// format allows them; "l" before the letter means nothing, "%%" is a percent sign.
class NumberFormat {
 public:
  // Nothing for any other text.
  static std::optional<NumberFormat> read(std::wstring_view pattern);
  [[nodiscard]] std::wstring apply(double value) const;

 private:
  std::wstring before_, conversion_, behind_;
  bool capitals_ = false;
};

}  // namespace actions
