// Files that have further names.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <system_error>

namespace os {

// The path that writing to this one ends at: behind links, also those of its folders and one whose file isn't there
// yet. The path itself, perhaps in another spelling, where there are none.
std::wstring behindLinks(std::wstring_view path);
// The same in the machine's form.
std::string machineBehindLinks(std::wstring_view path);
// In the machine's form, with the links of its folders followed but not one of that name: what removing and renaming
// work on.
std::string machineItself(std::wstring_view path);

// While it lives, a file that is opened under this path by this thread must be the one that stood there when the guard
// was made, be it a file that isn't there yet: a link that was put there, or into a folder above it, since then makes
// opening fail with operation_not_permitted. The path's own text decides, so that files beside it are opened as ever.
class PlaceGuard {
 public:
  // real: what machineBehindLinks gave for it.
  PlaceGuard(std::wstring_view path, std::string real);
  ~PlaceGuard();
  PlaceGuard(const PlaceGuard&) = delete;
  PlaceGuard& operator=(const PlaceGuard&) = delete;

 private:
  std::string given_, real_;
  const PlaceGuard* outer_;
  friend bool isAsGuarded(const std::string&, const std::function<std::string()>&);
};

// Gives a file a second name on the same disk, so that its content outlives the first one; a link is followed.
// file_exists: the name is taken. Any other error: this disk, or this pair of folders, knows no such thing.
std::error_code addName(std::wstring_view file, std::wstring_view name);

}  // namespace os
