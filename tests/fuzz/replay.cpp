// Hands files to the functions of fuzz targets, without a fuzzer: fuzz_replay TARGET FILE-OR-FOLDER...
#include <algorithm>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

#include "fuzz/target.h"

// The build gives each target's function a name of its own.
#define FUZZ_TARGET(name) extern "C" int fuzz_##name(const std::uint8_t* data, std::size_t size);
#include "fuzz_targets.inc"
#undef FUZZ_TARGET

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

struct Target {
  const char* name;
  int (*run)(const std::uint8_t* data, std::size_t size);
};
#define FUZZ_TARGET(name) {#name, &fuzz_##name},
constexpr Target kTargets[] = {
#include "fuzz_targets.inc"
};
#undef FUZZ_TARGET

constexpr std::chrono::seconds kLongest{20};  // an input; a checked build on a busy machine is slow

std::vector<fs::path> inputsOf(int count, char** names) {
  std::vector<fs::path> files;
  for (int i = 0; i < count; ++i) {
    if (!fs::is_directory(names[i])) {
      files.emplace_back(names[i]);
      continue;
    }
    for (const auto& entry : fs::directory_iterator(names[i]))
      if (entry.is_regular_file()) files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

}  // namespace

int main(int count, char** words) {
  const auto* target = std::find_if(std::begin(kTargets), std::end(kTargets), [&](const Target& entry) {
    return count > 2 && std::strcmp(entry.name, words[1]) == 0;
  });
  if (target == std::end(kTargets)) {
    std::cerr << "usage: fuzz_replay TARGET FILE-OR-FOLDER...; targets:";
    for (const Target& entry : kTargets) std::cerr << ' ' << entry.name;
    std::cerr << '\n';
    return 2;
  }
  const auto files = inputsOf(count - 2, words + 2);
  for (const fs::path& path : files) {
    std::cout << path.string() << std::endl;  // stands there where the input ends the process
    std::ifstream file(path, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    const auto begin = Clock::now();
    target->run(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    if (Clock::now() - begin <= kLongest) continue;
    std::cerr << path.string() << ": takes more than " << kLongest.count() << " seconds\n";
    return 1;
  }
  std::cout << target->name << ": " << files.size() << " inputs\n";
  return files.empty() ? 1 : 0;
}
