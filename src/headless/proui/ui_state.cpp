#include "headless/proui/ui_state.h"

#include "headless/session/events.h"
#include "text/encoding.h"
#include "text/format.h"

namespace headless {

creo::Got<std::shared_ptr<Dialog>> UiState::find(std::string_view dialog) const {
  const auto found = dialogs.find(dialog);
  if (found == dialogs.end()) return creo::ProNotFound;
  return found->second;
}

creo::Got<Component*> UiState::find(std::string_view dialog, std::string_view component, Kind kind) const {
  const auto found = dialogs.find(dialog);
  if (found == dialogs.end()) return creo::ProNotFound;
  return found->second->find(component, kind);
}

int UiState::ask(const Question& question) {
  questions.push_back(question);
  const auto asked = answer;  // it may set another one while it answers
  const int button = asked ? asked(question) : 0;
  return button > 0 && static_cast<std::size_t>(button) < question.buttons.size() ? button : 0;
}

std::optional<std::wstring> UiState::askFile(const FileQuestion& question) {
  const auto asked = fileAnswer;
  return asked ? asked(question) : std::nullopt;
}

creo::ProError UiState::run(std::shared_ptr<Dialog> dialog, Action action, std::string component) const {
  if (!action || !*action) return creo::ProNoError;
  const std::wstring fault = guarded([&] { (*action)(dialog->name(), component); });
  if (fault.empty()) return creo::ProNoError;
  message(text::format(L"the action of '%s' in dialog '%s' ended with an exception: %s", text::fromUtf8(component),
                       text::fromUtf8(dialog->name()), fault));
  return creo::ProGeneralError;
}

}  // namespace headless
