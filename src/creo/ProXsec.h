// Cross sections of solids. Nothing here makes one active or visible: actions do that in Creo's dialog. Creo refuses to
// change a read-only solid.
#pragma once

#include "creo/ProFeature.h"
#include "creo/ProState.h"

namespace creo {

// A datum plane's type among features.
constexpr int kDatumPlaneFeature = 923;

// A cross section at a datum plane, or parallel to it, distance in the solid's units. ProExists: another one has the
// name; ProBadInputs: the feature is no datum plane of the solid, or has gone, or a parallel one's name is empty;
// ProGeneralError: an empty name of the other, or a distance that isn't finite. The distance becomes a dimension, which
// the section follows when the solid regenerates, and which goes with it.
Got<ProModelitem> ProXsecPlanarCreate(ProMdl solid, const std::wstring& name, const ProFeature& plane);
Got<ProModelitem> ProXsecParallelCreate(ProMdl solid, const std::wstring& name, const ProFeature& plane,
                                        double distance);
// Combined states don't refer to it any more. ProNotFound: it has gone.
ProError ProXsecDelete(const ProModelitem& section);
// Cross sections made by older releases take on the present form; without any there is nothing to do.
ProError ProXsecOldToNewConvert(ProMdl solid);

}  // namespace creo
