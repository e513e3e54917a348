// What Windows makes of names, paths and command lines, as text alone; nothing here asks the machine. The bodies in
// os/windows stand on it, and every system's tests hold it.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace os::windows {

// Is this the system that the rules hold for?
#ifdef _WIN32
inline constexpr bool kIsHere = true;
#else
inline constexpr bool kIsHere = false;
#endif

// ---- names

enum class NameKind {
  plain,
  impossible,  // holds a letter that no name has: < > " | ? * or a control character
  reserved,    // a device ("con", "LPT1.txt"), or ends in a blank or dot, where programs find another file
  stream,      // a part of another file ("a.txt:b")
};
NameKind kindOf(std::wstring_view name);
// Without the blanks and dots at its end, as the system takes a name; a name of nothing else stays.
std::wstring_view trimmed(std::wstring_view name);

// ---- paths in the machine's form, with "/" ("C:/models/a.prt", "//server/share/a.prt")

// As the system's functions take it, however long: "\\?\C:\models\a.prt", "\\?\UNC\server\share\a.prt". Nothing else
// is worked out there: "." and ".." are names.
std::wstring extended(std::wstring_view machine);
// The way back, also of a path without that prefix.
std::wstring machineForm(std::wstring_view path);
// With backslashes and without the prefix, as programs are given it.
std::wstring forPrograms(std::wstring_view machine);
// The worst of the names in such a path, without its letter or server.
NameKind kindOfPath(std::wstring_view machine);
// The length of what no ".." climbs above: of "C:/", of "//server/share".
std::size_t rootLength(std::wstring_view machine);
// Does it begin at the root of a letter, or at a server? "C:a" goes on from a folder that the letter has just now.
bool isWhole(std::wstring_view machine);

// ---- programs

// One argument as the program's start takes it apart again: quotes where there are blanks or nothing at all, each quote
// and the backslashes before it behind a backslash.
std::wstring quoted(std::wstring_view argument);
// A command line with paths of mounted letters in the machine's own form. path: what stands for one; nothing leaves it
// as it is. A path ends at a blank outside quotes, and is put in quotes where it then holds what would end it.
std::wstring withPaths(std::wstring_view command,
                       const std::function<std::optional<std::wstring>(std::wstring_view path)>& path);
// The first word of a command line, without quotes, and where its arguments begin.
struct FirstWord {
  std::wstring word;
  std::size_t end = 0;
};
FirstWord firstWord(std::wstring_view command);
// Does the command processor have to read it: is there what it carries out itself, outside quotes or within?
bool needsProcessor(std::wstring_view command);
// A command that is a part of the command processor ("dir", "copy").
bool isBuiltIn(std::wstring_view word);
// "mail" of "MAIL.Exe": in small letters, without what makes it a program.
std::wstring programName(std::wstring_view name);

}  // namespace os::windows
