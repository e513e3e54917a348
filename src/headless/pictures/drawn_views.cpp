#include "headless/pictures/drawn_views.h"

#include <algorithm>
#include <cmath>

#include "headless/geometry/seen.h"
#include "headless/model/drawing.h"
#include "headless/model/models.h"
#include "headless/model/units.h"
#include "headless/pictures/view_cut.h"
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

const PlacedParts& ShownModels::find(const Model& model, PlacedFor purpose) {
  const auto [known, isNew] = models_.try_emplace({model.handle, purpose});
  if (isNew)
    if (auto parts = placedParts(sources_.bodies, sources_.models, model, purpose))
      known->second = std::move(parts.value);
  return known->second;
}

void ShownModels::tell(const std::wstring& text) const { sources_.models.message(text); }
void ShownModels::warn(const std::wstring& text) const { tell(L"warning: " + text); }

std::optional<ViewPlane> planeOf(const Models& models, const ViewRecord& view, double sheetScale) {
  const Model* model = modelOf(models, view);
  // What is enlarged or broken has no one plane.
  if (!model || view.detailOf != 0 || !view.breaks.empty()) return std::nullopt;
  const ModelRecord& record = model->document->record;
  const double scale = std::fabs(view.scale != 0 ? view.scale : sheetScale) / inSystem(1, "mm", record);
  if (!(scale > 0) || !std::isfinite(scale)) return std::nullopt;
  return ViewPlane{model, orientationFor(view, record), scale};
}

struct DrawnViews::Asked {
  const Model* model = nullptr;
  const ViewRecord* shown = nullptr;  // the view itself, or the one that it enlarges
  geometry::Sight sight;
  const std::vector<const Model*>* parts = nullptr;
  std::wstring notCut;  // why the cross section that it names doesn't cut it
};

std::wstring DrawnViews::nameOf(const ViewRecord& view, const Model& model) const {
  return text::format(L"the view %s of %s in %s", text::fromUtf8(view.name), label(model), label(drawing_));
}
// The view that a detail enlarges may stand on another sheet.
double DrawnViews::scaleOf(const ViewRecord& view) const {
  const SheetRecord* sheet = sheetOf(*drawing_.document, std::max(view.sheet, 1));
  return std::fabs(view.scale != 0 ? view.scale : sheet ? sheet->scale : scale_);
}

const ViewRecord* DrawnViews::viewOf(int id) const {
  const auto& views = drawing_.document->record.views;
  const auto found = std::ranges::find(views, id, &ViewRecord::id);
  return id == 0 || found == views.end() ? nullptr : &*found;
}

std::optional<DrawnViews::Asked> DrawnViews::ask(const ViewRecord& view) {
  const ViewRecord* shown = view.detailOf == 0 ? &view : viewOf(view.detailOf);
  const Model* model = shown ? modelOf(inMemory_, *shown) : nullptr;
  // A detail is as much larger as its scale is.
  if (!model || !(scaleOf(*shown) > 0)) return std::nullopt;
  const ModelRecord& record = model->document->record;
  const PlacedParts& parts = models_.find(*model, view.teeth ? PlacedFor::sheetWithTeeth : PlacedFor::sheet);
  Asked asked{model, shown, {}, &parts.parts, {}};
  geometry::Sight& sight = asked.sight;
  sight.bodies = parts.bodies;
  sight.screen = orientationFor(*shown, record);
  sight.scale = scaleOf(view) / inSystem(1, "mm", record);
  sight.hidden = view.displayStyle == kWireframe || view.displayStyle == kHiddenLines;
  sight.axes = true;
  if (sight.bodies.empty() || !(sight.scale > 0) || !std::isfinite(sight.scale)) return std::nullopt;
  if (!shown->section.empty()) cut(asked);
  return asked;
}

void DrawnViews::cut(Asked& asked) const {
  geometry::Sight& sight = asked.sight;
  const SectionPlane plane = sectionPlane(*asked.model, asked.shown->section);
  if (plane.cut) sight.cut = towardsViewer(*plane.cut, sight.screen);
  if (!sight.cut) asked.notCut = plane.cut ? std::wstring(L"it sees the plane on its edge") : plane.fault;
  for (geometry::PlacedBody& body : sight.bodies) {
    const std::wstring own = label(*(*asked.parts)[static_cast<std::size_t>(body.number)]);
    body.isCut = std::ranges::none_of(
        asked.shown->uncut, [&](const std::string& name) { return text::equalNoCase(text::fromUtf8(name), own); });
  }
}

void DrawnViews::prepare(const std::vector<const ViewRecord*>& views) {
  if (views.size() < 2) return;
  geometry::readyToSeeAhead();
  std::vector<geometry::Sight> sights;
  for (const ViewRecord* view : views)
    if (auto asked = ask(*view)) sights.push_back(std::move(asked->sight));
  geometry::seeAhead(sights);
}

