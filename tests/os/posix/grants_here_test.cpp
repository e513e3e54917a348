// What grants hold for where programs lie under one root and a shell reads command lines.
#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "os/confine.h"
#include "os/helper.h"
#include "os/links.h"
#include "text/encoding.h"

namespace os {
namespace {

namespace fs = std::filesystem;

// A name is that program, and not what lies somewhere under it; a denial of it holds everywhere.
TEST(Grants, ANameIsOneProgramAndADenialAllSoCalled) {
  Grants grants;
  for (const wchar_t* name : {L"sh", L"mail.cmd", L"/opt/tool/mail.cmd"}) grants.allow({Permission::run, name});
  grants.ownPackage(L"z:\\srv\\unpacked");
  grants.openTo(Permission::write, L"z:\\srv\\unpacked\\reports");
  for (const wchar_t* program :
       {L"mail.cmd", L"z:\\opt\\tool\\mail.cmd", L"z:\\srv\\unpacked\\models\\mail.cmd", L"sh"})
    EXPECT_TRUE(Grants::isOpen(grants.mayRun(program))) << text::toUtf8(program);
  for (const wchar_t* program : {L"z:\\home\\mail.cmd", L"z:\\srv\\unpacked\\reports\\mail.cmd", L"mail"})
    EXPECT_EQ(Grants::Verdict::refused, grants.mayRun(program)) << text::toUtf8(program);
  grants.deny({Permission::run, L"mail.cmd"});
  grants.deny({Permission::run, L"/bin/sh"});
  for (const wchar_t* program : {L"mail.cmd", L"z:\\opt\\tool\\mail.cmd", L"sh", L"z:\\bin\\sh"})
    EXPECT_EQ(Grants::Verdict::denied, grants.mayRun(program)) << text::toUtf8(program);
}

TEST(Grants, ACommandLineIsOneProgramOrNotPlain) {
  const struct {
    const wchar_t* line;
    const wchar_t* program;
    bool isPlain;
  } rows[] = {
      {L"mail.cmd -q \"a; b\" 'c | $d'", L"mail.cmd", true},
      {L"  \"c:\\tools\\my mail.cmd\" x", L"c:\\tools\\my mail.cmd", true},
      {L"'c:\\my mail.cmd'", L"c:\\my mail.cmd", true},
      {L"ma\"il\".cmd", L"mail.cmd", false},
      {L"z\":\"\\srv\\tool", L"z:\\srv\\tool", false},
      {L"\"z\":\\srv\\tool", L"z:\\srv\\tool", false},
      {L"mail d:\\a\\\" '\" ; x ; \"' d:\\a\\\"", L"mail", false},
      {L"mail \\\"a;b\\\"", L"mail", false},  // quotes that are arguments
      {L"mail \"$(x)\"", L"mail", false},
      {L"mail \"`x`\"", L"mail", false},
      {L"mail 'a' ; x", L"mail", false},
      {L"mail a\nx", L"mail", false},
      {L"mail 'a", L"mail", false},
      {L"LD_PRELOAD=x mail", L"LD_PRELOAD=x", false},
      {L"A=\\..\\mail.cmd sh", L"A=\\..\\mail.cmd", false},
      {L"A+=x mail", L"A+=x", false},
      {L"ma?l x", L"ma?l", false},
      {L"d:\\*\\mail", L"d:\\*\\mail", false},
      {L"mail *.csv", L"mail", true},  // names of files, for the program
      {L"c:\\a=b\\mail.cmd x=y", L"c:\\a=b\\mail.cmd", true},
      {L"", L"", true},
  };
  for (const auto& [line, program, isPlain] : rows) {
    const PlainCommand command = plainCommand(line);
    EXPECT_EQ(program, command.program) << text::toUtf8(line);
    EXPECT_EQ(isPlain, command.isPlain) << text::toUtf8(line);
  }
}

// A link that takes the place of a folder between the question and the opening leads nowhere.
TEST(Grants, WhatIsOpenedIsWhatWasJudged) {
  const std::string root =
      fs::canonical(fs::temp_directory_path()).string() + "/kvd_grants_" + std::to_string(::getpid());
  const auto system = [&](const std::string& name) { return mounts().system(root + "/" + name); };
  fs::remove_all(root);
  fs::create_directories(root + "/open/sub");
  fs::create_directories(root + "/closed");
  std::ofstream(root + "/closed/a.txt") << "secret";
  std::ofstream(root + "/open/sub/a.txt") << "plain";
  const auto disk = diskFiles();
  {
    const PlaceGuard guard(system("open/sub/a.txt"), machineBehindLinks(system("open/sub/a.txt")));
    EXPECT_EQ("plain", disk->read(system("open/sub/a.txt")).value);
    EXPECT_FALSE(disk->write(system("open/sub/a.txt"), "new"));
    fs::rename(root + "/open/sub", root + "/open/away");
    fs::create_directory_symlink(root + "/closed", root + "/open/sub");
    EXPECT_EQ(std::errc::operation_not_permitted, disk->read(system("open/sub/a.txt")).error);
    EXPECT_EQ(std::errc::operation_not_permitted, disk->write(system("open/sub/a.txt"), "x"));
    EXPECT_EQ(std::errc::operation_not_permitted, disk->append(system("open/sub/a.txt")).error);
    EXPECT_EQ("secret", disk->read(system("closed/a.txt")).value);  // a path that no guard knows
  }
  EXPECT_EQ("secret", disk->read(system("open/sub/a.txt")).value);
  EXPECT_EQ(1, std::distance(fs::directory_iterator(root + "/closed"), fs::directory_iterator()));
  fs::remove_all(root);
}

// What a list sets is for the programs that it starts, and for no helper of the program's.
TEST(Grants, HelpersHaveTheEnvironmentOfTheStart) {
  ASSERT_FALSE(setEnvironment(L"LD_TRACE_LOADED_OBJECTS", L"1"));  // a program only tells its libraries, and ends
  const auto helper = startHelper("/usr/bin/yes");
  ASSERT_TRUE(helper);
  EXPECT_EQ(std::errc::timed_out, helper.value->ask("x", std::chrono::milliseconds(300)).error);
  ::unsetenv("LD_TRACE_LOADED_OBJECTS");
}

}  // namespace
}  // namespace os
