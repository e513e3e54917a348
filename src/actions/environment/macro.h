// Running a macro from an action.
#pragma once

#include <string>
#include <string_view>

#include "actions/task.h"
#include "creo/guards.h"

namespace actions {

// Loads and runs a macro; each failure has its error line.
void runMacro(const std::wstring& macro, std::wstring_view loadFailure, std::wstring_view runFailure);
// The same with the common line for one that can't be loaded.
void runMacro(const std::wstring& macro, std::wstring_view runFailure);
// May steps be played that a list brings along? They can start programs and reach any file, so that a confined list
// needs the grant `--allow-run=macros`; false: it is refused, which has been told. what: "play the trail file
// d:\x.txt".
bool mayPlay(std::wstring_view what);
// Loads and runs one that the task holds line by line: attributes `lines` with numbers from 0, as many as `count` says;
// each may hold variables, of the model. Nothing happens without that attribute.
void runMapkeyMacro(const Task& task, creo::ProMdl model, std::wstring_view count = L"mapkeyc",
                    std::wstring_view lines = L"mapkey");

// Selects again what was selected before; what can't be has a warning.
void selectAgain(creo::SelectionGuard& before);

}  // namespace actions
