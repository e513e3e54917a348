// Lists that nobody trusts: what they try outside their package, the models and the temp folder, and what grants open.
#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <nlohmann/json.hpp>
#include <thread>

#include "kelvane/journal/record.h"
#include "kelvane/run/run_fixture.h"
#include "os/doors.h"
#include "os/links.h"
#include "os/surroundings.h"
#include "text/pieces.h"

namespace test {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

std::string taskOf(const std::string& type, const std::string& attributes) {
  return "<task type='" + type + "' version='3' forPRT='true' forASM='true' forDRW='true' forEF='false' " + attributes +
         "/>";
}

class RunConfine : public RunFixture {
 protected:
  void SetUp() override {
    os::setEnvironment(L"XDG_CONFIG_HOME", text::fromUtf8(path("config_home")));
    os::setEnvironment(L"XDG_CONFIG_DIRS", text::fromUtf8(path("site")));
    part(L"PLATE").with(L"COLOR", L"red");
    file("outside/secret.txt", "s3cret");
  }
  // A path of the machine as a list writes it, under the root's letter or another one.
  [[nodiscard]] std::string system(const std::string& name, const std::string& letter = "z:") const {
    return letter + text::replaceAll(std::string_view(path(name)), "/", "\\");
  }
  static std::string report(const std::string& target) {
    return taskOf("writeListReport", "sel='9' overwrite='true' file='" + target + "'");
  }
  [[nodiscard]] std::string outside() const { return path("outside"); }
  // Is the file there within a minute?
  static bool appears(const std::string& file) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    while (!fs::exists(file) && std::chrono::steady_clock::now() < end)
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    return fs::exists(file);
  }
  // The documents, and everything outside, by name.
  [[nodiscard]] std::vector<std::string> all() const {
    std::vector<std::string> names = filesIn("models");
    // The side file of a report lies beside it, and is the list's own to write.
    std::erase_if(names,
                  [](const std::string& name) { return name.starts_with("kelvane.") || name == "file.csvheader"; });
    for (const std::string& name : filesIn("outside")) names.push_back("outside/" + name);
    return names;
  }
};

