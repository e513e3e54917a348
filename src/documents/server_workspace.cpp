#include "documents/server_workspace.h"

#include "creo/ProMdl.h"
#include "creo/ProParameter.h"

namespace documents {

ServerWorkspace activeWorkspace() {
  ServerWorkspace workspace;
  const auto server = creo::ProServerActiveGet();
  if (!server) return workspace;
  workspace.hasServer = true;
  workspace.server = server.value;
  const auto name = creo::ProServerWorkspaceGet(server.value);
  if (!name) return workspace;
  workspace.isThere = true;
  workspace.name = name.value;
  return workspace;
}

creo::Got<creo::ProServerStatus> statusIn(const ServerWorkspace& workspace, const std::wstring& file) {
  if (!workspace) return creo::ProNotFound;
  return creo::ProServerObjectStatusGet(workspace.server, workspace.name, file);
}

bool hasServerLocation(creo::ProMdl model) {
  const auto owner = creo::ProMdlToModelitem(model);
  if (!owner) return false;
  const auto parameter = creo::ProParameterInit(owner.value, L"PTC_WM_LOCATION");
  if (!parameter) return false;
  const auto value = creo::ProParameterValueGet(parameter.value);
  return value && value.value.type == creo::ProParamvalueType::string && !value.value.string.empty();
}

}  // namespace documents
