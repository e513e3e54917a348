// The version that the program, its manual and its schemas tell.
#pragma once

namespace kelvane {

inline constexpr const char* kVersion = "8.0.1.1";

}  // namespace kelvane
