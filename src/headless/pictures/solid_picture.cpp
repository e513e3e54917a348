#include <algorithm>
#include <map>
#include <tuple>
#include <utility>

#include "headless/geometry/seen.h"
#include "headless/model/drawing.h"
#include "headless/model/models.h"
#include "headless/pictures/drawn_views.h"
#include "headless/pictures/model_picture.h"
#include "headless/pictures/shown_parts.h"
#include "headless/pictures/view_cut.h"
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

// What the bodies take of the screen as they stand, which an exploded state or a style may have changed. Each is
// measured once for each way that it is turned.
geometry::FlatBox boxOf(const geometry::Sight& sight) {
  using Key = std::tuple<const geometry::Body*, double, double, double, double, double, double>;
  std::map<Key, creo::ProOutline> known;
  geometry::FlatBox box;
  for (const geometry::PlacedBody& entry : sight.bodies) {
    creo::ProTransform turned = creo::transformed(toScreen(sight.screen), entry.place);
    const creo::ProVector at = std::exchange(turned.origin, {}), &x = turned.xAxis, &z = turned.zAxis;
    const auto [measured, isNew] = known.try_emplace(Key{entry.body.get(), x.x, x.y, x.z, z.x, z.y, z.z});
    if (isNew) measured->second = geometry::outline(*entry.body, turned);
    for (const creo::ProVector& corner : {measured->second.min, measured->second.max})
      box.take(geometry::FlatPoint{at.x + entry.scale * corner.x, at.y + entry.scale * corner.y});
  }
  return box;
}

}  // namespace

Got<Image> solidPicture(const PictureSources& sources, const Model& solid, int width, int height) {
  auto parts = shownParts(sources.bodies, sources.models, solid);
  const bool isEmpty = parts.value.parts.empty();
  const auto shown = unlessEmpty(sources, solid, std::move(parts), isEmpty);
  if (!shown) return shown.error;
  const creo::ProTransform screen = activeOrientation(solid.document->record);
  return shaded(shown.value.parts, screen, width, height, activeCut(sources.models, solid, screen));
}

Got<SheetPicture> solidLines(const PictureSources& sources, const Model& solid, const creo::ProTransform& screen,
                             double width, double height, bool hidden) {
  constexpr double kFilled = 0.9, kLeast = 1e-9;  // of the paper; mm
  const auto placed = placedParts(sources.bodies, sources.models, solid, PlacedFor::solid);
  const auto bodies = unlessEmpty(sources, solid, placed, placed.value.bodies.empty());
  if (!bodies) return bodies.error;
  geometry::Sight sight{.bodies = bodies.value.bodies, .screen = screen, .hidden = hidden};
  const geometry::FlatBox box = boxOf(sight);
  sight.cut = activeCut(sources.models, solid, screen);
  SheetPicture paper;
  paper.width = width;
  paper.height = height;
  sight.scale =
      kFilled * std::min(width / std::max(box.right - box.left, kLeast), height / std::max(box.high - box.low, kLeast));
  geometry::Seen seen = geometry::seen(sight);
  if (!seen.reason.empty())
    sources.models.message(text::format(L"%s%s.%s is %s: %s", std::wstring(seen.curves.empty() ? L"" : L"warning: "),
                                        solid.name, creo::typeExtension(solid.type()),
                                        std::wstring(seen.curves.empty() ? L"not drawn" : L"drawn by facets"),
                                        seen.reason));
  if (seen.curves.empty()) return creo::ProGeneralError;
  for (geometry::SeenCurve& entry : seen.curves) {
    entry.curve = geometry::moved(entry.curve, width / 2, height / 2);
    paper.strokes.push_back(strokeOf(std::move(entry), false));
  }
  for (const SheetHatch& hatch : hatchesOf(seen.cuts, bodies.value.parts))
    for (const SheetStroke& stroke : strokesOf(hatch))
      paper.strokes.push_back({geometry::moved(stroke.curve, width / 2, height / 2), stroke.pen});
  return paper;
}

Got<Image> printedPicture(const PictureSources& sources, const Model& model, const std::wstring& textFolder, int width,
                          int height) {
  if (hasSheets(model.type()))
    return sheetImage(sheetPicture(sources, model, currentSheetOf(*model.document)), textFolder, width, height);
  constexpr double kLong = 297;  // mm: the longer side of A4
  const double unit = kLong / std::max(width, height);
  const auto paper =
      solidLines(sources, model, activeOrientation(model.document->record), width * unit, height * unit, true);
  if (!paper) return paper.error;
  return sheetImage(paper.value, textFolder, width, height);
}

}  // namespace headless
