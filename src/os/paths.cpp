// Text work on paths; what asks the disk is the system's own (mounts.cpp).
#include "os/paths.h"

#include <algorithm>
#include <utility>

#include "os/roots.h"
#include "text/letters.h"

namespace os {
namespace {

bool isSeparator(wchar_t c) { return c == L'\\' || c == L'/'; }

std::size_t lastSeparator(std::wstring_view path) { return path.find_last_of(L"\\/"); }

// "server\share" and "\sub" of "\\server\share\sub".
std::pair<std::wstring, std::wstring_view> splitShare(std::wstring_view path) {
  path.remove_prefix(2);
  const std::size_t server = std::min(path.find_first_of(L"\\/"), path.size());
  const std::size_t share = std::min(path.find_first_of(L"\\/", server + 1), path.size());
  return {withBackslashes(path.substr(0, share)), path.substr(share)};
}

bool isBelow(const std::vector<std::wstring>& inner, const std::vector<std::wstring>& outer) {
  return inner.size() >= outer.size() &&
         std::equal(outer.begin(), outer.end(), inner.begin(),
                    [](const std::wstring& a, const std::wstring& b) { return text::equalNoCase(a, b); });
}

bool hasLetter(std::wstring_view path) {
  if (path.size() < 2 || path[1] != L':') return false;
  const wchar_t c = text::lower(path[0]);
  return c >= L'a' && c <= L'z';
}

}  // namespace

std::wstring withBackslashes(std::wstring_view path) {
  std::wstring result(path);
  std::replace(result.begin(), result.end(), L'/', L'\\');
  return result;
}

std::wstring asFolder(std::wstring_view path) {
  std::wstring result(path);
  if (result.empty() || !isSeparator(result.back())) result += L'\\';
  return result;
}

std::wstring joined(std::wstring_view folder, std::wstring_view name) {
  if (folder.empty()) return std::wstring(name);
  return asFolder(folder).append(name);
}

std::wstring wholeFrom(std::wstring_view folder, std::wstring_view path) {
  std::wstring wanted = withBackslashes(path);
  const bool isWhole = wanted.find(L':') != wanted.npos || wanted.starts_with(L'\\');
  return isWhole ? wanted : joined(folder, wanted);
}

std::wstring folderOf(std::wstring_view path) {
  const std::size_t at = lastSeparator(path);
  return at == path.npos ? std::wstring() : std::wstring(path.substr(0, at + 1));
}

std::wstring nameOf(std::wstring_view path) {
  const std::size_t at = lastSeparator(path);
  return std::wstring(at == path.npos ? path : path.substr(at + 1));
}

DevicePath splitDevice(std::wstring_view path) {
  if (!hasLetter(path)) return {{}, std::wstring(path)};
  return {std::wstring(path.substr(0, 1)), std::wstring(path.substr(2))};
}

std::vector<std::wstring> partsOf(std::wstring_view path) {
  if (hasLetter(path)) path.remove_prefix(2);
  std::vector<std::wstring> parts;
  while (!path.empty()) {
    const std::wstring_view part = path.substr(0, path.find_first_of(L"\\/"));
    if (part == L"..") {
      if (!parts.empty()) parts.pop_back();
    } else if (!part.empty() && part != L".") {
      parts.emplace_back(part);
    }
    path.remove_prefix(std::min(part.size() + 1, path.size()));
  }
  return parts;
}

bool isOnShare(std::wstring_view path, Roots roots) {
  return roots == Roots::letters && path.size() > 1 && isSeparator(path[0]) && isSeparator(path[1]);
}

bool isInside(std::wstring_view path, std::wstring_view folder) { return isInside(path, folder, kRoots); }

bool isInside(std::wstring_view path, std::wstring_view folder, Roots roots) {
  if (folder.empty() || isOnShare(path, roots) != isOnShare(folder, roots)) return false;
  if (isOnShare(path, roots)) {
    const auto [inner, within] = splitShare(path);
    const auto [outer, root] = splitShare(folder);
    return text::equalNoCase(inner, outer) && isBelow(partsOf(within), partsOf(root));
  }
  // A path without a letter is taken under the root, which is z.
  const auto letter = [](std::wstring_view of) { return hasLetter(of) ? text::lower(of[0]) : L'z'; };
  return letter(path) == letter(folder) && isBelow(partsOf(path), partsOf(folder));
}

}  // namespace os
