// The dialog "kvd_question": a text, a choice, a check button, or a description alone.
#pragma once

#include "actions/environment/question_kind.h"
#include "actions/task.h"

namespace actions {

// Blocks until the user has pressed OK, which sets the variable, or closed it. Failures are logged.
void askByDialog(const Task& task, QuestionKind kind);
// An attribute through the template engine; as it stands where that fails.
std::wstring replacedOrBare(const Task& task, std::wstring_view attribute);

}  // namespace actions
