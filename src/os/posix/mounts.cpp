// Paths between the system's form and this machine's, where names have one separator, no letters and one spelling.
#include <sys/stat.h>

#include <algorithm>

#include "os/machine_path.h"
#include "os/paths.h"
#include "os/posix/folder_names.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace os {
namespace {

bool isThere(const std::string& path) {
  struct stat found {};
  return ::lstat(path.c_str(), &found) == 0;
}

// A machine's name can't hold a zero or a separator; such a name becomes that of no file.
std::string machineName(std::wstring_view part) {
  std::wstring name(part);
  std::replace(name.begin(), name.end(), L'\0', L'\uFFFD');
  return text::toUtf8(name);
}

// Absolute, without double separators, "." and a closing separator.
std::string tidy(std::string_view path) {
  std::string result;
  while (!path.empty()) {
    const std::string_view part = path.substr(0, path.find('/'));
    if (!part.empty() && part != ".") result.append("/").append(part);
    path.remove_prefix(std::min(part.size() + 1, path.size()));
  }
  return result.empty() ? "/" : result;
}

// What lies behind a folder in a path that it holds, without a leading separator; false when it doesn't hold it.
bool restBehind(std::string_view path, std::string_view folder, std::string_view& rest) {
  if (folder == "/") folder = {};
  if (!path.starts_with(folder)) return false;
  rest = path.substr(folder.size());
  if (!rest.empty() && rest[0] != '/') return false;
  rest.remove_prefix(rest.empty() ? 0 : 1);
  return true;
}

}  // namespace

void Mounts::set(wchar_t letter, std::string folder) {
  letter = text::lower(letter);
  if (letter == L'z') return;
  folder = tidy(folder);
  const auto known = std::find_if(mounts_.begin(), mounts_.end(), [&](const Mount& m) { return m.letter == letter; });
  if (known != mounts_.end()) {
    known->folder = std::move(folder);
  } else {
    mounts_.push_back({letter, std::move(folder)});
  }
}

bool Mounts::has(wchar_t letter) const {
  return std::any_of(mounts_.begin(), mounts_.end(), [&](const Mount& m) { return m.letter == text::lower(letter); });
}

std::string Mounts::machine(std::wstring_view path) const {
  std::string found = "/";
  const std::wstring device = splitDevice(path).device;
  for (const Mount& mount : mounts_) {
    if (!device.empty() && mount.letter == text::lower(device[0])) found = mount.folder;
  }
  std::vector<std::string> names;
  for (const std::wstring& part : partsOf(path)) names.push_back(machineName(part));

  std::string exact = found;
  for (const std::string& name : names) {
    exact = withSlash(std::move(exact));
    exact += name;
  }
  if (isThere(exact)) return exact;
  bool lost = false;
  for (const std::string& name : names) {
    std::string next = withSlash(found) + name;
    if (!lost && (next == exact || !isThere(next))) {
      const std::string spelled = spelledOnDisk(found, name);
      lost = spelled.empty();
      if (!lost) next = withSlash(found) + spelled;
    }
    found = std::move(next);
  }
  return found;
}

std::wstring Mounts::system(std::string_view machinePath) const {
  const std::string path = tidy(machinePath);
  std::size_t longest = 0;
  std::wstring result;
  for (const Mount& mount : mounts_) {
    std::string_view rest;
    if (mount.folder.size() < longest || !restBehind(path, mount.folder, rest)) continue;
    longest = mount.folder.size();
    result = {mount.letter, L':', L'\\'};
    result += withBackslashes(text::fromUtf8(rest));
  }
  return result;
}

}  // namespace os
