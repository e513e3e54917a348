#include "headless/model/drawing.h"
#include "headless/pictures/model_picture.h"
#include "headless/pictures/shown_parts.h"
#include "headless/session/state.h"

namespace headless {

using creo::Got;

namespace {

creo::ProTransform activeOrientation(const ModelRecord& record) {
  for (const ViewRecord& view : record.views)
    if (view.name == record.activeView)
      if (const auto orientation = orientationOf(view)) return *orientation;
  return kTrimetric;
}

}  // namespace

Got<Image> solidPicture(Bodies& bodies, const Models& models, const Model& solid, int width, int height) {
  const auto shown = shownParts(bodies, models, solid, kShadedTurn);
  if (!shown) return shown.error;
  return shaded(shown.value.parts, activeOrientation(solid.document->record), width, height);
}

Got<Image> modelPicture(Session::State& state, const Model& model, int width, int height) {
  if (!hasSheets(model.type())) return solidPicture(state.bodies, state.models, model, width, height);
  const SheetPicture sheet = sheetPicture(state, model, currentSheetOf(*model.document));
  return sheetImage(sheet, state.options.textFolder, width, height);
}

}  // namespace headless
