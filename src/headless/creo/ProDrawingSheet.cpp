// The sheets of drawings.
#include <algorithm>
#include <cmath>
#include <limits>

#include "creo/ProDrawing.h"
#include "creo/ProDrawingSheet.h"
#include "headless/creo/drawing_operation.h"
#include "headless/model/detour.h"
#include "text/encoding.h"

namespace creo {

using headless::Model;
using headless::onDrawing;
using headless::onSheet;
using headless::onSheetOrCurrent;
using headless::SheetRecord;
using State = headless::Session::State;

namespace {

int wholeUnits(double measure) {
  constexpr double kMost = std::numeric_limits<int>::max();
  return static_cast<int>(std::clamp(std::round(measure), -kMost, kMost));
}

}  // namespace

Got<int> ProDrawingSheetsCount(ProMdl drawing) {
  return onDrawing("ProDrawingSheetsCount", drawing,
                   [](State&, Model& m) -> Got<int> { return headless::sheetCount(*m.document); });
}

Got<int> ProDrawingCurrentSheetGet(ProMdl drawing) {
  return onDrawing("ProDrawingCurrentSheetGet", drawing,
                   [](State&, Model& m) -> Got<int> { return headless::currentSheetOf(*m.document); });
}

ProError ProDrawingCurrentSheetSet(ProMdl drawing, int sheet) {
  return onSheet("ProDrawingCurrentSheetSet", drawing, sheet, [&](State&, Model& m, const SheetRecord&) -> ProError {
    if (headless::currentSheetOf(*m.document) == sheet) return ProNoError;
    headless::showSheet(m, sheet);
    return ProNoError;
  });
}

Got<std::wstring> ProDrawingSheetNameGet(ProMdl drawing, int sheet) {
  return onSheet("ProDrawingSheetNameGet", drawing, sheet,
                 [&](State&, Model&, const SheetRecord& record) -> Got<std::wstring> {
                   return headless::sheetName(record, sheet);
                 });
}

Got<ProSheetDimensions> ProDrawingSheetSizeGet(ProMdl drawing, int sheet) {
  return onSheet("ProDrawingSheetSizeGet", drawing, sheet,
                 [](State&, Model&, const SheetRecord& record) -> Got<ProSheetDimensions> {
                   return headless::sheetDimensions(record);
                 });
}

Got<ProSheetInfo> ProDrawingSheetInfoGet(ProMdl drawing, int sheet) {
  return onSheet("ProDrawingSheetInfoGet", drawing, sheet,
                 [](State&, Model&, const SheetRecord& record) -> Got<ProSheetInfo> {
                   const ProSheetDimensions size = headless::sheetDimensions(record);
                   return ProSheetInfo{wholeUnits(size.width), wholeUnits(size.height)};
                 });
}

Got<ProSheetMatrix> ProDrawingSheetTrfGet(ProMdl drawing, int sheet) {
  return onSheet("ProDrawingSheetTrfGet", drawing, sheet,
                 [](State&, Model&, const SheetRecord& record) -> Got<ProSheetMatrix> {
                   if (!record.matrix) return ProSheetMatrix{};
                   const headless::SheetMatrixRecord& matrix = *record.matrix;
                   return ProSheetMatrix{matrix.scaleX, matrix.scaleY, matrix.offsetX, matrix.offsetY};
                 });
}

Got<double> ProDrawingScaleGet(ProMdl drawing, ProMdl solid, int sheet) {
  return onSheetOrCurrent("ProDrawingScaleGet", drawing, sheet, [&](State& state, Model& m, int number) -> Got<double> {
    if (!solid) {
      const auto current = headless::currentModelOf(m);
      return current ? headless::scaleOnSheet(*m.document, number, current->name, current->type) : 1.0;
    }
    const Model* shown = state.models.find(solid);
    if (!shown) return ProBadInputs;
    const auto models = headless::dependencies(m);
    if (std::none_of(models.begin(), models.end(),
                     [&](const ProDependency& used) { return used.name == shown->name && used.type == shown->type(); }))
      return ProGeneralError;
    return headless::scaleOnSheet(*m.document, number, shown->name, shown->type());
  });
}

ProError ProDrawingSheetScaleSet(ProMdl drawing, int sheet, double scale) {
  return onSheetOrCurrent("ProDrawingSheetScaleSet", drawing, sheet, [&](State&, Model& m, int number) -> ProError {
    if (!std::isfinite(scale) || scale <= 0) return ProBadInputs;
    if (headless::sheetOf(*m.document, number)->scale == scale) return ProNoError;
    auto& sheets = m.document->record.sheets;
    if (sheets.empty()) sheets.emplace_back();
    sheets[static_cast<std::size_t>(number) - 1].scale = scale;
    m.document->touch(nullptr);
    return ProNoError;
  });
}

Got<std::wstring> ProDrawingFormatGet(ProMdl drawing, int sheet) {
  return onSheet("ProDrawingFormatGet", drawing, sheet,
                 [](State&, Model&, const SheetRecord& record) -> Got<std::wstring> {
                   if (record.format.empty()) return ProNotFound;
                   return text::fromUtf8(record.format);
                 });
}

}  // namespace creo
