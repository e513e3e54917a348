// Paths in the system's own form ("d:\models\a.prt.1") and the machine's. Inside, paths are wide texts with
// backslashes; both separators are accepted. Only this layer turns them into the machine's form, by the mount table.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace os {

// Letters and the machine's folders they stand for. "z:" is always the root.
class Mounts {
 public:
  // folder: absolute, in the machine's form. A letter set again is replaced.
  void set(wchar_t letter, std::string folder);
  // In either case of the letter.
  [[nodiscard]] bool has(wchar_t letter) const;
  // The machine's form. A path without a mounted letter is taken under the root; ".." never climbs above a mount.
  // Names are matched case-blind against what is on disk, the exact name first; a part that isn't there stays as it is.
  [[nodiscard]] std::string machine(std::wstring_view path) const;
  // The system's form of an absolute machine path: under the longest mounted folder that holds it.
  [[nodiscard]] std::wstring system(std::string_view machinePath) const;

 private:
  struct Mount {
    wchar_t letter;
    std::string folder;
  };
  std::vector<Mount> mounts_{{L'z', "/"}};
};

// Text work on paths of the system's form; nothing here asks the disk.
std::wstring withBackslashes(std::wstring_view path);
// With a closing backslash unless it ends in one of the separators.
std::wstring asFolder(std::wstring_view path);
// Folder with a separator, then a relative name.
std::wstring joined(std::wstring_view folder, std::wstring_view name);
// With backslashes: the path itself where it has a device or begins at the root, else as it goes on from the folder.
std::wstring wholeFrom(std::wstring_view folder, std::wstring_view path);
// Everything up to and including the last separator; empty without one.
std::wstring folderOf(std::wstring_view path);
// What follows the last separator.
std::wstring nameOf(std::wstring_view path);
// "d" and "\models\sub\" of "d:\models\sub\": device without colon, path with what follows.
struct DevicePath {
  std::wstring device;
  std::wstring path;
};
DevicePath splitDevice(std::wstring_view path);
// The parts between the separators, behind the device, with "." and ".." worked out; ".." never climbs above the first.
std::vector<std::wstring> partsOf(std::wstring_view path);
// True when path lies in folder (or is it) after "." and ".." are worked out, case-blind. Nothing lies in an
// empty folder.
bool isInside(std::wstring_view path, std::wstring_view folder);

}  // namespace os
