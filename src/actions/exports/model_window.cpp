#include "actions/exports/model_window.h"

#include "core/log.h"
#include "creo/ProMdl.h"

namespace actions {

ModelWindow::ModelWindow(creo::ProMdl model) : before_(creo::ProWindowCurrentGet()), window_(ProMdlWindowGet(model)) {
  // The current model's window is the current one, whatever else is told: as one that was opened it would be closed.
  if (!window_ && before_) {
    const auto current = creo::ProMdlCurrentGet();
    if (current && current.value == model) window_ = before_;
  }
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
  const bool isBack = before_ && creo::ProWindowCurrentSet(before_.value) == creo::ProNoError;
  if (!opened_) return;
  // Closing is for the person's window; where that was empty, and so taken, it is to be emptied again.
  const bool isPersons = isBack && before_.value == window_.value;
  const creo::ProError closed = isPersons ? creo::ProWindowCurrentClose() : creo::ProWindowDelete(window_.value);
  if (closed != creo::ProNoError) core::logWrite(L"The window that was opened for a picture stays", core::kWarning);
}

}  // namespace actions
