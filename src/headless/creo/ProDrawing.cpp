#include "creo/ProDrawing.h"

#include "headless/creo/operation.h"
#include "text/format.h"

namespace creo {

using headless::Model;
using State = headless::Session::State;

Got<std::vector<ProMdl>> ProDrawingSolidsCollect(ProMdl drawing) {
  return headless::onModel("ProDrawingSolidsCollect", drawing, [](State& state, Model& m) -> Got<std::vector<ProMdl>> {
    if (m.type() != ProMdlType::drawing) return ProBadInputs;
    const std::wstring name = m.name;
    std::vector<ProMdl> solids;
    for (const ProDependency& used : headless::Models::dependencies(m)) {
      const auto model = state.models.retrieve(used.name, used.type);
      if (model)
        solids.push_back(model.value);
      else
        state.showMessage(
            text::format(L"%s.DRW shows %s.%s, which can't be retrieved", name, used.name, used.typeText));
    }
    return solids;
  });
}

// A drawing's document doesn't say which of its models is current: it is the first.
Got<ProMdl> ProDrawingCurrentsolidGet(ProMdl drawing) {
  return headless::onModel("ProDrawingCurrentsolidGet", drawing, [](State& state, Model& m) -> Got<ProMdl> {
    if (m.type() != ProMdlType::drawing) return ProBadInputs;
    const auto used = headless::Models::dependencies(m);
    if (used.empty()) return ProNotFound;
    return state.models.retrieve(used.front().name, used.front().type);
  });
}

}  // namespace creo
