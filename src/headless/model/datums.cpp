#include "headless/model/datums.h"

#include <algorithm>

#include "headless/model/features.h"
#include "headless/model/measures.h"
#include "headless/model/placed.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/letters.h"

namespace headless {

std::wstring datumName(const Model& solid, const DatumRecord& datum) {
  if (!datum.name.empty() || datum.feature == 0) return text::fromUtf8(datum.name);
  const auto feature = featureOf(solid, datum.feature);
  return feature ? featureName(*feature) : std::wstring();
}

creo::ProTransform datumPlacement(const Model& solid, const DatumRecord& datum) {
  Measurer measurer(solid);
  const creo::ProTransform own = measurer.placement(datum.placement.get());
  if (datum.csys.empty()) return own;
  const std::wstring name = text::fromUtf8(datum.csys);
  for (const DatumRecord& csys : solid.document->solid().coordinateSystems)
    if (hasGeometry(solid, csys.feature) && text::equalNoCase(datumName(solid, csys), name))
      return creo::transformed(measurer.placement(csys.placement.get()), own);
  throw MeasureFault{text::format(L"there is no coordinate system %s", name)};
}

void csysRenamed(const Model& solid, std::string_view from, std::string_view to) {
  ModelDocument& document = *solid.document;
  if (from.empty() || document.record.solid.text.empty()) return;
  SolidRecord record = solidRecord(document.record.solid);
  // One of its own name keeps it, whatever its feature is called.
  const bool isOwn = std::any_of(record.coordinateSystems.begin(), record.coordinateSystems.end(),
                                 [&](const DatumRecord& csys) { return sameName(csys.name, from); });
  if (isOwn) return;
  bool changed = false;
  for (auto* list : {&record.points, &record.planes})
    for (DatumRecord& datum : *list) {
      if (datum.csys.empty() || !sameName(datum.csys, from)) continue;
      datum.csys = to;
      changed = true;
    }
  if (!changed) return;
  document.record.solid = rawSolid(record);
  document.solidChanged();
}

}  // namespace headless
