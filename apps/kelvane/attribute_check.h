// An action's attributes held against its row.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/xml.h"
#include "engine/action.h"

namespace kelvane {

struct AttributeFault {
  std::string_view rule;
  std::string attribute;  // its name in the list, or the one that is missing
  std::string text;
};
// Unknown and missing attributes, words and numbers that aren't any, broken patterns, counts below their lists. What is
// put together when the action runs can't be told and is passed over.
std::vector<AttributeFault> attributeFaults(const core::XmlNode& task, const engine::Action& action);

// Calls f(const core::XmlAttr&) for each attribute, in order.
template <class F>
void eachAttribute(const core::XmlNode& node, F f) {
  for (const core::XmlAttrBlock* block = node.attributes; block; block = block->next)
    for (std::uint16_t i = 0; i < block->count; ++i) f(*block->items[i]);
}

}  // namespace kelvane
