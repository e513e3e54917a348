#include "kelvane/interrupt.h"

#include <csignal>
#include <cstdlib>

namespace kelvane {
namespace {

constexpr int kSignalCodes = 128;  // an exit code is this and the signal's number
constexpr int kNoSignal = 0;       // of a system that doesn't have it

#ifdef SIGHUP
constexpr int kHangUp = SIGHUP;
#else
constexpr int kHangUp = kNoSignal;
#endif
#ifdef SIGPIPE
constexpr int kBrokenPipe = SIGPIPE;
#else
constexpr int kBrokenPipe = kNoSignal;
#endif
#ifdef SIGXFSZ
constexpr int kFileTooLarge = SIGXFSZ;
#else
constexpr int kFileTooLarge = kNoSignal;
#endif

volatile std::sig_atomic_t noted = 0;

void note(int signal) {
  if (noted != 0) std::_Exit(kSignalCodes + signal);
  noted = signal;
}

// A function of ours, as one that is passed over would be passed over by the programs that a list starts, too.
void goOn(int /*signal*/) {}

}  // namespace

SignalGuard::SignalGuard(int signal, void (*handler)(int)) : signal_(signal), old_(nullptr) {
  if (signal_ == kNoSignal) return;
  old_ = std::signal(signal_, handler);
  if (old_ == SIG_IGN) std::signal(signal_, SIG_IGN);
}
SignalGuard::~SignalGuard() {
  if (signal_ != kNoSignal) std::signal(signal_, old_);
}

Interrupt::Interrupt()
    : interrupt_(SIGINT, &note),
      terminate_(SIGTERM, &note),
      hangUp_(kHangUp, &note),
      brokenPipe_(kBrokenPipe, &goOn),
      source_([] { return noted != 0; }) {}

Interrupt::~Interrupt() { noted = 0; }

int Interrupt::code() { return noted == 0 ? 0 : kSignalCodes + noted; }

OutOfRoom::OutOfRoom() : guard_(kFileTooLarge, &goOn) {}

}  // namespace kelvane
