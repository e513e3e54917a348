// What the actions on named states share: texts of the list, and states found by name.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "actions/action.h"
#include "actions/task.h"
#include "creo/ProState.h"
#include "language/compare.h"

namespace actions {

constexpr int kMostNames = 100;  // of a list "name_0", "name_1", ...

// A text of the list through the variables; empty where it is absent or can't be put together, which the log tells
// then.
std::wstring replacedText(const Task& task, std::wstring_view text, std::size_t size = text::kTextSize);
inline std::wstring nameIn(const Task& task, std::wstring_view attribute, std::size_t size = text::kTextSize) {
  return replacedText(task, task.attribute(attribute), size);
}
// The texts of name_0 to name_99 that are there, in this order.
std::vector<std::wstring> namesIn(const Task& task);

inline bool fitsName(std::wstring_view pattern, std::wstring_view name) { return language::matches(pattern, name); }
bool fitsAny(const std::vector<std::wstring>& patterns, std::wstring_view name);

struct NamedState {
  creo::ProModelitem item;
  std::wstring name;
};
using StateVisit = creo::ProError (*)(creo::ProMdl solid, creo::Visitor<creo::ProModelitem> visitor);
// Visits a solid's states of a kind with their names, as the visit does; one whose name can't be read is left out.
creo::ProError visitStates(creo::ProMdl solid, StateVisit visit, creo::Visitor<NamedState> visitor);
// The first one whose name fits.
std::optional<NamedState> firstState(creo::ProMdl solid, StateVisit visit, std::wstring_view pattern);

// ---- what rows have in common

constexpr core::Attribute kStateName[] = {
    {.name = L"statename",
     .kind = core::Kind::pattern,
     .variables = true,
     .need = core::Need::needed,
     .about = "its name; the first that fits is taken"},
};
constexpr core::Attribute kStatesThatGo[] = {
    {.name = L"name_%d",
     .kind = core::Kind::pattern,
     .variables = true,
     .need = core::Need::needed,
     .about = "names; all that fit go"},
};

}  // namespace actions
