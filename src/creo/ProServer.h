// The PDM server and its workspace. Without a server every question is answered by ProNotFound. What hinders a change
// is told by its conflicts, a text for people that is set where the result is ProConflicts.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

struct ProServerStatus {
  bool checkedOut = false;
  bool modified = false;  // the workspace's document isn't the one that was taken from the server
};

// Alias of the active server. ProNotFound: none.
Got<std::wstring> ProServerActiveGet();
// Makes a server that is known the active one. ProNotFound: none has that alias.
ProError ProServerActivate(const std::wstring& alias);
Got<std::wstring> ProServerWorkspaceGet(const std::wstring& server);
// file: "bracket.prt". ProNotFound: the workspace has no such object; ProGeneralError: the server can't tell.
Got<ProServerStatus> ProServerObjectStatusGet(const std::wstring& server, const std::wstring& workspace,
                                              const std::wstring& file);
// "wtpub://..." of an object, and the web address behind such a URL. ProNotFound: the server has no such object.
Got<std::wstring> ProServerModelNameToAliasedURL(const std::wstring& file);
Got<std::wstring> ProServerAliasedURLToURL(const std::wstring& aliased);

// Instances of a generic that are checked out with it.
enum class ProServerInstances : int { none = 0, all = 2 };
struct ProServercheckoutopts {
  ProServerInstances includeInstances = ProServerInstances::none;
};
// Opens a model of the workspace for changes. ProNotFound: the server doesn't know it; ProGeneralError: the message
// area has the reason.
ProError ProServerObjectsCheckout(ProMdl model, const ProServercheckoutopts& options, std::wstring& conflicts);

struct ProServercheckinopts {
  std::wstring defaultLocation;  // the server's folder for an object that is new: "/Designs"; empty: the server's own
};
// The model as it is in memory, saved in the workspace, becomes the object's next iteration and is closed to changes.
// Results as above; the workspace's document is whole in any case.
ProError ProServerObjectsCheckin(ProMdl model, const ProServercheckinopts& options, std::wstring& conflicts);
// Empties the workspace: all objects, or with conflicts none.
ProError ProServerObjectsRemove(std::wstring& conflicts);
// Copies a file into the workspace. target: "wtws://server/workspace/"; primary: the object ("bracket.prt") whose
// secondary content it becomes, or empty. ProNotFound: no such file or object; ProBadInputs: another place than the
// active workspace, or no object's name; ProConflicts: the object isn't checked out here.
ProError ProFileCopyToWS(const std::wstring& source, const std::wstring& target, const std::wstring& primary);

}  // namespace creo
