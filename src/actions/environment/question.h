// Questions of a list to its user: what they ask for, and which one is open. A program that answers in place of a
// person asks here which variable a dialog is for.
#pragma once

#include <string_view>

#include "actions/environment/question_kind.h"

namespace actions {

struct OpenQuestion {
  QuestionKind kind{};
  std::wstring_view variable;  // its name as the list has it
};
// The innermost question that waits for its answer; null without one. Valid while it waits.
const OpenQuestion* openQuestion();

}  // namespace actions
