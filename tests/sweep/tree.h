// A folder that is put back as it was, the very files: one that a process has open is the same one afterwards.
#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <map>
#include <string>

namespace sweep {

class Tree {
 public:
  // kept: a folder beside it on the same disk, for links to its files; made here.
  Tree(std::string folder, std::string kept);
  // From now on it is put back to what it is now.
  void keep();
  void putBack() const;
  // Dates all files, in seconds since 1970.
  void date(std::int64_t seconds) const;
  // Removes all that is in the folder, and what was kept.
  void clear();
  // Files below the folder by their paths in it, with their content.
  [[nodiscard]] std::map<std::string, std::string> files() const;
  [[nodiscard]] const std::string& folder() const { return folder_; }

 private:
  struct Entry {
    struct stat state {};
    std::string content;  // of a link: where it leads
    std::string link;     // in the kept folder; empty: it is a folder, or a link
  };
  [[nodiscard]] bool stands(const std::string& path, const Entry& entry) const;
  std::string folder_, kept_;
  std::map<std::string, Entry> entries_;  // by path below the folder, folders before what they hold
  int links_ = 0;
};

}  // namespace sweep