// Each row: what a list tries, what its refusal says, and the grant under which it does it.
TEST_F(RunConfine, WhatIsOutsideIsRefusedByNameAndGrantedByName) {
  fs::create_directory_symlink(outside(), path("models/link"));
  fs::create_symlink(outside() + "/new.csv", path("models/file.csv"));
  for (const char* name : {"outside/table.csv", "outside/book.xlsx", "outside/steel.mtl", "models/book.ods"})
    file(name, "model name;parameter name;value\n");
  os::setEnvironment(L"KVD_TEST_PLACE", text::fromUtf8(system("outside")));
  const std::string write = "--allow-write=" + outside(), read = "--allow-read=" + outside();
  const std::string touched = outside() + "/ran";
  const struct {
    std::string tried, refused;
    std::vector<std::string> grants;
  } rows[] = {
      {report(system("outside/.profile")), write, {write}},
      {report(system("outside/x.csv", "c:")), write, {write}},
      {report("\xC2\xA7KVD_TEST_PLACE\xC2\xA7/x.csv"), write, {write}},
      {report("d:\\link\\x.csv"), write, {write}},
      {report("d:\\file.csv"), write, {write}},
      {taskOf("writeToCreoLog", "message='%b64:" + system("outside/secret.txt") + "%'"),
       "Refused: read " + outside() + "/secret.txt (" + read,
       {read}},
      {taskOf("writeToCreoLog", "message='%b64:d:\\link\\secret.txt%'"), read, {read}},
      {taskOf("setWorkingDirectory", "path='" + system("outside") + "'"), read, {read}},
      {taskOf("runMSDOScommand", "cmd='touch' args='" + touched + "'"),
       "(--allow-run=touch isn't granted)",
       {"--allow-run=touch"}},
      {taskOf("runMSDOScommand", "cmd='touch' args='" + touched + "' uncup='true'"),
       "--allow-run=touch",
       {"--allow-run=touch"}},
      {taskOf("setEnvironmentVariable", "name='KVD_TEST_SET' value='1'"),
       "--allow-env=KVD_TEST_SET",
       {"--allow-env=KVD_TEST_SET"}},
      {taskOf("writeToCreoLog", "message='@clipboard@'"), "--allow-clipboard", {"--allow-clipboard"}},
      {taskOf("setUserVariableFromUrl", "name='A' value='http://127.0.0.1:9/x'"),
       "--allow-net=127.0.0.1:9",
       {"--allow-net=127.0.0.1"}},
      {taskOf("runMapkey", "kvpmode='true' rfe='0' mapkeyc='1' mapkey0='~ Command `ProCmdViewRepaint`;'"),
       "--allow-run=macros",
       {"--allow-run=macros"}},
      {taskOf("runTrailfile", "tf='d:\\trail.txt'"), "--allow-run=macros", {"--allow-run=macros"}},
      {taskOf("backupAction", "path='" + system("outside") + "'"), write, {write}},
      {taskOf("editModelParameterFromFile", "path='" + system("outside/table.csv") + "'"), read, {read}},
      {taskOf("editModelParameterFromFile", "path='d:\\link\\book.xlsx'"), read, {read, "--allow-run=xls2csv.vbs"}},
      {taskOf("editModelParameterFromFile", "path='d:\\book.ods'"), "xls2csv.vbs isn't granted", {}},
      {taskOf("addMaterial", "material='" + system("outside/steel.mtl") + "'"), read, {read}},
      {taskOf("setUserVariableFromUrl", "name='A' value='file://" + outside() + "/secret.txt'"),
       "it names no server plainly",
       {}},
      {taskOf("setEnvironmentVariable", "name='LD_PRELOAD' value='" + outside() + "/evil.so'"),
       "--allow-env=LD_PRELOAD",
       {}},
      {report("d:\\sub\\..\\..\\..\\x.csv"), "", {}},  // ".." doesn't climb above the letter
  };
  const auto before = all();
  for (const auto& row : rows) {
    SCOPED_TRACE(row.tried);
    list("try.xml", row.tried);
    for (const char* dry : {"-n", "--again"}) {
      const Ended refused = run("try", {"--confine", dry, "--set", "kvd_write_history_in_models=0"});
      if (!row.refused.empty()) {
        EXPECT_THAT(refused.err, AllOf(HasSubstr("Refused: "), HasSubstr(row.refused))) << dry;
        EXPECT_EQ(1, refused.code);
        EXPECT_EQ(before, all());
      } else {
        EXPECT_THAT(refused.err, Not(HasSubstr("Refused: ")));
      }
    }
    if (row.grants.empty() && !row.refused.empty()) continue;  // nothing that a test would want granted
    std::vector<std::string> words = {"--confine", "--again", "--set", "kvd_write_history_in_models=0"};
    words.insert(words.end(), row.grants.begin(), row.grants.end());
    EXPECT_THAT(run("try", words).err, Not(HasSubstr("Refused: ")));
    // What was started in the background writes when it comes to it.
    if (row.grants == std::vector<std::string>{"--allow-run=touch"}) EXPECT_TRUE(appears(touched));
    for (const std::string& made : filesIn("outside"))
      if (std::find(before.begin(), before.end(), "outside/" + made) == before.end())
        fs::remove(path("outside/" + made));
    ::unsetenv("KVD_TEST_SET");
    if (row.grants.empty()) continue;
    words.push_back(text::replaceAll(std::string_view(row.grants.front()), "--allow", "--deny"));
    const std::string denied = run("try", words).err;
    EXPECT_THAT(denied, HasSubstr("Refused: "));
    // A backup asks first what lies in its folder, which only a grant to write opens.
    if (!row.tried.starts_with("<task type='backupAction'")) EXPECT_THAT(denied, HasSubstr("which is denied"));
  }
}

