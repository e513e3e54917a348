// Reads what a run has added to its log since the last look.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kelvane {

class LogFollower {
 public:
  // What stands in the log of that path now isn't the run's.
  void begin(const std::wstring& path);
  // The whole lines that came since the last look; a log of another name is read from its start.
  std::vector<std::wstring> more(const std::wstring& path);
  // The run's log; empty while nothing was written.
  [[nodiscard]] const std::wstring& path() const { return path_; }

 private:
  std::wstring before_, path_;
  std::uintmax_t offset_ = 0;
};

}  // namespace kelvane
