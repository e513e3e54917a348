// What a person does beside opening a model: the operations of creo/ on the current model.
#include "creo/ProSolid.h"
#include "creo/ProWindow.h"
#include "headless/creo/state.h"
#include "headless/model/create.h"

namespace headless {

using creo::ProError;
using creo::ProMdl;
using creo::ProNotifyType;

creo::Got<ProMdl> Session::create(const std::wstring& name, creo::ProMdlType type) {
  const auto created = createModel(state_->models, name, type);
  if (!created) return created;
  state_->present(created.value, {ProNotifyType::modelCreated, ProNotifyType::modelDisplayed,
                                  ProNotifyType::windowOccupied, ProNotifyType::windowActivated});
  return created;
}

ProError Session::save() {
  const auto model = creo::ProMdlCurrentGet();
  return model ? creo::ProMdlSave(model.value) : model.error;
}

ProError Session::regenerate() {
  const auto model = creo::ProMdlCurrentGet();
  return model ? creo::ProSolidRegenerate(model.value, 0) : model.error;
}

ProError Session::erase() {
  const auto model = creo::ProMdlCurrentGet();
  if (!model) return model.error;
  const int window = state_->windows.active();
  const ProError result = creo::ProMdlErase(model.value);
  // A handler may bring another model into the window.
  if (result == creo::ProNoError)
    state_->queue(ProNotifyType::windowClosed, model.value, window, Event::Does::closesUnused);
  return result;
}

ProError Session::close() {
  state_->windows.setCurrent(state_->windows.active());
  return creo::ProWindowCurrentClose();
}

}  // namespace headless
