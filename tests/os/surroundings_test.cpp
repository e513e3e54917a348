// Text work on paths, text files, the clock, the environment and programs.
#include "os/surroundings.h"

#include <unistd.h>

#include <thread>

#include "disk.h"
#include "os/doors.h"
#include "os/files_wrapper.h"
#include "os/roots.h"
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

// The rules of a machine with letters and shares hold as text work wherever they are asked.
TEST(Paths, AShareLiesInsideNothingButItself) {
  struct {
    std::wstring_view path, folder;
    bool inside;
  } const cases[] = {
      {L"\\\\srv\\data\\a", L"\\\\SRV\\Data", true},
      {L"//srv/data/a/b", L"\\\\srv\\data\\a\\", true},
      {L"\\\\srv\\data\\..\\..\\x", L"\\\\srv\\data", true},
      {L"\\\\srv\\data\\a\\..\\b", L"\\\\srv\\data\\a", false},
      {L"\\\\srv\\data2\\a", L"\\\\srv\\data", false},
      {L"\\\\srv\\data\\a", L"\\\\srv", false},
      {L"\\\\srv\\data\\a", L"z:\\", false},
      {L"\\\\srv\\data\\a", L"\\srv\\data", false},
      {L"z:\\srv\\data\\a", L"\\\\srv\\data", false},
      {L"\\\\?\\C:\\a", L"c:\\", false},
      {L"D:\\a\\b", L"d:\\A", true},
      {L"c:\\a", L"d:\\", false},
  };
  for (const auto& [path, folder, inside] : cases)
    EXPECT_EQ(inside, isInside(path, folder, Roots::letters)) << text::toUtf8(path) << " in " << text::toUtf8(folder);
  EXPECT_TRUE(isInside(L"\\\\srv\\data", L"z:\\srv", Roots::one));
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
  FixedClock fixed(7);
  fixed.sleep(1500);
  fixed.sleep(500);
  fixed.sleep(-9);
  EXPECT_EQ(9, fixed.seconds());
  EXPECT_EQ(2000, fixed.slept());
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

// Each writes what it is given, a line an argument, beside the folder it runs in.
TEST(Processes, CommandLinesKeepTheirPathsInOnePiece) {
  const Disk disk;
  for (const char* folder : {"bin", "Out x", "run"}) disk.folder(folder);
  disk.file("bin/tell", "#!/bin/sh\n{ pwd -P; for a in \"$@\"; do echo \"$a\"; done; } >'" + disk.at("told") + "'\n");
  std::filesystem::permissions(disk.at("bin/tell"), std::filesystem::perms::owner_all);
  disk.file("Out x/it's $1.txt", "");
  disk.file("run/a.csv", "");
  disk.file("run/b.csv", "");
  const std::string file = disk.at("Out x/it's $1.txt");
  const std::pair<std::wstring, std::string> cases[] = {
      {L"", ""},
      {L"\"d:\\out x\\IT'S $1.txt\" 2", file + "\n2\n"},
      {L"'d:\\out x'\\b", disk.at("Out x/b") + "\n"},
      {L"--in=d:/run\\none.csv;true", "--in=" + disk.at("run/none.csv") + "\n"},
      {L"d:\\run\\*.csv", disk.at("run/a.csv") + "\n" + disk.at("run/b.csv") + "\n"},
      {L"https:\\\\example.com\\a \\usr\\bin x\\\"y q:\\free", "https://example.com/a\n/usr/bin\nx\"y\nq:/free\n"},
      {L"z:" + text::fromUtf8(disk.at("run")) + L"\\a.csv", disk.at("run/a.csv") + "\n"},
  };
  for (const auto& [arguments, expected] : cases) {
    const Result<int> ended = processes().run(L"D:\\bin\\tell " + arguments, L"d:\\RUN");
    EXPECT_TRUE(ended && ended.value == 0) << text::toUtf8(arguments);
    EXPECT_EQ(std::filesystem::canonical(disk.at("run")).string() + "\n" + expected, disk.content("told"));
  }
}

TEST(Processes, TroubleIsTold) {
  const Disk disk;
  const auto status = [](std::wstring_view command) { return processes().run(command, L"d:\\").value; };
  EXPECT_EQ(3, status(L"exit 3"));
  EXPECT_EQ(kNoProgram, status(L"d:\\none.exe a"));
  EXPECT_EQ(128 + 9, status(L"kill -9 $$"));
  EXPECT_EQ(0, status(L"! read line"));  // nothing stands on its input
  EXPECT_EQ(std::errc::no_such_file_or_directory, processes().run(L"true", L"d:\\none").error);
  EXPECT_EQ(std::errc::no_such_file_or_directory, processes().start(L"kvd-no-such-program", L"", L"d:\\"));
  EXPECT_EQ(std::errc::no_such_file_or_directory, processes().start(L"\"d:\\no ne.exe\"", L"a", L"d:\\"));
  EXPECT_EQ(std::errc::invalid_argument, processes().start(L"true", L"'open", L"d:\\"));
}

TEST(Processes, AStartedProgramIsntWaitedFor) {
  const Disk disk;
  disk.file("tool", "#!/bin/sh\nwhile [ ! -e go ]; do sleep 0.01; done; echo \"$1\" >done\n");
  std::filesystem::permissions(disk.at("tool"), std::filesystem::perms::owner_all);
  EXPECT_FALSE(processes().start(L"tool", L"\"a b\"", L"d:\\"));
  EXPECT_EQ("tool", disk.tree());
  disk.file("go", "");
  for (int i = 0; i < 500 && disk.content("done").empty(); ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  EXPECT_EQ("a b\n", disk.content("done"));
}

TEST(Processes, AClosedDoorRefusesAndADryRunNotes) {
  const Disk disk;
  const DoorsGuard guard;
  doors().programs = Door::closed;
  EXPECT_EQ(std::errc::operation_not_permitted, processes().run(L"exit 3", L"d:\\").error);
  EXPECT_EQ(std::errc::operation_not_permitted, processes().start(L"true", L"", L"d:\\"));
  EXPECT_EQ(std::errc::operation_not_permitted, processes().open(L"d:\\"));
  doors().programs = Door::withheld;
  EXPECT_EQ(0, processes().run(L"exit 3", L"d:\\").value);
  EXPECT_FALSE(processes().start(L"mail", L"-s x", L"d:\\"));
  EXPECT_EQ((std::vector<std::wstring>{L"run exit 3", L"start mail -s x"}), doors().noted);
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
