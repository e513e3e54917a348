#include "ui/history_dialog.h"

#include "core/log.h"
#include "core/state.h"
#include "creo/ProUITable.h"
#include "run/history.h"
#include "run/model_table.h"

namespace ui {
namespace {

constexpr const char* kDialog = "kvanehistory";
constexpr const char* kText = "kvaneHistoryTA";
constexpr const char* kOk = "kvaneHistoryOkBtn";

void leave(const std::string&, const std::string&) {
  creo::ProUIDialogExit(kDialog, 0);
  creo::ProUIDialogDestroy(kDialog);
}

}  // namespace

void openHistoryDialog() {
  const auto rows = creo::ProUITableSelectednamesGet(core::pluginState().dialogName, run::kModelTable);
  if (!rows || rows.value.empty()) return;
  const creo::ProError created = creo::ProUIDialogCreate(kDialog, kDialog);
  if (created != creo::ProNoError && created != creo::ProExists) {
    core::creoLog(L"<KVD> main - Error at open kvanehistory");
    return;
  }
  if (creo::ProUITextareaValueSet(kDialog, kText, run::historyText(rows.value.front())) ||
      creo::ProUIPushbuttonActivateActionSet(kDialog, kOk, &leave) || creo::ProUIDialogCloseActionSet(kDialog, &leave))
    core::creoLog(L"<KVD> main - Error at fill kvanehistory");
  // One that stands open already shows the new text.
  if (created == creo::ProNoError && !creo::ProUIDialogActivate(kDialog))
    core::creoLog(L"<KVD> main - Error at open kvanehistory");
}

}  // namespace ui
