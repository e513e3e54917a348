#include <algorithm>

#include "headless/geometry/seen.h"
#include "headless/model/drawing.h"
#include "headless/model/models.h"
#include "headless/pictures/drawn_views.h"
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

// ProGeneralError with its line for nothing.
template <class Parts>
Got<Parts> unlessEmpty(const PictureSources& sources, const Model& solid, Got<Parts> shown, bool isEmpty) {
  if (!shown || !isEmpty) return shown;
  sources.models.message(text::format(L"%s.%s has no geometry to show", solid.name, creo::typeExtension(solid.type())));
  return creo::ProGeneralError;
}

// Paper of the picture's shape, its longer side that of A4, which the edges fill but for a margin.
Got<SheetPicture> wires(const PictureSources& sources, const Model& solid, int width, int height) {
  constexpr double kLong = 297, kFilled = 0.9, kLeast = 1e-9;  // mm, but for the share
  const auto placed = placedBodies(sources.bodies, sources.models, solid);
  const auto bodies = unlessEmpty(sources, solid, placed, placed.value.empty());
  if (!bodies) return bodies.error;
  geometry::Sight sight{.bodies = bodies.value, .screen = activeOrientation(solid.document->record), .hidden = true};
  const auto box = sources.bodies.outline(solid, toScreen(sight.screen));
  if (!box) return box.error;
  const double unit = kLong / std::max(width, height);
  SheetPicture paper;
  paper.width = width * unit;
  paper.height = height * unit;
  sight.scale = kFilled * std::min(paper.width / std::max(box.value.max.x - box.value.min.x, kLeast),
                                   paper.height / std::max(box.value.max.y - box.value.min.y, kLeast));
  geometry::Seen seen = geometry::seen(sight);
  if (!seen.reason.empty())
    sources.models.message(text::format(L"%s%s.%s is %s: %s", std::wstring(seen.curves.empty() ? L"" : L"warning: "),
                                        solid.name, creo::typeExtension(solid.type()),
                                        std::wstring(seen.curves.empty() ? L"not printed" : L"printed by facets"),
                                        seen.reason));
  if (seen.curves.empty()) return creo::ProGeneralError;
  for (geometry::SeenCurve& entry : seen.curves) {
    entry.curve = geometry::moved(entry.curve, paper.width / 2, paper.height / 2);
    paper.strokes.push_back(strokeOf(std::move(entry), false));
  }
  return paper;
}

}  // namespace

Got<Image> solidPicture(const PictureSources& sources, const Model& solid, int width, int height) {
  auto parts = shownParts(sources.bodies, sources.models, solid);
  const bool isEmpty = parts.value.parts.empty();
  const auto shown = unlessEmpty(sources, solid, std::move(parts), isEmpty);
  if (!shown) return shown.error;
  return shaded(shown.value.parts, activeOrientation(solid.document->record), width, height);
}

Got<Image> printedPicture(const PictureSources& sources, const Model& model, const std::wstring& textFolder, int width,
                          int height) {
  if (hasSheets(model.type()))
    return sheetImage(sheetPicture(sources, model, currentSheetOf(*model.document)), textFolder, width, height);
  const auto paper = wires(sources, model, width, height);
  if (!paper) return paper.error;
  return sheetImage(paper.value, textFolder, width, height);
}

}  // namespace headless
