#include "creo/ProMdl.h"

#include <unordered_set>

#include "headless/creo/operation.h"
#include "headless/model/drawing.h"
#include "headless/model/retrieve.h"
#include "headless/model/save.h"
#include "os/paths.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace creo {

using headless::Model;
using headless::onModel;
using headless::operation;
using State = headless::Session::State;

namespace {

// The models that a model uses, then the layouts that it declares.
std::vector<ProDependency> filesUsed(const Model& model) {
  std::vector<ProDependency> files = headless::dependencies(model);
  std::unordered_set<std::wstring> seen;
  for (const headless::LayoutRecord& layout : model.document->record.layouts) {
    std::wstring name = text::upper(text::fromUtf8(layout.name));
    if (seen.insert(name).second) files.push_back({std::move(name), L"LAY", kLayoutType});
  }
  return files;
}

}  // namespace

Got<ProMdl> ProMdlCurrentGet() {
  return operation("ProMdlCurrentGet", [](State& state) -> Got<ProMdl> {
    const Model* model = state.models.find(state.windows.model(state.windows.active()));
    if (!model) return ProNotFound;
    return model->handle;
  });
}

Got<ProMdl> ProMdlInit(const std::wstring& name, ProMdlType type) {
  return operation("ProMdlInit", [&](State& state) { return state.models.inMemory(name, type); });
}

Got<ProMdl> ProMdlRetrieve(const std::wstring& name, ProMdlType type) {
  return operation("ProMdlRetrieve", [&](State& state) { return headless::retrieveModel(state.models, name, type); });
}

Got<std::wstring> ProMdlNameGet(ProMdl model) {
  return onModel("ProMdlNameGet", model, [](State&, Model& m) -> Got<std::wstring> { return m.name; });
}

Got<ProMdlType> ProMdlTypeGet(ProMdl model) {
  return onModel("ProMdlTypeGet", model, [](State&, Model& m) -> Got<ProMdlType> { return m.type(); });
}

Got<ProMdlData> ProMdlDataGet(ProMdl model) {
  return onModel("ProMdlDataGet", model, [](State& state, Model& m) -> Got<ProMdlData> {
    ProMdlData data;
    const os::DevicePath place = os::splitDevice(m.document->folder);
    data.name = m.name;
    data.type = typeExtension(m.type());
    // "z:" is the root, where paths without a device lie; a model that was never saved lies nowhere.
    const bool isNew = m.document->folder.empty();
    data.device = place.device.empty() && !isNew ? L"z" : place.device;
    data.path = place.path;
    if (m.document->inWorkspace) {
      data.device = L"wtws";
      data.path = state.servers.path();
    }
    data.version = m.document->version;
    return data;
  });
}

Got<std::wstring> ProMdlMdlnameGet(ProMdl model) {
  return onModel("ProMdlMdlnameGet", model, [](State&, Model& m) -> Got<std::wstring> { return m.name; });
}

Got<std::wstring> ProMdlExtensionGet(ProMdl model) {
  return onModel("ProMdlExtensionGet", model,
                 [](State&, Model& m) -> Got<std::wstring> { return std::wstring(typeExtension(m.type())); });
}

Got<std::wstring> ProMdlCommonnameGet(ProMdl model) {
  return onModel("ProMdlCommonnameGet", model, [](State&, Model& m) -> Got<std::wstring> {
    const std::string& name = m.document->record.commonName;
    if (m.row || name.empty()) return ProNotFound;
    return text::fromUtf8(name);
  });
}

Got<int> ProMdlSubtypeGet(ProMdl model) {
  return onModel("ProMdlSubtypeGet", model, [](State&, Model& m) -> Got<int> {
    if (headless::hasSheets(m.type())) return ProBadInputs;
    return m.document->record.subtype;
  });
}

Got<std::wstring> ProMdlOriginGet(ProMdl model) {
  return onModel("ProMdlOriginGet", model, [](State&, Model& m) -> Got<std::wstring> {
    const headless::ModelDocument& document = *m.document;
    std::wstring path = document.folder + headless::documentFileName(document, document.version);
    // A file without a number has version 0, as a model that was never saved.
    if (document.version == 0 && !os::files().exists(path)) path.clear();
    return path;
  });
}

Got<std::wstring> ProMdlDirectoryPathGet(ProMdl model) {
  return onModel("ProMdlDirectoryPathGet", model, [](State&, Model& m) -> Got<std::wstring> {
    if (m.document->saveFolder().empty()) return ProNotFound;
    return m.document->saveFolder();
  });
}

