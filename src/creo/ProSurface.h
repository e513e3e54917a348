// The surfaces of a part's body, the box around a solid in any axes, and the features that can be put away meanwhile.
#pragma once

#include <memory>
#include <span>
#include <vector>

#include "creo/ProFeature.h"
#include "creo/ProSolid.h"
#include "creo/ProTransform.h"
#include "creo/ProTypes.h"

namespace creo {

// Creo's numbers, as far as anybody asks for them.
enum class ProSurfaceType : int { other = 0, plane = 34 };

// A surface tells what it was when it was visited, whatever became of the part since.
struct ProSurface {
  ProMdl owner;
  int id = 0;  // from 1
  std::shared_ptr<const void> shape;
};

// In the body's order. ProBadInputs, here and below: no part, or its model has gone; ProNotFound: there is no body;
// ProGeneralError: it can't be built, the message area says why, or the part has several bodies.
ProError ProSolidSurfaceVisit(ProMdl part, Visitor<ProSurface> visitor);
Got<ProSurfaceType> ProSurfaceTypeGet(const ProSurface& surface);
// A plane's: its origin, z out of the body, x along the longest straight edge. ProNotFound: it is no plane.
Got<ProTransform> ProSurfaceDataGet(const ProSurface& surface);
// Of a cylinder or a sphere. ProNotFound: the surface has none.
Got<double> ProSurfaceDiameterEval(const ProSurface& surface);

// The transform of these axes and this origin. ProBadInputs: the axes aren't perpendicular, of length 1 and
// right-handed.
Got<ProTransform> ProMatrixInit(const ProVector& x, const ProVector& y, const ProVector& z, const ProVector& origin);
// The smallest box around a solid, in the coordinates that `into` leads to from the model's own. excludes: Creo's
// numbers, from 1, of the kinds of entities beside the body that don't count; datums that aren't among them do. Results
// as those of ProSolidOutlineGet.
Got<ProOutline> ProSolidOutlineCompute(ProMdl solid, const ProTransform& into, std::span<const int> excludes);

// Suppresses features, and brings suppressed ones back. In an instance whose row decides on a feature the row's value
// changes, else the generic's feature. Nothing is changed unless all can be. ProNotFound: a feature has gone;
// ProBadInputs: a component that is no entry of the document's features; ProGeneralError, of ProFeatureResume alone:
// one of them isn't suppressed, or a parent of it is that doesn't come back, the message area says which.
ProError ProFeatureWithoptionsSuppress(ProMdl solid, const std::vector<int>& features,
                                       ProChildren children = ProChildren::stay);
ProError ProFeatureResume(ProMdl solid, const std::vector<int>& features, ProParents parents = ProParents::mustBeThere);

}  // namespace creo
