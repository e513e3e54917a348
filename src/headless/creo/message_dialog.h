// Creo's message dialog.
#pragma once

#include "headless/creo/state.h"
#include "headless/proui/ui_state.h"

namespace headless {

// The pressed button's number. Macro steps that wait for the dialog press it; else the question is asked.
inline int messageDialog(Session::State& state, const Question& question) {
  if (const auto pressed = state.macros.answerMessageDialog(question.buttons)) return *pressed;
  return state.ui.state().ask(question);
}

}  // namespace headless
