// A step of a macro, taken apart, what steps work on, and the dialogs that know steps.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "creo/ProNotify.h"
#include "creo/ProSelection.h"
#include "headless/model/models.h"
#include "headless/session/windows.h"

namespace headless {

// What steps work on, of one session.
struct MacroContext {
  Models& models;
  const Windows& windows;
  std::vector<creo::ProSelection>& selections;               // what is selected
  std::function<void(const creo::ProNotification&)> notify;  // tells who listens, at once

  // The model in the active window, where macros work as the person does; null for none.
  [[nodiscard]] Model* currentModel() const { return models.find(windows.model(windows.active())); }
  // The same; null for a drawing too.
  [[nodiscard]] Model* currentSolid() const {
    Model* model = currentModel();
    return model && model->type() != creo::ProMdlType::drawing ? model : nullptr;
  }
};

// "~ Activate `main_dlg_cur` `page_Layout_control_btn` 1" taken apart: the verb, and what stands in backquotes.
struct MacroStep {
  std::wstring verb;
  std::vector<std::wstring> names;
  int number = 0;  // what stands behind the last backquote: 1 in "~ Activate `dlg` `IndepRulesChk` 1"; 0 without one
  [[nodiscard]] bool is(std::wstring_view wanted, std::size_t count) const {
    return verb == wanted && names.size() == count;
  }
};

// What is chosen and set in the dialogs that macros drive, by dialog and component ("visual_dlg0/Table"), until the
// dialog closes.
using DialogState = std::unordered_map<std::wstring, std::wstring>;

// A dialog's steps. True: the step is one of its own and had its effect.
using StepHandler = bool (*)(const MacroContext& context, const MacroStep& step, DialogState& dialogs);

}  // namespace headless
