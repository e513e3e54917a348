#include "headless/pictures/drawn_views.h"

#include <cmath>

#include "headless/model/models.h"
#include "headless/model/units.h"
#include "headless/store/names.h"
#include "text/encoding.h"
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

const ShownParts* ShownModels::find(const Model& model) {
  const auto [known, isNew] = models_.try_emplace(model.handle);
  if (isNew) {
    try {
      auto parts = shownParts(sources_.bodies, sources_.models, model, kDrawnTurn);
      if (parts && !parts.value.parts.empty()) known->second = std::move(parts.value);
    } catch (const std::exception& failure) {  // of the library: a face that it can't mesh
      sources_.models.message(model.name + L": " + text::fromUtf8(failure.what()));
    }
  }
  return known->second ? &*known->second : nullptr;
}

std::optional<std::vector<ProjectedLine>> DrawnViews::lines(const ViewRecord& view, double scale) {
  const Model* model = modelOf(inMemory_, view);
  const ShownParts* parts = model ? models_.find(*model) : nullptr;
  if (!parts) return std::nullopt;
  const double mm = std::fabs(view.scale != 0 ? view.scale : scale) / inSystem(1, "mm", model->document->record);
  Projection seen = projection(parts->parts, orientationFor(view, model->document->record));
  if (!(seen.width * mm <= width_) || !(seen.height * mm <= height_)) return std::nullopt;
  if (view.displayStyle != kWireframe && view.displayStyle != kHiddenLines)
    std::erase_if(seen.lines, [](const ProjectedLine& line) { return line.isHidden; });
  if (seen.lines.empty()) return std::nullopt;
  for (ProjectedLine& line : seen.lines) {
    for (double* const place : {&line.x1, &line.y1, &line.x2, &line.y2}) *place *= mm;
    line.isHidden = line.isHidden && view.displayStyle == kHiddenLines;
  }
  return std::move(seen.lines);
}

}  // namespace headless
