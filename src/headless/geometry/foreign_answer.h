// The work of kelvane-import.
#pragma once

#include <string>
#include <string_view>

namespace headless::geometry {

// Reads and checks what is asked for; the answer to a request of foreign_wire.h.
std::string answerForeign(std::string_view request);

}  // namespace headless::geometry
