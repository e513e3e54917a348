#include "run/check_out.h"

#include "core/log.h"
#include "core/state.h"
#include "creo/ProMdl.h"
#include "creo/ProUI.h"
#include "creo/ProUITable.h"
#include "documents/filter.h"
#include "documents/server_workspace.h"
#include "run/model_rows.h"
#include "run/model_table.h"
#include "run/row_name.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace run {
namespace {

constexpr const char* kFromDisk = "kvaneFromHdd";
constexpr const char* kRefused = "kvaneWCerrLbl";
constexpr int kServerNote = 5;  // level in Creo's message area

// The active workspace; a line in Creo's area says what is missing.
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

std::vector<RefusedCheckOut>& refused() {
  static std::vector<RefusedCheckOut> all;
  return all;
}

void checkOutRow(ModelRows& rows, const documents::ServerWorkspace& workspace, const std::string& row) {
  const creo::ProMdl model = documents::retrieveByFileName(row, creo::typeExtension(rowType(row)));
  core::creoLog(L"<KVD> sourceData - " + text::fromUtf8(row));
  if (!model) return core::creoLog(L"<KVD> sourceData - Failure while use ProMdlRetrieve");
  const auto status = statusOf(workspace, row);
  if (!status) {
    if (status.error != creo::ProNotFound) refused().push_back({row, {}});
    core::creoLog(L"File is from Hdd");
    return;
  }
  rows.removeCheckOut(row);
  std::wstring conflicts;
  const auto result = status.value.checkedOut ? creo::ProNoError : creo::ProServerObjectsCheckout(model, {}, conflicts);
  if (result != creo::ProNoError) refused().push_back({row, conflicts});
  if (result == creo::ProConflicts) {
    core::creoLog(L"<KVD> Can't checkout,because conflicts");
    core::creoLog(conflicts);
  }
  rows.showCheckOut(row, result == creo::ProConflicts ? kRefused : checkOutLabel(model, row));
}

}  // namespace

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

const std::vector<RefusedCheckOut>& refusedCheckOuts() { return refused(); }

void checkOutRows(ModelRows& rows) {
  refused().clear();
  const auto workspace = workspaceOrLine();
  if (!workspace) return;
  const std::string& dialog = core::pluginState().dialogName;
  const auto names = creo::ProUITableRownamesGet(dialog, kModelTable);
  if (!rows.check(names.error, L"ProUITableRownamesGet")) return;
  for (const std::string& row : names.value) {
    const auto selected = creo::ProUICheckbuttonGetState(dialog, row + "_cb");
    if (rows.check(selected.error, L"ProUICheckbuttonGetState") && selected.value) checkOutRow(rows, workspace, row);
  }
}

}  // namespace run
