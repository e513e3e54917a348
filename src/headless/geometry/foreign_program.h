// Inside this folder only: kelvane-import, the program beside this one that asks the library what may end or never end.
#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace headless::geometry {

enum class ForeignEnd { answered, late, ended, notStarted };
struct ForeignAnswer {
  ForeignEnd end = ForeignEnd::answered;
  std::string wire;      // of an answer
  std::wstring program;  // that doesn't start, and why
};
// A request of foreign_wire.h, and what comes of it within the time. One program works for all, as starting it costs
// more than a small file does. One that ended is tried once more without what earlier requests left in it; what takes
// too long would take as long again.
ForeignAnswer askForeign(const std::string& request, std::chrono::milliseconds time);
// The answers to several requests, in their order, that two programs work on side by side: who is done takes the next.
// Each must be there within the time from when its program can begin with it.
std::vector<ForeignAnswer> askForeign(const std::vector<std::string>& requests, std::chrono::milliseconds time);
// Starts the programs, so that they are ready when something is asked.
void startForeign();
// The next request has a new program, so that no file has to do with another.
void endForeign();

}  // namespace headless::geometry
