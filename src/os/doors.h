// What leaves this process beside files and requests to the web: programs that are started. Whoever starts one passes
// the door first, so that a run can do without them, or only note them.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace os {

enum class Door {
  open,
  closed,    // what is asked fails with operation_not_permitted
  withheld,  // a dry run: what is asked counts as done and is noted
};

struct Doors {
  Door programs = Door::open;
  // What was withheld, in its order: "run d:\tools\mail.cmd".
  std::vector<std::wstring> noted;
};
// The record in force.
Doors& doors();

// Nothing: what is asked may go out. Else its outcome, without going out. asked: the line to note.
std::optional<std::error_code> heldBack(Door door, std::wstring_view asked);

// Puts the doors back as they were when the guard was made.
class DoorsGuard {
 public:
  DoorsGuard() : saved_(doors()) {}
  ~DoorsGuard() { doors() = saved_; }
  DoorsGuard(const DoorsGuard&) = delete;
  DoorsGuard& operator=(const DoorsGuard&) = delete;

 private:
  Doors saved_;
};

}  // namespace os
