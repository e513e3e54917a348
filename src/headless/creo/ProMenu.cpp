#include "creo/ProMenu.h"

#include "headless/creo/operation.h"
#include "headless/proui/resource.h"

namespace creo {

using headless::operation;
using State = headless::Session::State;

ProError ProMenubarMenuAdd(const std::string& menu, const std::string& /*labelKey*/, const std::string& /*before*/,
                           const std::wstring& /*messageFile*/) {
  return operation("ProMenubarMenuAdd", [&](State& state) { return state.menu.addMenu(menu); });
}

Got<ProCommand> ProCmdActionAdd(const std::string& name, std::function<void()> action, std::function<int()> access) {
  return operation("ProCmdActionAdd", [&](State& state) -> Got<ProCommand> {
    if (name.empty()) return ProBadInputs;
    return state.menu.addCommand(name, std::move(action), std::move(access));
  });
}

ProError ProMenubarmenuPushbuttonAdd(const std::string& menu, const std::string& button,
                                     const std::string& /*labelKey*/, const std::string& /*helpKey*/,
                                     const std::wstring& /*messageFile*/, ProCommand command) {
  return operation("ProMenubarmenuPushbuttonAdd",
                   [&](State& state) { return state.menu.addButton(menu, button, command); });
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
