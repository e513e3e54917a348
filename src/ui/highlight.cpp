#include "ui/highlight.h"

#include <set>

#include "core/log.h"
#include "core/state.h"
#include "creo/ProFeature.h"
#include "creo/ProMdl.h"
#include "creo/ProModelitem.h"
#include "creo/ProSelection.h"
#include "creo/ProUI.h"
#include "creo/ProUITable.h"
#include "run/model_table.h"
#include "run/row_name.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace ui {
namespace {

using namespace creo;

constexpr int kColor = 1;

using Wanted = std::set<std::pair<std::wstring, ProMdlType>>;  // names in upper case

class Search {
 public:
  Search(const Wanted& wanted, ProMdl top) : wanted_(wanted), path_{top, {}} {}

  void look() { look(path_.assembly); }

 private:
  void look(ProMdl assembly) {
    if (!inside_.insert(assembly).second) return;  // an assembly inside itself
    ProSolidFeatVisit(assembly, [&](const ProFeature& feature) {
      if (ProFeatureTypeGet(feature).value == kComponentFeature) take(feature);
      return ProNoError;
    });
    inside_.erase(assembly);
  }

  void take(const ProFeature& component) {
    const auto model = ProAsmcompMdlGet(component);
    if (!model) return;
    const ProMdlType type = ProMdlTypeGet(model.value).value;
    path_.components.push_back(component.id);
    if (wanted_.contains({text::upper(ProMdlNameGet(model.value).value), type})) show(model.value);
    if (type == ProMdlType::assembly) look(model.value);
    path_.components.pop_back();
  }

  void show(ProMdl model) const {
    const auto item = ProMdlToModelitem(model);
    if (!item) return;
    const ProSelection selection{item.value, path_};
    if (ProSelbufferSelectionAdd(selection) == ProNoError) ProSelectionHighlight(selection, kColor);
  }

  const Wanted& wanted_;
  ProAsmcomppath path_;  // from the top down to where the search is
  std::set<ProMdl> inside_;
};

}  // namespace

void highlightModels(const std::vector<std::string>& rows) {
  const auto current = ProMdlCurrentGet();
  if (!current || ProMdlTypeGet(current.value).value != ProMdlType::assembly) return;
  Wanted wanted;
  for (const std::string& row : rows) wanted.emplace(text::upper(run::rowModelName(row)), run::rowType(row));
  ProSelbufferClear();
  Search(wanted, current.value).look();
}

void highlightMarkedRows() {
  highlightModels(ProUITableSelectednamesGet(core::pluginState().dialogName, run::kModelTable).value);
}

void highlightChosenRows() {
  const std::string& dialog = core::pluginState().dialogName;
  std::vector<std::string> chosen;
  for (const std::string& row : ProUITableRownamesGet(dialog, run::kModelTable).value) {
    const auto state = ProUICheckbuttonGetState(dialog, row + "_cb");
    if (!state) core::creoLog(L"<KVD> Can't read whether the model is chosen: " + text::fromUtf8(row));
    if (state && state.value) chosen.push_back(row);
  }
  highlightModels(chosen);
}

}  // namespace ui
