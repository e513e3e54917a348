// What the program that reads STEP and IGES files says of one: it may have been taken over by the file.
#include <exception>

#include "fuzz/target.h"
#include "headless/geometry/foreign_wire.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes = fuzz::bytesOf(data, size);
  try {
    const headless::geometry::ExchangeRead read = headless::geometry::readTree(bytes);
    fuzz::holds(read.root || !read.fault.empty(), "a tree or a fault");
  } catch (const std::exception&) {  // the promised answer to what no such program writes
  }
  return 0;
}
