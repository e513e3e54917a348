// What the record of a vault's object tells of a run.
#pragma once

#include <optional>
#include <string_view>

#include "kelvane/journal/record.h"

namespace kelvane {

// The record `checkIn` where the object has iterations that it hadn't before; nothing otherwise. before: empty for
// an object that is new.
std::optional<Record> checkInOf(std::string_view before, std::string_view now);

}  // namespace kelvane
