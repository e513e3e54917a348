// What two states of a model differ in, marked in the pictures of both.
#pragma once

#include "kelvane/show/pictures.h"

namespace kelvane {

// What only `before` shows becomes red, what only `after` shows green; what both show of a solid turns pale. On sheets
// these are lines and texts, compared in their place within a thousandth of a millimetre, on solids faces, by surface,
// area, middle and colour. False: both show the same. Throws std::runtime_error for a face that can't be measured.
bool mark(Shown& before, Shown& after);

}  // namespace kelvane
