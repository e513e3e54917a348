// What the program that reads STEP and IGES files and works out views says: it may have been taken over by a file. An
// input that begins with "v" is the answer to a view, any other one that of a file.
#include <exception>
#include <utility>
#include <variant>

#include "fuzz/target.h"
#include "headless/geometry/flat_loop.h"
#include "headless/geometry/foreign_wire.h"
#include "headless/pictures/drawn_views.h"

namespace {

void tree(std::string_view bytes) {
  const headless::geometry::ExchangeRead read = headless::geometry::readTree(bytes);
  fuzz::holds(read.root || !read.fault.empty(), "a tree or a fault");
}

// Whatever lines it is, they can be drawn.
void view(std::string_view bytes) {
  headless::geometry::Seen seen = headless::geometry::readSeen(bytes);
  for (const headless::geometry::SeenCut& cut : seen.cuts)
    for (const headless::geometry::FlatLoop& loop : cut.loops)
      fuzz::holds(
          !headless::geometry::cornersOf(loop).empty() && headless::geometry::hatched({loop}, {}).size() < 100'000'000U,
          "corners of a loop, and hatching that ends");
  for (headless::geometry::SeenCurve& entry : seen.curves) {
    headless::geometry::FlatBox box;
    box.take(entry.curve);
    if (const auto* arc = std::get_if<headless::geometry::FlatArc>(&entry.curve)) {
      const auto pieces = headless::geometry::beziersOf(*arc);
      fuzz::holds(!pieces.empty() && pieces.size() <= 4, "an arc of at most a turn");
    }
    const headless::SheetStroke stroke = headless::strokeOf(std::move(entry), true);
    if (const auto* path = std::get_if<headless::geometry::FlatPath>(&stroke.curve))
      fuzz::holds(path->points.size() >= 2, "a path from one point to another");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view bytes = fuzz::bytesOf(data, size);
  try {
    if (bytes.starts_with('v')) {
      bytes.remove_prefix(1);
      view(bytes);
    } else {
      tree(bytes);
    }
  } catch (const std::exception&) {  // the promised answer to what no such program writes
  }
  return 0;
}
