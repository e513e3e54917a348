#include "actions/on_top.h"

#include "core/log.h"
#include "creo/ProMdl.h"

namespace actions {

creo::ProError onTop(creo::ProMdl model, creo::FunctionRef<creo::ProError()> call) {
  const creo::ProError result = call();
  if (result != creo::ProGeneralError) return result;
  const auto before = creo::ProMdlCurrentGet();
  if (!before || before.value == model || creo::ProMdlWindowGet(model)) return result;
  if (creo::ProMdlDisplay(model) != creo::ProNoError) return result;
  const creo::ProError again = call();
  if (creo::ProMdlDisplay(before.value) != creo::ProNoError)
    core::logWrite(L"The window can't show its model again", core::kWarning);
  return again;
}

}  // namespace actions
