#include "ui/filter_dialog.h"

#include "core/dialogs.h"
#include "core/log.h"
#include "core/state.h"
#include "creo/ProUI.h"
#include "run/choosers.h"
#include "run/model_table.h"

namespace ui {
namespace {

constexpr const char* kDialog = run::kFilterDialog;
constexpr const char* kChooser = "kvaneFilterChooser";
constexpr const char* kUseListFilter = "kvaneFilterGlobal";
constexpr const char* kOk = "kvaneFilterOkBtn";

void pressUseListFilter(const std::string& dialog, const std::string& button) {
  const auto on = creo::ProUICheckbuttonGetState(dialog, button);
  if (!on) return;
  core::pluginState().useGlobFilterNow = on.value ? 1 : 0;
  run::refreshModelTable();
}

void leave(const std::string& dialog, const std::string&) { creo::ProUIDialogExit(dialog, 0); }

}  // namespace

void createFilterDialog() {
  if (core::createDialog(kDialog, kDialog)) {
    core::creoLog(L"<KVD> main - Error at create kvanefilter");
    return;
  }
  if (creo::ProUIOptionmenuSelectActionSet(kDialog, kChooser,
                                           [](const std::string&, const std::string&) { applyChosenFilter(); }))
    core::creoLog(L"<KVD> main - Error at add Filterlist Optionmenu Action");
  if (creo::ProUICheckbuttonActivateActionSet(kDialog, kUseListFilter, &pressUseListFilter))
    core::creoLog(L"<KVD> main - Error at set ReloadFiltered");
}

void fillFilterChooser() { run::listFilters(); }

void openFilterDialog() {
  if (creo::ProUIDialogCloseActionSet(kDialog, &leave) ||
      creo::ProUIPushbuttonActivateActionSet(kDialog, kOk, &leave) || !creo::ProUIDialogActivate(kDialog))
    core::creoLog(L"<KVD> main - Error at open kvanefilter");
}

void applyChosenFilter() {
  const std::string chosen = run::chosenName(kDialog, kChooser);
  if (chosen.empty() || chosen == run::kNoFilter)
    run::dropGlobalFilter({});
  else
    run::loadGlobalFilter(chosen);
}

}  // namespace ui
