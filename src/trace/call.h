// A question of the plug-in's, to an operation or a door: heard by a tape where there is one, else carried out alone.
#pragma once

#include <tuple>
#include <type_traits>
#include <utility>

#include "creo/ProTypes.h"
#include "creo/pfcSession.h"
#include "os/result.h"
#include "text/fault.h"
#include "trace/entered.h"

namespace trace {

// ---- functions of the plug-in's

// Calls it with arguments that are read.
template <class Result, class... Args, class Function>
void playOn(Tape& tape, const Function& function, Reading& reading, Line& line) {
  std::tuple<std::remove_cvref_t<Args>...> arguments;
  std::apply([&](auto&... one) { (take(tape, reading, one), ...); }, arguments);
  if constexpr (std::is_void_v<Result>)
    std::apply(function, arguments);
  else
    put(tape, line, std::apply(function, arguments));
}

template <class Signature>
struct Kept;
// A function that is kept beyond the question: its number stands in the trace, and each call of it.
template <class Result, class... Args>
struct Kept<Result(Args...)> {
  using Function = std::function<Result(Args...)>;
  static void put(Tape& tape, Line& line, Function& function) {
    if (!function) return line.word("none");
    Played played;
    if (tape.plays())
      played = [&tape, function](Reading& reading, Line& result) {
        playOn<Result, Args...>(tape, function, reading, result);
      };
    const int number = tape.keep(std::move(played));
    line.word("function" + std::to_string(number));
    function = [number, function = std::move(function)](Args... args) -> Result {
      return entered(
          "run", [&] { return function(args...); }, number, std::remove_cvref_t<Args>(args)...);
    };
  }
};

// ---- arguments. write: into the question; back and readBack: what the question leaves in it.

template <class A>
struct Argument {
  std::remove_reference_t<A>& given;
  static constexpr bool kIsLeft = std::is_lvalue_reference_v<A> && !std::is_const_v<std::remove_reference_t<A>>;

  Argument(std::remove_reference_t<A>& argument, Tape& /*tape*/) : given(argument) {}
  void write(Tape& tape, Line& line) { put(tape, line, given); }
  A pass() { return static_cast<A>(given); }
  void back(Tape& tape, Line& line) {
    if constexpr (kIsLeft) put(tape, line, given);
  }
  void readBack(Tape& tape, Reading& reading) {
    if constexpr (kIsLeft) take(tape, reading, given);
  }
};

template <class T>
struct Argument<const T*> {
  const T* given;
  Argument(const T* argument, Tape& /*tape*/) : given(argument) {}
  void write(Tape& tape, Line& line) {
    if (given)
      put(tape, line, *given);
    else
      line.word("none");
  }
  const T* pass() { return given; }
  void back(Tape& /*tape*/, Line& /*line*/) {}
  void readBack(Tape& /*tape*/, Reading& /*reading*/) {}
};

template <class Signature>
struct Argument<std::function<Signature>> {
  std::function<Signature>& given;
  Argument(std::function<Signature>& argument, Tape& /*tape*/) : given(argument) {}
  void write(Tape& tape, Line& line) { Kept<Signature>::put(tape, line, given); }
  std::function<Signature> pass() { return std::move(given); }
  void back(Tape& /*tape*/, Line& /*line*/) {}
  void readBack(Tape& /*tape*/, Reading& /*reading*/) {}
};

template <>
struct Argument<creo::pfcSessionActionListener> {
  creo::pfcSessionActionListener& given;
  Argument(creo::pfcSessionActionListener& argument, Tape& /*tape*/) : given(argument) {}
  void write(Tape& tape, Line& line) {
    Kept<void(const creo::pfcModelDescriptor&)>::put(tape, line, given.OnAfterModelRetrieveAll);
    Kept<void()>::put(tape, line, given.OnAfterModelDisplay);
  }
  creo::pfcSessionActionListener pass() { return std::move(given); }
  void back(Tape& /*tape*/, Line& /*line*/) {}
  void readBack(Tape& /*tape*/, Reading& /*reading*/) {}
};

// A visitor is called inside the question alone.
template <class Result, class... Args>
struct Argument<creo::FunctionRef<Result(Args...)>> {
  using Visitor = creo::FunctionRef<Result(Args...)>;
  Visitor given;
  Tape& tape;
  struct Recorded {
    Visitor& under;
    Tape& tape;
    Result operator()(Args... args) const {
      Line line;
      line.word("visit");
      (put(tape, line, std::remove_cvref_t<Args>(args)), ...);
      return enteredOn(tape, line, [&] { return under(args...); });
    }
  } recorded;