// A grant of a program is one of that program alone, whatever a model's value puts behind it, and of one that the list
// didn't bring there itself.
TEST_F(RunConfine, AGrantedProgramIsThatProgram) {
  part(L"EVIL").with(L"COLOR", (L"x; touch " + text::fromUtf8(outside()) + L"/ran").c_str());
  part(L"SUBST").with(L"COLOR", (L"\"`touch " + text::fromUtf8(outside()) + L"/ran`").c_str());
  file("standards/reports/tool.sh", "#!/bin/sh\ntouch '" + outside() + "/ran'\n");
  file("standards/models/tool.sh", "#!/bin/sh\ntouch '" + outside() + "/tool'\n");
  for (const char* folder : {"reports", "models"})
    fs::permissions(path("standards/") + folder + "/tool.sh", fs::perms::owner_all);
  const auto refused = [this](const std::string& task, const std::string& grant) {
    list("try.xml", task);
    const std::string err = run("try", {"--confine", "--again", grant}).err;
    return err.find("Refused: run ") != err.npos && !fs::exists(outside() + "/ran");
  };
  const auto command = [](const std::string& line) {
    return taskOf("runMSDOScommand", "cmd='" + line.substr(0, line.find(' ')) + "' args='" +
                                         (line.find(' ') == line.npos ? "" : line.substr(line.find(' ') + 1)) + "'");
  };
  EXPECT_TRUE(refused(command("true %COLOR%"), "--allow-run=true"));
  for (const char* line :
       {"t?ue", "[t]rue", "true | sh", "true &amp;&amp; sh", "true &gt;x", "A=1 true", "env true", "true `sh`"})
    EXPECT_TRUE(refused(command(line), "--allow-run=true")) << line;
  EXPECT_TRUE(refused(command("@project_dir@/../reports/tool.sh"), "--allow-run=tool.sh"));
  EXPECT_TRUE(refused(command("@project_dir@/../*/tool.sh"), "--allow-run=tool.sh"));
  EXPECT_FALSE(refused(command("@project_dir@/tool.sh"), "--allow-run=tool.sh"));
  EXPECT_TRUE(fs::exists(outside() + "/tool"));
}

