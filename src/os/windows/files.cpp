#include "os/files.h"

#include <algorithm>
#include <optional>

#include "os/file_parts.h"
#include "os/flush_behind.h"
#include "os/links.h"
#include "os/machine_path.h"
#include "os/surroundings.h"
#include "os/windows/temporary_file.h"
#include "text/encoding.h"

namespace os {
namespace {

const auto kNoSuch = std::make_error_code(std::errc::no_such_file_or_directory);
const auto kIsFolder = std::make_error_code(std::errc::is_a_directory);
const auto kRefused = std::make_error_code(std::errc::operation_not_permitted);
const auto kDenied = std::make_error_code(std::errc::permission_denied);
const auto kInTheWay = std::make_error_code(std::errc::file_exists);

std::string machine(std::wstring_view path) { return mounts().machine(path); }

bool isOfDisk(const Handle& file) { return ::GetFileType(file.get()) == FILE_TYPE_DISK; }

// Whether a file may be replaced by a renamed one. Renaming asks nothing of the file itself.
std::error_code replaceable(const std::string& path, const Found& old) {
  if (old.error) return old.error == kNoSuch ? std::error_code{} : old.error;
  if (old.isFolder()) return kIsFolder;
  if (old.isProtected()) return kDenied;
  const Handle open(::CreateFileW(native(path).c_str(), FILE_WRITE_DATA, kShared, nullptr, OPEN_EXISTING, 0, nullptr));
  if (open) return isOfDisk(open) ? std::error_code{} : kRefused;
  // Who holds it may let it go until it is replaced.
  return ::GetLastError() == ERROR_SHARING_VIOLATION ? std::error_code{} : lastError();
}

// Through a link its file is written, and the link stays.
std::string throughLink(const std::string& target) {
  return lookAtLink(target).isLink ? machineBehindLinks(mounts().system(target)) : target;
}

std::error_code writeWhole(std::string target, std::string_view bytes) {
  target = throughLink(target);
  const Found old = look(target);
  if (const auto error = replaceable(target, old)) return error;
  TemporaryFile temporary(parentOf(target));
  if (const auto error = temporary.fill(bytes, old.isThere() ? &target : nullptr, old)) return error;
  return temporary.become(target, old);
}

std::error_code writeNew(const std::string& target, std::string_view bytes) {
  const Found old = lookAtLink(target);
  if (old.error != kNoSuch) return old.error ? old.error : kInTheWay;
  TemporaryFile temporary(parentOf(target));
  if (const auto error = temporary.fill(bytes, nullptr, old)) return error;
  return temporary.becomeNew(target);
}

class DiskAppender : public Appender {
 public:
  explicit DiskAppender(Handle file) : file_(std::move(file)) {}
  std::error_code write(std::string_view bytes) override { return file_.write(bytes); }

