// Element trees: how a feature was defined, element by element.
#pragma once

#include <variant>

#include "creo/ProFeature.h"

namespace creo {

// ProInvalidType: an element that holds no single value.

// The element of a pattern that says how it regenerates; what it may hold.
constexpr int kPatternRegeneration = 3131;
constexpr int kGeneralPattern = 4, kVaryingPattern = 8, kIdenticalPattern = 32;

struct ProElement {
  int id = 0;
  std::variant<std::monostate, std::wstring, double, int, bool> value;
};
struct ProElemtree {
  std::vector<ProElement> elements;
};

// ProBadInputs: no pattern; ProNotFound: it has gone.
Got<ProElemtree> ProPatternElemtreeCreate(const ProFeature& pattern);
// pathItem: the element's id below the tree's root. ProNotFound: the tree has none.
Got<ProElement> ProElemtreeElementGet(const ProElemtree& tree, int pathItem);
// ProGeneralError: it holds something else than an integer; ProInvalidType: it holds no value; ProBadInputs: it is no
// element.
Got<int> ProElementIntegerGet(const ProElement& element);

}  // namespace creo
