// `kelvane watch`: commands on standard input, and the triggers that they set off.
#include <nlohmann/json.hpp>

#include "headless/geometry/foreign_place.h"
#include "headless/geometry/seen.h"
#include "kelvane/run/run_fixture.h"

namespace test {
namespace {

class WatchVerb : public RunFixture {
 protected:
  Ended watch(const std::string& input, const std::vector<std::string>& more = {}) const {
    std::vector<std::string> words = {"watch", models(), "--package", path("standards")};
    words.insert(words.end(), more.begin(), more.end());
    return told(words, input);
  }
  static Ended told(const std::vector<std::string>& words, const std::string& input) {
    std::istringstream in(input);
    std::ostringstream out, err;
    const int code = kelvane::program(words, out, err, {}, &in);
    return {code, out.str(), err.str()};
  }
  // Without the times.
  static std::string firings(const Ended& ended) {
    std::string kept;
    std::istringstream lines(ended.out);
    for (std::string line; std::getline(lines, line);) kept += line.substr(0, line.find("  seconds=")) + "\n";
    return kept;
  }
};

TEST_F(WatchVerb, ShowsWhatFiredWhichListAndWithWhatResult) {
  part(L"PLATE");
  part(L"BOLT");
  list("unsaved.xml", kAddNorm);
  const Ended ended = watch("save  # by hand\n\nopen bolt.prt\nsave\nclose\nnew CLIP.PRT\nsave\nerase\n",
                            {"PLATE.PRT", "--set", "kvd_start_kvz_before_save=standards unsaved"});
  EXPECT_EQ(0, ended.code);
  EXPECT_EQ(
      "before save  PLATE.PRT  standards unsaved  models=1 changed=1 unchanged=0 skipped=0 failed=0 saved=0"
      "  errors=0 warnings=0\n"
      "before save  BOLT.PRT  standards unsaved  models=1 changed=1 unchanged=0 skipped=0 failed=0 saved=0"
      "  errors=0 warnings=0\n"
      "before save  CLIP.PRT  standards unsaved  models=1 changed=1 unchanged=0 skipped=0 failed=0 saved=0"
      "  errors=0 warnings=0\n",
      firings(ended));
  EXPECT_EQ(
      "opened PLATE.PRT\nsaved PLATE.PRT\nopened BOLT.PRT\nsaved BOLT.PRT\nclosed BOLT.PRT\nnew CLIP.PRT\n"
      "saved CLIP.PRT\nerased CLIP.PRT\n",
      ended.err);
  EXPECT_EQ((std::vector<std::string>{"BOLT.prt.1", "BOLT.prt.2", "PLATE.prt.1", "PLATE.prt.2", "clip.prt.1"}), [this] {
    auto names = filesIn("models");
    std::erase(names, ".kelvane.lock");
    return names;
  }());
  EXPECT_THAT(readBytes(path("models/PLATE.prt.2")), testing::HasSubstr("\"NORM\""));
}

// What filters and Head do to the models is the trigger's doing, and the history of instances is no change.
TEST_F(WatchVerb, ModelsAreComparedWithWhatTheyWereWhenTheTriggerFired) {
  file("models/plate.prt.1", R"({"format": 1, "parameters": [{"name": "A", "type": "double", "value": 1}],
    "relations": ["A = 2"]})");
  part(L"GEN").with(L"MASS", 2.5).column(L"MASS").instance(L"GEN_1", {"3.0"});
  file(
      "standards/actionlists/regenerates.xml",
      R"(<list><head/><body/><filter><root><f type="isregenerateable" filtertype="true"/></root></filter><foot/></list>)");
  list("nothing.xml", "");
  const auto fire = [&](const std::string& list, const std::string& model) {
    return firings(watch("save\n", {model, "--set", "kvd_start_kvz_before_save=standards " + list, "--set",
                                    "kvd_start_kvz_before_save_conf=11111"}));
  };
  const std::string numbers = " skipped=0 failed=0 saved=0  errors=0 warnings=0\n";
  EXPECT_EQ("before save  PLATE.PRT  standards regenerates  models=1 changed=1 unchanged=0" + numbers,
            fire("regenerates", "PLATE.PRT"));
  EXPECT_EQ("before save  GEN_1.PRT  standards nothing  models=1 changed=0 unchanged=1" + numbers,
            fire("nothing", "GEN_1.PRT"));
  assembly(L"A").uses(L"GEN_1", creo::ProMdlType::part);
  list("set.xml",
       "<task type='editModelParameter' version='3' forPRT='true' forEF='false' searchin='1' name='MASS' totype='2'"
       " value='7'/>");
  watch("open A.ASM\n", {"--events", path("events"), "--set", "kvd_start_kvz_after_open=standards set", "--set",
                         "kvd_start_kvz_after_open_conf=11110"});
  const std::string events = readBytes(path("events"));
  const std::string value = "familyTable/instances/GEN_1/values/MASS";
  EXPECT_THAT(events, testing::HasSubstr(R"("model":"GEN.PRT","path":")" + value));
  EXPECT_EQ(events.find(value), events.rfind(value)) << "the rows of instance and generic share a document";
}

// Two occurrences of a part, one of them further down: by name the first one is meant, by number any.
TEST_F(WatchVerb, SelectsWhatListsAskFor) {
  part(L"PLATE");
  assembly(L"INNER").uses(L"PLATE", creo::ProMdlType::part);
  assembly(L"TOP")
      .uses(L"INNER", creo::ProMdlType::assembly)
      .uses(L"PLATE", creo::ProMdlType::part)
      .uses(L"PLATE", creo::ProMdlType::part);
  list("tell.xml",
       "<task type='writeToCreoLog' version='3' forASM='true' forEF='false' message='selected: @selmdln@'/>"
       "<task type='runMapkey' version='3' forASM='true' forEF='false' kvpmode='true' rfe='4' mapkeyc='1'"
       " mapkey0='~ Command `ProCmdViewRepaint`;'/>");
  const auto logged = [&](const std::string& selected) {
    const Ended ended =
        watch("select " + selected + "\nsave\n",
              {"TOP.ASM", "--events", path("events"), "--set", "kvd_start_kvz_before_save=standards tell", "--set",
               "kvd_start_kvz_before_save_conf=01001", "--set", "kvd_write_history_in_models=0"});
    const std::string events = readBytes(path("events"));
    const std::size_t at = std::min(events.find("selected: "), events.size());
    const std::size_t from = ended.err.find("opened TOP.ASM\n") + 15;
    return std::to_string(ended.code) + " " + events.substr(at, events.find('"', at) - at) +
           (events.find("No selections") == events.npos ? "" : ", none") + "|" +
           ended.err.substr(from, ended.err.find('\n', from) - from);
  };
  EXPECT_EQ("0 selected: PLATE|selected 1", logged("PLATE.PRT"));
  EXPECT_EQ("0 selected: PLATE|selected 2", logged("inner.asm/plate.prt 3/"));
  EXPECT_EQ("0 selected: INNER|selected 2", logged("INNER.ASM 2"));
  EXPECT_EQ("0 selected: @selmdln@|selected 1", logged("3"));
  EXPECT_EQ("1 selected: @selmdln@, none|selected 0", logged(""));
  const std::string refused = "1 selected: @selmdln@, none|error: ";
  EXPECT_EQ(refused + "select: INNER.ASM has no component PLAT.PRT; did you mean 'PLATE.PRT'?",
            logged("PLATE.PRT INNER.ASM/PLAT.PRT"));
  EXPECT_EQ(refused + "select: PLATE.PRT has no feature 7", logged("PLATE.PRT/7"));
  EXPECT_EQ(refused + "'plate' is no model's name; it ends in .PRT, .ASM or .DRW", logged("plate"));
}

TEST_F(WatchVerb, ARenamedModelIsFollowed) {
  part(L"PLATE");
  list("rename.xml", "<task type='renameModel' version='3' forPRT='true' forEF='false' name='@mdln@_X'/>" + kSave);
  const Ended ended =
      watch("regenerate\nsave\n", {"PLATE.PRT", "--set", "kvd_start_kvz_before_solid_regen=standards rename"});
  EXPECT_EQ(
      "before solid regenerate  PLATE.PRT  standards rename  models=1 changed=1 unchanged=0 skipped=0 failed=0 saved=1"
      "  errors=0 warnings=0\n",
      firings(ended));
  EXPECT_THAT(ended.err, testing::EndsWith("saved PLATE_X.PRT\n"));
}

TEST_F(WatchVerb, TellsJsonAndEvents) {
  part(L"PLATE");
  const Ended ended = watch(
      "", {"PLATE.PRT", "--json", "--events", path("events"), "--set", "kvd_start_kvz_after_open=standards norm"});
  EXPECT_EQ(0, ended.code);
  const auto line = nlohmann::json::parse(ended.out);
  EXPECT_EQ("after open", line["trigger"]);
  EXPECT_EQ("PLATE.PRT", line["model"]);
  EXPECT_EQ(0, line["result"]);
  EXPECT_EQ(1, line["changed"]);
  EXPECT_EQ(1, line["saved"]);
  std::string reported;
  std::istringstream lines(readBytes(path("events")));
  for (std::string text; std::getline(lines, text);) {
    const auto event = nlohmann::json::parse(text);
    const std::string name = event["event"];
    if (name != "message" && name != "log") reported += name + " ";
  }
  EXPECT_EQ("trigger saved changed changed changed model recap ", reported);
}

TEST_F(WatchVerb, WhatFailsIsToldAndTheNextCommandIsWorked) {
  part(L"PLATE");
  const Ended ended =
      watch("sav\nopen NONE.PRT\nopen\nsave\nregenerate now\nnew PLATE.PRT\nclose\nopen PLATE.PRT\nsave\n",
            {"--set", "kvd_start_kvz_before_save=standards none"});
  EXPECT_EQ(1, ended.code);
  EXPECT_EQ(
      "error: there is no command 'sav'; did you mean 'save'?\n"
      "error: open NONE.PRT: there is no such model\n"
      "error: write 'open NAME.EXT'\n"
      "error: save: there is no current model\n"
      "error: write 'regenerate'\n"
      "error: new PLATE.PRT: it is there already\n"
      "error: close: there is no window\n"
      "opened PLATE.PRT\nsaved PLATE.PRT\n",
      ended.err);
  EXPECT_EQ("before save  PLATE.PRT  standards none  not started: <KVD> Can't find the described actionlist\n",
            ended.out);
  EXPECT_EQ(2, told({"watch", path("nowhere")}, "").code);
  EXPECT_EQ(2, watch("", {"--set", "kvd_start=1"}).code);
}

TEST_F(WatchVerb, WithoutAPackageTheConfiguredFolderCounts) {
  part(L"PLATE");
  file("config/kvd_main.cfg", "kvd_kvz_path=" + path("packages") + "\nkvd_start_kvz_after_occupy=standards norm\n");
  std::filesystem::create_directories(path("packages"));
  ASSERT_EQ(0, kelvane({"pack", path("standards"), path("packages/standards.kvz")}).code);
  const Ended ended = told({"watch", models(), "PLATE.PRT", "--config", path("config")}, "");
  EXPECT_EQ(
      "after occupy  PLATE.PRT  standards norm  models=1 changed=1 unchanged=0 skipped=0 failed=0 saved=1"
      "  errors=0 warnings=0\n",
      firings(ended));
  EXPECT_EQ(0, ended.code);
  EXPECT_THAT(told({"watch", models()}, "").err, testing::HasSubstr("no trigger is configured"));
}

TEST_F(WatchVerb, ErrorLinesOfTheListMakeTheExitCode) {
  part(L"PLATE");
  list("bad.xml", "<task type='noSuchAction' version='3'/>");
  const Ended ended = watch("regenerate\n", {"PLATE.PRT", "--set", "kvd_start_kvz_before_solid_regen=standards bad"});
  EXPECT_EQ(1, ended.code);
  EXPECT_THAT(ended.err, testing::HasSubstr("error: (ERR)"));
  EXPECT_THAT(ended.out, testing::HasSubstr("errors=2"));
}

TEST_F(WatchVerb, AViewThatIsntDrawnAsItShouldBeIsTold) {
  viewOfAPin();
  const std::vector<std::string> more = {"PLAN.DRW",
                                         "--set",
                                         "kvd_start_kvz_before_save=standards pdf",
                                         "--set",
                                         "kvd_start_kvz_before_save_conf=11111",
                                         "--set",
                                         "kvd_write_history_in_models=0"};  // which would keep it from a second time
  const headless::geometry::ForeignPlaceGuard guard;
  headless::geometry::forgetSeen();
  headless::geometry::foreignPlace().viewTime = std::chrono::milliseconds(0);
  const Ended faceted = watch("save\n", more);
  EXPECT_EQ(0, faceted.code);
  EXPECT_THAT(faceted.err, testing::HasSubstr("warning: the view FRONT of PIN.PRT in PLAN.DRW is drawn by facets: "));
  headless::geometry::forgetSeen();
  headless::geometry::foreignPlace().program = "/bin/no-such-program";
  const Ended lost = watch("save\n", more);
  EXPECT_EQ(1, lost.code);
  EXPECT_THAT(lost.err, testing::HasSubstr("error: the view FRONT of PIN.PRT in PLAN.DRW can't be drawn: "));
}

}  // namespace
}  // namespace test
