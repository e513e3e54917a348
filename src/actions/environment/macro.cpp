#include "actions/environment/macro.h"

#include "core/log.h"
#include "core/messages.h"
#include "creo/ProMacro.h"
#include "language/variables.h"
#include "os/confine.h"
#include "text/format.h"
#include "text/numbers.h"

namespace actions {

using core::Message;
using language::Replaced;

namespace {

constexpr std::size_t kLineSize = 2600;  // room of a line

}  // namespace

void runMacro(const std::wstring& macro, std::wstring_view loadFailure, std::wstring_view runFailure) {
  core::logWrite(L"pro load macro", core::kDebug);
  if (creo::ProMacroLoad(macro) != creo::ProNoError) {
    core::logWrite(loadFailure, core::kError);
  } else {
    core::logWrite(L"pro execute macro", core::kDebug);
    if (creo::ProMacroExecute() != creo::ProNoError) core::logWrite(runFailure, core::kError);
  }
  core::logWrite(L"free", core::kDebug);
  core::logWrite(L"fin", core::kDebug);
}

void runMacro(const std::wstring& macro, std::wstring_view runFailure) {
  runMacro(macro, core::msgText(Message::macroNotLoaded), runFailure);
}

bool mayPlay(std::wstring_view what) {
  os::Confine* const confine = os::Confine::inForce();
  return !confine || !confine->play(what);
}

void runMapkeyMacro(const Task& task, creo::ProMdl model, std::wstring_view count, std::wstring_view lines) {
  if (!task.has(count)) return;
  const int number = text::parseInt(task.attribute(count));
  std::wstring macro;
  for (const Task::Numbered& line : task.numberedAll(lines, number)) {
    const Replaced replaced = language::replaceVariables(line.value, model, kLineSize);
    // Without one of its lines it would be another macro.
    if (!replaced.hasText())
      return core::logWrite(text::format(L"The mapkey isn't run: its line %d can't be used", line.number),
                            core::kError);
    macro += replaced.text;
  }
  if (!mayPlay(L"play the mapkey " + macro)) return;
  runMacro(macro, text::format(core::msgText(Message::mapkeyNotLoaded), number), core::msgText(Message::mapkeyNotRun));
}

void selectAgain(creo::SelectionGuard& before) {
  if (!before.back()) core::logWrite(L"What was selected before can't be selected again", core::kWarning);
}

}  // namespace actions
