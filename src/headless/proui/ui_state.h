// What the dialogs of a session are made of; for the operations of creo/ and for Ui itself.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "headless/proui/dialog.h"
#include "headless/proui/questions.h"

namespace headless {

struct UiState {
  std::function<void(const std::wstring&)> message;
  std::map<std::string, std::shared_ptr<Dialog>, std::less<>> dialogs;
  std::function<int(const Question&)> answer;
  std::function<std::optional<std::wstring>(const FileQuestion&)> fileAnswer;
  std::vector<Question> questions;

  // ProNotFound: it isn't created.
  [[nodiscard]] creo::Got<std::shared_ptr<Dialog>> find(std::string_view dialog) const;
  // The component of a created dialog, as Dialog::find.
  [[nodiscard]] creo::Got<Component*> find(std::string_view dialog, std::string_view component, Kind kind) const;
  // Records the question and has it answered. The first button, 0, without someone who answers, and for an answer that
  // is none of its buttons.
  int ask(const Question& question);
  // The path, or nothing where none is chosen.
  std::optional<std::wstring> askFile(const FileQuestion& question);
  // Runs an action, if there is one. Dialog and action live until it returns, whatever it destroys or sets anew. An
  // exception that leaves it becomes a line of the message area and gives ProGeneralError.
  creo::ProError run(std::shared_ptr<Dialog> dialog, Action action, std::string component) const;
};

}  // namespace headless
