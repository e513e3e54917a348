#include "headless/model/raw_placement.h"

#include "headless/store/tables_geometry.h"

namespace headless {

RawJson rawPlacement(const PlacementRecord& placement) {
  constexpr int kDepth = 3;  // in the document
  RawJson raw;
  writeValue(placement, raw.text, kDepth);
  return raw;
}

}  // namespace headless
