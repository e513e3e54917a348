// What Windows makes of names, paths and command lines, held on every system.
#include "os/windows_rules.h"

#include <gtest/gtest.h>

#include "text/encoding.h"

namespace os::windows {
namespace {

TEST(WindowsRules, NamesOfDevicesAndStreamsAreToldFromFiles) {
  struct {
    NameKind kind;
    std::vector<std::wstring_view> names;
  } const rows[] = {
      {NameKind::plain, {L"console", L"com", L"com10", L"lpt", L"a.con", L"nul_", L".con", L"COMA", L"a b.prt.1"}},
      {NameKind::reserved,
       {L"con", L"NUL.txt", L"Aux .tar.gz", L"com1", L"LPT\u00B9.x", L"conout$", L"a.", L"a ", L"..."}},
      {NameKind::stream, {L"a.txt:b", L"a:$DATA", L":"}},
      {NameKind::impossible, {L"a*", L"a?b", L"a|b", L"<", L"a\"", L"a\tb"}},
  };
  for (const auto& [kind, names] : rows)
    for (const std::wstring_view name : names) EXPECT_EQ(kind, kindOf(name)) << text::toUtf8(name);
  EXPECT_EQ(L"a", trimmed(L"a. ."));
  EXPECT_EQ(NameKind::plain, kindOfPath(L"C:/models/a.prt"));
  EXPECT_EQ(NameKind::reserved, kindOfPath(L"C:/con/a.prt"));
  EXPECT_EQ(NameKind::stream, kindOfPath(L"//server/share/a:b"));
  EXPECT_EQ(NameKind::reserved, kindOfPath(L"//./pipe/a"));
  EXPECT_EQ(NameKind::reserved, kindOfPath(L"//?/Volume{1}/a"));
}

TEST(WindowsRules, PathsGoToTheSystemAndBack) {
  struct {
    std::wstring_view given, machine, whole, root;
  } const rows[] = {
      {L"c:\\models\\a.prt", L"C:/models/a.prt", L"\\\\?\\C:\\models\\a.prt", L"C:/"},
      {L"\\\\?\\C:\\a\\", L"C:/a", L"\\\\?\\C:\\a", L"C:/"},
      {L"d:", L"D:/", L"\\\\?\\D:\\", L"D:/"},
      {L"\\\\server\\share\\a\\", L"//server/share/a", L"\\\\?\\UNC\\server\\share\\a", L"//server/share"},
      {L"\\\\?\\unc\\server\\share", L"//server/share", L"\\\\?\\UNC\\server\\share", L"//server/share"},
  };
  for (const auto& [given, machine, whole, root] : rows) {
    EXPECT_EQ(machine, machineForm(given)) << text::toUtf8(given);
    EXPECT_EQ(whole, extended(machine)) << text::toUtf8(given);
    EXPECT_EQ(machine, machineForm(extended(machine))) << text::toUtf8(given);
    EXPECT_EQ(root, machine.substr(0, rootLength(machine))) << text::toUtf8(given);
  }
}

TEST(WindowsRules, APathIsWholeFromARootOn) {
  for (const std::wstring_view path : {L"C:/", L"c:\\a", L"//server/share/a"}) EXPECT_TRUE(isWhole(path));
  for (const std::wstring_view path : {L"", L"/a", L"//", L"C:", L"C:a", L"a/b"})
    EXPECT_FALSE(isWhole(path)) << text::toUtf8(path);
}

TEST(WindowsRules, ArgumentsAreTakenApartAsTheyWerePut) {
  const std::pair<std::wstring_view, std::wstring_view> rows[] = {
      {L"a", L"a"},
      {L"", L"\"\""},
      {L"a b", L"\"a b\""},
      {L"a\"b", L"\"a\\\"b\""},
      {L"a b\\", L"\"a b\\\\\""},
      {L"a\\b", L"a\\b"},
      {L"a\\\" ", L"\"a\\\\\\\" \""},
  };
  for (const auto& [argument, expected] : rows) EXPECT_EQ(expected, quoted(argument)) << text::toUtf8(argument);
}

TEST(WindowsRules, PathsOfCommandLinesAreTranslatedInOnePiece) {
  const auto place = [](std::wstring_view path) -> std::optional<std::wstring> {
    if (path.front() != L't') return std::nullopt;
    return L"C:\\my temp" + std::wstring(path.substr(2));
  };
  const std::pair<std::wstring_view, std::wstring_view> rows[] = {
      {L"t:\\a.exe x", L"\"C:\\my temp\\a.exe\" x"},
      {L"\"t:\\a b.exe\" 'x'", L"\"C:\\my temp\\a b.exe\" 'x'"},
      {L"mail --in=t:/x /q c:\\x", L"mail --in=\"C:\\my temp/x\" /q c:\\x"},
      {L"xt:\\a http://t:/", L"xt:\\a http://\"C:\\my temp/\""},
      {L"t:\\a&t:\\b>t:\\c", L"\"C:\\my temp\\a\"&\"C:\\my temp\\b\">\"C:\\my temp\\c\""},
      {L"t: t:x", L"t: t:x"},
  };
  for (const auto& [line, expected] : rows) EXPECT_EQ(expected, withPaths(line, place)) << text::toUtf8(line);
}

TEST(WindowsRules, TheCommandProcessorReadsWhatIsItsOwn) {
  for (const std::wstring_view line : {L"a & b", L"a > b", L"echo %PATH%", L"a \"%X%\"", L"a ^b", L"(a)", L"a\nb"})
    EXPECT_TRUE(needsProcessor(line)) << text::toUtf8(line);
  for (const std::wstring_view line : {L"a b", L"\"C:\\a & b\\c.exe\" \"x > y\"", L"mail 'a' /q"})
    EXPECT_FALSE(needsProcessor(line)) << text::toUtf8(line);
  for (const std::wstring_view word : {L"DIR", L"cd\\", L"echo.", L"exit"}) EXPECT_TRUE(isBuiltIn(word));
  for (const std::wstring_view word : {L"dirs", L"mail", L"C:\\copy.exe"}) EXPECT_FALSE(isBuiltIn(word));
  const FirstWord first = firstWord(L"  \"C:\\my tools\\a\".exe x");
  EXPECT_EQ(L"C:\\my tools\\a.exe", first.word);
  EXPECT_EQ(21U, first.end);
  for (const std::wstring_view name : {L"MAIL.Exe", L"mail", L"mail.cmd", L"Mail.exe. "})
    EXPECT_EQ(L"mail", programName(name));
  EXPECT_EQ(L"mail.txt", programName(L"mail.txt"));
}

}  // namespace
}  // namespace os::windows
