#include "creo/ProSession.h"

#include "headless/creo/operation.h"

namespace creo {

using headless::operation;
using State = headless::Session::State;

Got<std::vector<ProMdl>> ProSessionMdlList(ProMdlType type) {
  return operation("ProSessionMdlList", [&](State& state) -> Got<std::vector<ProMdl>> {
    std::vector<ProMdl> models;
    for (const headless::ModelInMemory& listed : state.models.list())
      if (listed.type == type) models.push_back(listed.handle);
    if (models.empty()) return ProNotFound;
    return models;
  });
}

Got<ProMdl> ProWindowMdlGet(int window) {
  return operation("ProWindowMdlGet", [&](State& state) -> Got<ProMdl> {
    if (!state.windows.has(window)) return ProBadInputs;
    const headless::Model* model = state.models.find(state.windows.model(window));
    if (!model) return ProNotFound;
    return model->handle;
  });
}

}  // namespace creo
