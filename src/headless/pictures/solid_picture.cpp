#include "headless/model/drawing.h"
#include "headless/model/models.h"
#include "headless/pictures/model_picture.h"
#include "headless/pictures/shown_parts.h"
#include "text/format.h"

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
  if (shown.value.parts.empty()) return creo::ProNotFound;
  return shaded(shown.value.parts, activeOrientation(solid.document->record), width, height);
}

Got<Image> modelPicture(const PictureSources& sources, const Model& model, const std::wstring& textFolder, int width,
                        int height) {
  if (!hasSheets(model.type())) {
    auto picture = solidPicture(sources.bodies, sources.models, model, width, height);
    if (picture.error != creo::ProNotFound) return picture;
    sources.models.message(
        text::format(L"%s.%s has no geometry to show", model.name, creo::typeExtension(model.type())));
    return creo::ProGeneralError;
  }
  const SheetPicture sheet = sheetPicture(sources, model, currentSheetOf(*model.document));
  return sheetImage(sheet, textFolder, width, height);
}

}  // namespace headless