// What whoever made the folder of models put into it: links in the place of the program's own files, a journal whose
// broken run "wrote" elsewhere, documents that lie elsewhere. And a name by which a report would be collected
// elsewhere.
TEST_F(RunConfine, AFolderOfModelsLeadsNowhereElse) {
  list("try.xml", taskOf("writeToCreoLog", "message='touch evil'"));
  const auto before = all();
  for (const char* own : {"kelvane.log", "kelvane.journal"}) {
    const std::string target = std::string(own) == "kelvane.log" ? "/secret.txt" : "";
    fs::create_symlink(outside() + target, path("models/") + own);
    const Ended ended = run("try", {"--confine", "--again"});
    EXPECT_EQ(2, ended.code);
    EXPECT_THAT(ended.err, HasSubstr(" leads to " + outside() + target + ", where a confined run doesn't write"));
    fs::remove(path("models/") + own);
  }
  for (const char* within : {"models/kelvane.journal/numbers.json", "models/kelvane.journal/0001/run.jsonl"}) {
    fs::create_directories(fs::path(path(within)).parent_path());
    fs::create_symlink(outside() + "/secret.txt", path(within));
    const Ended ended = run("try", {"--confine", "--again"});
    EXPECT_EQ(2, ended.code);
    EXPECT_THAT(ended.err, HasSubstr(path(within) + " is a link, and a journal has none"));
    fs::remove_all(path("models/kelvane.journal"));
  }
  const std::string evil = "touch evil\n", secret = readBytes(outside() + "/secret.txt");
  auto had = nlohmann::ordered_json{{"size", evil.size()}, {"sum", kelvane::contentOf(evil).sum}, {"kept", "1"}};
  auto now = nlohmann::ordered_json{{"size", secret.size()}, {"sum", kelvane::contentOf(secret).sum}};
  file("models/kelvane.journal/0001/before/1", evil);
  file("models/kelvane.journal/0001/run.jsonl",
       kelvane::sealedLine({{"record", "begin"}, {"format", 1}, {"run", "0001"}, {"verb", "run"}}) +
           kelvane::sealedLine(
               {{"record", "write"}, {"n", 1}, {"path", outside() + "/secret.txt"}, {"had", had}, {"now", now}}));
  const std::string strange =
      "secret.txt lies outside the folder of models, and no run of this user's wrote that record";
  const std::string refused = "secret.txt isn't granted to this run for writing";
  for (const auto& [option, why] : {std::pair("--confine", strange), {"--elsewhere", refused}}) {
    const Ended broken = run("try", {"--confine", "--again", option});
    EXPECT_EQ(2, broken.code);
    EXPECT_THAT(broken.err, HasSubstr(why));
    EXPECT_EQ(secret, readBytes(outside() + "/secret.txt"));
  }
  EXPECT_EQ(0, run("try", {"--confine", "--again", "--elsewhere", "--allow-write=" + outside()}).code);
  EXPECT_EQ(evil, readBytes(outside() + "/secret.txt"));
  file("outside/secret.txt", secret);
  EXPECT_EQ(before, all());
  // A log that the options put elsewhere is no place that a list chose.
  const std::string log = outside() + "/secret.txt";
  file("models/kelvane.journal/0009/run.jsonl",
       kelvane::sealedLine({{"record", "begin"}, {"format", 1}, {"run", "0009"}, {"verb", "run"}}) +
           kelvane::sealedLine({{"record", "append"}, {"n", 1}, {"path", log}, {"had", now}}));
  EXPECT_EQ(2, run("try", {"--confine", "--again", "--elsewhere"}).code);
  EXPECT_EQ(0, run("try", {"--confine", "--again", "--elsewhere", "--log", log}).code);
  EXPECT_NE(secret, readBytes(log));
  file("outside/secret.txt", secret);

  fs::rename(path("models/PLATE.prt.1"), outside() + "/PLATE.prt.1");
  fs::create_symlink(outside() + "/PLATE.prt.1", path("models/PLATE.prt.1"));
  const Ended elsewhere = run("try", {"--confine", "--again"});
  EXPECT_EQ(1, elsewhere.code);
  // No other model is left, so that no log tells of the refusal.
  EXPECT_THAT(elsewhere.err, AllOf(HasSubstr("PLATE.prt.1: can't be read: Operation not permitted\n"),
                                   HasSubstr("error: Refused: read " + outside() + "/PLATE.prt.1 (--allow-read=")));
  fs::remove(path("models/PLATE.prt.1"));
  fs::rename(outside() + "/PLATE.prt.1", path("models/PLATE.prt.1"));

  list("try.xml", report("@project_dir@\\..\\..\\..\\..\\x.csv"));
  run("try", {"--confine", "--again", "--collect", path("collected/here")});
  EXPECT_TRUE(fs::exists(path("collected/here/x.csv")));
  EXPECT_FALSE(fs::exists(path("collected/x.csv")));
  EXPECT_FALSE(fs::exists(path("x.csv")));
}

// A report there would be a list, or a script, of the next run.
TEST_F(RunConfine, WhatTheProgramStandsOnIsNotWritten) {
  const std::string own = "it is the program's own";
  for (const char* target : {"t:\\conf\\xls2csv.vbs", "t:\\open_kvz_standards\\actionlists\\try.xml",
                             "T:\\OPEN_KVZ_OTHER\\actionlists\\try.xml", "d:\\kelvane.journal\\x.csv"}) {
    list("try.xml", report(target));
    EXPECT_THAT(run("try", {"--confine", "--again", "--allow-write=/"}).err, HasSubstr(own)) << target;
  }
  list("try.xml", report(system("config_home/kelvane/trust.json")));
  EXPECT_THAT(run("try", {"--confine", "--again", "--allow-write=/"}).err, HasSubstr(own));
  list("try.xml", report("p:\\standards.kvz"));
  EXPECT_THAT(run("try", {"--confine", "--again"}).err, HasSubstr("Refused: write "));
}

