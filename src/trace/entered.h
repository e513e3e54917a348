// The plug-in is called: by the session, or by who drives it.
#pragma once

#include <type_traits>

#include "trace/tape.h"
#include "trace/values.h"

namespace trace {

// Runs the function as the plug-in's turn. what: "start", with the words behind it.
template <class Function>
auto enteredOn(Tape& tape, const Line& what, Function function) {
  using Result = decltype(function());
  tape.enter(what.str());
  const Turn turn(tape, true);
  try {
    if constexpr (std::is_void_v<Result>) {
      function();
      tape.leave({});
    } else {
      Result result = function();
      Line line;
      put(tape, line, result);
      tape.leave(line.str());
      return result;
    }
  } catch (...) {
    tape.leave("thrown");
    throw;
  }
}

// The same, where a trace is recorded; else the function alone. A player calls the plug-in itself.
template <class Function, class... Words>
auto entered(std::string_view what, Function function, const Words&... words) {
  Tape* const tape = Tape::current();
  if (!tape || tape->plays() || tape->hears()) return function();
  Line line;
  line.word(what);
  (put(*tape, line, words), ...);
  return enteredOn(*tape, line, std::move(function));
}

}  // namespace trace
