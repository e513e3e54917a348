#include "run/check_out_state.h"

#include "core/log.h"
#include "core/state.h"
#include "creo/ProUI.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace run {
namespace {

constexpr const char* kFromDisk = "kvaneFromHdd";
constexpr int kServerNote = 5;  // level in Creo's message area

}  // namespace

documents::ServerWorkspace workspaceOrLine() {
  auto workspace = documents::activeWorkspace();
  if (!workspace.hasServer)
    core::creoLog(L"<KVD> can't get active server", kServerNote);
  else if (!workspace)
    core::creoLog(L"<KVD> can't get active workspace");
  return workspace;
}

// Servers know files with their endings in lower case: "BRACKET.prt".
creo::Got<creo::ProServerStatus> statusOf(const documents::ServerWorkspace& workspace, const std::string& row) {
  const std::wstring name = text::fromUtf8(row);
  const std::size_t dot = name.rfind(L'.');
  return documents::statusIn(workspace, name.substr(0, dot) + text::lower(name.substr(dot)));
}

const char* checkOutLabel(creo::ProMdl model, const std::string& row) {
  const auto workspace = workspaceOrLine();
  if (!workspace) return kFromDisk;
  const auto status = statusOf(workspace, row);
  if (!status || !documents::hasServerLocation(model)) return kFromDisk;
  if (status.value.checkedOut) return status.value.modified ? "kvaneWCmodLbl" : "kvaneWCLbl";
  return status.value.modified ? "kvaneModLbl" : "kvaneNotCheckedOut";
}

bool showsCheckedOut(const std::string& row) {
  const std::string image = creo::ProUILabelBitmapGet(core::pluginState().dialogName, row + "_wc").value;
  return image == "checkedout.gif" || image == "checkedoutmod.gif";
}

}  // namespace run
