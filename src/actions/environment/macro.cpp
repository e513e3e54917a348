#include "actions/environment/macro.h"

#include "core/log.h"
#include "creo/ProMacro.h"

namespace actions {

void runMacro(const std::wstring& macro, std::wstring_view loadFailure, std::wstring_view runFailure) {
  core::logWrite(L"pro load macro", core::kDebug);
  if (creo::ProMacroLoad(macro) != creo::ProNoError) {
    core::logWrite(loadFailure, core::kError);
  } else {
    core::logWrite(L"pro execute macro", core::kDebug);
    if (creo::ProMacroExecute() != creo::ProNoError) core::logWrite(runFailure, core::kError);
  }
  core::logWrite(L"free", core::kDebug);
  core::logWrite(L"fin", core::kDebug);
}

}  // namespace actions
