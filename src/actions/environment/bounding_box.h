// The smallest box around a solid and whether it is a round bar: the search, and the rules that need no model.
#pragma once

#include <optional>

#include "creo/ProTypes.h"

namespace actions {

// What a measure comes to, in the model's units; -1: nothing was found.
struct BoxResult {
  double width = -1, length = -1, height = -1, diameter = -1;
};
struct BoxSides {
  double x = 0, y = 0, z = 0;
};

// To 6 decimals.
double roundedLength(double value);
// Along the model's own axes: x is the width, y the height, z the length. Errors as those of ProSolidOutlineCompute.
creo::Got<BoxResult> modelBox(creo::ProMdl model);
// The smallest box over the orientations of a part's planes, or along the default coordinate system; round stock is
// recognised. A drawing has none. sorted: length >= width >= height where it isn't round. An error is that of the
// operation that failed. Features that were put away for the measure are back in any case.
creo::Got<BoxResult> searchedBox(creo::ProMdl model, bool sorted);

// Are two of the sides within 2% of one another, so that it is worth looking for a diameter?
bool mayBeRound(const BoxSides& sides);
// Are two of the sides within 1% of one another, and the diameter of them?
bool isRound(const BoxSides& sides, double diameter);
// The sides by their names, with the diameter if it makes the box a round bar's: the height lies along its axis then.
BoxResult namedSides(const BoxSides& sides, double diameter, bool sorted);

}  // namespace actions
