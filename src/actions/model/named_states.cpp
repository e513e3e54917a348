#include "actions/model/named_states.h"

#include <algorithm>

#include "actions/visits.h"
#include "core/log.h"
#include "language/variables.h"
#include "text/format.h"

namespace actions {

std::wstring replacedText(const Task& task, std::wstring_view text, std::size_t size) {
  language::Replaced replaced = language::replaceVariables(text, task.model(), size);
  return replaced.hasText() ? std::move(replaced.text) : std::wstring();
}

std::vector<std::wstring> namesIn(const Task& task) {
  std::vector<std::wstring> names;
  for (const Task::Numbered& entry : task.numberedAll(L"name_", kMostNames))
    names.push_back(replacedText(task, entry.value));
  return names;
}

bool fitsAny(const std::vector<std::wstring>& patterns, std::wstring_view name) {
  return std::any_of(patterns.begin(), patterns.end(),
                     [name](const std::wstring& pattern) { return fitsName(pattern, name); });
}

creo::ProError visitStates(creo::ProMdl solid, StateVisit visit, creo::Visitor<NamedState> visitor) {
  const creo::ProError visited = visit(solid, [&](const creo::ProModelitem& item) {
    const auto name = creo::ProModelitemNameGet(item);
    if (!name) core::logWrite(text::format(L"The name of the state %d can't be read", item.id), core::kError);
    return name ? visitor({item, name.value}) : creo::ProNoError;
  });
  isWhole(visited, L"The states");
  return visited;
}

std::optional<NamedState> firstState(creo::ProMdl solid, StateVisit visit, std::wstring_view pattern) {
  std::optional<NamedState> found;
  visitStates(solid, visit, [&](const NamedState& state) {
    if (!fitsName(pattern, state.name)) return creo::ProNoError;
    found = state;
    return creo::ProStopVisit;
  });
  return found;
}

}  // namespace actions
