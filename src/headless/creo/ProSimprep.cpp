// Simplified representations: which one of a model is in memory. It is the session's own state and never written.
#include "creo/ProState.h"
#include "headless/creo/operation.h"
#include "text/encoding.h"

namespace creo {

using headless::operation;
using State = headless::Session::State;

namespace {

constexpr std::string_view kMaster = "Master Rep";

Got<ProMdl> inRepresentation(State& state, const std::wstring& name, ProMdlType type, std::string_view rep) {
  if (type != ProMdlType::part && type != ProMdlType::assembly) return ProBadInputs;
  const auto model = state.models.retrieve(name, type);
  if (!model) return model;
  headless::ModelDocument& document = *state.models.find(model.value)->document;
  if (headless::sameName(rep, kMaster)) {
    document.activeRep.clear();
    return model;
  }
  for (const headless::SimplifiedRepRecord& one : document.record.simplifiedReps) {
    if (!headless::sameName(one.name, rep)) continue;
    document.activeRep = one.name;
    return model;
  }
  return ProNotFound;
}

}  // namespace

Got<ProMdl> ProSimprepMdlnameRetrieve(const std::wstring& model, ProMdlType type, const std::wstring& rep) {
  return operation("ProSimprepMdlnameRetrieve",
                   [&](State& state) { return inRepresentation(state, model, type, text::toUtf8(rep)); });
}

Got<ProMdl> ProAssemblySimprepMdlnameRetrieve(const std::wstring& assembly, const std::wstring& rep) {
  return operation("ProAssemblySimprepMdlnameRetrieve", [&](State& state) {
    return inRepresentation(state, assembly, ProMdlType::assembly, text::toUtf8(rep));
  });
}

Got<ProMdl> ProMdlnameRetrieve(const std::wstring& name, ProMdlType type) {
  return operation("ProMdlnameRetrieve", [&](State& state) {
    const auto model = state.models.retrieve(name, type);
    if (model) state.models.find(model.value)->document->activeRep.clear();
    return model;
  });
}

}  // namespace creo
