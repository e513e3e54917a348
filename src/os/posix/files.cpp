#include "os/files.h"

#include <dirent.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>

#include "os/flush_behind.h"
#include "os/machine_path.h"
#include "os/posix/written_file.h"
#include "os/surroundings.h"
#include "os/temporary_name.h"
#include "text/encoding.h"

namespace os {
namespace {

const auto kNoSuch = std::make_error_code(std::errc::no_such_file_or_directory);
const auto kIsFolder = std::make_error_code(std::errc::is_a_directory);
const auto kRefused = std::make_error_code(std::errc::operation_not_permitted);
const auto kDenied = std::make_error_code(std::errc::permission_denied);
const auto kInTheWay = std::make_error_code(std::errc::file_exists);

std::string machine(std::wstring_view path) { return mounts().machine(path); }

// The path without links; empty when it doesn't lead anywhere.
std::string resolved(const std::string& path) {
  const std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.c_str(), nullptr), &std::free);
  return real ? std::string(real.get()) : std::string();
}

struct Found {
  struct stat info {};
  std::error_code error;
  [[nodiscard]] bool isFolder() const { return !error && S_ISDIR(info.st_mode); }
  [[nodiscard]] bool isLink() const { return !error && S_ISLNK(info.st_mode); }
  // Nothing where nothing has that name.
  [[nodiscard]] std::optional<FileId> id() const { return error ? std::nullopt : std::optional(idOf(info)); }
};
Found look(const std::string& path) {
  Found found;
  if (::stat(path.c_str(), &found.info) != 0) found.error = lastError();
  return found;
}
Found lookAtLink(const std::string& path) {
  Found found;
  if (::lstat(path.c_str(), &found.info) != 0) found.error = lastError();
  return found;
}

const FileId* known(const std::optional<FileId>& id) { return id ? &*id : nullptr; }

// Whether a file may be replaced by a renamed one. Renaming asks nothing of the file itself, so that without this a
// protected file or a device would be replaced.
std::error_code replaceable(const std::string& path, const Found& old) {
  if (old.error) return old.error == kNoSuch ? std::error_code{} : old.error;
  if (old.isFolder()) return kIsFolder;
  if (!S_ISREG(old.info.st_mode)) return kRefused;
  if (isWriteProtected(old.info)) return kDenied;
  return ::access(path.c_str(), W_OK) == 0 ? std::error_code{} : lastError();
}

