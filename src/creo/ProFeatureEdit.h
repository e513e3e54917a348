// Features that are made without a choice of references.
#pragma once

#include "creo/ProFeature.h"

namespace creo {

// A coordinate system's type among features; that of a datum plane is kDatumPlaneFeature.
constexpr int kCsysFeature = 979;

// The axis of the model that a default plane is normal to.
enum class ProDefaultPlane : int { x = 0, y = 1, z = 2 };

// Features along the model's own axes, behind the last one, in insert mode at its place. ProExists: a feature has the
// name; ProBadInputs: no solid, no name, or one over 31 characters.
Got<ProFeature> ProDefaultCsysCreate(ProMdl solid, const std::wstring& name);
Got<ProFeature> ProDefaultPlaneCreate(ProMdl solid, const std::wstring& name, ProDefaultPlane plane);

}  // namespace creo
