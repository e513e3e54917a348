// Ctrl-C and the request to end: noted, so that the work stops between two models; a second one ends at once.
#pragma once

namespace kelvane {

// Notes SIGINT and SIGTERM for as long as it lives.
class Interrupt {
 public:
  Interrupt();
  ~Interrupt();
  Interrupt(const Interrupt&) = delete;
  Interrupt& operator=(const Interrupt&) = delete;
  // 0, or the exit code that the signal asks for.
  [[nodiscard]] static int code();

 private:
  void (*oldInterrupt_)(int);
  void (*oldTerminate_)(int);
};

}  // namespace kelvane
