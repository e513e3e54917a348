// Which of a box's sides is what, and when the box is a round bar's.
#include <algorithm>
#include <array>
#include <cmath>

#include "actions/environment/bounding_box.h"

namespace actions {
namespace {

using Side = double BoxSides::*;

// Two sides that may be the diameter, in the order in which they are tried, and what the sides are called then.
struct Pair {
  Side first, second;
  Side length, width, height;
};
constexpr Pair kPairs[] = {
    {&BoxSides::y, &BoxSides::x, &BoxSides::x, &BoxSides::y, &BoxSides::z},
    {&BoxSides::z, &BoxSides::x, &BoxSides::x, &BoxSides::z, &BoxSides::y},
    {&BoxSides::z, &BoxSides::y, &BoxSides::z, &BoxSides::y, &BoxSides::x},
};

// Parts of a side by which another length may differ.
constexpr double kNear = 50, kSame = 100;

bool within(double side, double other, double part) { return side + side / part > other && side - side / part < other; }

bool isRoundIn(const Pair& pair, const BoxSides& sides, double diameter) {
  const double first = sides.*pair.first;
  return diameter != 0 && within(first, sides.*pair.second, kSame) && within(first, diameter, kSame);
}

}  // namespace

double roundedLength(double value) {
  constexpr double kDecimals = 1e6;
  return std::floor(value * kDecimals + 0.5) / kDecimals;
}

bool mayBeRound(const BoxSides& sides) {
  return std::ranges::any_of(kPairs,
                             [&](const Pair& pair) { return within(sides.*pair.first, sides.*pair.second, kNear); });
}

bool isRound(const BoxSides& sides, double diameter) {
  return std::ranges::any_of(kPairs, [&](const Pair& pair) { return isRoundIn(pair, sides, diameter); });
}

BoxResult namedSides(const BoxSides& sides, double diameter, bool sorted) {
  for (const Pair& pair : kPairs) {
    if (isRoundIn(pair, sides, diameter))
      return {
          .width = sides.*pair.width, .length = sides.*pair.length, .height = sides.*pair.height, .diameter = diameter};
  }
  if (!sorted) return {.width = sides.x, .length = sides.y, .height = sides.z};
  std::array all{sides.x, sides.y, sides.z};
  std::ranges::sort(all, std::greater());
  return {.width = all[1], .length = all[0], .height = all[2]};
}

}  // namespace actions
