// The machine's own part of localTime: the fields of a time in the local zone, or nothing when it has no local form.
#pragma once

#include <cstdint>
#include <ctime>
#include <optional>

namespace os {

std::optional<std::tm> localFields(std::int64_t seconds);

}  // namespace os
