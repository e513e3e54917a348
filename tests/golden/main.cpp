// The program, at a time that stands still: what it writes is the same in each run, and on each system.
#include <iostream>
#include <memory>

#include "kelvane/program.h"
#include "os/console.h"
#include "os/surroundings.h"

namespace {

constexpr std::int64_t kTime = 1'700'000'000;  // in November 2023

}  // namespace

int main(int argc, char** argv) {
  os::printUtf8();
  os::surroundings().clock = std::make_shared<os::FixedClock>(kTime);
  return kelvane::program(os::commandLineWords(argc, argv), std::cout, std::cerr, {}, &std::cin);
}
