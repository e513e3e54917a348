#include "headless/proui/ui.h"

#include <algorithm>

#include "headless/proui/ui_state.h"

namespace headless {
namespace {

bool usable(const Component& component) { return component.shown && component.enabled; }

}  // namespace

Ui::Ui(std::function<void(const std::wstring&)> message) : state_(std::make_unique<UiState>()) {
  state_->message = std::move(message);
}
Ui::~Ui() = default;

Dialog* Ui::dialog(std::string_view name) {
  const auto found = state_->find(name);
  return found ? found.value.get() : nullptr;
}

std::vector<std::string> Ui::dialogs() const {
  std::vector<std::string> names;
  for (const auto& [name, dialog] : state_->dialogs)
    if (name != kWindowDevice) names.push_back(name);
  return names;
}

creo::Got<Component*> Ui::usableComponent(const std::string& dialog, const std::string& component, Kind kind) {
  const auto found = state_->find(dialog, component, kind);
  if (found && !usable(*found.value)) return creo::ProGeneralError;
  return found;
}

creo::ProError Ui::press(const std::string& dialog, const std::string& button) {
  const auto found = usableComponent(dialog, button, Kind::pushbutton);
  return found ? state_->run(state_->find(dialog).value, found.value->action, button) : found.error;
}

creo::ProError Ui::setCheck(const std::string& dialog, const std::string& button, bool on) {
  const auto found = usableComponent(dialog, button, Kind::checkbutton);
  if (!found || found.value->checked == on) return found.error;
  found.value->checked = on;
  return state_->run(state_->find(dialog).value, found.value->action, button);
}

creo::ProError Ui::choose(const std::string& dialog, const std::string& menu, const std::string& name) {
  const auto found = usableComponent(dialog, menu, Kind::optionmenu);
  if (!found) return found.error;
  Choices& choices = found.value->choices();
  if (std::find(choices.names.begin(), choices.names.end(), name) == choices.names.end()) return creo::ProNotFound;
  choices.selected = {name};
  return state_->run(state_->find(dialog).value, found.value->action, menu);
}

creo::ProError Ui::type(const std::string& dialog, const std::string& panel, const std::wstring& text) {
  const auto found = usableComponent(dialog, panel, Kind::inputpanel);
  if (found) found.value->text = text;
  return found.error;
}

creo::ProError Ui::pressEnter(const std::string& dialog, const std::string& panel) {
  const auto found = usableComponent(dialog, panel, Kind::inputpanel);
  return found ? state_->run(state_->find(dialog).value, found.value->action, panel) : found.error;
}

creo::ProError Ui::close(const std::string& dialog) {
  const auto found = state_->find(dialog);
  return found ? state_->run(found.value, found.value->closeAction, "") : found.error;
}

creo::ProError Ui::selectRows(const std::string& dialog, const std::string& table,
                              const std::vector<std::string>& rows) {
  const auto found = usableComponent(dialog, table, Kind::table);
  return found ? found.value->table().select(rows) : found.error;
}

creo::ProError Ui::onNode(const std::string& dialog, const std::string& tree, const std::string& node,
                          creo::ProUITreeEvent event) {
  const auto found = usableComponent(dialog, tree, Kind::tree);
  if (!found) return found.error;
  Tree::Node* touched = found.value->tree().find(node);
  if (!touched) return creo::ProNotFound;
  switch (event) {
    case creo::ProUITreeEvent::expand:
    case creo::ProUITreeEvent::collapse:
      found.value->treeContent().touched = node;
      break;
    case creo::ProUITreeEvent::select:
    case creo::ProUITreeEvent::activate:
      found.value->tree().deselectAll();
      touched->selected = true;
      break;
  }
  return state_->run(state_->find(dialog).value, found.value->treeContent().actions[static_cast<std::size_t>(event)],
                     tree);
}

void Ui::answerQuestions(std::function<int(const Question&)> answer) { state_->answer = std::move(answer); }

void Ui::answerFileQuestions(std::function<std::optional<std::wstring>(const FileQuestion&)> answer) {
  state_->fileAnswer = std::move(answer);
}

const std::vector<Question>& Ui::questions() const { return state_->questions; }

}  // namespace headless
