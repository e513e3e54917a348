// While it lives nothing is written to the log and no line is counted: for work on a password, whose steps and faults
// would show pieces of it.
#pragma once

namespace core {

class LogSilence {
 public:
  LogSilence();
  ~LogSilence();
  LogSilence(const LogSilence&) = delete;
  LogSilence& operator=(const LogSilence&) = delete;
};

// While it lives no silence holds.
class LogSound {
 public:
  LogSound();
  ~LogSound();
  LogSound(const LogSound&) = delete;
  LogSound& operator=(const LogSound&) = delete;

 private:
  int silences_;
};

}  // namespace core
