// Questions of a list to its user: what they ask for, and which one is open. A program that answers in place of a
// person asks here which variable a dialog is for.
#pragma once

#include <optional>
#include <string_view>

namespace actions {

// By the attribute `varType`, "1" to "7".
enum class QuestionKind { text = 1, choice, check, description, saveFile, folder, openFile };
// Nothing for any other text.
std::optional<QuestionKind> questionKind(std::wstring_view varType);

// The dialog of the first four kinds, and its components.
namespace question {
constexpr const char* kDialog = "kvd_question";
constexpr const char* kPanel = "kvaneUVInputPanel";
constexpr const char* kMenu = "kvaneUVChooser";
constexpr const char* kCheck = "kvaneUVCheck";
constexpr const char* kOk = "kvaneUVOkBtn";
}  // namespace question

struct OpenQuestion {
  QuestionKind kind{};
  std::wstring_view variable;  // its name as the list has it
};
// The innermost question that waits for its answer; null without one. Valid while it waits.
const OpenQuestion* openQuestion();

}  // namespace actions
