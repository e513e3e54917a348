// A temporary folder of the machine, mounted as d:, with the machine's own view beside it.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "machine.h"
#include "os/surroundings.h"

namespace os {

// For a test of links. A machine without them can't show what it asks.
#define KVD_NEEDS(isMade) \
  if (!(isMade)) GTEST_SKIP() << "not provable here: this machine makes no links"

class Disk {
 public:
  Disk() {
    static int count = 0;
    const std::string name = "kvd-os-" + std::to_string(test::ownProcess()) + "-" + std::to_string(count++);
    const auto folder = std::filesystem::temp_directory_path() / name;
    std::filesystem::remove_all(folder);
    std::filesystem::create_directory(folder);
    root_ = test::bytesOf(std::filesystem::canonical(folder));
    mounts().set(L'd', root_);
  }
  ~Disk() {
    std::error_code error;
    std::filesystem::remove_all(place(""), error);
  }
  Disk(const Disk&) = delete;
  Disk& operator=(const Disk&) = delete;

  [[nodiscard]] std::string root() const { return root_; }
  [[nodiscard]] std::string at(const std::string& path) const { return root_ + "/" + path; }
  [[nodiscard]] std::filesystem::path place(const std::string& path) const { return test::pathOf(at(path)); }
  void folder(const std::string& path) const { std::filesystem::create_directories(place(path)); }
  void file(const std::string& path, const std::string& content) const {
    std::ofstream(place(path), std::ios::binary) << content;
  }
  // False where this machine makes no links.
  [[nodiscard]] bool link(const std::string& path, const std::string& target) const {
    return test::makeLink(place(path), target);
  }
  [[nodiscard]] std::string content(const std::string& path) const {
    std::ostringstream all;
    all << std::ifstream(place(path), std::ios::binary).rdbuf();
    return all.str();
  }
  // All below a folder in one short text: "a.txt sub/ sub/b.txt".
  [[nodiscard]] std::string tree(const std::string& path = "") const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(place(path))) {
      const bool isFolder = entry.is_directory() && !test::isLink(entry.path());
      names.push_back(test::bytesOf(entry.path().lexically_relative(place(path))) + (isFolder ? "/" : ""));
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
