#include "os/clock.h"

#include <algorithm>
#include <chrono>
#include <thread>

#include "os/local_time.h"
#include "text/format.h"

namespace os {
namespace {

class MachineClock : public Clock {
 public:
  std::int64_t seconds() override {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::floor<std::chrono::seconds>(now).count();
  }
  void sleep(std::int64_t milliseconds) override {
    std::this_thread::sleep_for(std::chrono::milliseconds(std::max<std::int64_t>(milliseconds, 0)));
  }
};

// One conversion; one that isn't ours stays as it stands.
std::wstring expanded(char conversion, const std::tm& at) {
  switch (conversion) {
    case 'Y':
      return text::format(L"%d", at.tm_year + 1900);
    case 'y':
      return text::format(L"%02d", (at.tm_year % 100 + 100) % 100);
    case 'm':
      return text::format(L"%02d", at.tm_mon + 1);
    case 'd':
      return text::format(L"%02d", at.tm_mday);
    case 'H':
      return text::format(L"%02d", at.tm_hour);
    case 'I':
      return text::format(L"%02d", at.tm_hour % 12 == 0 ? 12 : at.tm_hour % 12);
    case 'M':
      return text::format(L"%02d", at.tm_min);
    case 'S':
      return text::format(L"%02d", at.tm_sec);
    case 'p':
      return at.tm_hour < 12 ? L"AM" : L"PM";
    case '%':
      return L"%";
    default:
      return {L'%', static_cast<wchar_t>(static_cast<unsigned char>(conversion))};
  }
}

}  // namespace

std::unique_ptr<Clock> machineClock() { return std::make_unique<MachineClock>(); }

std::wstring localTime(std::int64_t seconds, const char* pattern) {
  const auto fields = localFields(seconds);
  std::wstring result;
  for (const char* c = pattern; fields && *c != '\0'; ++c) {
    if (*c == '%' && c[1] != '\0') {
      result += expanded(*++c, *fields);
    } else {
      result += static_cast<wchar_t>(static_cast<unsigned char>(*c));
    }
  }
  return result;
}

}  // namespace os
