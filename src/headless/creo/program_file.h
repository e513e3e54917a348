// Taking a program's text back, for the operation that reads files of all kinds.
#pragma once

#include <string>

#include "headless/creo/state.h"

namespace headless {

// ProBadInputs: no solid; ProGeneralError: the text is no whole program, the message area says at which line, and the
// model keeps its own.
creo::ProError readProgram(Session::State& state, creo::ProMdl solid, const std::wstring& path,
                           const std::wstring& content);

}  // namespace headless
