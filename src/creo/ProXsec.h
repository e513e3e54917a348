// Cross sections of solids. No operation makes one active or visible: Creo's dialog does.
#pragma once

#include "creo/ProFeature.h"
#include "creo/ProState.h"

namespace creo {

// A datum plane's type among features.
constexpr int kDatumPlaneFeature = 923;

// A cross section at a datum plane, or parallel to it, distance in the solid's units. ProExists: another one has the
// name; ProBadInputs: the feature is no datum plane of the solid, or has gone; ProGeneralError: an empty name, or
// a distance that isn't finite.
Got<ProModelitem> ProXsecPlanarCreate(ProMdl solid, const std::wstring& name, const ProFeature& plane);
Got<ProModelitem> ProXsecParallelCreate(ProMdl solid, const std::wstring& name, const ProFeature& plane,
                                        double distance);
// Combined states don't refer to it any more. ProNotFound: it has gone.
ProError ProXsecDelete(const ProModelitem& section);
// Cross sections made by older releases take on the present form; without any there is nothing to do.
ProError ProXsecOldToNewConvert(ProMdl solid);

}  // namespace creo
