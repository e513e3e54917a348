// The models of drawings.
#include "creo/ProDrawing.h"

#include <algorithm>

#include "headless/creo/drawing_operation.h"
#include "headless/model/detour.h"
#include "headless/model/retrieve.h"
#include "text/format.h"

namespace creo {

using headless::Model;
using headless::onDrawing;
using State = headless::Session::State;

namespace {

std::vector<ProMdl> solidsOf(State& state, const Model& drawing) {
  std::vector<ProMdl> solids;
  for (const ProDependency& used : headless::dependencies(drawing)) {
    if (const auto model = headless::retrieveModel(state.models, used.name, used.type))
      solids.push_back(model.value);
    else
      state.showMessage(
          text::format(L"%s.DRW shows %s.%s, which can't be retrieved", drawing.name, used.name, used.typeText));
  }
  return solids;
}

}  // namespace

Got<std::vector<ProMdl>> ProDrawingSolidsCollect(ProMdl drawing) {
  return onDrawing("ProDrawingSolidsCollect", drawing,
                   [](State& state, Model& m) { return headless::collected(solidsOf(state, m)); });
}

ProError ProDrawingSolidsVisit(ProMdl drawing, Visitor<ProMdl> visitor) {
  return onDrawing("ProDrawingSolidsVisit", drawing, [&](State& state, Model& m) -> ProError {
    return headless::visit<ProMdl>(solidsOf(state, m), visitor);
  });
}

Got<ProMdl> ProDrawingCurrentsolidGet(ProMdl drawing) {
  return onDrawing("ProDrawingCurrentsolidGet", drawing, [](State& state, Model& m) -> Got<ProMdl> {
    const auto current = headless::currentModelOf(m);
    if (!current) return ProNotFound;
    return headless::retrieveModel(state.models, current->name, current->type);
  });
}

ProError ProDrawingCurrentsolidSet(ProMdl drawing, ProMdl solid) {
  return onDrawing("ProDrawingCurrentsolidSet", drawing, [&](State& state, Model& m) -> ProError {
    const Model* wanted = state.models.find(solid);
    if (!wanted) return ProBadInputs;
    const auto is = [&](const ProDependency& used) { return used.name == wanted->name && used.type == wanted->type(); };
    const auto models = headless::dependencies(m);
    if (std::none_of(models.begin(), models.end(), is)) return ProNotFound;
    if (is(*headless::currentModelOf(m))) return ProNoError;
    headless::showModel(m, {wanted->name, {}, wanted->type()});
    return ProNoError;
  });
}

ProError ProDwgDraftRegenerate(ProMdl drawing) {
  return onDrawing("ProDwgDraftRegenerate", drawing, [](State& state, Model& m) -> ProError {
    const std::size_t wanted = headless::dependencies(m).size();
    if (solidsOf(state, m).size() != wanted) return ProGeneralError;
    m.document->modelOfTexts.reset();
    return ProNoError;
  });
}

}  // namespace creo