// All that the example does stays within its package, the models and the temp folder, but for what an answer names.
TEST_F(RunConfine, ListsThatStayInTheirPlaceRunAsEver) {
  fs::remove_all(models());
  workspace();
  for (const auto& entry : fs::directory_iterator(example("packages/standards/actionlists"))) {
    if (entry.path().extension() != ".xml") continue;
    const std::string name = entry.path().stem().string();
    SCOPED_TRACE(name);
    const Ended free = runExample(name, {"-n", "--again", "--select", "SHAFT*"});
    const Ended confined = runExample(name, {"-n", "--again", "--select", "SHAFT*", "--confine"});
    if (confined.err.find("Refused: ") != std::string::npos)
      EXPECT_THAT(confined.err, HasSubstr("(--allow-net=127.0.0.1:8000 isn't granted)\n"));
    else
      EXPECT_EQ(free.code, confined.code);
  }
  list("here.xml", report("@project_dir@/list.csv") + report("list.csv") + report("t:\\list.csv") + kAddNorm + kSave);
  const Ended here = run("here", {"--confine", "--collect", path("collected")});
  EXPECT_EQ(0, here.code) << here.err;
  EXPECT_TRUE(fs::exists(models() + "/list.csv"));
  EXPECT_TRUE(fs::exists(path("collected/list.csv")));
}

// The switches that have been there before: no helper is started in a place that a list sets, and no model is written
// by another way than a save.
TEST_F(RunConfine, TheOlderSwitchesHoldToo) {
  file("evil/xclip", "#!/bin/sh\ntouch '" + outside() + "/ran'\necho text\n");
  file("evil/wl-paste", "#!/bin/sh\ntouch '" + outside() + "/ran'\necho text\n");
  for (const char* name : {"evil/xclip", "evil/wl-paste"}) fs::permissions(path(name), fs::perms::owner_all);
  const char* const known = std::getenv("PATH");
  const std::string before = known ? known : "";
  ::setenv("PATH", (path("evil") + ":" + before).c_str(), 1);
  list("paste.xml", taskOf("setEnvironmentVariable", "name='DISPLAY' value=':7'") +
                        taskOf("setEnvironmentVariable", "name='WAYLAND_DISPLAY' value='w'") +
                        taskOf("writeToCreoLog", "message='@clipboard@'"));
  for (const char* dry : {"-n", "--again"}) {
    const Ended ended = run("paste", {"--no-programs", "--no-web", "--read-only", dry});
    EXPECT_FALSE(fs::exists(outside() + "/ran")) << dry;
    EXPECT_THAT(ended.err, HasSubstr("This run starts no programs, and one would read the clipboard"));
    EXPECT_EQ(1, ended.code);
    (void)run("paste", {dry});  // nor where programs may be started: it isn't the list's own
    EXPECT_FALSE(fs::exists(outside() + "/ran")) << dry;
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY"}) ::unsetenv(name);
  }
  ::setenv("PATH", before.c_str(), 1);
  list("back.xml", taskOf("backupAction", "path='" + system("outside") + "'"));
  const Ended ended = run("back", {"--read-only"});
  EXPECT_EQ((std::vector<std::string>{"secret.txt"}), filesIn("outside"));
  EXPECT_THAT(ended.err, HasSubstr("This run writes no models: "));
}