 private:
  Handle file_;
};

// In pieces of any size, to its end.
template <class Take>
std::error_code readFrom(const Handle& file, Take take) {
  std::string piece(std::size_t{1} << 16, '\0');
  for (;;) {
    DWORD count = 0;
    if (!::ReadFile(file.get(), piece.data(), static_cast<DWORD>(piece.size()), &count, nullptr)) return lastError();
    if (count == 0) return {};
    take(std::string_view(piece).substr(0, count));
  }
}

std::error_code readInPieces(const std::string& path, const std::function<void(std::string_view)>& take) {
  const auto file = openPlain(path, GENERIC_READ, OPEN_EXISTING);
  return file.error ? file.error : readFrom(file.value, take);
}

Result<std::string> readWhole(const std::string& path) {
  Result<std::string> whole;
  const auto file = openPlain(path, GENERIC_READ, OPEN_EXISTING);
  if (file.error) return {{}, file.error};
  whole.value.reserve(static_cast<std::size_t>(lookAt(file.value.get()).size()));
  whole.error = readFrom(file.value, [&whole](std::string_view piece) { whole.value.append(piece); });
  if (whole.error) whole.value.clear();
  return whole;
}

std::error_code makeFolders(const std::string& path) {
  const Found found = look(path);
  if (!found.error) return found.isFolder() ? std::error_code{} : kInTheWay;
  if (found.error != kNoSuch) return found.error;
  const std::string parent = parentOf(path);
  if (parent == path) return kNoSuch;
  if (const auto error = makeFolders(parent)) return error;
  if (::CreateDirectoryW(native(path).c_str(), nullptr)) return {};
  const auto error = lastError();
  return error == kInTheWay && look(path).isFolder() ? std::error_code{} : error;
}

// The entries of a folder but for "." and "..", in any order.
template <class Visit>
std::error_code eachEntry(const std::string& folder, Visit visit) {
  WIN32_FIND_DATAW entry{};
  const HANDLE search = ::FindFirstFileExW(native(withSlash(folder) + "*").c_str(), FindExInfoBasic, &entry,
                                           FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH);
  if (search == INVALID_HANDLE_VALUE) {
    const DWORD error = ::GetLastError();
    const bool isEmpty = error == ERROR_FILE_NOT_FOUND && look(folder).isFolder();  // as the root of a disk is
    return isEmpty ? std::error_code{} : errorOf(error);
  }
  std::error_code error;
  do {
    const std::wstring_view name = entry.cFileName;
    if (name != L"." && name != L"..") error = visit(entry);
  } while (!error && ::FindNextFileW(search, &entry));
  if (!error && ::GetLastError() != ERROR_NO_MORE_FILES) error = lastError();
  ::FindClose(search);
  return error;
}

bool isLinkEntry(const WIN32_FIND_DATAW& entry) {
  return (entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 && IsReparseTagNameSurrogate(entry.dwReserved0);
}

bool removeOne(const std::string& path, DWORD attributes) {
  const std::wstring name = native(path);
  if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return ::RemoveDirectoryW(name.c_str()) != 0;
  return ::DeleteFileW(name.c_str()) != 0;
}

// What a folder holds, and itself. No link is followed; what is protected goes too, as it does on other systems.
std::error_code removeAll(const std::string& folder) {
  const auto error = eachEntry(folder, [&folder](const WIN32_FIND_DATAW& entry) -> std::error_code {
    const std::string path = withSlash(folder) + text::toUtf8(entry.cFileName);
    const DWORD attributes = entry.dwFileAttributes;
    const bool isFolder = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    if (isFolder && !isLinkEntry(entry)) return removeAll(path);
    if ((attributes & FILE_ATTRIBUTE_READONLY) != 0)
      ::SetFileAttributesW(native(path).c_str(), attributes & ~DWORD{FILE_ATTRIBUTE_READONLY});
    return patiently([&] { return removeOne(path, attributes); });
  });
  if (error) return error;
  return patiently([&folder] { return removeOne(folder, FILE_ATTRIBUTE_DIRECTORY); });
}

FileTime utcTime(const FILETIME& at) {
  SYSTEMTIME fields{};
  if (!::FileTimeToSystemTime(&at, &fields)) return {};
  return {fields.wYear, fields.wMonth, fields.wDay, fields.wHour, fields.wMinute, fields.wSecond, fields.wMilliseconds};
}

class DiskFiles : public Files {
 public:
  bool exists(std::wstring_view path) override { return !look(machine(path)).error; }
  bool isFolder(std::wstring_view path) override { return look(machine(path)).isFolder(); }

  Result<std::uint64_t> size(std::wstring_view path) override {
    const Found found = look(machine(path));
    if (found.error) return {0, found.error};
    if (found.isFolder()) return {0, kIsFolder};
    return {found.size(), {}};
  }

  Result<FileTime> modified(std::wstring_view path) override {
    const Found found = look(machine(path));
    if (found.error) return {{}, found.error};
    return {utcTime(found.info.ftLastWriteTime), {}};
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
    auto file = openPlain(machine(path), FILE_APPEND_DATA | SYNCHRONIZE, OPEN_ALWAYS);
    if (file.error) return {nullptr, file.error};
    return {std::make_unique<DiskAppender>(std::move(file.value)), {}};
  }

  std::error_code createFolders(std::wstring_view path) override { return makeFolders(machine(path)); }

  std::error_code remove(std::wstring_view path) override {
    const std::string target = machine(path);
    const Found found = lookAtLink(target);
    if (found.error) return found.error;
    if (found.isFolder()) return kIsFolder;
    if (found.isProtected() && !found.isLink) return kDenied;
    const auto error = patiently([&] { return removeOne(target, found.info.dwFileAttributes); });
    if (!error) fileHasGone(found.id());
    return error;
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
  std::optional<FileId> replaced;
  if (source == target) {
    // The same file: just its spelling changes.
    const auto parts = partsOf(to);
    if (!parts.empty()) target = withSlash(parentOf(source)) + text::toUtf8(parts.back());
  } else if (!old.isFolder()) {
    const Found there = look(target);
    if (const auto error = replaceable(target, there)) return error;
    if (there.isThere()) replaced = there.id();
    if (const auto error = flushBeforeReplacing(source, replaced ? &*replaced : nullptr)) return error;
  }
  if (const auto error = judgePath(target)) return error;
  const DWORD flags = (old.isFolder() ? 0 : MOVEFILE_REPLACE_EXISTING) | MOVEFILE_WRITE_THROUGH;
  const auto error =
      patiently([&] { return ::MoveFileExW(native(source).c_str(), native(target).c_str(), flags) != 0; });
  if (!error) nameHasChanged(source, target, replaced ? &*replaced : nullptr);
  if (error != std::errc::cross_device_link || old.isFolder()) return error;
  // Two disks: a copy first, so that at each moment one of both is whole.
  const auto content = readWhole(source);
  if (content.error) return content.error;
  if (const auto failed = writeWhole(target, content.value)) return failed;
  return patiently([&] { return removeOne(source, old.info.dwFileAttributes); });
}

std::error_code DiskFiles::removeFolder(std::wstring_view path, std::wstring_view within) {
  if (within.empty()) return kRefused;
  const std::string target = machine(path), border = machine(within);
  const std::wstring inner = mounts().system(target), outer = mounts().system(border);
  if (!isInside(inner, outer) || isInside(outer, inner)) return kRefused;
  const Found found = lookAtLink(target);
  if (found.error) return found.error == kNoSuch ? std::error_code{} : found.error;
  // Links on the way may lead elsewhere than the names say.
  const std::string realBorder = machineBehindLinks(outer);
  const std::string realParent = machineBehindLinks(mounts().system(parentOf(target)));
  if (!withSlash(realParent).starts_with(withSlash(realBorder))) return kRefused;
  if (found.isLink) return patiently([&] { return removeOne(target, found.info.dwFileAttributes); });
  if (!found.isFolder()) return std::make_error_code(std::errc::not_a_directory);
  return removeAll(target);
}

Result<std::vector<Entry>> DiskFiles::list(std::wstring_view folder) {
  Result<std::vector<Entry>> result;
  const std::string place = machine(folder);
  result.error = judgePath(place);
  if (result.error) return result;
  std::vector<std::pair<std::string, Entry>> byName;
  result.error = eachEntry(place, [&](const WIN32_FIND_DATAW& entry) -> std::error_code {
    std::string name = text::toUtf8(entry.cFileName);
    Entry made{entry.cFileName, (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0,
               (std::uint64_t{entry.nFileSizeHigh} << 32) | entry.nFileSizeLow};
    if (isLinkEntry(entry)) {
      // A link counts as what it points to, and as a file when that isn't there.
      const Found found = look(withSlash(place) + name);
      made.isFolder = found.isFolder();
      made.size = found.isThere() ? found.size() : 0;
    }
    if (made.isFolder) made.size = 0;
    byName.emplace_back(std::move(name), std::move(made));
    return {};
  });
  std::sort(byName.begin(), byName.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  for (auto& [name, entry] : byName) result.value.push_back(std::move(entry));
  return result;
}

}  // namespace

std::unique_ptr<Files> diskFiles() { return std::make_unique<DiskFiles>(); }

Result<std::string> readPart(std::wstring_view path, std::uint64_t from, std::size_t most) {
  Result<std::string> part;
  const auto file = openPlain(mounts().machine(path), GENERIC_READ, OPEN_EXISTING);
  part.error = file.error;
  if (part.error) return part;
  LARGE_INTEGER place{};
  place.QuadPart = static_cast<LONGLONG>(from);
  if (!::SetFilePointerEx(file.value.get(), place, nullptr, FILE_BEGIN)) return {{}, lastError()};
  part.value.resize(most);
  std::size_t filled = 0;
  while (filled < most) {
    constexpr std::size_t kMost = std::size_t{1} << 26;
    const auto wanted = static_cast<DWORD>(std::min(most - filled, kMost));
    DWORD count = 0;
    if (!::ReadFile(file.value.get(), part.value.data() + filled, wanted, &count, nullptr)) part.error = lastError();
    if (part.error || count == 0) break;
    filled += count;
  }
  part.value.resize(part.error ? 0 : filled);
  return part;
}

}  // namespace os
