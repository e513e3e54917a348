#include "creo/ProDrawingFormat.h"

#include <algorithm>

#include "headless/creo/drawing_operation.h"
#include "headless/model/formats.h"

namespace creo {

using headless::Model;
using headless::onSheetOrCurrent;
using headless::SheetRecord;
using State = headless::Session::State;

namespace {

ProError setBlanked(Model& drawing, int sheet, bool blanked) {
  auto& sheets = drawing.document->record.sheets;
  if (sheets.empty()) sheets.emplace_back();
  SheetRecord& record = sheets[static_cast<std::size_t>(sheet - 1)];
  if (record.formatBlanked == blanked) return ProNoError;
  record.formatBlanked = blanked;
  drawing.document->touch(nullptr);
  return ProNoError;
}

// From 1, as texts name the drawing's models; 0 where it has one or none, so that texts needn't tell. Nothing: the
// drawing doesn't show that model.
std::optional<int> numberOf(const Model& drawing, const Model& solid) {
  const auto models = headless::dependencies(drawing);
  const auto found = std::find_if(models.begin(), models.end(), [&](const ProDependency& used) {
    return used.name == solid.name && used.type == solid.type();
  });
  if (found == models.end()) return std::nullopt;
  return models.size() > 1 ? static_cast<int>(found - models.begin()) + 1 : 0;
}

// No drawing stands for the one in the current window.
ProMdl orCurrent(ProMdl drawing) {
  if (drawing) return drawing;
  const State& state = headless::Session::current().state();
  return state.windows.model(state.windows.current());
}

}  // namespace

Got<bool> ProDrawingSheetFormatIsBlanked(ProMdl drawing, int sheet) {
  return onSheetOrCurrent("ProDrawingSheetFormatIsBlanked", orCurrent(drawing), sheet,
                          [](State&, Model& m, int number) -> Got<bool> {
                            const SheetRecord& record = *headless::sheetOf(*m.document, number);
                            return record.formatBlanked && !record.format.empty();
                          });
}

ProError ProDrawingSheetFormatShow(ProMdl drawing, int sheet) {
  return onSheetOrCurrent("ProDrawingSheetFormatShow", orCurrent(drawing), sheet,
                          [](State&, Model& m, int number) { return setBlanked(m, number, false); });
}

ProError ProDrawingSheetFormatHide(ProMdl drawing, int sheet) {
  return onSheetOrCurrent("ProDrawingSheetFormatHide", orCurrent(drawing), sheet,
                          [](State&, Model& m, int number) { return setBlanked(m, number, true); });
}

ProError ProDrawingFormatAdd(ProMdl drawing, int sheet, ProMdl solid, ProMdl source, int sourceSheet) {
  const auto add = [&](State& state, Model& m, int number) -> ProError {
    const Model* from = state.models.find(source);
    if (!from || !headless::hasSheets(from->type())) return ProBadInputs;
    int ofTexts = 0;
    if (solid) {
      const Model* shown = state.models.find(solid);
      const auto found = shown ? numberOf(m, *shown) : std::nullopt;
      if (!found) return ProBadInputs;
      ofTexts = *found;
    }
    return headless::takeFormat(m, number, *from, std::max(sourceSheet, 0), ofTexts);
  };
  return onSheetOrCurrent("ProDrawingFormatAdd", orCurrent(drawing), sheet, add);
}

}  // namespace creo