// The key of the configuration does what the option does, with its own grants.
TEST_F(RunConfine, TheConfigurationConfinesToo) {
  list("try.xml", report(system("outside/x.csv")));
  EXPECT_THAT(run("try", {"--set", "kvd_confine=1"}).err, HasSubstr("--allow-write=" + outside()));
  const std::string grant = "kvd_allow_write=" + system("outside");
  for (const char* on : {"kvd_confine=1", "kvd_confine=1 ", "kvd_confine=yes"}) {
    const Ended granted = run("try", {"--again", "--set", on, "--set", grant});
    EXPECT_EQ(0, granted.code);
    EXPECT_THAT(granted.err, Not(HasSubstr("which isn't granted and will be refused")));
    EXPECT_EQ(1, run("try", {"--again", "--set", on}).code) << on;
  }
  // What the run will be granted counts beforehand, from wherever it comes.
  EXPECT_EQ(0, run("try", {"--again", "--require-trust", "--set", grant}).code);
  EXPECT_EQ(0, run("try", {"-n", "--again", "--require-trust", "--collect", outside()}).code);
  EXPECT_EQ(2, run("try", {"--allow-write=/"}).code);
  for (const char* open : {"kvd_allow_write=.", "kvd_allow_write=x:\\", "kvd_allow_write=x:"})
    EXPECT_EQ(1, run("try", {"--again", "--confine", "--set", open}).code) << open;
}

// The user's own file confines from before the package is looked at, where the site lets it be read.
TEST_F(RunConfine, TheUsersOwnFileConfinesFromTheStart) {
  file("site_conf/kvd_main.cfg", "kvd_log_level=0\n");
  file("config_home/OSTELO/KVD/conf/kvd_user.cfg", "kvd_confine=1\n");
  list("try.xml", report(system("outside/x.csv")));
  const Ended ended = run("try", {"--config", path("site_conf")});
  EXPECT_THAT(ended.err, AllOf(HasSubstr("which isn't granted and will be refused"), HasSubstr("Refused: write ")));
  EXPECT_EQ((std::vector<std::string>{"secret.txt"}), filesIn("outside"));
  list("try.xml", report("d:\\kelvane.journal\\x.csv"));
  EXPECT_THAT(run("try", {"--config", path("site_conf"), "--again"}).err, HasSubstr("it is the program's own"));
}

// What the rows tell beforehand is what a run asks for, and no more: a grant that nobody needs is one to be abused.
TEST_F(RunConfine, WhatIsOpenedOnceItIsWrittenIsToldAsItIsAsked) {
  const std::string sheet = "folderFromModel='true' file='sheet' overwriteExisting='true' kerel='true' oaw=";
  const auto opened = [&](const std::string& is) {
    return taskOf("writeListReport", "sel='9' overwrite='true' file='x.csv' openAfterCreation='" + is + "'") +
           taskOf("writeInformationPDF", sheet + "'" + is + "'");
  };
  list("try.xml", opened("false"));
  EXPECT_THAT(kelvane({"check", path("standards"), "--trust"}).out, Not(HasSubstr("--allow")));
  EXPECT_THAT(run("try", {"-n", "--confine"}).err, Not(HasSubstr("Refused: ")));
  list("try.xml", opened("true"));
  EXPECT_THAT(kelvane({"check", path("standards"), "--trust"}).out, HasSubstr("\n--confine --allow-run=xdg-open\n"));
  EXPECT_THAT(run("try", {"--confine"}).err, Not(HasSubstr("xdg-open"))) << "a run opens nothing behind it";
}

// A trigger's list is held as that of a run.
TEST_F(RunConfine, WatchConfinesToo) {
  list("try.xml",
       report(system("outside/x.csv")) + taskOf("runMSDOScommand", "cmd='touch' args='" + outside() + "/ran'"));
  std::istringstream in("save\n");
  std::ostringstream out, err;
  kelvane::program({"watch", models(), "--package", path("standards"), "PLATE.PRT", "--confine", "--set",
                    "kvd_start_kvz_before_save=standards try"},
                   out, err, {}, &in);
  EXPECT_THAT(out.str() + err.str(),
              AllOf(HasSubstr("(--allow-write=" + outside()), HasSubstr("(--allow-run=touch isn't")));
  EXPECT_EQ((std::vector<std::string>{"secret.txt"}), filesIn("outside"));
}

