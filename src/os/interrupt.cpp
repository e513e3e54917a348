#include "os/interrupt.h"

#include <utility>

namespace os {
namespace {

bool (*source)() = nullptr;

}  // namespace

InterruptSource::InterruptSource(bool (*asked)()) : before_(std::exchange(source, asked)) {}
InterruptSource::~InterruptSource() { source = before_; }

bool isInterrupted() { return source && source(); }

}  // namespace os
