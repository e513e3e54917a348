// The current model of a drawing.
#include "actions/drawing/details.h"
#include "actions/families.h"
#include "creo/ProMdl.h"
#include "engine/compare.h"
#include "text/format.h"

namespace actions {
namespace {

using namespace engine;

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
  if (const auto ended = begin(task, {.title = L"Set current drawing model"})) return *ended;
  if (!isDrawing(task.model())) return done;
  const Replaced wanted = task.text(L"value");
  const auto models = creo::ProDrawingSolidsCollect(task.model());
  if (!wanted.hasText()) failDetail(L"The name of the model can't be put together");
  if (!wanted.hasText() || !models) return done;
  for (const creo::ProMdl model : models.value) {
    const std::wstring name = fileNameOf(model);
    if (name.empty() || wildcardCompare(wanted.text, name) != 1) continue;
    sayDetail(text::format(L"set drawing model to : %s", name));
    if (creo::ProDrawingCurrentsolidSet(task.model(), model) != creo::ProNoError)
      failDetail(text::format(L"Can't set drawing model to : %s", name));
    break;
  }
  return done;
}

constexpr ActionFunction kActions[] = {{L"setCurrentDrawingModel", &setCurrentDrawingModel}};

}  // namespace

std::span<const ActionFunction> drawingModelActions() { return kActions; }

}  // namespace actions
