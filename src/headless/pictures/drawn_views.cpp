#include "headless/pictures/drawn_views.h"

#include <cmath>

#include "headless/geometry/seen.h"
#include "headless/model/models.h"
#include "headless/model/units.h"
#include "headless/pictures/shown_parts.h"
#include "headless/store/names.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/letters.h"

namespace headless {

using creo::ProTransform;

namespace {

// Creo's numbers of how a view draws its model; the others hide what lies behind.
constexpr int kWireframe = 1, kHiddenLines = 2;

const Model* modelOf(const Models& models, const ViewRecord& view) {
  const auto file = documentFile(text::fromUtf8(view.model));
  if (!file) return nullptr;
  const auto handle = models.inMemory(modelName(file->name).name, file->type);
  return handle ? models.find(handle.value) : nullptr;
}

std::wstring label(const Model& model) { return text::format(L"%s.%s", model.name, creo::typeExtension(model.type())); }

// What views are called that show a model from one of its sides; "FRONT" is the model as it stands.
std::optional<ProTransform> usualOrientation(std::wstring_view name) {
  struct Side {
    std::wstring_view name;
    ProTransform axes;
  };
  constexpr ProTransform kFront{}, kBack{{-1, 0, 0}, {0, 1, 0}, {0, 0, -1}, {}},
      kTop{{1, 0, 0}, {0, 0, -1}, {0, 1, 0}, {}}, kBottom{{1, 0, 0}, {0, 0, 1}, {0, -1, 0}, {}},
      kRight{{0, 0, -1}, {0, 1, 0}, {1, 0, 0}, {}}, kLeft{{0, 0, 1}, {0, 1, 0}, {-1, 0, 0}, {}};
  static constexpr Side kSides[] = {{L"FRONT", kFront},         {L"BACK", kBack},     {L"TOP", kTop},
                                    {L"BOTTOM", kBottom},       {L"RIGHT", kRight},   {L"SIDE", kRight},
                                    {L"LEFT", kLeft},           {L"ISO", kTrimetric}, {L"ISOMETRIC", kTrimetric},
                                    {L"TRIMETRIC", kTrimetric}, {L"3D", kTrimetric}};
  for (const Side& side : kSides)
    if (text::equalNoCase(side.name, name)) return side.axes;
  return std::nullopt;
}

// The view's own matrix, else that of the model's view of this name, else the side that the name tells.
ProTransform orientationFor(const ViewRecord& view, const ModelRecord& model) {
  if (const auto own = orientationOf(view)) return *own;
  for (const ViewRecord& record : model.views)
    if (sameName(record.name, view.name))
      if (const auto saved = orientationOf(record)) return *saved;
  return usualOrientation(text::fromUtf8(view.name)).value_or(ProTransform{});
}

}  // namespace

SheetStroke strokeOf(geometry::SeenCurve seen, bool isWire) {
  using geometry::SeenAs;
  if (isWire && seen.as == SeenAs::hidden) seen.as = SeenAs::edge;
  static constexpr LineKind kKinds[geometry::kSeenKinds] = {LineKind::visible, LineKind::smooth, LineKind::hidden,
                                                            LineKind::axis};
  return {std::move(seen.curve),
          {.width = seen.as == SeenAs::edge ? kWidePen : kNarrowPen,
           .part = SheetPart::views,
           .kind = kKinds[static_cast<std::size_t>(seen.as)]}};
}

const std::vector<geometry::PlacedBody>& ShownModels::find(const Model& model) {
  const auto [known, isNew] = models_.try_emplace(model.handle);
  if (isNew)
    if (auto bodies = placedBodies(sources_.bodies, sources_.models, model)) known->second = std::move(bodies.value);
  return known->second;
}

void ShownModels::tell(const std::wstring& text) const { sources_.models.message(text); }
void ShownModels::warn(const std::wstring& text) const { tell(L"warning: " + text); }

std::optional<ViewPlane> planeOf(const Models& models, const ViewRecord& view, double sheetScale) {
  const Model* model = modelOf(models, view);
  if (!model) return std::nullopt;
  const ModelRecord& record = model->document->record;
  const double scale = std::fabs(view.scale != 0 ? view.scale : sheetScale) / inSystem(1, "mm", record);
  if (!(scale > 0) || !std::isfinite(scale)) return std::nullopt;
  return ViewPlane{model, orientationFor(view, record), scale};
}

std::optional<DrawnView> DrawnViews::draw(const ViewRecord& view, double scale) {
  const auto plane = planeOf(inMemory_, view, scale);
  if (!plane) return std::nullopt;
  const Model* model = plane->model;
  geometry::Sight sight;
  sight.bodies = models_.find(*model);
  sight.screen = plane->screen;
  sight.scale = plane->scale;
  if (sight.bodies.empty()) return std::nullopt;
  const bool isWire = view.displayStyle == kWireframe;
  sight.hidden = isWire || view.displayStyle == kHiddenLines;
  sight.axes = true;
  geometry::Seen seen = geometry::seen(sight);
  const std::wstring name =
      text::format(L"the view %s of %s in %s", text::fromUtf8(view.name), label(*model), label(drawing_));
  if (seen.curves.empty()) {
    models_.tell(text::format(L"%s can't be drawn: %s", name, seen.reason));
    return std::nullopt;
  }
  if (!(seen.width <= width_) || !(seen.height <= height_)) return std::nullopt;
  if (seen.isFaceted) models_.warn(text::format(L"%s is drawn by facets: %s", name, seen.reason));
  if (seen.corrected > 0)
    models_.warn(
        text::format(L"%s: %d lines that lie behind faces were taken for visible and put right", name, seen.corrected));
  DrawnView drawn{seen.width, seen.height, {}, seen.isFaceted};
  for (geometry::SeenCurve& entry : seen.curves) drawn.strokes.push_back(strokeOf(std::move(entry), isWire));
  return drawn;
}

}  // namespace headless
