// Paths between the system's form and the machine's, which has one separator. The program's own letters count beside
// the machine's, and before them.
#include <algorithm>

#include "os/machine_path.h"
#include "os/paths.h"
#include "os/windows/native.h"
#include "os/windows_rules.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace os {
namespace {

// What "z:" is elsewhere. Here no folder holds all others, and that letter is one like any.
constexpr std::string_view kOneRoot = "/";

bool isDrive(wchar_t letter) {
  const wchar_t lower = text::lower(letter);
  return lower >= L'a' && lower <= L'z' && ((::GetLogicalDrives() >> (lower - L'a')) & 1U) != 0;
}

// The root that a path without a letter is taken under: that of the folder in which the program was started.
std::wstring ownRoot() {
  std::wstring folder(::GetCurrentDirectoryW(0, nullptr), L'\0');
  folder.resize(::GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data()));
  folder = windows::machineForm(folder);
  return folder.substr(0, windows::rootLength(folder));
}

// A server's path keeps its server and share, and one of a device what makes it one.
std::wstring rootOf(std::wstring_view path) {
  const std::wstring form = windows::machineForm(path);
  if (form.starts_with(L"//")) return form.substr(0, windows::rootLength(form));
  const std::wstring device = splitDevice(form).device;
  return device.empty() ? ownRoot() : std::wstring{text::upper(device[0]), L':', L'/'};
}

std::wstring withSlash(std::wstring folder) {
  if (!folder.ends_with(L'/')) folder += L'/';
  return folder;
}

// A name of no file stays one: a zero would end the path.
std::wstring machineName(std::wstring_view part) {
  std::wstring name(windows::trimmed(part));
  std::replace(name.begin(), name.end(), L'\0', L'\uFFFD');
  return name;
}

// The entry of that name as the disk spells it, also for its short form ("PROGRA~1"); empty where there is none.
std::wstring spelledOnDisk(const std::wstring& path) {
  if (windows::kindOfPath(path) != windows::NameKind::plain) return {};
  WIN32_FIND_DATAW entry{};
  const HANDLE search =
      ::FindFirstFileExW(windows::extended(path).c_str(), FindExInfoBasic, &entry, FindExSearchNameMatch, nullptr, 0);
  if (search == INVALID_HANDLE_VALUE) return {};
  ::FindClose(search);
  return entry.cFileName;
}

std::wstring underRoot(std::wstring root, const std::vector<std::wstring>& parts) {
  bool isLost = false;
  for (const std::wstring& part : parts) {
    const std::wstring name = machineName(part);
    root = withSlash(std::move(root));
    const std::wstring spelled = isLost ? std::wstring() : spelledOnDisk(root + name);
    isLost = spelled.empty();
    root += isLost ? name : spelled;
  }
  return root;
}

// What lies behind a folder in a path that it holds, without a leading separator; false when it doesn't hold it.
bool restBehind(std::string_view path, std::string_view folder, std::string_view& rest) {
  while (folder.ends_with('/')) folder.remove_suffix(1);
  if (path.size() < folder.size() || !text::equalNoCase(path.substr(0, folder.size()), folder)) return false;
  rest = path.substr(folder.size());
  if (!rest.empty() && rest[0] != '/') return false;
  rest.remove_prefix(rest.empty() ? 0 : 1);
  return true;
}

}  // namespace

void Mounts::set(wchar_t letter, std::string folder) {
  letter = text::lower(letter);
  folder = machineOf(text::fromUtf8(folder));
  const auto known = std::find_if(mounts_.begin(), mounts_.end(), [&](const Mount& m) { return m.letter == letter; });
  if (known != mounts_.end()) {
    known->folder = std::move(folder);
  } else {
    mounts_.push_back({letter, std::move(folder)});
  }
}

bool Mounts::has(wchar_t letter) const {
  const auto isThat = [&](const Mount& m) { return m.letter == text::lower(letter) && m.folder != kOneRoot; };
  return std::any_of(mounts_.begin(), mounts_.end(), isThat) || isDrive(letter);
}

std::string Mounts::machine(std::wstring_view path) const {
  const std::wstring root = rootOf(path);
  std::wstring form = windows::machineForm(path);
  if (root.starts_with(L"//")) {
    form.erase(0, root.size());
    return text::toUtf8(underRoot(root, partsOf(form)));
  }
  for (const Mount& mount : mounts_) {
    const std::wstring device = splitDevice(form).device;
    if (!device.empty() && mount.letter == text::lower(device[0]) && mount.folder != kOneRoot)
      return text::toUtf8(underRoot(text::fromUtf8(mount.folder), partsOf(form)));
  }
  return text::toUtf8(underRoot(root, partsOf(form)));
}

std::wstring Mounts::system(std::string_view machinePath) const {
  const std::wstring form = windows::machineForm(text::fromUtf8(machinePath));
  const std::string path = text::toUtf8(form);
  std::size_t longest = 0;
  std::wstring result;
  for (const Mount& mount : mounts_) {
    std::string_view rest;
    if (mount.folder == kOneRoot || mount.folder.size() < longest || !restBehind(path, mount.folder, rest)) continue;
    longest = mount.folder.size();
    result = {mount.letter, L':', L'\\'};
    result += withBackslashes(text::fromUtf8(rest));
  }
  if (!result.empty()) return result;
  const bool hasRoot = form.starts_with(L"//") || !splitDevice(form).device.empty();
  return withBackslashes(hasRoot ? form : text::fromUtf8(machine(form)));
}

}  // namespace os
