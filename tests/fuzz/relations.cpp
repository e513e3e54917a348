// Relations: lines over names of every kind of value.
#include "headless/model/relations.h"

#include "fuzz/target.h"

namespace {

using headless::RelationValue;

std::optional<RelationValue> known(std::string_view name) {
  if (name == "LENGTH" || name == "d1") return RelationValue(12.5);
  if (name == "COLOR") return RelationValue(std::string("red"));
  if (name == "HARD") return RelationValue(true);
  if (name == "MASS") return RelationValue(std::monostate());
  if (name == "[mm]") return RelationValue(1.0);
  return std::nullopt;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view rest = fuzz::bytesOf(data, size);
  std::vector<std::string> lines;
  while (!rest.empty()) lines.emplace_back(fuzz::nextLine(rest));
  headless::Relations relations(known);
  const headless::RelationFault fault = relations.run(lines);
  fuzz::holds(!fault || (fault.line >= 1 && fault.line <= lines.size() + 1), "a fault stands in a line that is there");
  for (const headless::Assignment& assigned : relations.assignments())
    fuzz::holds(assigned.line >= 1 && assigned.line <= lines.size(), "an assignment stands in a line that is there");
  return 0;
}
