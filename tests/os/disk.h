// A temporary folder of the machine, mounted as d:, with the machine's own view beside it.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "os/surroundings.h"

namespace os {

class Disk {
 public:
  Disk() {
    std::string pattern = std::filesystem::temp_directory_path() / "kvd-os-XXXXXX";
    root_ = ::mkdtemp(pattern.data());
    mounts().set(L'd', root_);
  }
  ~Disk() { std::filesystem::remove_all(root_); }
  Disk(const Disk&) = delete;
  Disk& operator=(const Disk&) = delete;

  [[nodiscard]] std::string root() const { return root_; }
  [[nodiscard]] std::string at(const std::string& path) const { return root_ + "/" + path; }
  void folder(const std::string& path) const { std::filesystem::create_directories(at(path)); }
  void file(const std::string& path, const std::string& content) const { std::ofstream(at(path)) << content; }
  void link(const std::string& path, const std::string& target) const {
    std::filesystem::create_symlink(target, at(path));
  }
  [[nodiscard]] std::string content(const std::string& path) const {
    std::ostringstream all;
    all << std::ifstream(at(path)).rdbuf();
    return all.str();
  }
  // All below a folder in one short text: "a.txt sub/ sub/b.txt".
  [[nodiscard]] std::string tree(const std::string& path = "") const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(at(path))) {
      const bool isFolder = entry.is_directory() && !entry.is_symlink();
      names.push_back(entry.path().string().substr(at(path).size() + (path.empty() ? 0 : 1)) + (isFolder ? "/" : ""));
    }
    std::sort(names.begin(), names.end());
    std::string text;
    for (const auto& name : names) text += (text.empty() ? "" : " ") + name;
    return text;
  }

 private:
  SurroundingsGuard guard_;
  std::string root_;
};

}  // namespace os
