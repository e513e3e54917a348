#include "creo/ProMdl.h"

#include "headless/creo/operation.h"
#include "os/paths.h"

namespace creo {

using headless::Model;
using headless::modelKey;
using headless::onModel;
using headless::operation;
using State = headless::Session::State;

Got<ProMdl> ProMdlCurrentGet() {
  return operation("ProMdlCurrentGet", [](State& state) -> Got<ProMdl> {
    const Model* model = state.models.find(state.windows.model(state.windows.current()));
    if (!model) return ProNotFound;
    return model->handle;
  });
}

Got<ProMdl> ProMdlInit(const std::wstring& name, ProMdlType type) {
  return operation("ProMdlInit", [&](State& state) { return state.models.inMemory(name, type); });
}

Got<ProMdl> ProMdlRetrieve(const std::wstring& name, ProMdlType type) {
  return operation("ProMdlRetrieve", [&](State& state) { return state.models.retrieve(name, type); });
}

Got<std::wstring> ProMdlNameGet(ProMdl model) {
  return onModel("ProMdlNameGet", model, [](State&, Model& m) -> Got<std::wstring> { return m.name; });
}

Got<ProMdlType> ProMdlTypeGet(ProMdl model) {
  return onModel("ProMdlTypeGet", model, [](State&, Model& m) -> Got<ProMdlType> { return m.type(); });
}

Got<ProMdlData> ProMdlDataGet(ProMdl model) {
  return onModel("ProMdlDataGet", model, [](State&, Model& m) -> Got<ProMdlData> {
    ProMdlData data;
    const os::DevicePath place = os::splitDevice(m.document->folder);
    data.name = m.name;
    data.type = typeExtension(m.type());
    // "z:" is the root, where paths without a device lie; a model that was never saved lies nowhere.
    const bool isNew = m.document->folder.empty();
    data.device = place.device.empty() && !isNew ? L"z" : place.device;
    data.path = place.path;
    data.version = m.document->version;
    return data;
  });
}

ProError ProMdlSave(ProMdl model) {
  return onModel("ProMdlSave", model, [](State& state, Model& m) -> ProError {
    ProNotification before;
    before.type = ProNotifyType::saveBefore;
    before.model = m.handle;
    before.name = m.name;
    before.typeText = typeExtension(m.type());
    const ProMdl handle = m.handle;
    state.notify(before);
    return state.models.save(handle);
  });
}

ProError ProMdlErase(ProMdl model) {
  return operation("ProMdlErase", [&](State& state) { return state.models.erase(model); });
}

Got<bool> ProMdlIsModifiable(ProMdl model, bool /*askUser*/) {
  return onModel("ProMdlIsModifiable", model,
                 [](State&, Model& m) -> Got<bool> { return !m.document->record.readOnly; });
}

Got<bool> ProMdlIsSkeleton(ProMdl model) {
  return onModel("ProMdlIsSkeleton", model, [](State&, Model& m) -> Got<bool> { return m.document->record.skeleton; });
}

Got<bool> ProMdlModificationVerify(ProMdl model) {
  return onModel("ProMdlModificationVerify", model,
                 [](State&, Model& m) -> Got<bool> { return m.document->isModified(m.row); });
}

Got<std::vector<ProDependency>> ProMdlDependenciesList(ProMdl model) {
  return onModel("ProMdlDependenciesList", model,
                 [](State&, Model& m) -> Got<std::vector<ProDependency>> { return headless::Models::dependencies(m); });
}

Got<ProModelitem> ProMdlToModelitem(ProMdl model) {
  return onModel("ProMdlToModelitem", model, [](State&, Model& m) -> Got<ProModelitem> {
    return ProModelitem{ProItemType::model, 0, m.handle, {}};
  });
}

ProError ProMdlDisplay(ProMdl model) {
  return onModel("ProMdlDisplay", model, [](State& state, Model& m) -> ProError {
    const std::wstring key = modelKey(m.name, m.type());
    int window = state.windows.of(m.handle, key);
    if (window == 0) window = state.windows.current();
    if (window == 0) {
      window = state.windows.create(key);
      state.windows.setCurrent(window);
    }
    const bool changed = state.windows.show(window, m.handle);
    state.queue(ProNotifyType::modelDisplayed, m.handle, window);
    if (changed) state.queue(ProNotifyType::currentModelChanged, m.handle, window);
    return ProNoError;
  });
}

Got<int> ProMdlWindowGet(ProMdl model) {
  return onModel("ProMdlWindowGet", model, [](State& state, Model& m) -> Got<int> {
    const int window = state.windows.of(m.handle, modelKey(m.name, m.type()));
    if (window == 0) return ProNotFound;
    return window;
  });
}

}  // namespace creo
