// The current model of a drawing.
#include "actions/drawing/details.h"
#include "creo/ProMdl.h"
#include "language/compare.h"
#include "language/variables.h"
#include "text/format.h"

namespace actions {
namespace {

using namespace language;

// "GEAR.prt"; empty for a model that no drawing shows.
std::wstring fileNameOf(creo::ProMdl model) {
  const auto name = creo::ProMdlNameGet(model);
  const auto type = creo::ProMdlTypeGet(model);
  if (!name || !type) return {};
  switch (type.value) {
    case creo::ProMdlType::part:
      return name.value + L".prt";
    case creo::ProMdlType::assembly:
      return name.value + L".asm";
    case creo::ProMdlType::manufacturing:
      return name.value + L".mfg";
    default:
      return {};
  }
}

Outcome setCurrentDrawingModel(const Task& task) {
  const Replaced wanted = task.text(L"value");
  const auto models = creo::ProDrawingSolidsCollect(task.model());
  if (!wanted.hasText()) failDetail(L"The name of the model can't be put together");
  if (!creo::isTold(models)) failDetail(L"The models of the drawing can't be read");
  if (!wanted.hasText() || !models) return done;
  for (const creo::ProMdl model : models.value) {
    const std::wstring name = fileNameOf(model);
    if (name.empty() || !matches(wanted.text, name)) continue;
    sayDetail(text::format(L"set drawing model to : %s", name));
    if (creo::ProDrawingCurrentsolidSet(task.model(), model) != creo::ProNoError)
      failDetail(text::format(L"Can't set drawing model to : %s", name));
    break;
  }
  return done;
}

constexpr Attribute kAttributes[] = {
    {.name = L"value",
     .kind = Kind::pattern,
     .variables = true,
     .need = Need::needed,
     .about = "the model's name with extension, as gear.prt; the drawing's first one that fits is taken"},
};

constexpr Action kActions[] = {
    {.key = L"setCurrentDrawingModel",
     .place = 78,
     .title = L"Set current drawing model",
     .conditions = kOnDrawings,
     .attributes = kAttributes,
     .effects = {.reads = Touched::model | Touched::users, .changes = Touched::model},
     .about = "makes one of a drawing's models its current one",
     .function = &setCurrentDrawingModel},
};

}  // namespace

std::span<const Action> drawingModelActions() { return kActions; }

}  // namespace actions
