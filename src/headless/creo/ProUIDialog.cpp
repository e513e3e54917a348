#include "creo/ProUI.h"
#include "headless/creo/proui_calls.h"
#include "headless/proui/resource.h"
#include "headless/store/faults.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/format.h"

namespace creo {

using headless::changeDialog;
using headless::Dialog;
using headless::operation;
using State = headless::Session::State;

namespace {

// Shows and waits. Without a screen nobody can be waited for: a person's answer is asked for once, then the window's
// cross is used, and a dialog that stays even then is taken away.
Got<int> activateModal(State& state, const std::shared_ptr<Dialog>& dialog) {
  if (dialog->active) return ProGeneralError;
  dialog->visible = dialog->active = true;
  dialog->status = 0;
  state.ui.state().ask({dialog->name(), dialog->title, {}, {}});
  if (dialog->active) state.ui.state().run(dialog, dialog->closeAction, "");
  if (!dialog->active) return dialog->status;
  dialog->visible = dialog->active = false;
  state.showMessage(text::format(L"dialog '%s': its close action doesn't end it", text::fromUtf8(dialog->name())));
  return ProGeneralError;
}

}  // namespace

ProError ProUIDialogCreate(const std::string& dialog, const std::string& resource) {
  return operation("ProUIDialogCreate", [&](State& state) -> ProError {
    auto& dialogs = state.ui.state().dialogs;
    if (dialog.empty()) return ProBadInputs;
    if (dialogs.contains(dialog)) return ProGeneralError;
    const std::string& language = state.options.language;
    const std::wstring path = headless::findResource(state.options.textFolder, language, resource + ".json");
    if (path.empty()) {
      state.showMessage(
          text::format(L"dialog '%s': there is no resource '%s'", text::fromUtf8(dialog), text::fromUtf8(resource)));
      return ProGeneralError;
    }
    const auto content = os::files().read(path);
    if (!content) {
      state.showMessage(headless::cantRead(path, content.error));
      return ProGeneralError;
    }
    auto read = headless::readDialog(dialog, content.value, path, language);
    if (!read.dialog) {
      state.showMessage(read.fault);
      return ProGeneralError;
    }
    dialogs.emplace(dialog, std::move(read.dialog));
    return ProNoError;
  });
}

ProError ProUIDialogTraitSet(const std::string& dialog, ProUIDialogTrait trait, bool on) {
  return changeDialog("ProUIDialogTraitSet", dialog,
                      [&](Dialog& d) { d.traits[static_cast<std::size_t>(trait)] = on; });
}

ProError ProUIDialogDestroy(const std::string& dialog) {
  return operation("ProUIDialogDestroy", [&](State& state) -> ProError {
    const auto found = state.ui.state().find(dialog);  // keeps it while the name may be its own
    if (!found) return found.error;
    found.value->visible = found.value->active = false;
    state.ui.state().dialogs.erase(found.value->name());
    return ProNoError;
  });
}

Got<int> ProUIDialogActivate(const std::string& dialog) {
  return operation("ProUIDialogActivate", [&](State& state) -> Got<int> {
    const auto found = state.ui.state().find(dialog);
    if (!found) return found.error;
    Dialog& shown = *found.value;
    if (!shown.traits[static_cast<std::size_t>(ProUIDialogTrait::modeless)]) return activateModal(state, found.value);
    shown.visible = shown.active = true;
    return 0;
  });
}

ProError ProUIDialogExit(const std::string& dialog, int status) {
  return changeDialog("ProUIDialogExit", dialog, [&](Dialog& d) {
    d.visible = d.active = false;
    d.status = status;
  });
}

ProError ProUIDialogShow(const std::string& dialog) {
  return changeDialog("ProUIDialogShow", dialog, [](Dialog& d) { d.visible = true; });
}

ProError ProUIDialogHide(const std::string& dialog) {
  return changeDialog("ProUIDialogHide", dialog, [](Dialog& d) { d.visible = false; });
}

ProError ProUIDialogTitleSet(const std::string& dialog, const std::wstring& title) {
  return changeDialog("ProUIDialogTitleSet", dialog, [&](Dialog& d) { d.title = title; });
}

ProError ProUIDialogBitmapSet(const std::string& dialog, const std::string& image) {
  return changeDialog("ProUIDialogBitmapSet", dialog, [&](Dialog& d) { d.icon = image; });
}

ProError ProUIDialogCloseActionSet(const std::string& dialog, ProUIAction action) {
  return changeDialog("ProUIDialogCloseActionSet", dialog,
                      [&](Dialog& d) { d.closeAction = headless::shared(std::move(action)); });
}

}  // namespace creo
