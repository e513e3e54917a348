// The zone, the environment and the shell of this system.
#include <unistd.h>

#include <csignal>
#include <thread>

#include "disk.h"
#include "os/surroundings.h"
#include "text/encoding.h"

namespace os {
namespace {

TEST(Clock, LocalTimeExpandsItsOwnConversions) {
  ::setenv("TZ", "UTC-2", 1);
  EXPECT_EQ(L"2000-02-29 01:59:59 00 AM 01 %q %", localTime(951782399, "%Y-%m-%d %H:%M:%S %y %p %I %q %"));
  EXPECT_EQ(L"12 PM", localTime(36000, "%I %p"));
  EXPECT_EQ(L"12 AM", localTime(-7200, "%I %p"));
  EXPECT_EQ(L"", localTime(std::numeric_limits<std::int64_t>::max(), "%Y"));
  ::unsetenv("TZ");
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

}  // namespace
}  // namespace os
