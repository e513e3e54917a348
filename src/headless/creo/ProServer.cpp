#include "creo/ProServer.h"

#include "headless/creo/operation.h"

namespace creo {

using headless::Model;
using headless::onModel;
using headless::operation;
using State = headless::Session::State;

Got<std::wstring> ProServerActiveGet() {
  return operation("ProServerActiveGet", [](State& state) { return state.servers.active(); });
}

ProError ProServerActivate(const std::wstring& alias) {
  return operation("ProServerActivate", [&](State& state) { return state.servers.activate(alias); });
}

Got<std::wstring> ProServerWorkspaceGet(const std::wstring& server) {
  return operation("ProServerWorkspaceGet", [&](State& state) { return state.servers.workspace(server); });
}

Got<ProServerStatus> ProServerObjectStatusGet(const std::wstring& server, const std::wstring& workspace,
                                              const std::wstring& file) {
  return operation("ProServerObjectStatusGet",
                   [&](State& state) { return state.servers.status(server, workspace, file); });
}

Got<std::wstring> ProServerModelNameToAliasedURL(const std::wstring& file) {
  return operation("ProServerModelNameToAliasedURL", [&](State& state) { return state.servers.aliasedUrl(file); });
}

Got<std::wstring> ProServerAliasedURLToURL(const std::wstring& aliased) {
  return operation("ProServerAliasedURLToURL", [&](State& state) { return state.servers.url(aliased); });
}

ProError ProServerObjectsCheckout(ProMdl model, const ProServercheckoutopts& options, std::wstring& conflicts) {
  return onModel("ProServerObjectsCheckout", model, [&](State& state, Model& m) {
    return state.servers.checkOut(m, options.includeInstances == ProServerInstances::all, conflicts);
  });
}

ProError ProServerObjectsCheckin(ProMdl model, const ProServercheckinopts& options, std::wstring& conflicts) {
  return onModel("ProServerObjectsCheckin", model,
                 [&](State& state, Model& m) { return state.servers.checkIn(m, options.defaultLocation, conflicts); });
}

ProError ProServerObjectsRemove(std::wstring& conflicts) {
  return operation("ProServerObjectsRemove", [&](State& state) { return state.servers.removeAll(conflicts); });
}

ProError ProFileCopyToWS(const std::wstring& source, const std::wstring& target, const std::wstring& primary) {
  return operation("ProFileCopyToWS", [&](State& state) { return state.servers.addFile(source, target, primary); });
}

}  // namespace creo
