// Features that are suppressed and brought back.
#pragma once

#include <vector>

#include "headless/model/model.h"

namespace headless {

// Suppresses features, or brings suppressed ones back; creo/ProSurface.h has the results.
creo::ProError suppress(Model& solid, const std::vector<int>& features, bool away);

}  // namespace headless
