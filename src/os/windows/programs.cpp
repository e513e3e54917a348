#include "os/windows/programs.h"

#include <algorithm>
#include <array>
#include <vector>

#include "os/processes.h"
#include "os/surroundings.h"
#include "os/windows_rules.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace os {
namespace {

std::vector<std::wstring> pieces(const std::wstring& list) {
  std::vector<std::wstring> found;
  for (std::size_t at = 0; at <= list.size();) {
    const std::size_t end = std::min(list.find(L';', at), list.size());
    std::wstring piece = list.substr(at, end - at);
    std::erase(piece, L'"');
    if (!piece.empty()) found.push_back(std::move(piece));
    at = end + 1;
  }
  return found;
}

std::wstring forPrograms(std::wstring_view path) {
  return windows::forPrograms(text::fromUtf8(mounts().machine(path)));
}

bool isFile(const std::wstring& path) {
  const std::string file = mounts().machine(path);
  const Found found = look(file);
  return found.isThere() && !found.isFolder();
}

Program::Kind kindOf(std::wstring_view file) {
  for (const std::wstring_view end : {L".exe", L".com"})
    if (text::endsWithNoCase(file, end)) return Program::Kind::program;
  for (const std::wstring_view end : {L".cmd", L".bat"})
    if (text::endsWithNoCase(file, end)) return Program::Kind::script;
  return Program::Kind::document;
}

// The file of that path, or the one with an end of a program's.
Program found(const std::wstring& path, const std::vector<std::wstring>& ends) {
  // A name without an end is no program, though there may be such a file.
  const bool hasEnd = nameOf(path).find(L'.') != std::wstring::npos;
  if (hasEnd && isFile(path)) return {kindOf(path), forPrograms(path)};
  for (const std::wstring& end : ends)
    if (isFile(path + end)) return {kindOf(path + end), forPrograms(path + end)};
  if (!hasEnd && isFile(path)) return {Program::Kind::document, forPrograms(path)};
  return {};
}

}  // namespace

Program findProgram(std::wstring_view name, std::wstring_view folder, bool alsoInFolder) {
  if (name.empty()) return {};
  const std::vector<std::wstring> ends = pieces(environment(L"PATHEXT").value_or(L".COM;.EXE;.BAT;.CMD"));
  const bool isPath = name.find_first_of(L"\\/:") != name.npos;
  if (isPath) return found(wholeFrom(folder, name), ends);
  std::vector<std::wstring> folders;
  if (alsoInFolder && !folder.empty()) folders.emplace_back(folder);
  for (std::wstring& place : pieces(environment(L"PATH").value_or(L""))) folders.push_back(std::move(place));
  for (const std::wstring& place : folders)
    if (Program program = found(joined(place, name), ends); program.kind != Program::Kind::none) return program;
  return {};
}

std::wstring folderForPrograms(std::wstring_view folder) {
  return folder.empty() ? std::wstring() : forPrograms(folder);
}

std::wstring withMachinePaths(std::wstring_view command) {
  return windows::withPaths(command, [](std::wstring_view path) -> std::optional<std::wstring> {
    if (!mounts().has(path.front())) return std::nullopt;
    const bool isFolder = path.ends_with(L'\\') || path.ends_with(L'/');
    const std::wstring whole = forPrograms(path);
    return isFolder ? asFolder(whole) : whole;
  });
}

ChildStart startOf(const Program& program, std::wstring_view arguments) {
  const std::wstring line = windows::quoted(program.file) + std::wstring(arguments);
  if (program.kind == Program::Kind::program) return {program.file, line, {}, 0, {}};
  return startOfProcessor(L"\"" + program.file + L"\"" + std::wstring(arguments));
}

ChildStart startOfProcessor(std::wstring_view command) {
  std::array<wchar_t, MAX_PATH> folder{};
  const UINT size = ::GetSystemDirectoryW(folder.data(), static_cast<UINT>(folder.size()));
  const std::wstring program = std::wstring(folder.data(), size) + L"\\cmd.exe";
  // /d: nothing of the registry runs before; /s: just the outer quotes are taken away.
  return {program, windows::quoted(program) + L" /d /s /c \"" + std::wstring(command) + L"\"", {}, 0, {}};
}

}  // namespace os
