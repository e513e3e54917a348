// The table of all predicates, and how one is asked.
#pragma once

#include <span>
#include <string_view>

#include "documents/predicates.h"

namespace documents {

// All of them, in their order.
std::span<const Predicate> predicateTable();
// The row of that key; null: none.
const Predicate* findPredicate(std::wstring_view key);
// The frame of every predicate: its title, the models that it applies to, then the function.
Answer ask(const Predicate& predicate, creo::ProMdl model, const core::XmlNode& item);

}  // namespace documents
