#include "headless/model/symbols.h"

#include "headless/model/drawing.h"
#include "headless/model/sheet_views.h"

namespace headless {
namespace {

void collect(const std::vector<SymbolGroupRecord>& groups, const SymbolGroupRecord* parent,
             std::vector<SymbolGroupPlace>& into) {
  for (const SymbolGroupRecord& group : groups) {
    into.push_back({&group, parent});
    collect(group.groups, &group, into);
  }
}

// Ids ascend as long as nobody wrote them by hand.
template <class Record>
Record* withId(std::vector<Record>& records, int id) {
  const auto guess = std::lower_bound(records.begin(), records.end(), id,
                                      [](const Record& record, int wanted) { return record.id < wanted; });
  if (guess != records.end() && guess->id == id) return &*guess;
  const auto found = std::find_if(records.begin(), records.end(), [id](const Record& entry) { return entry.id == id; });
  return found == records.end() ? nullptr : &*found;
}

}  // namespace

SymbolRecord* symbolOf(ModelDocument& drawing, int id) { return withId(drawing.record.symbols, id); }

SymbolDefinitionRecord* symbolDefinitionOf(ModelDocument& drawing, int id) {
  return withId(drawing.record.symbolDefinitions, id);
}

SymbolDefinitionRecord* symbolDefinitionNamed(ModelDocument& drawing, std::string_view name) {
  for (SymbolDefinitionRecord& definition : drawing.record.symbolDefinitions)
    if (sameName(definition.name, name)) return &definition;
  return nullptr;
}

std::vector<SymbolGroupPlace> groupsOf(const SymbolDefinitionRecord& definition) {
  std::vector<SymbolGroupPlace> places;
  collect(definition.groups, nullptr, places);
  return places;
}

int sheetOfView(const ModelDocument& drawing, int view, int otherwise) {
  int sheet = view == 0 ? otherwise : sheetOfOwnView(view);
  for (const ViewRecord& entry : drawing.record.views)
    if (view > 0 && entry.id == view) sheet = std::max(entry.sheet, 1);
  return headless::sheetOf(drawing, sheet) ? sheet : 0;
}

}  // namespace headless
