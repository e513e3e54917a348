// Expressions of relations: numbers, texts in quotes, names, calls of functions, and what joins them.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "headless/model/relation_value.h"

namespace headless {

// The value of a name; nothing: there is no such name. A unit in its brackets, "[mm]", gives the number that turns
// values of it into the model's units.
using RelationLookup = std::function<std::optional<RelationValue>(std::string_view)>;

// What is asked of the model itself, such as its mass: a function by its arguments, or for null a name. Nothing: it is
// neither.
using RelationCall =
    std::function<std::optional<Evaluated>(std::string_view name, const std::vector<RelationValue>* arguments)>;

// Names are looked for by `lookup`, then among the constants. Angles are in degrees. What if(...) doesn't choose is
// read and may have any value. guarded: folded names that somewhere exists("...") asks for; that one of them is missing
// lies in the values, too. Null: none. ofModel: null where what asks the model isn't worked out.
Evaluated evaluate(std::string_view expression, const RelationLookup& lookup,
                   const std::unordered_set<std::string>* guarded = nullptr, const RelationCall& ofModel = nullptr);

// Letters, digits and "_", with the id of another model or feature behind a colon: "LENGTH:12". Takes it from the front
// of `text`; empty: no name stands there.
std::string_view takeName(std::string_view& text);
void skipBlanks(std::string_view& text);

}  // namespace headless
