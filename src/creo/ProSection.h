// Sketches of features.
#pragma once

#include "creo/ProFeature.h"

namespace creo {

struct ProSection {
  ProFeature feature;
  int number = 0;  // from 0
};
// ProNotFound: the feature has no such sketch, or it can't be had, such as a trajectory that was chosen.
Got<ProSection> ProFeatureSectionCopy(const ProFeature& feature, int number);
// Such as "S2D0001". ProNotFound: the sketch has gone.
Got<std::wstring> ProSectionNameGet(const ProSection& section);

}  // namespace creo
