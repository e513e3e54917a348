// The codes of feature types that lists hold, with a word where a text is none.
#pragma once

#include <string_view>

namespace core {

constexpr int kLastFeatureCode = 246;  // from 0

// Creo's type by the code of an attribute. A text that is no code gives Creo's type of features that have none, as an
// unused code does, and a warning line.
int featureTypeOf(std::wstring_view attribute, std::wstring_view code);

}  // namespace core
