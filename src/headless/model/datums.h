// Coordinate systems, datum points and datum planes: what they are called and where they are.
#pragma once

#include <string>
#include <string_view>

#include "headless/model/model.h"
#include "headless/store/records_geometry.h"

namespace headless {

// Its own name, or that of its feature. Empty: it has none.
std::wstring datumName(const Model& solid, const DatumRecord& datum);
// In the solid's coordinates. Throws MeasureFault, also where its coordinate system has gone.
creo::ProTransform datumPlacement(const Model& solid, const DatumRecord& datum);
// A feature got another name: datums that count in its coordinate system know it by that one.
void csysRenamed(const Model& solid, std::string_view from, std::string_view to);

}  // namespace headless
