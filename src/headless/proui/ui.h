// The dialogs of the session. Operations of creo/ProUI*.h work on them; a person (a program, a test, a browser view)
// reads and presses through this class. Pressing runs the component's action as Creo would.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "creo/ProUI.h"
#include "creo/ProUITree.h"
#include "headless/proui/dialog.h"
#include "headless/proui/questions.h"

namespace headless {

struct UiState;  // ui_state.h

class Ui {
 public:
  // message: shows a line in the message area.
  explicit Ui(std::function<void(const std::wstring&)> message);
  ~Ui();
  // A created dialog, or null. kWindowDevice: what lies on Creo's own window, once something did; no dialog of its own.
  Dialog* dialog(std::string_view name);
  [[nodiscard]] std::vector<std::string> dialogs() const;

  // What a person does. Each gives ProNotFound for a dialog or component that isn't there, ProBadInputs for one of
  // another kind and ProGeneralError for one that is disabled or hidden; none settles the session. A hidden layout
  // around it blocks nothing: a run that a notification starts presses in sides that are folded away.
  creo::ProError press(const std::string& dialog, const std::string& button);
  creo::ProError setCheck(const std::string& dialog, const std::string& button, bool on);  // no action if it is so
  creo::ProError choose(const std::string& dialog, const std::string& menu, const std::string& name);  // always acts
  // Types a text into an input panel, in place of what it holds, and presses Enter in one.
  creo::ProError type(const std::string& dialog, const std::string& panel, const std::wstring& text);
  creo::ProError pressEnter(const std::string& dialog, const std::string& panel);
  // By the window's cross; without a close action nothing happens.
  creo::ProError close(const std::string& dialog);
  creo::ProError selectRows(const std::string& dialog, const std::string& table, const std::vector<std::string>& rows);
  // Touches the mark that opens or closes a tree's node, selects the node alone, or activates it (a double click); then
  // the tree's action runs. The mark itself opens and closes nothing: the action does.
  creo::ProError onNode(const std::string& dialog, const std::string& tree, const std::string& node,
                        creo::ProUITreeEvent event);

  // Answers questions; without one a modal dialog is closed by its cross and a message dialog by its first button.
  // Returns the pressed button's number (message dialogs).
  void answerQuestions(std::function<int(const Question&)> answer);

  // Answers the dialogs for files and folders with a path; nothing, as without an answerer, is their cancel.
  void answerFileQuestions(std::function<std::optional<std::wstring>(const FileQuestion&)> answer);

  // Questions asked so far.
  [[nodiscard]] const std::vector<Question>& questions() const;

  // What dialogs are made of, for the operations of creo/.
  UiState& state() { return *state_; }

 private:
  // Of a kind, shown and enabled.
  creo::Got<Component*> usableComponent(const std::string& dialog, const std::string& component, Kind kind);

  std::unique_ptr<UiState> state_;
};

}  // namespace headless
