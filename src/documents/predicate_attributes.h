// What the predicates read of their items, as data.
#pragma once

#include <span>
#include <string_view>

namespace documents {

enum class AttributeKind {
  text,             // as it stands
  pattern,          // compared by wildcardCompare
  templateText,     // with variables
  templatePattern,  // with variables, then a pattern
  integer,
  integerOrStar,
  featureCode,  // a place in the list of feature types
  number,
  plainNumber,  // of the form by which a filter knows a number, digits first
  truth,        // "true" or "false"
};
struct PredicateAttribute {
  std::wstring_view key, attribute;
  bool required;  // without it the predicate's answer says nothing about the model
  AttributeKind kind;
  std::wstring_view choices = {};  // the values that mean something, a blank between two; empty: all do
};
// In the order of the predicates.
std::span<const PredicateAttribute> predicateAttributes();
// Those of one predicate; empty for one that reads none.
std::span<const PredicateAttribute> predicateAttributes(std::wstring_view key);

}  // namespace documents
