#include "creo/ProMessage.h"
#include "creo/ProUI.h"
#include "headless/creo/proui_calls.h"
#include "headless/proui/resource.h"
#include "headless/store/faults.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/format.h"

namespace creo {

using headless::Call;
using headless::changeDialog;
using headless::Dialog;
using headless::Session;
using headless::uiState;

namespace {

// Shows and waits. Without a screen nobody can be waited for: a person's answer is asked for once, then the window's
// cross is used, and a dialog that stays even then is taken away.
Got<int> activateModal(const std::shared_ptr<Dialog>& dialog) {
  if (dialog->active) return ProGeneralError;
  dialog->visible = dialog->active = true;
  dialog->status = 0;
  uiState().ask({dialog->name(), dialog->title, {}, {}});
  if (dialog->active) headless::run(dialog, dialog->closeAction, "");
  if (!dialog->active) return dialog->status;
  dialog->visible = dialog->active = false;
  Session::current().showMessage(
      text::format(L"dialog '%s': its close action doesn't end it", text::fromUtf8(dialog->name())));
  return ProGeneralError;
}

}  // namespace

ProError ProUIDialogCreate(const std::string& dialog, const std::string& resource) {
  Call call("ProUIDialogCreate");
  if (call.failed()) return call.error();
  if (dialog.empty()) return ProBadInputs;
  if (uiState().dialogs.contains(dialog)) return ProExists;
  const auto& options = Session::current().options();
  const std::wstring path = headless::findResource(options.textFolder, options.language, resource + ".json");
  if (path.empty()) return ProNotFound;
  const auto content = os::files().read(path);
  if (!content) {
    Session::current().showMessage(headless::cantRead(path, content.error));
    return ProGeneralError;
  }
  auto read = headless::readDialog(dialog, content.value, path, options.language);
  if (!read.dialog) {
    Session::current().showMessage(read.fault);
    return ProGeneralError;
  }
  uiState().dialogs.emplace(dialog, std::move(read.dialog));
  return ProNoError;
}

ProError ProUIDialogTraitSet(const std::string& dialog, ProUIDialogTrait trait, bool on) {
  return changeDialog("ProUIDialogTraitSet", dialog,
                      [&](Dialog& d) { d.traits[static_cast<std::size_t>(trait)] = on; });
}

ProError ProUIDialogDestroy(const std::string& dialog) {
  return changeDialog("ProUIDialogDestroy", dialog, [&](Dialog& d) {
    d.visible = d.active = false;
    uiState().dialogs.erase(dialog);
  });
}

Got<int> ProUIDialogActivate(const std::string& dialog) {
  Call call("ProUIDialogActivate");
  if (call.failed()) return call.error();
  const auto found = uiState().find(dialog);
  if (!found) return found.error;
  if (!found.value->traits[static_cast<std::size_t>(ProUIDialogTrait::modeless)]) return activateModal(found.value);
  found.value->visible = found.value->active = true;
  return 0;
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

Got<int> ProUIMessageDialogDisplay(const std::wstring& title, const std::wstring& text,
                                   const std::vector<std::wstring>& buttons) {
  Call call("ProUIMessageDialogDisplay");
  if (call.failed()) return call.error();
  if (buttons.empty()) return ProBadInputs;
  const int pressed = uiState().ask({{}, title, text, buttons});
  if (pressed < 0 || pressed >= static_cast<int>(buttons.size())) return ProBadInputs;
  return pressed;
}

}  // namespace creo
