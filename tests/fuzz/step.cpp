// STEP files, through the door by which they are imported: another program reads them, and what becomes of it is told.
// The fuzzer sees this side of the door alone.
#include <cmath>
#include <unordered_set>

#include "fuzz/place.h"
#include "fuzz/target.h"
#include "headless/geometry/exchange.h"
#include "headless/geometry/foreign_place.h"

namespace {

// seen: products that stand in several assemblies are looked at once.
void isWhole(const headless::geometry::ExchangeNode& node, std::unordered_set<const void*>& seen) {
  for (const auto& member : node.members) {
    fuzz::holds(member.node != nullptr, "a member is there");
    fuzz::holds(std::isfinite(member.place.origin.x + member.place.origin.y + member.place.origin.z),
                "a member stands somewhere");
    if (seen.insert(member.node.get()).second) isWhole(*member.node, seen);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using headless::geometry::ExchangeFormat;
  using headless::geometry::ImportAs;
  static fuzz::Place place;
  headless::geometry::foreignPlace().time = std::chrono::seconds(10);
  std::string_view bytes = fuzz::bytesOf(data, size);
  const ImportAs as = fuzz::choice(bytes) % 2 ? ImportAs::assembly : ImportAs::part;
  const auto read = headless::geometry::readExchange(place.file("body.stp", bytes), ExchangeFormat::step, as);
  fuzz::holds((read.root == nullptr) == !read.fault.empty(), "a tree or a fault");
  fuzz::holds(std::isfinite(read.unit) && read.unit > 0, "a unit that is one");
  std::unordered_set<const void*> seen;
  if (read.root) isWhole(*read.root, seen);
  return 0;
}
