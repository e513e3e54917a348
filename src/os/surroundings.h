// What this process stands on: mounts, files, clock, programs, clipboard. One record; a program replaces a part of it
// (a dry run, a fault, a fixed clock) for the time that a guard lives.
#pragma once

#include <memory>

#include "os/clipboard.h"
#include "os/clock.h"
#include "os/files.h"
#include "os/paths.h"
#include "os/processes.h"

namespace os {

struct Surroundings {
  Mounts mounts;
  std::shared_ptr<Files> files;
  std::shared_ptr<Clock> clock;
  std::shared_ptr<Processes> processes;
  std::shared_ptr<Clipboard> clipboard;
};

// The record in force; the machine's own until replaced.
Surroundings& surroundings();

inline Files& files() { return *surroundings().files; }
inline Clock& clock() { return *surroundings().clock; }
inline Processes& processes() { return *surroundings().processes; }
inline Clipboard& clipboard() { return *surroundings().clipboard; }
inline Mounts& mounts() { return surroundings().mounts; }

// Puts the whole record back as it was when the guard was made.
class SurroundingsGuard {
 public:
  SurroundingsGuard() : saved_(surroundings()) {}
  ~SurroundingsGuard() { surroundings() = saved_; }
  SurroundingsGuard(const SurroundingsGuard&) = delete;
  SurroundingsGuard& operator=(const SurroundingsGuard&) = delete;

 private:
  Surroundings saved_;
};

}  // namespace os
