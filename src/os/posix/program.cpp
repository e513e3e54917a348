#include "os/program.h"

#include <unistd.h>

#include <filesystem>

namespace os {

std::string programFile() {
  std::error_code error;
  return std::filesystem::read_symlink("/proc/self/exe", error).string();
}

std::string systemName() { return "linux"; }

bool isTerminal(int stream) { return ::isatty(stream) == 1; }

}  // namespace os
