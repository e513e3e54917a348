// What all fuzz targets share. Each is one file with the function that the fuzzer calls for every input; what must hold
// whatever comes is asked by `holds`. A target keeps nothing from one input to the next.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

inline std::string_view bytesOf(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

// Takes the first byte of an input, which chooses among the ways it is worked; 0 for an empty one.
inline unsigned choice(std::string_view& bytes) {
  if (bytes.empty()) return 0;
  const auto first = static_cast<unsigned char>(bytes.front());
  bytes.remove_prefix(1);
  return first;
}

// The next line, without its end; what stands before the last line end is a line.
inline std::string_view nextLine(std::string_view& bytes) {
  const std::string_view line = bytes.substr(0, bytes.find('\n'));
  bytes.remove_prefix(line.size() < bytes.size() ? line.size() + 1 : line.size());
  return line;
}

// Ends the process where a promise is broken: that is a find.
inline void holds(bool promise, const char* what) {
  if (promise) return;
  std::fprintf(stderr, "broken promise: %s\n", what);
  std::abort();
}

}  // namespace fuzz
