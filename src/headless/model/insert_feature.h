// Where new features come.
#pragma once

#include "headless/model/document.h"

namespace headless {

// An id that no feature has.
int freeFeatureId(ModelDocument& document);
// Puts a feature behind the last one, or, in insert mode, at its place, behind which the next one comes. It gets its
// number and, where it has none, an id.
FeatureRecord& insertFeature(ModelDocument& document, FeatureRecord added);

}  // namespace headless
