#include "actions/on_top.h"

#include "core/log.h"
#include "creo/ProMdl.h"
#include "creo/ProSession.h"
#include "creo/ProWindow.h"

namespace actions {

creo::ProError onTop(creo::ProMdl model, creo::FunctionRef<creo::ProError()> call) {
  const creo::ProError result = call();
  if (result != creo::ProGeneralError) return result;
  const auto window = creo::ProWindowCurrentGet();
  const auto before = window ? creo::ProWindowMdlGet(window.value) : creo::Got<creo::ProMdl>(window.error);
  if (!before || before.value == model || creo::ProMdlWindowGet(model)) return result;
  if (creo::ProMdlDisplay(model) != creo::ProNoError) return result;
  const creo::ProError again = call();
  if (creo::ProMdlDisplay(before.value) != creo::ProNoError)
    core::logWrite(L"The window can't show its model again", core::kWarning);
  return again;
}

creo::ProError inCurrentWindow(creo::ProMdl model, creo::FunctionRef<creo::ProError()> call) {
  const creo::ProError result = onTop(model, call);
  if (result != creo::ProGeneralError) return result;
  const auto own = creo::ProMdlWindowGet(model), former = creo::ProWindowCurrentGet();
  if (!own || !former || own.value == former.value) return result;
  if (creo::ProWindowCurrentSet(own.value) != creo::ProNoError) return result;
  const creo::ProError again = call();
  if (creo::ProWindowCurrentSet(former.value) != creo::ProNoError)
    core::logWrite(L"The window that was current can't be made current again", core::kWarning);
  return again;
}

}  // namespace actions
