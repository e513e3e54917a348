#include "os/doors.h"

namespace os {

Doors& doors() {
  static Doors current;
  return current;
}

std::optional<std::error_code> heldBack(Door door, std::wstring_view asked) {
  if (door == Door::closed) return std::make_error_code(std::errc::operation_not_permitted);
  if (door == Door::open) return std::nullopt;
  doors().noted.emplace_back(asked);
  return std::error_code();
}

}  // namespace os
