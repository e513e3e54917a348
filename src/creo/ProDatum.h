// Coordinate systems and datum points of solids, and where an assembly's components stand. Every operation gives
// ProBadInputs for a model that is no solid.
#pragma once

#include "creo/ProTransform.h"
#include "creo/ProTypes.h"

namespace creo {

// Both are known by their place among their kind.
struct ProCsys {
  ProMdl owner;
  int id = 0;
};
struct ProDatumPoint {
  ProMdl owner;
  int id = 0;
};

// In the model's order, without those whose feature is suppressed or that Creo keeps to itself. ProNotFound: there are
// none.
ProError ProSolidCsysVisit(ProMdl solid, Visitor<ProCsys> visitor);
ProError ProSolidDatumPointVisit(ProMdl solid, Visitor<ProDatumPoint> visitor);
// ProNotFound, here and below: it has gone. A name may be empty.
Got<std::wstring> ProCsysNameGet(const ProCsys& csys);
Got<std::wstring> ProDatumPointNameGet(const ProDatumPoint& point);
// Its axes and origin in the model's coordinates. ProGeneralError, also of a point: a number of it can't be worked out,
// the message area says why.
Got<ProTransform> ProCsysDataGet(const ProCsys& csys);
Got<ProVector> ProDatumPointGet(const ProDatumPoint& point);

// Leads from the coordinates of the component at the end of a path to those of the assembly at its top. path: ids of
// component features, from the top assembly down. ProNotFound: the path doesn't lead to a component that isn't
// suppressed, or a model on it is missing.
Got<ProTransform> ProAsmcomppathTrfGet(ProMdl top, const std::vector<int>& path);

}  // namespace creo
