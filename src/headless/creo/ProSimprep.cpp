// Simplified representations: which one of a model is in memory. It is the session's own state and never written.
#include "creo/ProSimprep.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "headless/creo/assembly_operation.h"
#include "headless/model/retrieve.h"
#include "headless/model/states.h"
#include "text/encoding.h"

namespace creo {

using headless::DefaultRep;
using headless::Model;
using headless::ModelDocument;
using headless::onAssembly;
using headless::onSolid;
using headless::operation;
using headless::SimplifiedRepRecord;
using State = headless::Session::State;

namespace {

// A representation as it is called: one that Creo makes by itself, or the model's own.
struct FoundRep {
  int id = 0;
  std::string name;
};
// isIt: says of an id and a name whether it is the one.
template <class IsIt>
Got<FoundRep> find(const ModelDocument& document, IsIt isIt) {
  for (const DefaultRep& rep : headless::kDefaultReps)
    if (isIt(rep.id, rep.name)) return FoundRep{rep.id, std::string(rep.name)};
  for (const SimplifiedRepRecord& entry : document.record.simplifiedReps)
    if (isIt(entry.id, entry.name)) return FoundRep{entry.id, entry.name};
  return ProNotFound;
}
Got<FoundRep> findNamed(const ModelDocument& document, std::string_view name) {
  return find(document, [name](int, std::string_view text) { return headless::sameName(text, name); });
}
Got<FoundRep> findById(const ModelDocument& document, const ProModelitem& rep) {
  if (rep.type != ProItemType::simplifiedRep) return ProBadInputs;
  return find(document, [&rep](int id, std::string_view) { return id == rep.id; });
}

// How much of a model a representation brings: the master all of it, those of users what they say, the forms less and
// less.
int rankOf(const FoundRep& rep) {
  constexpr int kUsers = 4;
  for (const auto& [id, rank] : {std::pair(headless::kMasterForm.id, kUsers + 1),
                                 {headless::kGeometryForm.id, 3},
                                 {headless::kGraphicsForm.id, 2},
                                 {headless::kSymbolicForm.id, 1}})
    if (rep.id == id) return rank;
  return kUsers;
}

Got<FoundRep> activeRep(const ModelDocument& document) {
  return findNamed(document, document.activeRep.empty() ? headless::kMasterForm.name : document.activeRep);
}

enum class InMemory { higherWins, asked };

// The model in that representation. inMemory: what counts where the model is in memory already.
Got<ProMdl> inRepresentation(State& state, const std::wstring& name, ProMdlType type, std::string_view rep,
                             InMemory inMemory) {
  if (type != ProMdlType::part && type != ProMdlType::assembly) return ProBadInputs;
  const bool wasThere = static_cast<bool>(state.models.inMemory(name, type));
  const auto model = headless::retrieveModel(state.models, name, type);
  if (!model) return model;
  Model& retrieved = *state.models.find(model.value);
  const auto found = findNamed(*retrieved.document, rep);
  if (!found) return found.error;
  const auto active = activeRep(*retrieved.document);
  const bool wins =
      wasThere && inMemory == InMemory::higherWins && active && rankOf(active.value) > rankOf(found.value);
  if (!wins) headless::showRep(state.models, retrieved, found.value.name);
  return model;
}

Got<ProMdl> retrieve(std::string_view operationName, const std::wstring& model, ProMdlType type, std::string_view rep,
                     InMemory inMemory = InMemory::higherWins) {
  return operation(operationName, [&](State& state) { return inRepresentation(state, model, type, rep, inMemory); });
}

}  // namespace

Got<ProModelitem> ProSimprepInit(const std::wstring& name, int id, ProMdl solid) {
  return onSolid("ProSimprepInit", solid, [&](State&, Model& m) -> Got<ProModelitem> {
    const auto found = name.empty() ? findById(*m.document, {ProItemType::simplifiedRep, id, solid, {}})
                                    : findNamed(*m.document, text::toUtf8(name));
    if (!found) return found.error;
    return ProModelitem{ProItemType::simplifiedRep, found.value.id, m.handle, {}};
  });
}

Got<ProModelitem> ProSimprepActiveGet(ProMdl solid) {
  return onSolid("ProSimprepActiveGet", solid, [](State&, Model& m) -> Got<ProModelitem> {
    const auto found = activeRep(*m.document);
    if (!found) return found.error;
    return ProModelitem{ProItemType::simplifiedRep, found.value.id, m.handle, {}};
  });
}

ProError ProSimprepActivate(const ProModelitem& rep) {
  return onAssembly("ProSimprepActivate", rep.owner, [&](State& state, Model& m) -> ProError {
    const auto found = findById(*m.document, rep);
    if (found) headless::showRep(state.models, m, found.value.name);
    return found.error;
  });
}

Got<ProMdl> ProSimprepMdlnameRetrieve(const std::wstring& model, ProMdlType type, const std::wstring& rep) {
  return operation("ProSimprepMdlnameRetrieve", [&](State& state) -> Got<ProMdl> {
    const std::string name = text::toUtf8(rep);
    const bool isForm = std::any_of(
        std::begin(headless::kDefaultReps), std::end(headless::kDefaultReps),
        [&](const DefaultRep& entry) { return entry.id != kMasterRep && headless::sameName(entry.name, name); });
    if (type != ProMdlType::part && !isForm) return ProBadInputs;
    return inRepresentation(state, model, type, name, InMemory::higherWins);
  });
}

Got<ProMdl> ProAssemblySimprepMdlnameRetrieve(const std::wstring& assembly, const std::wstring& rep) {
  return retrieve("ProAssemblySimprepMdlnameRetrieve", assembly, ProMdlType::assembly, text::toUtf8(rep),
                  InMemory::asked);
}

Got<ProMdl> ProPartSimprepRetrieve(const std::wstring& part, const std::wstring& rep) {
  return retrieve("ProPartSimprepRetrieve", part, ProMdlType::part, text::toUtf8(rep));
}

Got<ProMdl> ProGraphicsSimprepRetrieve(const std::wstring& model, ProMdlType type) {
  return retrieve("ProGraphicsSimprepRetrieve", model, type, headless::kGraphicsForm.name);
}

Got<ProMdl> ProGeomSimprepRetrieve(const std::wstring& model, ProMdlType type) {
  return retrieve("ProGeomSimprepRetrieve", model, type, headless::kGeometryForm.name);
}

Got<ProMdl> ProSymbSimprepRetrieve(const std::wstring& model, ProMdlType type) {
  return retrieve("ProSymbSimprepRetrieve", model, type, headless::kSymbolicForm.name);
}

Got<ProMdl> ProMdlnameRetrieve(const std::wstring& name, ProMdlType type) {
  return operation("ProMdlnameRetrieve", [&](State& state) {
    const auto model = headless::retrieveModel(state.models, name, type);
    if (model) headless::showRep(state.models, *state.models.find(model.value), headless::kMasterForm.name);
    return model;
  });
}

// All that a model uses came with it.
ProError ProMdlRepresentationLoad(const ProModelitem& rep) {
  return onSolid("ProMdlRepresentationLoad", rep.owner,
                 [&](State&, Model& m) { return findById(*m.document, rep).error; });
}

}  // namespace creo