TEST_F(RunConfine, EventsTellWhatWasUsedAndWhatWasRefused) {
  list("try.xml", report(system("outside/x.csv")) + taskOf("runMSDOScommand", "cmd='true' args=''"));
  run("try", {"--confine", "--allow-run=true", "--events", path("events")});
  const std::string events = readBytes(path("events"));
  EXPECT_THAT(events,
              HasSubstr(R"({"event":"grant","permission":"write","resource":")" + outside() + R"(","allowed":false,)"));
  EXPECT_THAT(events, HasSubstr(R"({"event":"grant","permission":"run","resource":"true","allowed":true,)"));
  EXPECT_THAT(readBytes(path("models/kelvane.journal/0001/run.jsonl")),
              HasSubstr(R"({"record":"grant","permission":"run","resource":"true","allowed":true,)"));
}

// ---- what is kept

class RunTrust : public RunConfine {
 protected:
  void SetUp() override {
    RunConfine::SetUp();
    list("try.xml", report(system("outside/x.csv")));
    ASSERT_EQ(0, kelvane({"pack", path("standards"), path("standards.kvz")}).code);
  }
  Ended packed(const std::vector<std::string>& more) { return runPackage(path("standards.kvz"), "try", more); }
  [[nodiscard]] std::string package() const { return path("standards.kvz"); }
  [[nodiscard]] std::string grant() const { return "--allow-write=" + outside(); }
};

TEST_F(RunTrust, GrantsAreKeptForThatContentAndAskedForWhatIsNew) {
  const Ended told = packed({"-n"});
  EXPECT_THAT(told.err, HasSubstr("standards.kvz needs " + grant() + "; without --confine nothing holds it to that"));
  EXPECT_EQ(2, packed({"--require-trust"}).code);
  const Ended asked = kelvane({"trust", package()});
  EXPECT_EQ(1, asked.code);
  EXPECT_THAT(asked.err, HasSubstr("nothing is kept: without a terminal nothing is asked; --yes keeps " + grant()));

  EXPECT_EQ(0, kelvane({"trust", package(), "--yes"}).code);
  EXPECT_EQ(0, packed({"--require-trust"}).code);
  EXPECT_THAT(packed({"--confine", "--again"}).err, Not(HasSubstr("Refused: ")));
  struct stat kept {};
  ASSERT_EQ(0, ::stat(path("config_home/kelvane/trust.json").c_str(), &kept));
  EXPECT_EQ(0600U, kept.st_mode & 0777U);

  // Another content: nothing is kept for it, and only what it needs beyond the earlier one is asked.
  list("try.xml", report(system("outside/x.csv")) + taskOf("setEnvironmentVariable", "name='KVD_TEST_NEW' value='1'"));
  fs::remove(package());
  kelvane({"pack", path("standards"), package()});
  EXPECT_EQ(2, packed({"--require-trust"}).code);
  // An answer out of a pipe isn't that of a person who saw the question.
  std::istringstream no("n\n"), yes("y\n"), piped("y\n");
  std::ostringstream unseen;
  EXPECT_EQ(1, kelvane::program({"trust", package()}, unseen, unseen, {.err = true}, &piped));
  EXPECT_THAT(unseen.str(), HasSubstr("nothing is kept: without a terminal nothing is asked"));
  for (std::istringstream* answer : {&no, &yes}) {
    std::ostringstream out, err;
    const int code = kelvane::program({"trust", package()}, out, err, {.err = true, .in = true}, answer);
    EXPECT_EQ(answer == &no ? 1 : 0, code) << err.str();
    EXPECT_THAT(err.str(), AllOf(HasSubstr("keep --allow-env=KVD_TEST_NEW for standards.kvz? y or n"),
                                 HasSubstr("than the one that " + grant() + " was kept for; it is carried over")));
  }
  EXPECT_EQ(0, packed({"--require-trust", "--again"}).code);
  ::unsetenv("KVD_TEST_NEW");
  EXPECT_EQ(0, kelvane({"trust", package(), "--forget"}).code);
  EXPECT_EQ(1, kelvane({"trust", package(), "--forget"}).code);
  EXPECT_EQ(2, packed({"--require-trust"}).code);

  // What is carried over takes a consent though nothing is new, and a need.
  for (const std::string& content : {report(system("outside/x.csv")) + kSave, kAddNorm}) {
    list("try.xml", content);
    fs::remove(package());
    kelvane({"pack", path("standards"), package()});
    EXPECT_EQ(content == kAddNorm ? 0 : 1, kelvane({"trust", package()}).code);
    EXPECT_EQ("[]\n", kelvane({"trust", package(), "--json"}).out);
  }
}

