#include "headless/macros/layer_steps.h"

#include "headless/model/layer_rules.h"
#include "headless/model/layers.h"
#include "text/encoding.h"

namespace headless {
namespace {

constexpr std::wstring_view kLayerDialog = L"layer_dlg_cur", kMainDialog = L"main_dlg_cur",
                            kRulesDialog = L"newlayerprops";
// What is held between steps: the selected layer, the layer that the rules dialog is open for, its checks.
constexpr const wchar_t *kSelected = L"layer tree/selected", *kOpenFor = L"newlayerprops/layer",
                        *kIndependent = L"newlayerprops/IndepRulesChk", *kAssociative = L"newlayerprops/AssocRulesChk";

// The layer of that name in the current model; null for none.
LayerRecord* currentLayer(const MacroContext& context, const std::wstring& name) {
  const Model* model = context.currentModel();
  return model ? layerNamed(*model->document, text::toUtf8(name)) : nullptr;
}

// "node0:NAME" selects a layer, "node0" none.
bool select(const MacroContext& context, const std::wstring& node, DialogState& dialogs) {
  constexpr std::wstring_view kRoot = L"node0";
  if (!node.starts_with(kRoot)) return false;
  dialogs.erase(kSelected);
  if (node == kRoot) return true;
  const std::wstring name = node.substr(kRoot.size() + 1);
  if (!currentLayer(context, name)) return false;
  dialogs[kSelected] = name;
  return true;
}

bool command(const MacroContext& context, const std::wstring& name, DialogState& dialogs) {
  const Model* model = context.currentModel();
  const bool isDrawing = model && model->type() == creo::ProMdlType::drawing;
  if (name == L"ProCmdViewLyrs") return model && !isDrawing;
  if (name == L"ProCmdDrwTreeShowLyrs") return isDrawing;
  if (name != L"ProCmdLayer_LayProps" || !dialogs.contains(kSelected)) return false;
  dialogs[kOpenFor] = dialogs[kSelected];
  return true;
}

// True: it was another one.
bool take(DialogState& dialogs, const wchar_t* check, bool& into) {
  const auto found = dialogs.find(check);
  const bool wanted = found == dialogs.end() ? into : found->second == L"1";
  return std::exchange(into, wanted) != wanted;
}

void close(DialogState& dialogs) {
  for (const wchar_t* entry : {kOpenFor, kIndependent, kAssociative}) dialogs.erase(entry);
}

bool acceptRules(const MacroContext& context, DialogState& dialogs) {
  LayerRecord* layer = currentLayer(context, dialogs[kOpenFor]);
  if (layer) {
    const bool independent = take(dialogs, kIndependent, layer->independentRules);
    const bool associative = take(dialogs, kAssociative, layer->associativeRules);
    const Model& model = *context.currentModel();
    const bool settled = settleRules(model, *layer);
    if (independent || associative || settled) model.document->touch(nullptr);
  }
  close(dialogs);
  return layer != nullptr;
}

bool rulesDialog(const MacroContext& context, const MacroStep& step, DialogState& dialogs) {
  if (!dialogs.contains(kOpenFor) || step.names.size() < 2) return false;
  const std::wstring& component = step.names[1];
  if (step.verb == L"Select") return component == L"PropTab" || component == L"RuleOptionsCasc";
  if (step.verb == L"Close") return component == L"RuleOptionsCasc";
  if (step.verb != L"Activate") return false;
  if (component == L"OkBtn") return acceptRules(context, dialogs);
  if (component != L"IndepRulesChk" && component != L"AssocRulesChk") return false;
  dialogs[std::wstring(kRulesDialog) + L'/' + component] = step.number == 0 ? L"0" : L"1";
  return true;
}

}  // namespace

bool layerSteps(const MacroContext& context, const MacroStep& step, DialogState& dialogs) {
  if (step.is(L"Command", 1)) return command(context, step.names[0], dialogs);
  if (step.names.empty()) return false;
  const std::wstring& dialog = step.names[0];
  if (dialog == kRulesDialog) return rulesDialog(context, step, dialogs);
  if (dialog == kLayerDialog && step.is(L"Close", 2)) {
    dialogs.erase(kSelected);
    return true;
  }
  if (!step.is(L"Select", 3)) return false;
  const std::wstring& component = step.names[1];
  if (dialog == kMainDialog && component == L"rad_list_layers_for") return true;
  const bool isTree = (dialog == kLayerDialog && component == L"PHLayerUI.AssyTree") ||
                      (dialog == kMainDialog && component == L"PHTLeft.PHLayerUI.AssyTree");
  return isTree && select(context, step.names[2], dialogs);
}

}  // namespace headless
