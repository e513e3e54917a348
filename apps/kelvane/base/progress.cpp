#include "kelvane/base/progress.h"

#include <cmath>

#include "text/encoding.h"
#include "text/format.h"

namespace kelvane {
namespace {

constexpr int kBarWidth = 24;  // characters

// "45s", "3m20s"
std::wstring duration(double seconds) {
  const int whole = static_cast<int>(std::lround(seconds));
  return whole < 60 ? text::format(L"%ds", whole) : text::format(L"%dm%02ds", whole / 60, whole % 60);
}

}  // namespace

void Progress::begin(int models) {
  models_ = models;
  start_ = std::chrono::steady_clock::now();
}

double Progress::seconds() const {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
}

void Progress::step(int done, const std::string& model, const std::string& outcome) {
  if (!console_.live()) {
    console_.note("[" + std::to_string(done) + "/" + std::to_string(models_) + "] " + model + "  " + outcome);
    return;
  }
  const double rate = done / std::max(seconds(), 1e-3);
  const int filled = models_ > 0 ? kBarWidth * done / models_ : kBarWidth;
  const std::string bar = std::string(static_cast<std::size_t>(filled), '#') +
                          std::string(static_cast<std::size_t>(kBarWidth - filled), '.');
  const std::wstring numbers =
      text::format(L"%d/%d  %.1f/s  %s left  ", done, models_, rate, duration((models_ - done) / rate));
  console_.passing("[" + bar + "] " + text::toUtf8(numbers) + model);
}

}  // namespace kelvane
