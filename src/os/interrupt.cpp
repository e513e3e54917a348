#include "os/interrupt.h"

#include <utility>

namespace os {
namespace {

std::function<bool()>& source() {
  static std::function<bool()> asked;
  return asked;
}

}  // namespace

InterruptSource::InterruptSource(std::function<bool()> asked) : before_(std::exchange(source(), std::move(asked))) {}
InterruptSource::~InterruptSource() { source() = std::move(before_); }

bool isInterrupted() { return source() && source()(); }

}  // namespace os
