#include "run/check_out.h"

#include "core/log.h"
#include "core/state.h"
#include "creo/ProMdl.h"
#include "creo/ProUI.h"
#include "creo/ProUITable.h"
#include "documents/filter.h"
#include "run/row_name.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace run {
namespace {

constexpr const char* kRefused = "kvaneWCerrLbl";

std::vector<RefusedCheckOut>& refused() {
  static std::vector<RefusedCheckOut> all;
  return all;
}

void checkOutRow(ModelRows& rows, const documents::ServerWorkspace& workspace, const std::string& row) {
  if (!workspace) return refused().push_back({row, {}});
  const creo::ProMdl model = documents::retrieveByFileName(row, creo::typeExtension(rowType(row)));
  core::creoLog(L"<KVD> sourceData - " + text::fromUtf8(row));
  if (!model) {
    refused().push_back({row, {}});
    return core::creoLog(L"<KVD> sourceData - Failure while use ProMdlRetrieve");
  }
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

const std::vector<RefusedCheckOut>& refusedCheckOuts() { return refused(); }

void checkOutRows(ModelRows& rows) {
  refused().clear();
  const auto workspace = workspaceOrLine();
  const std::string& dialog = core::pluginState().dialogName;
  const auto names = creo::ProUITableRownamesGet(dialog, kModelTable);
  if (!rows.check(names.error, L"ProUITableRownamesGet")) return;
  for (const std::string& row : names.value) {
    const auto selected = creo::ProUICheckbuttonGetState(dialog, row + "_cb");
    if (rows.check(selected.error, L"ProUICheckbuttonGetState") && selected.value) checkOutRow(rows, workspace, row);
  }
}

}  // namespace run
