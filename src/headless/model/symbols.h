// The symbols of drawings: placed ones, definitions, groups.
#pragma once

#include <algorithm>
#include <limits>
#include <string_view>
#include <vector>

#include "headless/model/document.h"

namespace headless {

// Null for none.
SymbolRecord* symbolOf(ModelDocument& drawing, int id);
SymbolDefinitionRecord* symbolDefinitionOf(ModelDocument& drawing, int id);
// Case-blind.
SymbolDefinitionRecord* symbolDefinitionNamed(ModelDocument& drawing, std::string_view name);

// A group of a definition, with the one around it (null for none).
struct SymbolGroupPlace {
  const SymbolGroupRecord* group = nullptr;
  const SymbolGroupRecord* parent = nullptr;
};
// All groups, each before those inside it.
std::vector<SymbolGroupPlace> groupsOf(const SymbolDefinitionRecord& definition);

// The sheet of what hangs on a view; `otherwise` for view 0. 0: the drawing has no such view, or no such sheet.
int sheetOfView(const ModelDocument& drawing, int view, int otherwise);

// The next id of a list of records; 0 where all are used up.
template <class Records>
int nextId(const Records& records) {
  int highest = 0;
  for (const auto& record : records) highest = std::max(highest, record.id);
  return highest == std::numeric_limits<int>::max() ? 0 : highest + 1;
}

}  // namespace headless
