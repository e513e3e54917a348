// Text work on paths, text files, the clock, the environment and programs.
#include "os/surroundings.h"

#include <chrono>
#include <limits>
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

// In UTC.
std::wstring dayOf(std::int64_t at) {
  const std::chrono::sys_seconds time{std::chrono::seconds(at)};
  const std::chrono::year_month_day day(std::chrono::floor<std::chrono::days>(time));
  const auto two = [](unsigned number) { return (number < 10 ? L"-0" : L"-") + std::to_wstring(number); };
  return std::to_wstring(static_cast<int>(day.year())) + two(static_cast<unsigned>(day.month())) +
         two(static_cast<unsigned>(day.day()));
}

TEST(Clock, LocalTimeIsNearAndSleepIsKept) {
  // Whatever the zone: a time, and the same one in UTC, are less than a day apart, also before 1970.
  for (const std::int64_t seconds : {-2208900000LL, -7200LL, 951782399LL}) {
    const std::wstring day = localTime(seconds, "%Y-%m-%d");
    EXPECT_TRUE(day == dayOf(seconds - 50400) || day == dayOf(seconds) || day == dayOf(seconds + 50400))
        << text::toUtf8(day);
    EXPECT_EQ(localTime(seconds, "%H:%M:%S").substr(5), localTime(seconds + 3600, "%H:%M:%S").substr(5));
  }
  EXPECT_EQ(L"", localTime(std::numeric_limits<std::int64_t>::max(), "%Y"));
  EXPECT_GT(machineClock()->seconds(), 1700000000);
  FixedClock fixed(7);
  fixed.sleep(1500);
  fixed.sleep(500);
  fixed.sleep(-9);
  EXPECT_EQ(9, fixed.seconds());
  EXPECT_EQ(2000, fixed.slept());
}

TEST(Environment, AVariableIsOneWhateverItsCase) {
  EXPECT_EQ(std::nullopt, environment(L"KVD_TEST_\u00E4"));
  EXPECT_FALSE(setEnvironment(L"KVD_TEST_\u00E4", L"\u20AC"));
  EXPECT_FALSE(setEnvironment(L"kvd_test_\u00E4", L"2"));
  EXPECT_EQ(L"2", environment(L"KVD_Test_\u00E4"));
  EXPECT_TRUE(setEnvironment(L"", L"x") && setEnvironment(L"a=b", L"x"));
  EXPECT_EQ(std::nullopt, environment(L""));
}

TEST(Processes, ProgramsGetTheirArgumentsAndGiveTheirStatus) {
  const Disk disk;
  for (const char* folder : {"bin", "Out x", "run"}) disk.folder(folder);
  for (const char* name : {"bin/tell", "bin/status"}) test::putProgram(disk.place(name));
  disk.file("Out x/its $1.txt", "");
  const Result<int> ended = processes().run(L"d:\\bin\\tell \"d:\\Out x\\its $1.txt\" --in=d:\\none.csv 2", L"d:\\run");
  EXPECT_TRUE(ended && ended.value == 0) << ended.value << ended.error.message();
  std::string told = disk.content("told");
  std::replace(told.begin(), told.end(), '\\', '/');
  EXPECT_EQ(disk.at("run") + "\n" + disk.at("Out x/its $1.txt") + "\n--in=" + disk.at("none.csv") + "\n2\n", told);

  const auto status = [](std::wstring_view command) { return processes().run(command, L"d:\\run").value; };
  EXPECT_EQ(3, status(L"exit 3"));  // the command processor's own
  EXPECT_EQ(42, status(L"d:\\bin\\status 42")) << "99: something stands on its input";
  EXPECT_EQ(7, status(L"d:\\bin\\status 0 && d:\\bin\\status 7"));
  EXPECT_EQ(kNoProgram, status(L"d:\\none.exe a"));
  EXPECT_EQ(kNoProgram, status(L"kvd-no-such-program a"));
  EXPECT_EQ(std::errc::no_such_file_or_directory, processes().run(L"exit 0", L"d:\\none").error);
  EXPECT_EQ(std::errc::no_such_file_or_directory, processes().start(L"kvd-no-such-program", L"", L"d:\\"));
  EXPECT_EQ(std::errc::no_such_file_or_directory, processes().start(L"\"d:\\no ne.exe\"", L"a", L"d:\\"));
}

TEST(Processes, AStartedProgramIsntWaitedFor) {
  const Disk disk;
  test::putProgram(disk.place("tool"));
  const std::string alone = disk.tree();
  EXPECT_FALSE(processes().start(L"tool", L"\"a b\"", L"d:\\"));
  EXPECT_EQ(alone, disk.tree());
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
    mounts().set(L'y', "/somewhere");
    EXPECT_EQ(7, clock().seconds());
  }
  EXPECT_EQ(before, &files());
  EXPECT_NE(7, clock().seconds());
  EXPECT_FALSE(mounts().has(L'y'));
}

}  // namespace
}  // namespace os
