// How notes and placed symbols hang on the sheets of drawings.
#pragma once

#include "creo/ProDrawing.h"

namespace creo {

// Creo's numbers. Others, of what hangs on a model, are kept as they are.
enum class ProDtlattachType : int { none = 0, free = 1 };

// free: it stands at a place of its sheet, in the drawing's own coordinates; with a view it moves as that view moves.
struct ProDtlattach {
  ProDtlattachType type = ProDtlattachType::none;
  int view = 0;  // its id; 0: none, but the sheet
  ProPoint position;
};
// ProBadInputs: no type, or a position that is no number; ProInvalidType: not one of Creo's.
Got<ProDtlattach> ProDtlattachAlloc(ProDtlattachType type, int view, const ProPoint& position);

}  // namespace creo
