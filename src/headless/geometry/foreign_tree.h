// Inside this folder, for kelvane-import: documents of the library become trees of parts and assemblies.
#pragma once

#include "headless/geometry/exchange.h"
#include "headless/geometry/foreign_load.h"

namespace headless::geometry {

// The bodies stand as texts. Throws ShapeFault where there is none, or one that can't be relied on.
ExchangeRead foreignTree(const ExchangeDocument& document, const Loaded& loaded, ExchangeFormat format, ImportAs as);

}  // namespace headless::geometry
