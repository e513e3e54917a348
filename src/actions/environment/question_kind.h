// The kinds of questions, and the dialog of some of them.
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

}  // namespace actions
