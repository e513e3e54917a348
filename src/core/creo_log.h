// Lines in Creo's message area.
#pragma once

#include <string_view>

namespace core {

// A line in Creo's message area, if level is below `noDebugInCreoLog`.
void creoLog(std::wstring_view text, int level = 0);
// A progress line of the start: only while `noDebugInLogFile` is 0.
void creoProgress(std::wstring_view text);

}  // namespace core
