#include "headless/store/symbol_file.h"

#include <unordered_set>

#include "headless/store/bare_record.h"
#include "headless/store/enum_texts.h"
#include "headless/store/tables_drawing.h"

namespace headless {
namespace {

// The id that a second group has too; 0 for none.
int repeatedId(const std::vector<SymbolGroupRecord>& groups, std::unordered_set<int>& seen) {
  for (const SymbolGroupRecord& group : groups) {
    if (!seen.insert(group.id).second) return group.id;
    if (const int inside = repeatedId(group.groups, seen)) return inside;
  }
  return 0;
}

}  // namespace

JsonFault readSymbol(std::string_view source, std::string name, SymbolDefinitionRecord& into) {
  Json tree;
  if (JsonFault fault = parseJson(source, tree)) return fault;
  if (!tree.is(JsonKind::object)) return {1, L"a symbol definition is an object"};
  nameRecord(tree, std::move(name), {"path"});
  Reader in(source);
  readValue(into, tree, in);
  std::unordered_set<int> seen;
  if (const int id = in.failed() ? 0 : repeatedId(into.groups, seen))
    in.fail(tree, text::format(L"two groups have the id %d", id));
  return in.fault();
}

std::string symbolText(const SymbolDefinitionRecord& definition) {
  std::string out;
  writeValue(definition, out, 0);
  return out;
}

}  // namespace headless
