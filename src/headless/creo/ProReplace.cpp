#include "creo/ProReplace.h"

#include <unordered_set>

#include "headless/creo/drawing_operation.h"
#include "headless/creo/solid_operation.h"
#include "headless/model/drawing_models.h"
#include "headless/model/follow_rename.h"
#include "headless/model/retrieve.h"
#include "text/encoding.h"

namespace creo {

using headless::Model;
using headless::Models;
using headless::onDrawing;
using State = headless::Session::State;

namespace {

// Does the model use the assembly, be it over others, or is it the assembly itself?
bool reaches(const Models& models, const Model& from, const Model& assembly) {
  std::unordered_set<const Model*> seen{&from};
  std::vector<const Model*> waiting{&from};
  while (!waiting.empty()) {
    const Model* model = waiting.back();
    waiting.pop_back();
    if (model->document == assembly.document) return true;
    for (const ProDependency& used : dependencies(*model)) {
      const auto there = models.inMemory(used.name, used.type);
      const Model* next = there ? models.find(there.value) : nullptr;
      if (next && seen.insert(next).second) waiting.push_back(next);
    }
  }
  return false;
}

// A model that can stand in another one's place; null for none.
const Model* solidOf(const State& state, ProMdl handle) {
  const Model* model = state.models.find(handle);
  return model && !headless::hasSheets(model->type()) ? model : nullptr;
}

// The generic and all its instances are of one document.
bool areOfOneFamily(State& state, const ProDependency& from, const Model& to) {
  const auto there = headless::retrieveModel(state.models, from.name, from.type);
  const Model* model = there ? state.models.find(there.value) : nullptr;
  return model && model->document == to.document;
}

}  // namespace

ProError ProAsmcompsReplace(ProMdl assembly, const ProDependency& from, ProMdl to) {
  return headless::onSolid("ProAsmcompsReplace", assembly, [&](State& state, Model& m) -> ProError {
    const Model* wanted = solidOf(state, to);
    if (m.type() == ProMdlType::part || m.row || !wanted) return ProBadInputs;
    if (reaches(state.models, *wanted, m)) return ProInvalidType;
    headless::ModelRecord& record = m.document->record;
    if (!headless::replaceComponents(record, from.type, text::toUtf8(from.name), wanted->type(),
                                     headless::usedName(*wanted)))
      return ProNotFound;
    record.regeneration = ProRegenerationStatus::needed;
    m.document->tree.changed();
    m.document->touch(nullptr);
    state.models.countUsesAnew();
    return ProNoError;
  });
}

ProError ProDrawingSolidReplace(ProMdl drawing, const ProDependency& from, ProMdl to) {
  return onDrawing("ProDrawingSolidReplace", drawing, [&](State& state, Model& m) -> ProError {
    const Model* wanted = solidOf(state, to);
    if (!wanted) return ProBadInputs;
    if (headless::modelNumber(m, from) == 0) return ProNotFound;
    if (headless::modelNumber(m, {wanted->name, {}, wanted->type()}) > 0) return ProExists;
    if (!areOfOneFamily(state, from, *wanted)) return ProGeneralError;
    headless::replaceModel(m, from, *wanted);
    state.models.countUsesAnew();
    return ProNoError;
  });
}

Got<ProDrawingModelUse> ProDrawingModelUseGet(ProMdl drawing, const ProDependency& model) {
  return onDrawing("ProDrawingModelUseGet", drawing, [&](State&, Model& m) -> Got<ProDrawingModelUse> {
    if (headless::modelNumber(m, model) == 0) return ProNotFound;
    return headless::modelUse(m, model);
  });
}

ProError ProDrawingModelDelete(ProMdl drawing, const ProDependency& model) {
  return onDrawing("ProDrawingModelDelete", drawing, [&](State& state, Model& m) -> ProError {
    if (headless::modelNumber(m, model) == 0) return ProNotFound;
    if (headless::modelUse(m, model) != ProDrawingModelUse::none) return ProExists;
    headless::removeModel(m, model);
    state.models.countUsesAnew();
    return ProNoError;
  });
}

}  // namespace creo
