// Whether the user wants this process, or its run, to end early. Work that takes long asks now and then, and stops
// where nothing is torn.
#pragma once

#include <functional>

namespace os {

// How it is found out, for as long as this lives; the source before it answers again afterwards. Without one nobody
// ever wants an end.
class InterruptSource {
 public:
  // asked: quick, as it is called often.
  explicit InterruptSource(std::function<bool()> asked);
  ~InterruptSource();
  InterruptSource(const InterruptSource&) = delete;
  InterruptSource& operator=(const InterruptSource&) = delete;

 private:
  std::function<bool()> before_;
};

bool isInterrupted();

}  // namespace os
