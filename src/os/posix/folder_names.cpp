#include "os/posix/folder_names.h"

#include <dirent.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <sys/vfs.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <map>
#include <memory>
#include <mutex>
#include <set>

#include "os/posix/descriptor.h"

namespace os {
namespace {

constexpr std::size_t kLargeFolder = 256;  // entries; below that listing costs less than remembering
constexpr std::size_t kMostFolders = 16;   // remembered at a time

// A name without its case, as UTF-8: ASCII, and the second bytes of the three umlauts. Never longer or shorter.
std::string folded(std::string_view name) {
  std::string result(name);
  for (std::size_t at = 0; at < result.size(); ++at) {
    const auto byte = static_cast<unsigned char>(result[at]);
    const bool isUmlaut = at > 0 && result[at - 1] == '\xC3' && (byte == 0x84 || byte == 0x96 || byte == 0x9C);
    if ((byte >= 'A' && byte <= 'Z') || isUmlaut) result[at] = static_cast<char>(byte + 0x20);
  }
  return result;
}

// The names of one folder, sorted by the name without case and then by their bytes. No name holds a zero.
class Names {
 public:
  void add(std::string_view name) { names_.insert(key(name).append(name)); }
  void remove(std::string_view name) { names_.erase(key(name).append(name)); }
  [[nodiscard]] std::size_t size() const { return names_.size(); }
  [[nodiscard]] std::string find(std::string_view name) const {
    const std::string start = key(name);
    const auto at = names_.lower_bound(start);
    return at != names_.end() && at->starts_with(start) ? at->substr(start.size()) : std::string();
  }

 private:
  static std::string key(std::string_view name) { return folded(name) + '\0'; }
  std::set<std::string> names_;
};

template <class Visit>
void eachName(const std::string& folder, Visit visit) {
  const std::unique_ptr<DIR, int (*)(DIR*)> open(::opendir(folder.c_str()), &::closedir);
  while (const dirent* entry = open ? ::readdir(open.get()) : nullptr) visit(std::string_view(entry->d_name));
}

// Of folders that other machines can change too this kernel gives no notice.
bool tellsItsChanges(const std::string& folder) {
  struct statfs info {};
  if (::statfs(folder.c_str(), &info) != 0) return false;
  constexpr std::array<unsigned, 9> kRemote = {0x6969,     0x517B,     0xFF534D42, 0xFE534D42, 0x65735546,
                                               0x01021997, 0x00C36400, 0x5346414F, 0x0BD00BD0};
  return std::find(kRemote.begin(), kRemote.end(), static_cast<unsigned>(info.f_type)) == kRemote.end();
}

class LargeFolders {
 public:
  std::string find(const std::string& folder, std::string_view name) {
    const std::scoped_lock lock(mutex_);
    takeNotices();
    struct stat info {};
    if (::stat(folder.c_str(), &info) != 0) return {};
    const auto known = std::find_if(folders_.begin(), folders_.end(), [&](const auto& entry) {
      return entry.second.device == info.st_dev && entry.second.inode == info.st_ino;
    });
    return known != folders_.end() ? known->second.names.find(name) : look(folder, info, name);
  }

 private:
  struct Folder {
    dev_t device;
    ino_t inode;
    Names names;
  };

  std::string look(const std::string& folder, const struct stat& info, std::string_view name) {
    const std::string wanted = folded(name);
    std::string best;
    std::size_t count = 0;
    eachName(folder, [&](std::string_view entry) {
      ++count;
      if (entry.size() == name.size() && folded(entry) == wanted && (best.empty() || entry < best)) best = entry;
    });
    if (count >= kLargeFolder && tellsItsChanges(folder)) remember(folder, info);
    return best;
  }

  // Watched before it is listed: a change between both is noticed, and taking it twice does no harm.
  void remember(const std::string& folder, const struct stat& info) {
    if (folders_.size() >= kMostFolders) forgetAll();
    if (notices_.number() < 0) notices_ = Descriptor(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    constexpr unsigned kChanges =
        IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_DELETE_SELF | IN_UNMOUNT | IN_ONLYDIR;
    const int watch = ::inotify_add_watch(notices_.number(), folder.c_str(), kChanges);
    if (watch < 0) return;
    Folder& entry = folders_[watch];
    entry = {info.st_dev, info.st_ino, {}};
    eachName(folder, [&entry](std::string_view name) { entry.names.add(name); });
  }

  void takeNotices() {
    alignas(inotify_event) std::array<char, 16384> buffer;
    while (notices_.number() >= 0) {
      const ssize_t size = ::read(notices_.number(), buffer.data(), buffer.size());
      if (size < 0 && errno == EINTR) continue;
      if (size < 0 && errno != EAGAIN) forgetAll();
      if (size <= 0) return;
      for (std::size_t at = 0; at + sizeof(inotify_event) <= static_cast<std::size_t>(size);) {
        inotify_event event{};
        std::memcpy(&event, buffer.data() + at, sizeof event);
        take(event, event.len > 0 ? buffer.data() + at + sizeof event : "");
        at += sizeof event + event.len;
      }
    }
  }

  void take(const inotify_event& event, std::string_view name) {
    if ((event.mask & IN_Q_OVERFLOW) != 0) return forgetAll();
    const auto known = folders_.find(event.wd);
    if (known == folders_.end()) return;
    if ((event.mask & (IN_CREATE | IN_MOVED_TO)) != 0) known->second.names.add(name);
    if ((event.mask & (IN_DELETE | IN_MOVED_FROM)) != 0) known->second.names.remove(name);
    if ((event.mask & (IN_DELETE_SELF | IN_UNMOUNT | IN_IGNORED)) != 0) folders_.erase(known);
  }

  void forgetAll() {
    folders_.clear();
    notices_ = Descriptor();
  }

  std::mutex mutex_;
  Descriptor notices_;
  std::map<int, Folder> folders_;  // by their watch
};

}  // namespace

std::string spelledOnDisk(const std::string& folder, std::string_view name) {
  static LargeFolders folders;
  return folders.find(folder, name);
}

}  // namespace os
