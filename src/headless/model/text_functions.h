// Functions of relations that work with texts.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "headless/model/relation_value.h"

namespace headless {

// A call by its name, case-blind. Nothing: it is none of these functions, or not with so many arguments. A value that
// an argument lacks is lacking in the result.
//   itos(n), rtos(n [, decimals])             a number as a text; itos rounds it, rtos has up to 10 decimals
//   search(text, part)                        where the part stands, from 1; 0: nowhere
//   extract(text, place, length)              a piece of a text, from place 1
//   string_length(text)
//   string_starts, string_ends, string_match(text, part)
std::optional<Evaluated> textFunction(std::string_view name, const std::vector<RelationValue>& arguments);

}  // namespace headless
