// The texts of dimensions as sheets show them.
#pragma once

#include <string>
#include <vector>

#include "headless/pictures/dimension_anchors.h"

namespace headless {

// "Ø35", then 0.7 as high one above the other "+0.018" and "+0.002", then " k6".
struct DimensionText {
  std::wstring before, upper, lower, after;
  std::vector<std::wstring> below;  // further lines, below the dimension's line
  [[nodiscard]] std::wstring inOneLine() const;
};

// The line of the dimension's text that holds "@D" with the value in its place, which gets the sign of a diameter or a
// radius where the text has none, and its tolerance: as the dimension's type shows it, limits in place of the value,
// "±0.1" beside it, or deviations with as many decimals as each other. Without a line that holds "@D" the first one
// stands above the dimension's line as it is. Numbers have at most four decimals. A tolerance of the type `standard` is
// that of a table, which the text names.
DimensionText dimensionText(const DimensionRecord& dimension, double value, Measuring measuring);

// How wide a sans-serif face of Helvetica's widths writes it, in the unit of its height.
double faceWidth(std::wstring_view text, double height);

}  // namespace headless
