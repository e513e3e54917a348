// Signals. Ctrl-C and requests to end are noted, so that the work stops between two models; a second one ends at once.
#pragma once

#include <string>

#include "os/interrupt.h"

namespace kelvane {

// What a signal does, for as long as it lives. One that the caller's own caller has it pass over stays passed over, as
// SIGHUP under nohup.
class SignalGuard {
 public:
  SignalGuard(int signal, void (*handler)(int));
  ~SignalGuard();
  SignalGuard(const SignalGuard&) = delete;
  SignalGuard& operator=(const SignalGuard&) = delete;

 private:
  int signal_;
  void (*old_)(int);
};

// Notes SIGINT, SIGTERM and, where there is one, SIGHUP for as long as it lives; endless work of a list hears of them,
// too. A reader of the output that has gone doesn't end the work meanwhile.
class Interrupt {
 public:
  Interrupt();
  ~Interrupt();
  Interrupt(const Interrupt&) = delete;
  Interrupt& operator=(const Interrupt&) = delete;
  // 0, or the exit code that the signal asks for.
  [[nodiscard]] static int code();

 private:
  SignalGuard interrupt_, terminate_, hangUp_, brokenPipe_;
  os::InterruptSource source_;
};

// The log of a run that a second signal ends at once: it is copied first, and its place told. Paths in the machine's
// form; without a target nothing is kept. One at a time.
class LogKeeper {
 public:
  explicit LogKeeper(const std::string& target);
  ~LogKeeper();
  LogKeeper(const LogKeeper&) = delete;
  LogKeeper& operator=(const LogKeeper&) = delete;
  // The file that the lines go to by now.
  static void follow(const std::string& log);
};

// A file that would outgrow what this process may write is an ordinary write error for as long as it lives.
class OutOfRoom {
 public:
  OutOfRoom();

 private:
  SignalGuard guard_;
};

}  // namespace kelvane
