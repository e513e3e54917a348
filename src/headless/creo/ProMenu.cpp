#include "creo/ProMenu.h"

#include "headless/creo/operation.h"
#include "headless/proui/resource.h"
#include "text/encoding.h"

namespace creo {

using headless::operation;
using State = headless::Session::State;

namespace {

// A text of the message file by its key; the key itself where there is none.
std::wstring shownText(State& state, const std::wstring& file, const std::string& key) {
  const std::wstring* found = state.messageFiles.find(file, text::fromUtf8(key));
  return found ? *found : text::fromUtf8(key);
}

}  // namespace

ProError ProMenubarMenuAdd(const std::string& menu, const std::string& labelKey, const std::string& /*before*/,
                           const std::wstring& messageFile) {
  return operation("ProMenubarMenuAdd",
                   [&](State& state) { return state.menu.addMenu(menu, shownText(state, messageFile, labelKey)); });
}

Got<ProCommand> ProCmdActionAdd(const std::string& name, std::function<void()> action, std::function<int()> access) {
  return operation("ProCmdActionAdd", [&](State& state) -> Got<ProCommand> {
    if (name.empty()) return ProBadInputs;
    return state.menu.addCommand(name, std::move(action), std::move(access));
  });
}

ProError ProMenubarmenuPushbuttonAdd(const std::string& menu, const std::string& button, const std::string& labelKey,
                                     const std::string& helpKey, const std::wstring& messageFile, ProCommand command) {
  return operation("ProMenubarmenuPushbuttonAdd", [&](State& state) {
    headless::MenuButton made;
    made.menu = menu;
    made.name = button;
    made.label = shownText(state, messageFile, labelKey);
    made.help = shownText(state, messageFile, helpKey);
    return state.menu.addButton(made, command);
  });
}

ProError ProCmdDesignate(ProCommand command, const std::string& /*labelKey*/, const std::string& /*helpKey*/,
                         const std::string& /*descriptionKey*/, const std::wstring& /*messageFile*/) {
  return operation("ProCmdDesignate", [&](State& state) -> ProError {
    headless::Command* known = state.menu.command(command);
    if (!known) return ProBadInputs;
    known->inMenu = true;
    return ProNoError;
  });
}

ProError ProCmdIconSet(ProCommand command, const std::string& icon) {
  return operation("ProCmdIconSet", [&](State& state) -> ProError {
    headless::Command* known = state.menu.command(command);
    if (!known) return ProBadInputs;
    if (headless::findResource(state.options.textFolder, state.options.language, icon).empty()) return ProNotFound;
    known->icon = icon;
    return ProNoError;
  });
}

}  // namespace creo
