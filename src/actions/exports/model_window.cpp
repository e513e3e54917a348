#include "actions/exports/model_window.h"

#include "creo/ProMdl.h"

namespace actions {

ModelWindow::ModelWindow(creo::ProMdl model) : before_(creo::ProWindowCurrentGet()), window_(ProMdlWindowGet(model)) {
  if (!window_) {
    const auto name = creo::ProMdlNameGet(model);
    const auto type = creo::ProMdlTypeGet(model);
    window_ = name && type ? creo::ProObjectwindowCreate(name.value, type.value) : creo::Got<int>(name.error);
    opened_ = window_.error == creo::ProNoError;
  }
  if (!window_) return;
  creo::ProError shown = creo::ProWindowCurrentSet(window_.value);
  if (shown == creo::ProNoError && opened_) shown = creo::ProMdlDisplay(model);
  if (shown == creo::ProNoError)
    window_ = creo::ProWindowCurrentGet();
  else
    window_.error = shown;
}

ModelWindow::~ModelWindow() {
  if (opened_ && creo::ProWindowCurrentSet(window_.value) == creo::ProNoError) creo::ProWindowCurrentClose();
  if (before_) creo::ProWindowCurrentSet(before_.value);
}

}  // namespace actions
