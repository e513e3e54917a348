// Where paths of the system's form begin, and what lies in what from there.
#pragma once

#include <string_view>

namespace os {

enum class Roots {
  one,      // all lies under one root, which is z; the other letters are mounts alone
  letters,  // the machine has letters of its own, and shares of a network: "\\server\share"
};
#ifdef _WIN32
constexpr Roots kRoots = Roots::letters;
#else
constexpr Roots kRoots = Roots::one;
#endif

// True for a path that begins with two separators where the machine knows shares. Such a path has no letter, and no
// mount counts for it.
bool isOnShare(std::wstring_view path, Roots roots);

// isInside (os/paths.h) on a machine with such roots. What lies on a share lies inside nothing but what is on this very
// share, and ".." never climbs above it.
bool isInside(std::wstring_view path, std::wstring_view folder, Roots roots);

}  // namespace os
