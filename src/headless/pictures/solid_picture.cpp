#include <algorithm>

#include "headless/model/drawing.h"
#include "headless/model/models.h"
#include "headless/pictures/model_picture.h"
#include "headless/pictures/projection.h"
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

Got<ShownParts> partsToSee(const PictureSources& sources, const Model& solid, double turn) {
  auto shown = shownParts(sources.bodies, sources.models, solid, turn);
  if (!shown || !shown.value.parts.empty()) return shown;
  sources.models.message(text::format(L"%s.%s has no geometry to show", solid.name, creo::typeExtension(solid.type())));
  return creo::ProGeneralError;
}

// Paper of the picture's shape, its longer side that of A4, which the edges fill but for a margin.
SheetPicture wires(const ShownParts& shown, const ModelRecord& record, int width, int height) {
  constexpr double kLong = 297, kFilled = 0.9, kPen = 0.18, kLeast = 1e-9;  // mm, but for the share
  const double unit = kLong / std::max(width, height);
  SheetPicture paper;
  paper.width = width * unit;
  paper.height = height * unit;
  const Projection seen = projection(shown.parts, activeOrientation(record));
  const double scale =
      kFilled * std::min(paper.width / std::max(seen.width, kLeast), paper.height / std::max(seen.height, kLeast));
  const auto x = [&](double place) { return paper.width / 2 + place * scale; };
  const auto y = [&](double place) { return paper.height / 2 + place * scale; };
  for (const ProjectedLine& line : seen.lines)
    paper.lines.push_back({x(line.x1), y(line.y1), x(line.x2), y(line.y2), kPen, 0, SheetPart::views});
  return paper;
}

}  // namespace

Got<Image> solidPicture(const PictureSources& sources, const Model& solid, int width, int height) {
  const auto shown = partsToSee(sources, solid, kShadedTurn);
  if (!shown) return shown.error;
  return shaded(shown.value.parts, activeOrientation(solid.document->record), width, height);
}

Got<Image> printedPicture(const PictureSources& sources, const Model& model, const std::wstring& textFolder, int width,
                          int height) {
  if (hasSheets(model.type()))
    return sheetImage(sheetPicture(sources, model, currentSheetOf(*model.document)), textFolder, width, height);
  const auto shown = partsToSee(sources, model, kDrawnTurn);
  if (!shown) return shown.error;
  return sheetImage(wires(shown.value, model.document->record, width, height), textFolder, width, height);
}

}  // namespace headless
