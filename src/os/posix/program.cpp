#include "os/program.h"

#include <dlfcn.h>
#include <link.h>
#include <unistd.h>

#include <filesystem>

namespace os {

std::string programFile() {
  std::error_code error;
  return std::filesystem::read_symlink("/proc/self/exe", error).string();
}

std::string codeFile() {
  Dl_info found{};
  void* extra = nullptr;
  if (::dladdr1(reinterpret_cast<const void*>(&codeFile), &found, &extra, RTLD_DL_LINKMAP) == 0) return programFile();
  const auto* map = static_cast<const link_map*>(extra);
  if (!map || !map->l_name || *map->l_name == '\0') return programFile();  // the program has no name there
  std::error_code error;
  const std::filesystem::path whole = std::filesystem::canonical(map->l_name, error);
  return error ? std::string(map->l_name) : whole.string();
}

std::string systemName() { return "linux"; }

bool isTerminal(int stream) { return ::isatty(stream) == 1; }

}  // namespace os
