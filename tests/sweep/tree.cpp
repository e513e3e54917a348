#include "sweep/tree.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <set>
#include <stdexcept>

#include "support/world.h"

namespace sweep {
namespace fs = std::filesystem;
namespace {

void require(bool done, const std::string& path) {
  if (!done) throw std::runtime_error(path + ": " + std::strerror(errno));
}

struct stat stateOf(const std::string& path) {
  struct stat state {};
  require(::lstat(path.c_str(), &state) == 0, path);
  return state;
}

bool isSame(const struct stat& a, const struct stat& b) {
  return a.st_ino == b.st_ino && a.st_mode == b.st_mode && a.st_size == b.st_size &&
         a.st_mtim.tv_sec == b.st_mtim.tv_sec && a.st_mtim.tv_nsec == b.st_mtim.tv_nsec;
}

}  // namespace

Tree::Tree(std::string folder, std::string kept) : folder_(std::move(folder)), kept_(std::move(kept)) {
  fs::create_directories(folder_);
  fs::create_directories(kept_);
}

bool Tree::stands(const std::string& path, const Entry& entry) const {
  struct stat state {};
  return ::lstat((folder_ + "/" + path).c_str(), &state) == 0 && isSame(state, entry.state);
}

void Tree::keep() {
  std::map<std::string, Entry> now;
  for (const auto& found : fs::recursive_directory_iterator(folder_)) {
    const std::string whole = found.path().string(), path = whole.substr(folder_.size() + 1);
    if (const auto known = entries_.find(path); known != entries_.end() && stands(path, known->second)) {
      now.insert(entries_.extract(known));
      continue;
    }
    Entry entry{stateOf(whole), {}, {}};
    if (found.is_symlink()) {
      entry.content = fs::read_symlink(found.path()).string();
    } else if (found.is_regular_file()) {
      entry.content = test::readBytes(whole);
      entry.link = kept_ + "/" + std::to_string(links_++);
      require(::link(whole.c_str(), entry.link.c_str()) == 0, whole);
    }
    now.emplace(path, std::move(entry));
  }
  for (const auto& [path, gone] : entries_)
    if (!gone.link.empty()) fs::remove(gone.link);
  entries_ = std::move(now);
}

void Tree::putBack() const {
  std::set<std::string> more;
  for (const auto& found : fs::recursive_directory_iterator(folder_)) {
    const std::string path = found.path().string().substr(folder_.size() + 1);
    if (!entries_.contains(path)) more.insert(found.path().string());
  }
  for (const std::string& path : more) fs::remove_all(path);
  for (const auto& [path, entry] : entries_) {
    if (stands(path, entry)) continue;
    const std::string whole = folder_ + "/" + path;
    if (S_ISDIR(entry.state.st_mode)) {
      if (!fs::is_directory(fs::symlink_status(whole))) fs::remove(whole);
      fs::create_directory(whole);
      continue;
    }
    struct stat found {};
    const bool isThere = ::lstat(whole.c_str(), &found) == 0;
    if (isThere && found.st_ino != entry.state.st_ino) fs::remove_all(whole);
    if (entry.link.empty()) {
      if (!isThere || found.st_ino != entry.state.st_ino) fs::create_symlink(entry.content, whole);
      continue;
    }
    if (!isThere || found.st_ino != entry.state.st_ino) require(::link(entry.link.c_str(), whole.c_str()) == 0, whole);
    if (test::readBytes(whole) != entry.content) test::writeBytes(whole, entry.content);
    ::chmod(whole.c_str(), entry.state.st_mode & 07777);
    const timespec times[] = {entry.state.st_atim, entry.state.st_mtim};
    ::utimensat(AT_FDCWD, whole.c_str(), times, 0);
  }
}

void Tree::date(std::int64_t seconds) const {
  const timespec times[] = {{seconds, 0}, {seconds, 0}};
  for (const auto& found : fs::recursive_directory_iterator(folder_))
    if (found.is_regular_file() && !found.is_symlink())
      require(::utimensat(AT_FDCWD, found.path().c_str(), times, 0) == 0, found.path().string());
}

void Tree::clear() {
  for (const std::string& folder : {folder_, kept_}) {
    fs::remove_all(folder);
    fs::create_directories(folder);
  }
  entries_.clear();
}

std::map<std::string, std::string> Tree::files() const {
  std::map<std::string, std::string> all;
  for (const auto& found : fs::recursive_directory_iterator(folder_))
    if (found.is_regular_file() && !found.is_symlink())
      all.emplace(found.path().string().substr(folder_.size() + 1), test::readBytes(found.path().string()));
  return all;
}

}  // namespace sweep
