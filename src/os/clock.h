// The clock, so that tests can set it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace os {

class Clock {
 public:
  virtual ~Clock() = default;
  // Seconds since 1970-01-01 00:00:00 UTC.
  virtual std::int64_t seconds() = 0;
  // Returns when that time has gone by; at once for none and less.
  virtual void sleep(std::int64_t milliseconds) = 0;
};
std::unique_ptr<Clock> machineClock();

// Stands where it is set; sleeping moves it on and takes no time.
class FixedClock : public Clock {
 public:
  explicit FixedClock(std::int64_t at) : at_(at) {}
  std::int64_t seconds() override { return at_ + slept_ / 1000; }
  void sleep(std::int64_t milliseconds) override { slept_ += milliseconds > 0 ? milliseconds : 0; }
  void set(std::int64_t at) {
    at_ = at;
    slept_ = 0;
  }
  // Since it was set; in milliseconds.
  [[nodiscard]] std::int64_t slept() const { return slept_; }

 private:
  std::int64_t at_, slept_ = 0;
};

// strftime of local time in the C locale, for the conversions %Y %y %m %d %H %I %M %S %p. Empty when the time has no
// local form.
std::wstring localTime(std::int64_t seconds, const char* pattern);

}  // namespace os
