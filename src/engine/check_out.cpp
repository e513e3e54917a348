#include "engine/check_out.h"

#include <optional>

#include "core/log.h"
#include "core/state.h"
#include "creo/ProMdl.h"
#include "creo/ProParameter.h"
#include "creo/ProServer.h"
#include "creo/ProUITable.h"
#include "documents/filter.h"
#include "engine/model_rows.h"
#include "engine/model_table.h"
#include "engine/row_name.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace engine {
namespace {

constexpr const char* kFromDisk = "kvaneFromHdd";
constexpr const char* kRefused = "kvaneWCerrLbl";
constexpr int kServerNote = 5;  // level in Creo's message area

struct Workspace {
  std::wstring server, name;
};

// The active workspace; nothing, after its line, without one.
std::optional<Workspace> activeWorkspace() {
  const auto server = creo::ProServerActiveGet();
  if (!server) {
    core::creoLog(L"<KVD> can't get active server", kServerNote);
    return std::nullopt;
  }
  const auto name = creo::ProServerWorkspaceGet(server.value);
  if (!name) {
    core::creoLog(L"<KVD> can't get active workspace", kServerNote);
    return std::nullopt;
  }
  return Workspace{server.value, name.value};
}

creo::Got<creo::ProServerStatus> statusOf(const Workspace& workspace, const std::string& row) {
  return creo::ProServerObjectStatusGet(workspace.server, workspace.name, text::lower(text::fromUtf8(row)));
}

// The server writes this parameter into what comes from it.
bool hasLocation(creo::ProMdl model) {
  const auto owner = creo::ProMdlToModelitem(model);
  return owner && creo::ProParameterInit(owner.value, L"PTC_WM_LOCATION");
}

void checkOutRow(ModelRows& rows, const Workspace& workspace, const std::string& row) {
  const creo::ProMdl model = documents::retrieveByFileName(row, creo::typeExtension(rowType(row)));
  if (!model) return;
  core::creoLog(L"<KVD> sourceData - " + text::fromUtf8(row));
  const auto status = statusOf(workspace, row);
  if (!status) {
    core::creoLog(L"File is from Hdd");
    return;
  }
  rows.removeCheckOut(row);
  if (!status.value.checkedOut && creo::ProServerObjectsCheckout(model, false) == creo::ProConflicts) {
    core::creoLog(L"<KVD> Can't checkout,because conflicts");
    rows.showCheckOut(row, kRefused);
    return;
  }
  rows.showCheckOut(row, checkOutLabel(model, row));
}

}  // namespace

const char* checkOutLabel(creo::ProMdl model, const std::string& row) {
  const auto workspace = activeWorkspace();
  if (!workspace) return kFromDisk;
  const auto status = statusOf(*workspace, row);
  if (!status || !hasLocation(model)) return kFromDisk;
  if (status.value.checkedOut) return status.value.modified ? "kvaneWCmodLbl" : "kvaneWCLbl";
  return status.value.modified ? "kvaneModLbl" : "kvaneNotCheckedOut";
}

void checkOutRows(ModelRows& rows) {
  const auto workspace = activeWorkspace();
  if (!workspace) return;
  const std::string& dialog = core::pluginState().dialogName;
  const auto names = creo::ProUITableRownamesGet(dialog, kModelTable);
  if (!rows.check(names.error, L"ProUITableRownamesGet")) return;
  for (const std::string& row : names.value) {
    const auto selected = creo::ProUICheckbuttonGetState(dialog, row + "_cb");
    if (selected && selected.value) checkOutRow(rows, *workspace, row);
  }
}

}  // namespace engine