  Argument(Visitor argument, Tape& on) : given(argument), tape(on), recorded{given, on} {
    tape.pushVisitor([this](Reading& reading, Line& line) { playOn<Result, Args...>(tape, given, reading, line); });
  }
  ~Argument() { tape.popVisitor(); }
  Argument(const Argument&) = delete;
  Argument& operator=(const Argument&) = delete;
  void write(Tape& /*tape*/, Line& line) { line.word("visitor"); }
  Visitor pass() { return Visitor(recorded); }
  void back(Tape& /*tape*/, Line& /*line*/) {}
  void readBack(Tape& /*tape*/, Reading& /*reading*/) {}
};

// ---- answers: a code, and where it is a success the value

template <class T>
void putAnswer(Tape& tape, Line& line, const T& value) {
  put(tape, line, value);
}
template <class T>
void putAnswer(Tape& tape, Line& line, const creo::Got<T>& got) {
  put(tape, line, got.error);
  if (got) put(tape, line, got.value);
}
template <class T>
void putAnswer(Tape& tape, Line& line, const os::Result<T>& result) {
  put(tape, line, result.error);
  if (result) put(tape, line, result.value);
}
template <class T>
void putAnswer(Tape& tape, Line& line, const text::Result<T>& result) {
  put(tape, line, result.fault);
  put(tape, line, result.value);
}

template <class T>
void takeAnswer(Tape& tape, Reading& reading, T& value) {
  take(tape, reading, value);
}
template <class T>
void takeAnswer(Tape& tape, Reading& reading, creo::Got<T>& got) {
  take(tape, reading, got.error);
  if (got) take(tape, reading, got.value);
}
template <class T>
void takeAnswer(Tape& tape, Reading& reading, os::Result<T>& result) {
  take(tape, reading, result.error);
  if (result) take(tape, reading, result.value);
}
template <class T>
void takeAnswer(Tape& tape, Reading& reading, text::Result<T>& result) {
  take(tape, reading, result.fault);
  take(tape, reading, result.value);
}

// ---- the question

template <class Result, class Real, class... A>
Result askOn(Tape& tape, std::string_view name, const Real& real, Argument<A>&&... arguments) {
  Line line;
  line.word(name);
  (arguments.write(tape, line), ...);
  const std::string played = tape.ask(line.str());
  if (tape.plays()) {
    Result result{};
    try {
      Reading reading(played);
      takeAnswer(tape, reading, result);
      (arguments.readBack(tape, reading), ...);
      if (!reading.ends()) throw BadLine("more is said than asked: '" + std::string(reading.rest()) + "'");
    } catch (const BadLine& fault) {
      tape.refuse(fault.what());
    }
    return result;
  }
  const auto carriedOut = [&] {
    const Turn turn(tape, false);
    return real(arguments.pass()...);
  };
  try {
    Result result = carriedOut();
    Line answer;
    putAnswer(tape, answer, result);
    (arguments.back(tape, answer), ...);
    tape.answer(answer.str());
    return result;
  } catch (...) {
    tape.answer("thrown");
    throw;
  }
}

// An operation, by its name and what carries it out.
template <class Result, class... A>
Result call(std::string_view name, Result (*real)(A...), std::type_identity_t<A>... args) {
  Tape* const tape = Tape::current();
  if (!tape || !tape->hears()) return real(std::forward<A>(args)...);
  return askOn<Result, Result (*)(A...), A...>(*tape, name, real, Argument<A>(args, *tape)...);
}

}  // namespace trace
