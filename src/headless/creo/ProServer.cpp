// There is no server: models lie in folders, and every question is answered so.
#include "creo/ProServer.h"

#include "headless/creo/operation.h"

namespace creo {

using headless::operation;
using State = headless::Session::State;

Got<std::wstring> ProServerActiveGet() {
  return operation("ProServerActiveGet", [](State&) -> Got<std::wstring> { return ProNotFound; });
}

ProError ProServerActivate(const std::wstring& /*server*/) {
  return operation("ProServerActivate", [](State&) { return ProNotFound; });
}

Got<std::wstring> ProServerWorkspaceGet(const std::wstring& /*server*/) {
  return operation("ProServerWorkspaceGet", [](State&) -> Got<std::wstring> { return ProNotFound; });
}

Got<ProServerStatus> ProServerObjectStatusGet(const std::wstring& /*server*/, const std::wstring& /*workspace*/,
                                              const std::wstring& /*file*/) {
  return operation("ProServerObjectStatusGet", [](State&) -> Got<ProServerStatus> { return ProNotFound; });
}

Got<std::wstring> ProServerModelNameToAliasedURL(const std::wstring& /*file*/) {
  return operation("ProServerModelNameToAliasedURL", [](State&) -> Got<std::wstring> { return ProNotFound; });
}

Got<std::wstring> ProServerAliasedURLToURL(const std::wstring& /*aliased*/) {
  return operation("ProServerAliasedURLToURL", [](State&) -> Got<std::wstring> { return ProNotFound; });
}

ProError ProServerObjectsCheckout(ProMdl model, bool /*includeInstances*/) {
  return headless::onModel("ProServerObjectsCheckout", model, [](State&, headless::Model&) { return ProNotFound; });
}

}  // namespace creo
