#include "creo/ProSolid.h"

#include "headless/creo/operation.h"
#include "text/encoding.h"

namespace creo {

using headless::Model;
using headless::onModel;
using State = headless::Session::State;

ProError ProSolidDimensionVisit(ProMdl solid, bool reference, Visitor<ProDimension> visitor) {
  return onModel("ProSolidDimensionVisit", solid, [&](State&, Model& m) -> ProError {
    if (m.type() != ProMdlType::part && m.type() != ProMdlType::assembly) return ProBadInputs;
    std::vector<ProDimension> dimensions;
    for (const headless::DimensionRecord& one : m.document->record.dimensions)
      if (one.reference == reference) dimensions.push_back({m.handle, one.id, reference});
    return headless::visit<ProDimension>(dimensions, visitor);
  });
}

Got<std::wstring> ProDimensionSymbolGet(const ProDimension& dimension) {
  return onModel("ProDimensionSymbolGet", dimension.owner, [&](State&, Model& m) -> Got<std::wstring> {
    const headless::DimensionRecord* found = m.document->dimension(dimension.id, dimension.reference);
    if (!found) return ProNotFound;
    if (found->symbol.empty()) return (dimension.reference ? L"rd" : L"d") + std::to_wstring(dimension.id);
    return text::fromUtf8(found->symbol);
  });
}

}  // namespace creo
