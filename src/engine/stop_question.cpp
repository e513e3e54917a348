#include "engine/stop_question.h"

#include <utility>

namespace engine {
namespace {

std::function<bool()>& question() {
  static std::function<bool()> answers;
  return answers;
}

}  // namespace

StopQuestion::StopQuestion(std::function<bool()> isAsked) : before_(std::exchange(question(), std::move(isAsked))) {}
StopQuestion::~StopQuestion() { question() = std::move(before_); }

bool isStopAsked() { return question() && question()(); }

}  // namespace engine
