// Programs of this system that work apart from this process: what ends such a helper, or never lets it end, ends
// nothing else. They aren't programs that a list starts, so that no door (doors.h) holds them back.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "os/result.h"

namespace os {

// A helper that runs; it answers one request after another.
class Helper {
 public:
  virtual ~Helper() = default;  // ends the program at once, whatever it does
  // timed_out: the answer took longer than the time; broken_pipe: the program has ended. Behind either the helper is of
  // no more use.
  virtual Result<std::string> ask(std::string_view request, std::chrono::milliseconds time) = 0;
};
// program: its file, in the machine's form. An interrupt from the keyboard doesn't reach it.
Result<std::unique_ptr<Helper>> startHelper(const std::string& program);

// ---- inside the helper

// Answers until nobody is left who asks; false where nobody started it as a helper. What it prints goes nowhere.
bool serveRequests(const std::function<std::string(std::string_view)>& answer);
// From now on this process may take so many bytes more than it has: then memory is out for it. Behind so much more time
// of the processor it is ended, so that nothing runs on where whoever asked is gone.
void limitThisProcess(std::uint64_t bytes, std::chrono::seconds processor);

}  // namespace os
