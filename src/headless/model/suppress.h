// Features that are suppressed and brought back.
#pragma once

#include <vector>

#include "creo/ProFeature.h"
#include "headless/model/model.h"

namespace headless {

class Models;  // models.h

// As ProFeatureWithoptionsSuppress and ProFeatureResume; creo/ProSurface.h has the results.
creo::ProError suppress(Model& solid, const std::vector<int>& features, creo::ProChildren children);
creo::ProError resume(const Models& models, Model& solid, const std::vector<int>& features, creo::ProParents parents);

}  // namespace headless