// Both are unpacked in one folder, where a time alone tells them apart: what is kept for one opens nothing to the
// other.
TEST_F(RunTrust, APackageOfTheSameNameButForCapitalsIsAnotherOne) {
  EXPECT_EQ(0, kelvane({"trust", package(), grant()}).code);
  list("try.xml", report(system("outside/twin.csv")));
  fs::create_directory(path("twin"));
  ASSERT_EQ(0, kelvane({"pack", path("standards"), path("twin/Standards.kvz")}).code);
  fs::last_write_time(path("twin/Standards.kvz"), fs::last_write_time(package()));
  for (const std::string& one : {package(), path("twin/Standards.kvz"), package()})
    runPackage(one, "try", {"--confine", "--again"});
  EXPECT_EQ((std::vector<std::string>{"secret.txt", "x.csv", "x.csvheader"}), filesIn("outside"));
}

TEST_F(RunTrust, AFolderIsKnownByItsPlaceAndTheSitesFileIsReadAlone) {
  EXPECT_EQ(0, kelvane({"trust", path("standards"), grant()}).code);
  list("more.xml", kAddNorm);
  EXPECT_EQ(0, run("try", {"--require-trust"}).code);
  EXPECT_EQ(2, packed({"--require-trust"}).code);

  const std::string shown = kelvane({"trust", package(), grant()}).out;
  const std::size_t sum = shown.find("sha256 ");
  ASSERT_NE(shown.npos, sum) << shown;
  kelvane({"trust", package(), "--forget"});
  file("site/kelvane/trust.json", R"({"format": 1, "packages": [{"name": "standards.kvz", "sha256": ")" +
                                      shown.substr(sum + 7, 64) + R"(", "allow": {"write": [")" + outside() +
                                      R"("]}}]})");
  EXPECT_EQ(0, packed({"--require-trust", "--again"}).code);
  EXPECT_EQ(1, kelvane({"trust", package(), "--forget"}).code);
  for (const char* opened : {"site/kelvane/trust.json", "site/kelvane"}) {
    const fs::perms before = fs::status(path(opened)).permissions();
    fs::permissions(path(opened), before | fs::perms::others_write);
    const Ended ended = packed({"--require-trust", "--again"});
    EXPECT_EQ(2, ended.code);
    EXPECT_THAT(ended.err, HasSubstr("trust.json grants nothing: everybody may write it, or its folder"));
    fs::permissions(path(opened), before);
  }
  EXPECT_THAT(kelvane({"trust"}).out, HasSubstr("(the site's)\n  " + grant() + "\n"));
  for (const char* wrong :
       {"{", R"({"format": 2, "packages": []})", R"({"format": 1, "packages": [{"sha256": "x", "allow": {"ru": []}}]})",
        R"({"format": 1, "packages": [{"sha256": "x", "allow": {"write": [""]}}]})",
        R"({"format": 1, "packages": [{"sha256": "x", "allow": {"read": ["."]}}]})"}) {
    file("site/kelvane/trust.json", wrong);
    EXPECT_EQ(2, packed({"--confine"}).code) << wrong;
    EXPECT_THAT(packed({"-n"}).err, HasSubstr("warning: " + path("site/kelvane/trust.json") + " holds no grants: "));
  }
}

}  // namespace
}  // namespace test
