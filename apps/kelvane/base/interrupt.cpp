#include "kelvane/base/interrupt.h"

#include <array>
#include <atomic>
#include <csignal>
#include <cstdlib>

#include "os/signal_safe.h"

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

// A path as the handler can read it; empty: none. One that is too long for the system is none either.
class HandlersPath {
 public:
  void set(const std::string& path) {
    bytes_[0] = '\0';
    if (path.empty() || path.size() >= bytes_.size()) return;
    path.copy(bytes_.data() + 1, path.size() - 1, 1);
    bytes_[path.size()] = '\0';
    std::atomic_signal_fence(std::memory_order_seq_cst);
    bytes_[0] = path[0];  // last: before that it is none
  }
  [[nodiscard]] bool isSet() const { return bytes_[0] != '\0'; }
  [[nodiscard]] const char* text() const { return bytes_.data(); }

 private:
  std::array<char, 4096> bytes_{};
};
HandlersPath runsLog, keptLog;

void keepLog() {
  if (!runsLog.isSet() || !keptLog.isSet()) return;
  const bool isKept = os::copyInHandler(runsLog.text(), keptLog.text());
  os::tellInHandler(isKept ? "\nended at once; log  " : "\nended at once; the log can't be written to ");
  os::tellInHandler(keptLog.text());
  os::tellInHandler("\n");
}

void note(int signal) {
  if (noted != 0) {
    keepLog();
    std::_Exit(kSignalCodes + signal);
  }
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
      source_([] { return code() != 0; }) {}

Interrupt::~Interrupt() { noted = 0; }

int Interrupt::code() { return noted == 0 ? 0 : kSignalCodes + noted; }

LogKeeper::LogKeeper(const std::string& target) { keptLog.set(target); }
LogKeeper::~LogKeeper() {
  runsLog.set({});
  keptLog.set({});
}

void LogKeeper::follow(const std::string& log) { runsLog.set(log); }

OutOfRoom::OutOfRoom() : guard_(kFileTooLarge, &goOn) {}

}  // namespace kelvane
