// Element trees: how a feature was defined, or is to be made, element by element.
#pragma once

#include <variant>

#include "creo/ProFeature.h"
#include "creo/ProReference.h"

namespace creo {

// ProInvalidType: an element that holds no single value.

// The element of a pattern that says how it regenerates; what it may hold.
constexpr int kPatternRegeneration = 3131;
constexpr int kGeneralPattern = 4, kVaryingPattern = 8, kIdenticalPattern = 32;

struct ProElement {
  int id = 0;
  std::variant<std::monostate, std::wstring, double, int, bool, ProReference> value;
  std::vector<ProElement> children;  // in their order
};
// What an element takes that is neither text nor number.
struct ProValue {
  ProReference reference;
};
struct ProElemtree {
  std::vector<ProElement> elements;
};

// ProBadInputs: no pattern; ProNotFound: it has gone. Creo has no trees of fill, axis and direction patterns.
Got<ProElemtree> ProPatternElemtreeCreate(const ProFeature& pattern);
// pathItem: the element's id below the tree's root. ProNotFound: the tree has none.
Got<ProElement> ProElemtreeElementGet(const ProElemtree& tree, int pathItem);
// ProInvalidType: it holds nothing that an integer can stand for; ProBadInputs: it is no element.
Got<int> ProElementIntegerGet(const ProElement& element);

// Without a value. ProBadInputs: no element has such an id.
Got<ProElement> ProElementAlloc(int id);
// The operations below give ProBadInputs for something that is no element, ProInvalidType for one that takes another
// kind of value, ProCantWrite for one that a relation drives.
ProError ProElementIntegerSet(ProElement& element, int value);
// ProBadInputs also for a value that isn't finite.
ProError ProElementDoubleSet(ProElement& element, double value);
ProError ProElementWstringSet(ProElement& element, const std::wstring& value);
Got<ProValue> ProValueAlloc();
// ProBadInputs: a reference to nothing.
ProError ProValueDataSet(ProValue& value, const ProReference& reference);
ProError ProElementValueSet(ProElement& element, const ProValue& value);
// Behind what the element holds already.
ProError ProElemtreeElementAdd(ProElement& parent, ProElement child);

}  // namespace creo
