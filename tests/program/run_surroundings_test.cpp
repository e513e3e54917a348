// `kelvane run`: what of a list leaves the run, and what of its macros was done.
#include "os/doors.h"
#include "program/run_fixture.h"

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
