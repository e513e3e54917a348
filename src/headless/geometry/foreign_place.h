// Where files of other systems are read and views are worked out, and how much that may take.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace headless::geometry {

struct ForeignPlace {
  std::string program;  // of kelvane-import, in the machine's form; empty: beside this code, or in the folder above it
  std::chrono::milliseconds time{60'000}, timePerMegabyte{5'000};
  std::uint64_t memory = 2'000'000'000;  // bytes, and as many again for each byte of the file:
  std::uint64_t memoryPerByte = 64;
  std::chrono::milliseconds viewTime{20'000}, facetTime{60'000};  // of a view, by exact edges and by facets
};
// The record in force.
ForeignPlace& foreignPlace();

// Puts the record back as it was when the guard was made.
class ForeignPlaceGuard {
 public:
  ForeignPlaceGuard() : saved_(foreignPlace()) {}
  ~ForeignPlaceGuard() { foreignPlace() = saved_; }
  ForeignPlaceGuard(const ForeignPlaceGuard&) = delete;
  ForeignPlaceGuard& operator=(const ForeignPlaceGuard&) = delete;

 private:
  ForeignPlace saved_;
};

}  // namespace headless::geometry
