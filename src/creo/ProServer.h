// The PDM server and its workspace.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

struct ProServerStatus {
  bool checkedOut = false;
  bool modified = false;
};

// Alias of the active server. ProNotFound: none.
Got<std::wstring> ProServerActiveGet();
// By its alias. ProNotFound: no server is registered under it.
ProError ProServerActivate(const std::wstring& server);
Got<std::wstring> ProServerWorkspaceGet(const std::wstring& server);
// file: "bracket.prt". ProNotFound: the server has no such object.
Got<ProServerStatus> ProServerObjectStatusGet(const std::wstring& server, const std::wstring& workspace,
                                              const std::wstring& file);
// "wtpub://..." of an object, and the web address behind such a URL. ProNotFound: the server has no such object.
Got<std::wstring> ProServerModelNameToAliasedURL(const std::wstring& file);
Got<std::wstring> ProServerAliasedURLToURL(const std::wstring& aliased);
// ProConflicts: refused.
ProError ProServerObjectsCheckout(ProMdl model, bool includeInstances);

}  // namespace creo
