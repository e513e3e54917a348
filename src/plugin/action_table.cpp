// The table of all actions: the rows of the families in their fixed order.
#include <algorithm>
#include <unordered_map>
#include <vector>

#include "actions/families.h"
#include "actions/dispatch.h"

namespace plugin {

using namespace actions;

std::span<const Action> actionTable() {
  static const std::vector<Action> table = [] {
    std::vector<Action> rows;
    for (const actions::Family family : actions::allFamilies())
      for (const Action& row : family()) rows.push_back(row);
    std::sort(rows.begin(), rows.end(), [](const Action& a, const Action& b) { return a.place < b.place; });
    return rows;
  }();
  return table;
}

const Action* findAction(std::wstring_view key) {
  static const auto index = [] {
    std::unordered_map<std::wstring_view, const Action*> rows;
    for (const Action& row : actionTable()) rows.emplace(row.key, &row);
    return rows;
  }();
  const auto found = index.find(key);
  return found == index.end() ? nullptr : found->second;
}

}  // namespace plugin
