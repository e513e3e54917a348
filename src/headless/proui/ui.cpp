#include "headless/proui/ui.h"

#include <algorithm>

#include "headless/proui/ui_state.h"

namespace headless {
namespace {

bool usable(const Component& component) { return component.shown && component.enabled; }

}  // namespace

creo::Got<std::shared_ptr<Dialog>> Ui::State::find(std::string_view dialog) const {
  const auto found = dialogs.find(dialog);
  if (found == dialogs.end()) return creo::ProNotFound;
  return found->second;
}

creo::Got<Component*> Ui::State::find(std::string_view dialog, std::string_view component, Kind kind) const {
  const auto found = dialogs.find(dialog);
  if (found == dialogs.end()) return creo::ProNotFound;
  return found->second->find(component, kind);
}

int Ui::State::ask(const Question& question) {
  questions.push_back(question);
  const auto asked = answer;  // it may set another one while it answers
  return asked ? asked(question) : 0;
}

void run(std::shared_ptr<Dialog> dialog, Action action, std::string component) {
  if (action && *action) (*action)(dialog->name(), component);
}

Ui::Ui() : state_(std::make_unique<State>()) {}
Ui::~Ui() = default;

Dialog* Ui::dialog(std::string_view name) {
  const auto found = state_->find(name);
  return found ? found.value.get() : nullptr;
}

std::vector<std::string> Ui::dialogs() const {
  std::vector<std::string> names;
  for (const auto& [name, dialog] : state_->dialogs) names.push_back(name);
  return names;
}

creo::Got<Component*> Ui::usableComponent(const std::string& dialog, const std::string& component, Kind kind) {
  const auto found = state_->find(dialog, component, kind);
  if (found && !usable(*found.value)) return creo::ProGeneralError;
  return found;
}

creo::ProError Ui::press(const std::string& dialog, const std::string& button) {
  const auto found = usableComponent(dialog, button, Kind::pushbutton);
  if (found) run(state_->find(dialog).value, found.value->action, button);
  return found.error;
}

creo::ProError Ui::setCheck(const std::string& dialog, const std::string& button, bool on) {
  const auto found = usableComponent(dialog, button, Kind::checkbutton);
  if (!found || found.value->checked == on) return found.error;
  found.value->checked = on;
  run(state_->find(dialog).value, found.value->action, button);
  return creo::ProNoError;
}

creo::ProError Ui::choose(const std::string& dialog, const std::string& menu, const std::string& name) {
  const auto found = usableComponent(dialog, menu, Kind::optionmenu);
  if (!found) return found.error;
  Choices& choices = found.value->choices();
  if (std::find(choices.names.begin(), choices.names.end(), name) == choices.names.end()) return creo::ProNotFound;
  choices.selected = {name};
  run(state_->find(dialog).value, found.value->action, menu);
  return creo::ProNoError;
}

creo::ProError Ui::close(const std::string& dialog) {
  const auto found = state_->find(dialog);
  if (found) run(found.value, found.value->closeAction, "");
  return found.error;
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
      touched->expanded = true;
      break;
    case creo::ProUITreeEvent::collapse:
      touched->expanded = false;
      break;
    case creo::ProUITreeEvent::select:
    case creo::ProUITreeEvent::activate:
      found.value->tree().deselectAll();
      touched->selected = true;
      break;
  }
  run(state_->find(dialog).value, found.value->treeContent().actions[static_cast<std::size_t>(event)], tree);
  return creo::ProNoError;
}

void Ui::answerQuestions(std::function<int(const Question&)> answer) { state_->answer = std::move(answer); }

const std::vector<Question>& Ui::questions() const { return state_->questions; }

}  // namespace headless
