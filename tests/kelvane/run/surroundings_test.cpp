// `kelvane run`: what of a list leaves the run, and what of its macros was done.
#include "os/surroundings.h"
#include "kelvane/run/run_fixture.h"
#include "os/doors.h"
#include "text/encoding.h"

namespace test {
namespace {

class RunSurroundings : public RunFixture {
 protected:
  static std::string task(const std::string& type, const std::string& attributes) {
    return "<task type='" + type + "' version='3' forPRT='true' forASM='true' forDRW='true' forEF='false' " +
           attributes + "/>";
  }
  void SetUp() override {
    part(L"PLATE").with(L"COLOR", L"red");
    list("tell.xml", task("runMSDOScommand", "cmd='echo' args='@mdln@ &gt;d:/told.txt; echo printed'") +
                         task("runMSDOScommand", "cmd='true' uncup='true'"));
  }
};

TEST_F(RunSurroundings, ProgramsRunAndTheirOutputIsNoResult) {
  const Ended ended = run("tell");
  EXPECT_EQ("done  models=1 changed=0 unchanged=1 skipped=0 failed=0 saved=0  errors=0 warnings=0", recapOf(ended));
  EXPECT_EQ("PLATE\n", readBytes(models() + "/told.txt"));
  EXPECT_EQ(std::string::npos, ended.out.find("printed"));
}

TEST_F(RunSurroundings, ProgramsAreRefusedOrWithheld) {
  const Ended refused = run("tell", {"--no-programs", "--no-web", "-n"});
  EXPECT_EQ(1, refused.code);
  EXPECT_THAT(refused.err, testing::HasSubstr("This run starts no programs: echo PLATE"));
  EXPECT_THAT(refused.err, testing::HasSubstr("This run starts no programs: true"));
  EXPECT_EQ("dry  models=1 changed=0 unchanged=1 skipped=0 failed=0 saved=0  errors=2 warnings=0 troubled=1",
            recapOf(refused));
  const Ended dry = run("tell", {"-n"});
  EXPECT_THAT(dry.out, testing::HasSubstr("would run echo PLATE >d:\\told.txt; echo printed\nwould start true\n"));
  EXPECT_EQ("dry  models=1 changed=0 unchanged=1 skipped=0 failed=0 saved=0  errors=0 warnings=0", recapOf(dry));
  EXPECT_EQ((std::vector<std::string>{"PLATE.prt.1"}), filesIn("models"));
  // The doors are those of the run alone.
  EXPECT_EQ(os::Door::open, os::doors().programs);
  EXPECT_TRUE(os::doors().noted.empty());
}

TEST_F(RunSurroundings, FoldersOfTheUserHaveNamesInUtf8) {
  using Options = std::vector<std::string>;
  for (const auto& [variable, options] : {std::pair<std::string, Options>{"XDG_CACHE_HOME", {}},
                                          std::pair<std::string, Options>{"XDG_CONFIG_HOME", {"--require-trust"}}}) {
    const auto was = os::environment(text::fromUtf8(variable));
    ::setenv(variable.c_str(), (path("home") + "/\xff").c_str(), 1);
    const Ended refused = run("tell", options);
    os::setEnvironment(text::fromUtf8(variable), was.value());
    EXPECT_EQ(2, refused.code);
    EXPECT_THAT(refused.err, testing::HasSubstr("' isn't UTF-8; " + variable + " names another one"));
    EXPECT_FALSE(std::filesystem::exists(path("home")));
  }
}

// As long as they may be run: a package keeps the permission, also in its zip, and one more makes another package.
TEST_F(RunSurroundings, ProgramsOfThePackageRun) {
  namespace fs = std::filesystem;
  const std::string ran = path("ran"), dull = "models\\dull.sh";
  list("tools.xml", task("runMSDOScommand", "cmd='@project_dir@/tool.sh' args=''") +
                        task("runMSDOScommand", "cmd='@project_dir@/dull.sh' args=''"));
  for (const std::string name : {"tool", "dull"})
    file("standards/models/" + name + ".sh", "#!/bin/sh\necho " + name + " >>'" + ran + "'\n");
  fs::permissions(path("standards/models/tool.sh"), fs::perms::owner_all);
  const Ended refused = run("tools");
  EXPECT_EQ(1, refused.code);
  EXPECT_THAT(refused.err, testing::HasSubstr("The program can't be run, it isn't executable: "));
  EXPECT_THAT(refused.err, testing::HasSubstr(dull));
  EXPECT_EQ("tool\n", readBytes(ran));
  fs::permissions(path("standards/models/dull.sh"), fs::perms::owner_all);
  EXPECT_EQ(0, run("tools", {"--again"}).code);
  kelvane({"pack", path("standards"), path("zipped.kvz")});
  EXPECT_EQ(0, runPackage(path("zipped.kvz"), "tools", {"--again"}).code);
  EXPECT_EQ("tool\ntool\ndull\ntool\ndull\n", readBytes(ran));
}

// Some packers write the separator of their own system.
TEST_F(RunSurroundings, MembersMayHaveBackslashes) {
  list("norm.xml", kAddNorm + kSave);
  std::map<std::string, std::string> members = {
      {"actionlists\\norm.xml", readBytes(path("standards/actionlists/norm.xml"))}};
  for (const char* name : {"system\\index.kvane", "models\\readme.txt", "reports\\readme.txt", "checklist\\readme.txt"})
    members[name] = "1\n2\n";
  writeZip(path("back.kvz"), members);
  EXPECT_EQ(0, kelvane({"check", path("back.kvz")}).code);
  EXPECT_EQ("done  models=1 changed=1 unchanged=0 skipped=0 failed=0 saved=1  errors=0 warnings=0",
            recapOf(runPackage(path("back.kvz"), "norm", {})));
}

TEST_F(RunSurroundings, AMacroStepThatNothingWasDoneForIsToldOnce) {
  const std::string mapkey =
      task("runMapkey",
           "kvpmode='true' rfe='0' mapkeyc='1' mapkey0='~ Command `ProCmdViewRepaint`;~ Command `ProCmdOther`'");
  list("macro.xml", mapkey + mapkey);
  const Ended ended = run("macro");
  const std::string line = "warning: nothing was done for the macro step: ~ Command `ProCmdOther`\n";
  const std::size_t at = ended.err.find(line);
  EXPECT_NE(ended.err.npos, at) << ended.err;
  EXPECT_EQ(ended.err.npos, ended.err.find(line, at + 1));
  EXPECT_EQ(ended.err.npos, ended.err.find("ProCmdViewRepaint"));
}

// What nothing uses of a library is nobody's concern.
TEST_F(RunSurroundings, TheSearchPathHasWhatTheModelsFolderLacks) {
  file("models/lib/bolt.prt.1", R"({"format": 1})");
  file("models/lib/spare.prt.1", "{");
  assembly(L"TOP").uses(L"BOLT", creo::ProMdlType::part).uses(L"NUT", creo::ProMdlType::part);
  list("norm.xml", kAddNorm);
  const Ended ended = run("norm", {"--creo-option", "search_path=lib", "-n"});
  EXPECT_THAT(ended.err, testing::AllOf(testing::HasSubstr("TOP.ASM uses NUT.PRT, which isn't there"),
                                        testing::Not(testing::HasSubstr("BOLT.PRT, which")),
                                        testing::Not(testing::HasSubstr("spare.prt"))));
}

TEST_F(RunSurroundings, DetailOptionsAreShown) {
  file("models/sheet.drw.1", R"({"format": 1})");
  file("standards/models/iso.dtl", "text_height 3.5\n");
  list("dtl.xml", task("setDTL", "view='@project_dir@/iso.dtl'") + kSave);
  EXPECT_EQ(0, run("dtl", {"--start", "SHEET.DRW"}).code);
  EXPECT_THAT(kelvane({"show", models(), "SHEET.DRW"}).out,
              testing::ContainsRegex("detail options\n +text_height +3.5\n"));
}

}  // namespace
}  // namespace test
