// Whether the user wants this process to end. Work that takes long asks now and then, and stops where nothing is torn.
#pragma once

namespace os {

// How it is found out, for as long as this lives. Without one nobody ever wants an end.
class InterruptSource {
 public:
  // asked: quick, as it is called often.
  explicit InterruptSource(bool (*asked)());
  ~InterruptSource();
  InterruptSource(const InterruptSource&) = delete;
  InterruptSource& operator=(const InterruptSource&) = delete;

 private:
  bool (*before_)();
};

bool isInterrupted();

}  // namespace os
