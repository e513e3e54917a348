#include "kelvane/interrupt.h"

#include <csignal>
#include <cstdlib>

namespace kelvane {
namespace {

constexpr int kSignalCodes = 128;  // an exit code is this and the signal's number

volatile std::sig_atomic_t noted = 0;

void note(int signal) {
  if (noted != 0) std::_Exit(kSignalCodes + signal);
  noted = signal;
}

}  // namespace

Interrupt::Interrupt() {
  noted = 0;
  oldInterrupt_ = std::signal(SIGINT, &note);
  oldTerminate_ = std::signal(SIGTERM, &note);
}

Interrupt::~Interrupt() {
  std::signal(SIGINT, oldInterrupt_);
  std::signal(SIGTERM, oldTerminate_);
  noted = 0;
}

int Interrupt::code() { return noted == 0 ? 0 : kSignalCodes + noted; }

}  // namespace kelvane
