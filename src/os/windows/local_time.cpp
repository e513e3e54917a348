// The system's own rules of the year in question: the C library knows no time before 1970.
#include "os/local_time.h"

#include "os/windows/native.h"

namespace os {

std::optional<std::tm> localFields(std::int64_t seconds) {
  constexpr std::int64_t kBefore1970 = 11'644'473'600, kTicks = 10'000'000;  // seconds from 1601 on; 100 ns each
  constexpr std::int64_t kMost = 910'692'730'085;                            // within the system's count of ticks
  if (seconds < -kBefore1970 || seconds > kMost) return std::nullopt;
  const auto ticks = static_cast<std::uint64_t>((seconds + kBefore1970) * kTicks);
  const FILETIME file{static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
  SYSTEMTIME utc{}, local{};
  TIME_ZONE_INFORMATION rules{};
  const bool isKnown = ::FileTimeToSystemTime(&file, &utc) &&
                       ::GetTimeZoneInformationForYear(utc.wYear, nullptr, &rules) &&
                       ::SystemTimeToTzSpecificLocalTime(&rules, &utc, &local);
  if (!isKnown) return std::nullopt;
  std::tm fields{};
  fields.tm_year = local.wYear - 1900;
  fields.tm_mon = local.wMonth - 1;
  fields.tm_mday = local.wDay;
  fields.tm_hour = local.wHour;
  fields.tm_min = local.wMinute;
  fields.tm_sec = local.wSecond;
  fields.tm_wday = local.wDayOfWeek;
  return fields;
}

}  // namespace os
