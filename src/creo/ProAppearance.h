// How models, features and surfaces look.
#pragma once

#include <string>
#include <vector>

#include "creo/ProSurface.h"

namespace creo {

struct ProAppearance {
  double red = 0, green = 0, blue = 0;  // each 0 to 1, as those below
  double ambient = 0, diffuse = 0, highlight = 0, shininess = 0, transparency = 0;
  std::wstring label;
};

// The look of a model as a whole, or of a component by its feature; for other features Creo promises none. In an
// assembly the item is the top one's. What is set shows after a repaint, and not where an assembly above has set
// another look. ProNotFound: it has none of its own, or the feature has gone or is a component that the model keeps
// nothing more about; ProBadInputs: no item of a part or an assembly, or one of another kind.
Got<ProAppearance> ProMdlVisibleAppearancepropsGet(const ProModelitem& item);
ProError ProMdlVisibleAppearancepropsSet(const ProModelitem& item, const ProAppearance& appearance);

enum class ProSurfaceSide : int { outer = 0, inner = 1 };
// The look of a side of a surface, by the surface's id; outer is where its normal points. ProNotFound: the body has no
// such surface, or it has no look of its own; ProBadInputs: no part; ProGeneralError: the look can't be changed, or the
// body can't be built, the message area says why.
Got<ProAppearance> ProSurfaceSideAppearancepropsGet(const ProSurface& surface, ProSurfaceSide side);
ProError ProSurfaceSideAppearancepropsSet(const ProSurface& surface, ProSurfaceSide side,
                                          const ProAppearance& appearance);

}  // namespace creo
