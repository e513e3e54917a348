// Text work on paths, text files, the clock, the environment and programs.
#include "os/surroundings.h"

#include <unistd.h>

#include <thread>

#include "disk.h"
#include "os/files_wrapper.h"
#include "os/text_files.h"
#include "text/encoding.h"

namespace os {
namespace {

TEST(Paths, TakenApartAndPutTogether) {
  EXPECT_EQ(L"d:\\a\\b", withBackslashes(L"d:/a\\b"));
  EXPECT_EQ(L"d:\\a\\", asFolder(L"d:\\a"));
  EXPECT_EQ(L"d:\\a/", asFolder(L"d:\\a/"));
  EXPECT_EQ(L"d:\\a\\b", joined(L"d:\\a", L"b"));
  EXPECT_EQ(L"b", joined(L"", L"b"));
  struct {
    std::wstring_view path, folder, name, device, behind;
  } const cases[] = {
      {L"d:\\models\\sub\\", L"d:\\models\\sub\\", L"", L"d", L"\\models\\sub\\"},
      {L"d:/a\\b.prt", L"d:/a\\", L"b.prt", L"d", L"/a\\b.prt"},
      {L"b.prt", L"", L"b.prt", L"", L"b.prt"},
      {L"\\b", L"\\", L"b", L"", L"\\b"},
      {L"1:\\b", L"1:\\", L"b", L"", L"1:\\b"},
      {L"", L"", L"", L"", L""},
  };
  for (const auto& [path, folder, name, device, behind] : cases) {
    EXPECT_EQ(folder, folderOf(path)) << text::toUtf8(path);
    EXPECT_EQ(name, nameOf(path)) << text::toUtf8(path);
    EXPECT_EQ(device, splitDevice(path).device) << text::toUtf8(path);
    EXPECT_EQ(behind, splitDevice(path).path) << text::toUtf8(path);
  }
}

TEST(Paths, InsideIsWorkedOutNotCompared) {
  struct {
    std::wstring_view path, folder;
    bool inside;
  } const cases[] = {
      {L"d:\\a\\b", L"d:\\a", true}, {L"D:/A/./b", L"d:\\a\\", true},    {L"d:\\a", L"d:\\a\\", true},
      {L"d:\\ab", L"d:\\a", false},  {L"d:\\a\\..\\b", L"d:\\a", false}, {L"d:\\a\\..\\..\\a\\b", L"d:\\a", true},
      {L"d:\\", L"d:\\a", false},    {L"e:\\a\\b", L"d:\\a", false},     {L"d:\\a", L"", false},
      {L"\\a\\b", L"z:\\a", true},   {L"a\\b", L"d:\\a", false},         {L"d:\\\u00DC\\b", L"d:\\\u00FC", true},
  };
  for (const auto& [path, folder, inside] : cases) {
    EXPECT_EQ(inside, isInside(path, folder)) << text::toUtf8(path) << " in " << text::toUtf8(folder);
  }
}

TEST(TextFiles, EachFormIsWrittenAndRead) {
  const Disk disk;
  struct {
    TextForm form;
    std::wstring_view content;
    std::string bytes;
  } const cases[] = {
      {{}, L"\u00E4\n", "\xC3\xA4\n"},
      {{.mark = true, .crlf = true}, L"\u00E4\n\nx", "\xEF\xBB\xBF\xC3\xA4\r\n\r\nx"},
      {{.encoding = Encoding::latin1, .mark = true}, L"\u00E4\n", "\xE4\n"},
      {{.encoding = Encoding::windows1252, .crlf = true}, L"\u20AC\n", "\x80\r\n"},
  };
  for (const auto& [form, content, bytes] : cases) {
    EXPECT_FALSE(writeText(L"d:\\a.txt", content, form));
    EXPECT_EQ(bytes, disk.content("a.txt"));
    const std::wstring expected = form.crlf ? text::fromTextFile(bytes) : std::wstring(content);
    EXPECT_EQ(expected, readText(L"d:\\a.txt").value);
  }
  EXPECT_EQ(std::errc::no_such_file_or_directory, readText(L"d:\\none").error);
}

TEST(TextFiles, LinesAreWholeWhereverTheFileWasCut) {
  const Disk disk;
  std::string bytes =
      "\xEF\xBB\xBF"
      "first\r\n\n\xE4 1252\n";
  std::vector<std::wstring> expected = {L"first", L"", L"\u00E4 1252"};
  for (int i = 0; i < 9000; ++i) {
    bytes += "\xC3\xA4 line " + std::to_string(i) + "\r\n";
    expected.push_back(L"\u00E4 line " + std::to_wstring(i));
  }
  disk.file("long", bytes + "last");
  expected.push_back(L"last");
  std::vector<std::wstring> lines;
  const auto take = [&lines](std::wstring_view line) { lines.emplace_back(line); };
  EXPECT_FALSE(readLines(L"d:\\long", take));
  EXPECT_EQ(expected, lines);
  FaultyFiles faulty(files());
  faulty.denyReads(L"d:\\");
  EXPECT_EQ(std::errc::permission_denied, faulty.readPieces(L"d:\\long", [](std::string_view) {}));
  EXPECT_EQ(std::errc::no_such_file_or_directory, readLines(L"d:\\none", take));
  EXPECT_EQ(expected.size(), lines.size());
}

TEST(Clock, LocalTimeExpandsItsOwnConversions) {
  ::setenv("TZ", "UTC-2", 1);
  EXPECT_EQ(L"2000-02-29 01:59:59 00 AM 01 %q %", localTime(951782399, "%Y-%m-%d %H:%M:%S %y %p %I %q %"));
  EXPECT_EQ(L"12 PM", localTime(36000, "%I %p"));
  EXPECT_EQ(L"12 AM", localTime(-7200, "%I %p"));
  EXPECT_EQ(L"", localTime(std::numeric_limits<std::int64_t>::max(), "%Y"));
  ::unsetenv("TZ");
  EXPECT_GT(machineClock()->seconds(), 1700000000);
}

TEST(Environment, UserAndConfigurationFolderAreAlwaysKnown) {
  for (const char* name : {"username", "USERNAME", "appdata", "APPDATA"}) ::unsetenv(name);
  const Disk disk;
  EXPECT_FALSE(environment(L"UserName").value_or(L"").empty());
  ::setenv("XDG_CONFIG_HOME", disk.at("conf").c_str(), 1);
  EXPECT_EQ(L"d:\\conf", environment(L"AppData"));
  ::unsetenv("XDG_CONFIG_HOME");
  EXPECT_TRUE(environment(L"appdata")->ends_with(L"\\.config"));
  EXPECT_FALSE(setEnvironment(L"username", L""));
  EXPECT_EQ(L"", environment(L"USERNAME"));
  ::unsetenv("username");
}

TEST(Environment, AVariableIsOneWhateverItsCase) {
  EXPECT_EQ(std::nullopt, environment(L"KVD_TEST_\u00E4"));
  EXPECT_FALSE(setEnvironment(L"KVD_TEST_\u00E4", L"\u20AC"));
  EXPECT_FALSE(setEnvironment(L"kvd_test_\u00E4", L"2"));
  EXPECT_EQ(L"2", environment(L"KVD_Test_\u00E4"));
  EXPECT_TRUE(setEnvironment(L"", L"x") && setEnvironment(L"a=b", L"x"));
  EXPECT_EQ(std::nullopt, environment(L""));
}

TEST(Processes, TheDesktopsOpenerGetsTheMachinesPath) {
  const Disk disk;
  disk.folder("bin");
  disk.file("it's $HOME.pdf", "");
  const std::string path = std::getenv("PATH");
  ::setenv("PATH", disk.at("none").c_str(), 1);
  EXPECT_EQ(std::errc::function_not_supported, processes().open(L"d:\\it's $HOME.pdf"));
  disk.file("bin/xdg-open", "#!/bin/sh\nprintf %s \"$1\" >'" + disk.at("opened") + "'\n");
  std::filesystem::permissions(disk.at("bin/xdg-open"), std::filesystem::perms::owner_all);
  ::setenv("PATH", disk.at("bin").c_str(), 1);
  EXPECT_FALSE(processes().open(L"d:\\IT'S $home.pdf"));
  EXPECT_EQ(std::errc::no_such_file_or_directory, processes().open(L"d:\\none.pdf"));
  ::setenv("PATH", path.c_str(), 1);
  for (int i = 0; i < 500 && disk.content("opened").empty(); ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  EXPECT_EQ(disk.at("it's $HOME.pdf"), disk.content("opened"));
}

// What a command line says of paths reaches the program as the machine's; the rest is the shell's.
TEST(Processes, ACommandLineNamesPathsOfTheSystem) {
  const Disk disk;
  disk.folder("it's $HOME `x`");
  disk.file("it's $HOME `x`/a.txt", "a");
  disk.file("b.txt", "b");
  struct Row {
    const wchar_t* command;
    std::string expected;
    int status;
  };
  const std::string odd = disk.at("it's $HOME `x`");
  const Row rows[] = {
      {L"printf '%s|' \"d:\\IT'S $home `x`\\a.txt\" d:\\b.txt 'd:\\b.txt' >d:\\out",
       odd + "/a.txt|" + disk.at("b.txt") + "|" + disk.at("b.txt") + "|", 0},
      {L"printf '%s|' --in=d:/b.txt x:y \"a d:\\b.txt\" http://d:/b.txt '' >d:\\out; exit 3",
       "--in=" + disk.at("b.txt") + "|x:y|a " + disk.at("b.txt") + "|http://d:/b.txt||", 3},
      {L"cat d:\\*.txt >d:\\out", "b", 0},
      {L"cat >d:\\out", "", 0},
      {L"printf x >d:\\out; kill -9 $$", "x", 137},
  };
  for (const Row& row : rows) {
    const auto ended = processes().run(row.command);
    EXPECT_FALSE(ended.error);
    EXPECT_EQ(row.status, ended.value) << row.expected;
    EXPECT_EQ(row.expected, disk.content("out"));
  }
}

TEST(Surroundings, TheGuardPutsEverythingBack) {
  const auto* const before = &files();
  {
    const SurroundingsGuard guard;
    surroundings().files = diskFiles();
    surroundings().clock = std::make_shared<FixedClock>(7);
    mounts().set(L'y', "/tmp");
    EXPECT_EQ(7, clock().seconds());
  }
  EXPECT_EQ(before, &files());
  EXPECT_NE(7, clock().seconds());
  EXPECT_EQ("/", mounts().machine(L"y:\\"));
}

}  // namespace
}  // namespace os
