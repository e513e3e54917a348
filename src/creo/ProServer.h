// The PDM server and its workspace. Without a server every question is answered by ProNotFound. What hinders a change
// is told by its conflicts, a text for people that is set where the result is ProConflicts.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

struct ProServerStatus {
  bool checkedOut = false;
  bool modified = false;  // the workspace's document isn't the one that was taken from the server
};

// Alias of the active server, the primary one. ProNotFound: none.
Got<std::wstring> ProServerActiveGet();
// Makes a server that is known the active one. ProNotFound: none has that alias.
ProError ProServerActivate(const std::wstring& alias);
// Name of the workspace in use. ProNotFound: no server has that alias.
Got<std::wstring> ProServerWorkspaceGet(const std::wstring& server);
// file: "bracket.prt". ProNotFound: no such server or workspace, or the workspace has no such object; ProGeneralError:
// the server can't tell.
Got<ProServerStatus> ProServerObjectStatusGet(const std::wstring& server, const std::wstring& workspace,
                                              const std::wstring& file);
// "wtws://server/workspace/bracket.prt" of an object of the workspace, "wtpub://server/folder/bracket.prt" of another
// one; such URLs mind case, files are lower case. Then the web address behind such a URL. ProNotFound: the server has
// no such object; ProGeneralError: it is off line.
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
// The model as it was saved into the workspace becomes the object's next iteration and is closed to changes. It isn't
// saved here: what is unsaved in memory doesn't come along. Results as above, ProConflicts too where it was never saved
// there; the workspace's document is whole in any case.
ProError ProServerObjectsCheckin(ProMdl model, const ProServercheckinopts& options, std::wstring& conflicts);
// Empties the active workspace: all objects, or with conflicts none, which is ProConflicts. ProNotFound: no server is
// active; ProGeneralError: the message area has the reason.
ProError ProServerObjectsRemove(std::wstring& conflicts);
// Copies a file into the workspace; not for models, as what they use doesn't come along. target:
// "wtws://server/workspace/"; primary: the object ("bracket.prt") whose secondary content it becomes, or empty.
// ProNotFound: no such file or object; ProBadInputs: another place than the active workspace, or no object's name;
// ProConflicts: the object isn't checked out here.
ProError ProFileCopyToWS(const std::wstring& source, const std::wstring& target, const std::wstring& primary);

}  // namespace creo