std::optional<DrawnView> DrawnViews::draw(const ViewRecord& view) {
  const auto asked = ask(view);
  if (!asked) return std::nullopt;
  const std::wstring name = nameOf(view, *asked->model);
  if (!asked->notCut.empty()) models_.warn(text::format(L"%s isn't cut: %s", name, asked->notCut));
  geometry::Seen seen = geometry::seen(asked->sight);
  if (seen.curves.empty()) {
    models_.tell(text::format(L"%s can't be drawn: %s", name, seen.reason));
    return std::nullopt;
  }
  const bool isWhole = view.detailOf == 0 && view.breaks.empty();
  if (isWhole && (!(seen.width <= width_) || !(seen.height <= height_))) return std::nullopt;
  if (seen.isFaceted) models_.warn(text::format(L"%s is drawn by facets: %s", name, seen.reason));
  if (seen.corrected > 0)
    models_.warn(
        text::format(L"%s: %d lines that lie behind faces were taken for visible and put right", name, seen.corrected));
  DrawnView drawn{seen.width, seen.height, seen.middle, {}, {}, seen.isFaceted};
  for (geometry::SeenCurve& entry : seen.curves)
    drawn.lines.strokes.push_back(strokeOf(std::move(entry), view.displayStyle == kWireframe));
  finish(drawn, view, *asked, seen);
  return drawn;
}

void DrawnViews::finish(DrawnView& drawn, const ViewRecord& view, const Asked& asked,
                        const geometry::Seen& seen) const {
  const ViewRecord& shown = *asked.shown;
  const bool isDetail = view.detailOf != 0;
  ViewLines& lines = drawn.lines;
  lines.hatches = hatchesOf(seen.cuts, *asked.parts);
  for (SheetHatch& hatch : lines.hatches) {
    hatch.pen.isOfArea = !isDetail && view.breaks.empty();
    for (SheetStroke& stroke : strokesOf(hatch)) lines.strokes.push_back(std::move(stroke));
  }
  if (isDetail) {
    const double larger = scaleOf(view) / scaleOf(shown) * unit_;
    keepCircle(lines, {view.centre.x * larger, view.centre.y * larger}, view.radius * larger);
    drawn.width = drawn.height = 2 * view.radius * larger;
    drawn.label = detailLabel(text::fromUtf8(view.name), scaleOf(view));
    return;
  }
  if (asked.sight.cut) drawn.label = sectionLabel(text::fromUtf8(shown.section), scaleOf(view), std::fabs(scale_));
  addMarks(drawn, view, asked, seen.middle);
  shorten(drawn, view);
}

void DrawnViews::addMarks(DrawnView& drawn, const ViewRecord& view, const Asked& asked,
                          const geometry::FlatPoint& middle) const {
  const auto& views = drawing_.document->record.views;
  const creo::ProTransform& screen = asked.sight.screen;
  const auto flat = [&screen](const creo::ProVector& v) -> geometry::FlatPoint {
    const auto dot = [&v](const creo::ProVector& axis) { return v.x * axis.x + v.y * axis.y + v.z * axis.z; };
    return {dot(screen.xAxis), dot(screen.yAxis)};
  };
  for (const ViewRecord& other : views) {
    if (other.detailOf != 0 && other.detailOf == view.id)
      addDetailCircle(drawn.lines, {other.centre.x * unit_, other.centre.y * unit_}, other.radius * unit_,
                      text::fromUtf8(other.name));
    const bool isCutHere = !other.section.empty() && other.detailOf == 0 && other.model == view.model &&
                           std::max(other.sheet, 1) == std::max(view.sheet, 1);
    if (!isCutHere || !view.section.empty()) continue;
    const SectionPlane plane = sectionPlane(*asked.model, other.section);
    const auto cut =
        plane.cut ? towardsViewer(*plane.cut, orientationFor(other, asked.model->document->record)) : std::nullopt;
    if (!cut) continue;
    const auto first = std::ranges::find_if(views, [&](const ViewRecord& candidate) {
      return candidate.section.empty() && candidate.detailOf == 0 && candidate.model == other.model &&
             std::max(candidate.sheet, 1) == std::max(other.sheet, 1) &&
             !towardsViewer(*cut, orientationFor(candidate, asked.model->document->record));
    });
    if (first == views.end() || &*first != &view) continue;
    const geometry::FlatPoint at = flat(cut->point), normal = flat(cut->normal);
    const double scale = asked.sight.scale, length = geometry::lengthOf(normal);
    addCuttingLine(drawn.lines, {at.x * scale - middle.x, at.y * scale - middle.y},
                   {-normal.y / length, normal.x / length}, {-normal.x / length, -normal.y / length}, drawn.width,
                   drawn.height, text::fromUtf8(other.section));
  }
}

void DrawnViews::shorten(DrawnView& drawn, const ViewRecord& view) const {
  std::vector<ViewBreak> across, upright;
  for (const BreakRecord& entry : view.breaks)
    (entry.upright ? upright : across).push_back({entry.from * unit_, entry.to * unit_});
  drawn.width -= leaveOut(drawn.lines, std::move(across), false);
  drawn.height -= leaveOut(drawn.lines, std::move(upright), true);
}

}  // namespace headless
