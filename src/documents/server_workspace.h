// The active PDM server and its workspace, as filters, the table of models, the dialog and actions ask for them.
#pragma once

#include <string>

#include "creo/ProServer.h"

namespace documents {

struct ServerWorkspace {
  std::wstring server, name;  // the server's alias, the workspace's name
  bool hasServer = false, isThere = false;
  // Both can be had.
  explicit operator bool() const { return isThere; }
};
ServerWorkspace activeWorkspace();

// What the server says of a file of the workspace: "BRACKET.prt". ProNotFound: there is no such object or no workspace.
creo::Got<creo::ProServerStatus> statusIn(const ServerWorkspace& workspace, const std::wstring& file);

// The server writes the parameter PTC_WM_LOCATION into what comes from it; an empty one counts as none.
bool hasServerLocation(creo::ProMdl model);

}  // namespace documents
