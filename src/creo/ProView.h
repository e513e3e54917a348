// Views: the orientations in which solids are shown, kept by name, and how drawings draw their views of models.
#pragma once

#include <array>

#include "creo/ProDrawingView.h"

namespace creo {

// ---- of solids. ProBadInputs: no solid; ProNotFound: no view of that name (case-blind).

// A rotation, row by row: where the model's x, y and z axis point on the screen, each as right, up and towards the
// viewer.
using ProViewMatrix = std::array<double, 9>;

// Shows the model in that view.
ProError ProViewRetrieve(ProMdl solid, const std::wstring& name);
// Shows it as it stands, in its default orientation.
ProError ProViewReset(ProMdl solid);
// Keeps an orientation under a name; a view of that name gets it, with its second name as it was. Creo keeps the one
// that it shows: an adapter sets the matrix first. ProBadInputs: an empty name, or no rotation (to a thousandth).
ProError ProViewStore(ProMdl solid, const std::wstring& name, const ProViewMatrix& orientation);
// What refers to the view follows. ProExists: another one has the name; ProBadInputs: an empty one; ProGeneralError:
// the view's name is fixed.
ProError ProViewRename(ProMdl solid, const std::wstring& name, const std::wstring& newName);

// ---- of drawings. ProNotFound: the view has gone.

// How a view draws its model; Creo's numbers. byDefault: as the session does.
enum class ProDisplayStyle : int {
  byDefault = 0,
  wireframe = 1,
  hiddenLine = 2,
  noHidden = 3,
  shaded = 4,
  followEnvironment = 5,
  shadedWithEdges = 6,
};
// ProNotFound also for a view without a name.
Got<std::wstring> ProDrawingViewNameGet(const ProView& view);
Got<ProDisplayStyle> ProDrawingViewDisplayGet(const ProView& view);
// Shows after a repaint. ProBadInputs: the style shaded; ProGeneralError: the view is another one's child and shows
// what that does.
ProError ProDrawingViewDisplaySet(const ProView& view, ProDisplayStyle style);

}  // namespace creo
