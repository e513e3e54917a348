// Running a macro from an action.
#pragma once

#include <string>
#include <string_view>

namespace actions {

// Loads and runs a macro; each failure has its error line.
void runMacro(const std::wstring& macro, std::wstring_view loadFailure, std::wstring_view runFailure);

}  // namespace actions