namespace {

headless::SaveObjects saveObjects(const State& state) {
  const auto values = state.configuration.values(L"save_objects");
  const std::wstring value = values.empty() ? std::wstring() : text::lower(values.front());
  if (value == L"all") return headless::SaveObjects::all;
  if (value == L"changed" || value == L"changed_and_updated") return headless::SaveObjects::changed;
  return headless::SaveObjects::changedAndSpecified;
}

}  // namespace

ProError ProMdlSave(ProMdl model) {
  return onModel("ProMdlSave", model, [](State& state, Model& m) -> ProError {
    const ProMdl handle = m.handle;  // a handler may erase the model
    if (const ProError forbidden = state.mayGoOn(ProNotifyType::saveBefore, handle)) return forbidden;
    return headless::saveModel(state.models, handle, saveObjects(state));
  });
}

namespace {

// A model that isn't checked out: what the user would answer stands in an option, as nobody sits here.
bool resolvedByUser(State& state, Model& model) {
  const auto answers = state.configuration.values(L"dm_checkout_on_the_fly");
  const std::wstring answer = answers.empty() ? std::wstring() : text::lower(answers.front());
  if (answer == L"continue") model.document->closed = false;
  if (answer == L"checkout") {
    std::wstring conflicts;
    state.servers.checkOut(model, false, conflicts);
    if (!conflicts.empty()) state.showMessage(L"warning: not checked out: " + conflicts);
  }
  return !model.document->closed;
}

}  // namespace

Got<bool> ProMdlIsModifiable(ProMdl model, bool askUser) {
  return onModel("ProMdlIsModifiable", model, [&](State& state, Model& m) -> Got<bool> {
    if (m.document->record.readOnly) return false;
    if (!m.document->closed) return true;
    return askUser && resolvedByUser(state, m);
  });
}

Got<bool> ProMdlIsSkeleton(ProMdl model) {
  return onModel("ProMdlIsSkeleton", model, [](State&, Model& m) -> Got<bool> { return m.document->record.skeleton; });
}

Got<bool> ProMdlModificationVerify(ProMdl model) {
  return onModel("ProMdlModificationVerify", model,
                 [](State&, Model& m) -> Got<bool> { return m.document->isModified(m.row); });
}

Got<std::vector<ProDependency>> ProMdlDependenciesList(ProMdl model) {
  return onModel("ProMdlDependenciesList", model, [](State&, Model& m) -> Got<std::vector<ProDependency>> {
    auto files = filesUsed(m);
    if (files.empty()) return ProNotFound;
    return files;
  });
}

Got<std::vector<ProDependencyData>> ProMdlDependenciesDataList(ProMdl model) {
  return onModel("ProMdlDependenciesDataList", model, [](State&, Model& m) -> Got<std::vector<ProDependencyData>> {
    std::vector<ProDependencyData> files;
    for (ProDependency& used : filesUsed(m))
      files.push_back({std::move(used.name), std::move(used.typeText), static_cast<int>(used.type)});
    if (files.empty()) return ProNotFound;
    return files;
  });
}

Got<std::vector<std::wstring>> pfcListParams(ProMdl model) {
  return onModel("pfcListParams", model, [&](State& state, Model&) -> Got<std::vector<std::wstring>> {
    const auto parameters = state.parameters.all({ProItemType::model, 0, model, {}});
    if (!parameters) return parameters.error;
    std::vector<std::wstring> names;
    for (const ProParameter& parameter : parameters.value) names.push_back(parameter.id);
    return names;
  });
}

Got<ProModelitem> ProMdlToModelitem(ProMdl model) {
  return onModel("ProMdlToModelitem", model, [](State&, Model& m) -> Got<ProModelitem> {
    return ProModelitem{ProItemType::model, 0, m.handle, {}};
  });
}

ProError ProMdlDisplay(ProMdl model) {
  return onModel("ProMdlDisplay", model, [](State& state, Model& m) -> ProError {
    int window = state.windows.of(m.handle);
    if (window == 0) window = state.windows.current();
    const bool changed = state.windows.show(window, m.handle);
    state.queue(ProNotifyType::modelDisplayed, m.handle, window);
    if (!changed) return ProNoError;
    state.queue(ProNotifyType::currentModelChanged, m.handle, window);
    state.raise(ProNotifyType::windowOccupied, m.handle, window);
    return ProNoError;
  });
}

Got<int> ProMdlWindowGet(ProMdl model) {
  return onModel("ProMdlWindowGet", model, [](State& state, Model& m) -> Got<int> {
    const int window = state.windows.of(m.handle);
    if (window == 0) return ProNotFound;
    return window;
  });
}

}  // namespace creo
