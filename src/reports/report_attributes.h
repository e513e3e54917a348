// What the attributes of the report actions have in common.
#pragma once

#include <array>
#include <string_view>
#include <type_traits>

#include "actions/action.h"

namespace reports {

// One that is "true" or isn't.
constexpr core::Attribute flag(std::wstring_view name, std::string_view about, core::Need need = core::Need::optional) {
  return {.name = name, .kind = core::Kind::flag, .words = L"true", .need = need, .about = about};
}
// The same for what an action may put into a report: one of them gives it work.
constexpr core::Attribute columnSwitch(std::wstring_view name, std::string_view about) {
  return flag(name, about, core::Need::oneOf);
}

constexpr core::Attribute asAttribute(const core::Attribute& attribute) { return attribute; }
template <class Column>
constexpr core::Attribute asAttribute(const Column& column) {
  return columnSwitch(column.attribute, column.about);
}

// The attribute `reporter`, then those of the lists, which hold attributes or columns that attributes switch on.
template <class... Lists>
constexpr auto reportAttributes(const Lists&... lists) {
  std::array<core::Attribute, (std::extent_v<Lists> + ... + 1)> all;
  all[0] = {.name = L"reporter",
            .kind = core::Kind::reporter,
            .need = core::Need::needed,
            .about = "the report, by the name of its openCSVReport"};
  std::size_t at = 1;
  const auto add = [&](const auto& list) {
    for (const auto& entry : list) all[at++] = asAttribute(entry);
  };
  (add(lists), ...);
  return all;
}

}  // namespace reports
