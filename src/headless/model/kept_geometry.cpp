#include "headless/model/kept_geometry.h"

#include "headless/store/tables_geometry.h"

namespace headless {
namespace {

// level: how deep it stands in the document.
template <class Record>
RawJson written(const Record& record, int level) {
  RawJson raw;
  writeValue(record, raw.text, level);
  return raw;
}

}  // namespace

RawJson keptSolid(const SolidRecord& solid) { return written(solid, 1); }

RawJson keptPlacement(const PlacementRecord& placement) { return written(placement, 3); }

}  // namespace headless
