#include "creo/ProMenu.h"

#include "headless/creo/operation.h"
#include "headless/proui/resource.h"
#include "text/encoding.h"

namespace creo {

using headless::operation;
using State = headless::Session::State;

namespace {

// A text of the message file by its key. ProNotFound: no such file or key.
Got<std::wstring> shownText(State& state, const std::wstring& file, const std::string& key) {
  const std::wstring* found = state.messageFiles.find(file, text::fromUtf8(key));
  if (!found) return ProNotFound;
  return *found;
}

}  // namespace

ProError ProMenubarMenuAdd(const std::string& menu, const std::string& labelKey, const std::string& /*before*/,
                           const std::wstring& messageFile) {
  return operation("ProMenubarMenuAdd", [&](State& state) -> ProError {
    const auto label = shownText(state, messageFile, labelKey);
    return label ? state.menu.addMenu(menu, label.value) : label.error;
  });
}

Got<ProCommand> ProCmdActionAdd(const std::string& name, std::function<void()> action, std::function<int()> access) {
  return operation("ProCmdActionAdd", [&](State& state) -> Got<ProCommand> {
    if (name.empty()) return ProBadInputs;
    return state.menu.addCommand(name, std::move(action), std::move(access));
  });
}

ProError ProMenubarmenuPushbuttonAdd(const std::string& menu, const std::string& button, const std::string& labelKey,
                                     const std::string& helpKey, const std::wstring& messageFile, ProCommand command) {
  return operation("ProMenubarmenuPushbuttonAdd", [&](State& state) -> ProError {
    const auto label = shownText(state, messageFile, labelKey), help = shownText(state, messageFile, helpKey);
    if (!label || !help) return ProNotFound;
    headless::MenuButton made;
    made.menu = menu;
    made.name = button;
    made.label = label.value;
    made.help = help.value;
    return state.menu.addButton(made, command);
  });
}

ProError ProCmdDesignate(ProCommand command, const std::string& labelKey, const std::string& helpKey,
                         const std::string& descriptionKey, const std::wstring& messageFile) {
  return operation("ProCmdDesignate", [&](State& state) -> ProError {
    headless::Command* known = state.menu.command(command);
    if (!known) return ProBadInputs;
    for (const std::string& key : {labelKey, helpKey, descriptionKey})
      if (!shownText(state, messageFile, key)) return ProNotFound;
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
