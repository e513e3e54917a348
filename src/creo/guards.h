// Guards put back what an action changes in the session, on every path.
#pragma once

#include "creo/ProUtil.h"

namespace creo {

// Remembers the working folder; change() goes elsewhere; the destructor goes back.
class DirectoryGuard {
 public:
  DirectoryGuard() : saved_(ProDirectoryCurrentGet()) {}
  ~DirectoryGuard() { back(); }
  DirectoryGuard(const DirectoryGuard&) = delete;
  DirectoryGuard& operator=(const DirectoryGuard&) = delete;
  // As ProDirectoryChange.
  ProError change(const std::wstring& path) {
    const ProError result = ProDirectoryChange(path);
    changed_ = changed_ || result == ProNoError;
    return result;
  }
  // Goes back now; the destructor does it once more, for what went elsewhere meanwhile.
  void back() const {
    if (changed_ && saved_) ProDirectoryChange(saved_.value);
  }

 private:
  Got<std::wstring> saved_;
  bool changed_ = false;
};

}  // namespace creo
