// An early end of what runs, as whoever started it may ask for it. A host that has no such question never asks.
#pragma once

#include <functional>

namespace engine {

// Answers, for as long as it lives, whether an early end is asked for; the one before it answers again afterwards.
class StopQuestion {
 public:
  explicit StopQuestion(std::function<bool()> isAsked);
  ~StopQuestion();
  StopQuestion(const StopQuestion&) = delete;
  StopQuestion& operator=(const StopQuestion&) = delete;

 private:
  std::function<bool()> before_;
};

bool isStopAsked();

}  // namespace engine
