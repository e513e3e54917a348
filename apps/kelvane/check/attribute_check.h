// An action's attributes held against its row.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "actions/action.h"
#include "core/xml.h"
#include "kelvane/check/attribute_mend.h"

namespace kelvane {

struct AttributeFault {
  std::string_view rule;
  std::string attribute;  // its name in the list, or the one that is missing
  std::string text;
  Mend mend = {};  // of what it is sure
};
bool isFeatureCode(std::wstring_view value);
// "none of 1, 2, 3": of the attribute's words.
std::string noneOf(const core::Attribute& attribute);
// A switch in other letters than "true" and "false", which count as they stand here. Nothing for any other value.
std::optional<AttributeFault> lettersFault(std::wstring_view name, std::wstring_view value);
// Of two attributes that would get one name neither is sure.
void dropEqualNames(std::vector<AttributeFault>& faults);

// Unknown and missing attributes, words and numbers that aren't any, broken patterns, counts below their lists. What is
// put together when the action runs can't be told and is passed over.
std::vector<AttributeFault> attributeFaults(const core::XmlNode& task, const actions::Action& action);

// "; 'tpye' isn't it": the attribute that was probably meant to be that one. Empty: none is.
std::string misspelt(const core::XmlNode& node, std::string_view name);

// Calls f(const core::XmlAttr&) for each attribute, in order.
template <class F>
void eachAttribute(const core::XmlNode& node, F f) {
  for (const core::XmlAttrBlock* block = node.attributes; block; block = block->next)
    for (std::uint16_t i = 0; i < block->count; ++i) f(*block->items[i]);
}

}  // namespace kelvane
