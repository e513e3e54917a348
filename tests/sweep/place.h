// Where something is asked of the session or of the machine: what is asked, by which action, and from where.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace sweep {

// Return addresses, from the asked one's outward.
constexpr std::size_t kFrames = 6;

struct Place {
  std::string action;     // title of the running action; empty: it is no action's
  std::string operation;  // "ProMdlSave", "rename"
  // Counted from the start of the program, so that they are the same in each of its runs; 0: in a library.
  std::array<std::uintptr_t, kFrames> frames{};

  // Of equal places the same, in each run of the same build.
  [[nodiscard]] std::uint64_t hash() const;
};

// The place that calls. skipped: the frames between it and what is asked.
Place placeHere(std::string_view operation, std::size_t skipped);

// Who asks, as "actions/model/layers: actions::deleteLayer", by source and function, of these places in their order:
// the first outside of the operations and of the floors that all share. Empty where the program's names don't tell.
std::vector<std::string> callersOf(const std::vector<Place>& places);

}  // namespace sweep