// A file beside the target that is gone again unless it was renamed to it.
class TemporaryFile {
 public:
  explicit TemporaryFile(std::string folder) : folder_(std::move(folder)) {}
  ~TemporaryFile() {
    if (!path_.empty()) ::unlink(path_.c_str());
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  // old: what it will replace. The content is on the disk behind it, unless that may come behind the name.
  std::error_code fill(std::string_view bytes, const Found& old) {
    Descriptor file;
    flushTime_ = flushTime(known(old.id()));
    while (file.number() < 0) {
      static std::atomic<unsigned> counter{0};
      std::string path = withSlash(folder_) + temporaryName(static_cast<std::uint32_t>(::getpid()), counter++);
      file = Descriptor(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
      if (file.number() >= 0) {
        path_ = std::move(path);
        if (!isAsGuarded(file.number(), path_)) return kRefused;
      } else if (errno != EEXIST) {
        return lastError();
      }
    }
    if (const auto error = file.write(bytes)) return error;
    if (!old.error && ::fchmod(file.number(), old.info.st_mode & 07777) != 0) return lastError();
    if (flushTime_ == FlushTime::behind) {
      file_ = std::move(file);
      return {};
    }
    if (flushTime_ == FlushTime::beforeName)
      if (const auto error = flushed(path_, [&file] { return flushOpen(file); })) return error;
    return file.close();
  }

  std::error_code become(const std::string& target, const Found& old) {
    if (::rename(path_.c_str(), target.c_str()) != 0) return lastError();
    hasBecome(target, old.id());
    return {};
  }

  // Fails where the target is there, without a moment between the look and the step.
  std::error_code becomeNew(const std::string& target) {
    const bool isRenamed = ::renameat2(AT_FDCWD, path_.c_str(), AT_FDCWD, target.c_str(), RENAME_NOREPLACE) == 0;
    if (!isRenamed) {
      if ((errno != EINVAL && errno != ENOSYS) || ::link(path_.c_str(), target.c_str()) != 0)
        return lastError();  // a disk that knows neither way can't promise it
      ::unlink(path_.c_str());
    }
    hasBecome(target, {});
    return {};
  }

 private:
  void hasBecome(const std::string& target, std::optional<FileId> old) {
    path_.clear();
    if (flushTime_ == FlushTime::behind)
      flushBehind(std::make_unique<OpenWrittenFile>(std::move(file_)), target, known(old));
    else
      flushFolder(folder_, flushTime_);
  }

  std::string folder_;
  std::string path_;
  Descriptor file_;  // while the disk waits for its content
  FlushTime flushTime_ = FlushTime::beforeName;
};

std::error_code writeWhole(std::string target, std::string_view bytes) {
  // Through a link its file is written, and the link stays.
  if (lookAtLink(target).isLink()) {
    if (std::string real = resolved(target); !real.empty()) target = std::move(real);
  }
  const Found old = look(target);
  if (const auto error = replaceable(target, old)) return error;
  TemporaryFile temporary(parentOf(target));
  if (const auto error = temporary.fill(bytes, old)) return error;
  return temporary.become(target, old);
}

std::error_code writeNew(const std::string& target, std::string_view bytes) {
  const Found old = lookAtLink(target);
  if (old.error != kNoSuch) return old.error ? old.error : kInTheWay;
  TemporaryFile temporary(parentOf(target));
  if (const auto error = temporary.fill(bytes, old)) return error;
  return temporary.becomeNew(target);
}

class DiskAppender : public Appender {
 public:
  explicit DiskAppender(Descriptor file) : file_(std::move(file)) {}
  std::error_code write(std::string_view bytes) override { return file_.write(bytes); }

 private:
  Descriptor file_;
};

Result<std::string> readWhole(const std::string& path) {
  Result<std::string> result;
  auto file = openPlain(path, O_RDONLY);
  result.error = file.error;
  if (result.error) return result;
  struct stat found {};
  ::fstat(file.value.number(), &found);
  // The size is where to begin only: the file may grow meanwhile, and the kernel's own files have none.
  std::string& bytes = result.value;
  bytes.resize(static_cast<std::size_t>(std::max<off_t>(found.st_size, 0)) + 1);
  std::size_t filled = 0;
  while (true) {
    if (filled == bytes.size()) bytes.resize(bytes.size() * 2);
    const ssize_t count = ::read(file.value.number(), bytes.data() + filled, bytes.size() - filled);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) result.error = lastError();
    if (count <= 0) break;
    filled += static_cast<std::size_t>(count);
  }
  bytes.resize(result.error ? 0 : filled);
  return result;
}

std::error_code readInPieces(const std::string& path, const std::function<void(std::string_view)>& take) {
  const auto file = openPlain(path, O_RDONLY);
  if (file.error) return file.error;
  std::string piece(std::size_t{1} << 16, '\0');
  while (true) {
    const ssize_t count = ::read(file.value.number(), piece.data(), piece.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return lastError();
    if (count == 0) return {};
    take(std::string_view(piece).substr(0, static_cast<std::size_t>(count)));
  }
}

std::error_code makeFolders(const std::string& path) {
  const Found found = look(path);
  if (!found.error) return found.isFolder() ? std::error_code{} : kInTheWay;
  if (found.error != kNoSuch) return found.error;
  if (path == "/") return kNoSuch;
  if (const auto error = makeFolders(parentOf(path))) return error;
  if (::mkdir(path.c_str(), 0777) == 0 || (errno == EEXIST && look(path).isFolder())) return {};
  return errno == EEXIST ? kInTheWay : lastError();
}

FileTime utcTime(const timespec& at) {
  using namespace std::chrono;
  const sys_seconds whole{seconds(at.tv_sec)};
  const sys_days day = floor<days>(whole);
  const year_month_day date(day);
  const hh_mm_ss time(whole - day);
  return {static_cast<int>(date.year()),
          static_cast<int>(static_cast<unsigned>(date.month())),
          static_cast<int>(static_cast<unsigned>(date.day())),
          static_cast<int>(time.hours().count()),
          static_cast<int>(time.minutes().count()),
          static_cast<int>(time.seconds().count()),
          static_cast<int>(at.tv_nsec / 1'000'000)};
}

class DiskFiles : public Files {
 public:
  bool exists(std::wstring_view path) override { return !look(machine(path)).error; }
  bool isFolder(std::wstring_view path) override { return look(machine(path)).isFolder(); }

  Result<std::uint64_t> size(std::wstring_view path) override {
    const Found found = look(machine(path));
    if (found.error) return {0, found.error};
    if (found.isFolder()) return {0, kIsFolder};
    return {static_cast<std::uint64_t>(found.info.st_size), {}};
  }

  Result<FileTime> modified(std::wstring_view path) override {
    const Found found = look(machine(path));
    if (found.error) return {{}, found.error};
    return {utcTime(found.info.st_mtim), {}};
  }

  Result<std::string> read(std::wstring_view path) override { return readWhole(machine(path)); }
  std::error_code readPieces(std::wstring_view path, const std::function<void(std::string_view)>& take) override {
    return readInPieces(machine(path), take);
  }
  std::error_code write(std::wstring_view path, std::string_view bytes) override {
    return writeWhole(machine(path), bytes);
  }

  std::error_code create(std::wstring_view path, std::string_view bytes) override {
    return writeNew(machine(path), bytes);
  }

  Result<std::unique_ptr<Appender>> append(std::wstring_view path) override {
    auto file = openPlain(machine(path), O_WRONLY | O_APPEND | O_CREAT);
    if (file.error) return {nullptr, file.error};
    return {std::make_unique<DiskAppender>(std::move(file.value)), {}};
  }

  std::error_code createFolders(std::wstring_view path) override { return makeFolders(machine(path)); }

  std::error_code remove(std::wstring_view path) override {
    const std::string target = machine(path);
    const Found found = lookAtLink(target);
    if (found.error) return found.error;
    if (found.isFolder()) return kIsFolder;
    if (::unlink(target.c_str()) != 0) return lastError();
    fileHasGone(idOf(found.info));
    return {};
  }

  std::error_code rename(std::wstring_view from, std::wstring_view to) override;
  std::error_code removeFolder(std::wstring_view path, std::wstring_view within) override;
  Result<std::vector<Entry>> list(std::wstring_view folder) override;
};

std::error_code DiskFiles::rename(std::wstring_view from, std::wstring_view to) {
  const std::string source = machine(from);
  std::string target = machine(to);
  const Found old = lookAtLink(source);
  if (old.error) return old.error;
  Found replaced{{}, kNoSuch};
  if (source == target) {
    // The same file case-blind: just its spelling changes.
    const auto parts = partsOf(to);
    if (!parts.empty()) target = withSlash(parentOf(source)) + text::toUtf8(parts.back());
  } else if (!old.isFolder()) {
    replaced = look(target);
    if (const auto error = replaceable(target, replaced)) return error;
    if (const auto error = flushBeforeReplacing(source, known(replaced.id()))) return error;
  }
  if (::rename(source.c_str(), target.c_str()) == 0) {
    nameHasChanged(source, target, known(replaced.id()));
    return {};
  }
  if (errno != EXDEV || old.isFolder()) return lastError();
  // Two disks: a copy first, so that at each moment one of both is whole.
  const auto content = readWhole(source);
  if (content.error) return content.error;
  if (const auto error = writeWhole(target, content.value)) return error;
  return ::unlink(source.c_str()) == 0 ? std::error_code{} : lastError();
}

std::error_code DiskFiles::removeFolder(std::wstring_view path, std::wstring_view within) {
  if (within.empty()) return kRefused;
  const std::string target = machine(path), border = machine(within);
  const std::wstring inner = mounts().system(target), outer = mounts().system(border);
  if (!isInside(inner, outer) || isInside(outer, inner)) return kRefused;
  const Found found = lookAtLink(target);
  if (found.error) return found.error == kNoSuch ? std::error_code{} : found.error;
  // Links on the way may lead elsewhere than the names say.
  const std::string realParent = resolved(parentOf(target)), realBorder = resolved(border);
  const std::string borderSlash = realBorder == "/" ? realBorder : realBorder + "/";
  if (realParent.empty() || realBorder.empty() || !(realParent + "/").starts_with(borderSlash)) return kRefused;
  if (found.isLink()) return ::unlink(target.c_str()) == 0 ? std::error_code{} : lastError();
  if (!found.isFolder()) return std::make_error_code(std::errc::not_a_directory);
  std::error_code error;
  std::filesystem::remove_all(target, error);
  return error ? errorOf(error.value()) : error;
}

Result<std::vector<Entry>> DiskFiles::list(std::wstring_view folder) {
  Result<std::vector<Entry>> result;
  const std::unique_ptr<DIR, int (*)(DIR*)> open(::opendir(machine(folder).c_str()), &::closedir);
  if (!open) {
    result.error = lastError();
    return result;
  }
  std::vector<std::string> names;
  errno = 0;
  while (const dirent* entry = ::readdir(open.get())) {
    const std::string_view name(entry->d_name);
    if (name != "." && name != "..") names.emplace_back(name);
  }
  if (errno != 0) result.error = lastError();
  std::sort(names.begin(), names.end());
  for (const std::string& name : names) {
    struct stat info {};
    const int at = ::dirfd(open.get());
    // A link counts as what it points to, and as itself when that isn't there.
    if (::fstatat(at, name.c_str(), &info, 0) != 0 && ::fstatat(at, name.c_str(), &info, AT_SYMLINK_NOFOLLOW) != 0) {
      continue;  // gone since
    }
    const bool isFolderEntry = S_ISDIR(info.st_mode);
    const auto size = isFolderEntry ? std::uint64_t{0} : static_cast<std::uint64_t>(info.st_size);
    result.value.push_back({text::fromUtf8(name), isFolderEntry, size});
  }
  return result;
}

}  // namespace

std::unique_ptr<Files> diskFiles() { return std::make_unique<DiskFiles>(); }

}  // namespace os
