#include "ui/history_dialog.h"

#include "core/dialogs.h"
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
  if (core::createDialog(kDialog, kDialog)) {
    core::creoLog(L"<KVD> main - Error at open kvanehistory");
    return;
  }
  if (creo::ProUITextareaValueSet(kDialog, kText, run::historyText(rows.value.front())) ||
      creo::ProUIPushbuttonActivateActionSet(kDialog, kOk, &leave) || creo::ProUIDialogCloseActionSet(kDialog, &leave))
    core::creoLog(L"<KVD> main - Error at fill kvanehistory");
  if (!creo::ProUIDialogActivate(kDialog)) core::creoLog(L"<KVD> main - Error at open kvanehistory");
}

}  // namespace ui
