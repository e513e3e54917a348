#include "kelvane/journal/taking_back.h"

#include <algorithm>

#include "kelvane/base/backwards.h"
#include "kelvane/base/places.h"
#include "kelvane/journal/paths.h"
#include "os/surroundings.h"
#include "text/encoding.h"

namespace kelvane {
namespace {

std::string cant(const std::string& what, const std::string& path, std::error_code error) {
  return JournalPaths::shown(path) + " can't be " + what + ": " + error.message();
}

struct KeptBytes {
  std::string bytes;
  std::string failed;  // empty: they are what was kept then
};

KeptBytes keptBytes(const std::string& path, const Content& content, const std::wstring& kept) {
  const std::wstring file = kept + text::fromUtf8(content.kept);
  auto bytes = os::files().read(file);
  if (!bytes) return {{}, cant("written", path, bytes.error) + " (" + shown(file) + ")"};
  if (!contentOf(bytes.value).isSameAs(content))
    return {{}, JournalPaths::shown(path) + " can't be written: " + shown(file) + " isn't as it was kept"};
  return {std::move(bytes.value), {}};
}

// Two files that changed names with each other: neither name is free for the other one.
bool isCircle(const Back& back) {
  return std::any_of(back.renamed.begin(), back.renamed.end(),
                     [](const auto& pair) { return os::files().exists(JournalPaths::system(pair.second)); });
}

std::string renameThroughMemory(const Back& back) {
  std::vector<std::pair<std::string, std::string>> contents;
  for (const auto& [from, to] : back.renamed) {
    auto bytes = os::files().read(JournalPaths::system(from));
    if (!bytes) return cant("read", from, bytes.error);
    contents.emplace_back(to, std::move(bytes.value));
  }
  for (const auto& [to, bytes] : contents)
    if (const auto error = os::files().write(JournalPaths::system(to), bytes)) return cant("written", to, error);
  for (const auto& [from, to] : back.renamed) {
    const bool isTaken = std::any_of(contents.begin(), contents.end(),
                                     [&name = from](const auto& entry) { return entry.first == name; });
    if (isTaken) continue;
    if (const auto error = os::files().remove(JournalPaths::system(from))) return cant("removed", from, error);
  }
  return {};
}

std::string renameBack(const Back& back) {
  if (isCircle(back)) return renameThroughMemory(back);
  for (const auto& [from, to] : back.renamed) {
    const auto error = os::files().rename(JournalPaths::system(from), JournalPaths::system(to));
    if (error) return cant("renamed", from, error);
  }
  return {};
}

}  // namespace

Present lookAt(const std::string& path) {
  const std::wstring place = JournalPaths::system(path);
  if (os::files().isFolder(place)) return {{}, " can't be read: it is a folder"};
  const auto bytes = os::files().read(place);
  if (bytes.error == std::errc::no_such_file_or_directory) return {};
  if (!bytes) return {{}, " can't be read: " + bytes.error.message()};
  return {contentOf(bytes.value), {}};
}

std::string keptFault(const Back& back, const std::wstring& kept) {
  for (const auto& [path, content] : back.written)
    if (std::string failed = keptBytes(path, content, kept).failed; !failed.empty()) return failed;
  return {};
}

std::string takeBack(const Back& back, const std::wstring& kept) {
  for (const std::string& path : back.removed)
    if (const auto error = os::files().remove(JournalPaths::system(path))) return cant("removed", path, error);
  if (std::string failed = renameBack(back); !failed.empty()) return failed;
  for (const auto& [path, content] : back.written) {
    const KeptBytes found = keptBytes(path, content, kept);
    if (!found.failed.empty()) return found.failed;
    const std::wstring place = JournalPaths::system(path);
    if (const auto error = os::files().createFolders(os::folderOf(place))) return cant("written", path, error);
    if (const auto error = os::files().write(place, found.bytes)) return cant("written", path, error);
  }
  return {};
}

void removeEmptyFolders(const std::vector<std::string>& folders) {
  for (const std::string& folder : Backwards(folders)) {
    const std::wstring place = JournalPaths::system(folder);
    const auto held = os::files().list(place);
    std::wstring bare = place;
    if (bare.ends_with(L'\\')) bare.pop_back();
    if (held && held.value.empty()) (void)os::files().removeFolder(bare, os::folderOf(bare));
  }
}

}  // namespace kelvane
