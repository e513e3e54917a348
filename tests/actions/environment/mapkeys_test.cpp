// Mapkeys and trail files: what of them reaches Creo, in which order and with what selected.
#include <filesystem>

#include "actions/action_fixture.h"
#include "creo/ProDrawing.h"
#include "headless/model/models.h"
#include "support/drawings.h"
#include "text/encoding.h"

namespace test {
namespace {

class Mapkeys : public ActionTest {
 protected:
  Mapkeys() { world.config("kvd_filter_curmod=1\nkvd_filter_inst=1"); }
  void SetUp() override { world.part(L"BRACKET").with(L"COLOR", L"red"); }

  // A mapkey of these lines.
  static std::string mapkey(const std::string& rfe, const std::vector<std::string>& lines,
                            const std::string& more = "kvpmode='true'") {
    std::string attributes = more + " rfe='" + rfe + "' mapkeyc='" + std::to_string(lines.size()) + "'";
    for (std::size_t i = 0; i < lines.size(); ++i) attributes += " mapkey" + std::to_string(i) + "='" + lines[i] + "'";
    return task("runMapkey", attributes);
  }
  // Steps that ran since the tool was opened, joined by "|".
  std::wstring steps() { return text::join(world.session().ranSteps(), L"|"); }
};

TEST_F(Mapkeys, LinesAreJoinedAndReplaced) {
  EXPECT_EQ(
      L"B0 Run Mapkey|B1 Run Mapkey|E:The mapkey isn't set to KVDMODE (flag inside the configuration)|B2 Run "
      L"Mapkey|E:The mapkey isn't set to KVDMODE (flag inside the configuration)|B3 Run Mapkey|B4 Run Mapkey",
      run(mapkey("0", {"~ Command `ProCmd", "ViewRepaint`;~ Paint `%COLOR%;x`", ";"}) +
          mapkey("0", {"~ A"}, "kvpmode='TRUE'") + mapkey("0", {"~ A"}, "") + mapkey("9", {"~ A"}) +
          task("runMapkey", "kvpmode='true' rfe='0' mapkey0='~ A'")));
  EXPECT_EQ(L"~ Command `ProCmdViewRepaint`|~ Paint `red;x`", steps());
  EXPECT_EQ((std::vector<std::wstring>{L"~ Paint `red;x`"}), world.session().unknownSteps());
}

TEST_F(Mapkeys, AHundredKilobytesRun) {
  std::vector<std::string> lines;
  for (int i = 0; i < 4000; ++i) lines.push_back("~ Command `ProCmdViewRepaint`;");
  run(mapkey("0", lines));
  EXPECT_EQ(4000U, world.session().ranSteps().size());
}

TEST_F(Mapkeys, FailuresAreTold) {
  world.list("list.xml", mapkey("0", {"~ A", "~ B"}) + mapkey("0", {"~ C"}) + mapkey("0", {"~ D", "%MISSING%"}) +
                             mapkey("1", {"~ E"}) + mapkey("2", {"~ F"}) + mapkey("3", {"~ G"}) + mapkey("4", {"~ H"}));
  world.start();
  world.open(L"BRACKET", creo::ProMdlType::part);
  world.session().failNext("ProMacroLoad", creo::ProGeneralError);
  world.session().failNext("ProMacroExecute", creo::ProGeneralError);
  world.run("list.xml");
  const std::wstring all = told(world.log());
  for (const wchar_t* line :
       {L"B0 Run Mapkey|E:Failure occured while load mapkey at line 2|B1",
        L"B1 Run Mapkey|E:Failure occured while execute mapkey|B2",
        L"|E:The mapkey isn't run: its line 1 can't be used|B3",
        L"B3 Run Mapkey|E:The mapkey is canceled, because it can only be run for drawings with the "
        L"'for every sheet' option|B4",
        L"B4 Run Mapkey|E:Current model is no generic|B5 Run Mapkey|B6 Run Mapkey|E:No "
        L"selections - 1"})
    EXPECT_NE(all.npos, all.find(line)) << text::toUtf8(line) << "\n" << text::toUtf8(all);
  EXPECT_EQ(L"~ C", steps());  // it waited, and ran when control was back with Creo
}

TEST_F(Mapkeys, AFilterIsAskedOnlyWhereTheTaskSaysSo) {
  const std::string rest = " version='3' kvpmode='true' rfe='0' mapkeyc='1' mapkey0='~ A' ";
  const auto with = [&](const std::string& attributes) { return "<task type='runMapkey'" + rest + attributes + "/>"; };
  run(with("") + with("forDRW='false'") + with("forPRT='true' forDRW='false'") + with("forEF='true'") +
      "<task type='runMapkey'" + rest +
      "forPRT='true' forEF='true'><filter><f type='isInstance' filtertype='true'/>"
      "</filter></task>");
  EXPECT_EQ(2U, world.session().ranSteps().size());
}

TEST_F(Mapkeys, RunForEachInstanceDownTheTables) {
  writeBytes(world.models() + "/bolt.prt.1", R"({"format": 1, "familyTable": {"items": [], "instances": [
      {"name": "B1", "familyTable": {"items": [], "instances": [{"name": "B1A"}]}}, {"name": "B2"}]}})");
  EXPECT_EQ(L"B0 Run Mapkey|rework Instance B1|rework Instance B1A|rework Instance B2",
            run(mapkey("2", {"~ Work `@mdln@`"}), L"BOLT"));
  EXPECT_EQ(L"~ Work `B1`|~ Work `B1A`|~ Work `B2`", steps());
}

TEST_F(Mapkeys, RunForSheetsAndViewsOfADrawing) {
  writePair(world.models());
  world.config("kvd_write_history_in_models=0");
  world.list("sheets.xml", mapkey("1", {"~ Sheet `@cursheetno@`"}));
  world.list("views.xml", mapkey("3", {"~ View"}));
  world.start();
  const creo::ProMdl pair = world.open(L"PAIR", creo::ProMdlType::drawing);
  auto& views = world.session().models().find(pair)->document->record.views;
  views[0].id = 4;
  views[1].id = 6;
  views[1].sheet = 3;
  world.run("sheets.xml");
  EXPECT_EQ(2, creo::ProDrawingCurrentSheetGet(pair).value);
  EXPECT_NE(std::wstring::npos, told(world.log()).find(L"for drawing sheet 1|for drawing sheet 2|for drawing sheet 3"));
  const std::size_t before = world.session().ranSteps().size();
  world.run("views.xml");
  std::vector<std::wstring> ran(world.session().ranSteps().begin() + static_cast<std::ptrdiff_t>(before),
                                world.session().ranSteps().end());
  ran.resize(6);
  EXPECT_EQ(
      L"~ Activate `main_dlg_cur` `page_Layout_control_btn` 1|~ Select `main_dlg_cur` `DrwAssyTree` 1 `node0:view_4 "
      L"92 0 -1 -1 -1`|~ View|~ Activate `main_dlg_cur` `page_Layout_control_btn` 1|~ Select `main_dlg_cur` "
      L"`DrwAssyTree` 1 `node0:view_6 92 0 -1 -1 -1`|~ View",
      text::join(ran, L"|"));
  const auto selected = creo::ProSelbufferSelectionsGet();
  ASSERT_EQ(1U, selected.value.size());
  EXPECT_EQ(6, selected.value[0].item.id);
  EXPECT_EQ(creo::ProItemType::view, selected.value[0].item.type);
  EXPECT_EQ(2, creo::ProDrawingCurrentSheetGet(pair).value);
}

TEST_F(Mapkeys, RunForEachSelectionAndLeaveTheBufferAsItWas) {
  world.list("list.xml", mapkey("4", {"~ Use"}));
  world.start();
  const creo::ProMdl bracket = world.open(L"BRACKET", creo::ProMdlType::part);
  std::vector<creo::ProSelection> selections;
  for (const int id : {7, 3, 5}) selections.push_back({{creo::ProItemType::feature, id, bracket, {}}, {}});
  world.session().select(selections);
  world.session().failNext("ProSelbufferSelectionAdd", creo::ProBadInputs);
  world.run("list.xml");
  EXPECT_EQ(L"~ Use|~ Use", steps());
  EXPECT_EQ(L"B0 Run Mapkey|E:A selection can't be made again", told(world.log()));
  std::string ids;
  for (const auto& selection : creo::ProSelbufferSelectionsGet().value) ids += std::to_string(selection.item.id) + " ";
  EXPECT_EQ("7 3 5 ", ids);
}

class TrailFiles : public Mapkeys {
 protected:
  void trail(const std::string& name, const std::string& content) {
    writeBytes(world.models() + "/trails/" + name, content);
  }
  // What ran beside the steps that open the files.
  std::wstring played() {
    std::vector<std::wstring> own;
    for (const std::wstring& step : world.session().ranSteps())
      if (step.find(L"file_open") == step.npos && step.find(L"ProCmdUtilTrailTrain") == step.npos) own.push_back(step);
    return text::join(own, L"|");
  }
};

TEST_F(TrailFiles, StepsOfAFileRunBeforeWhatWaits) {
  trail("red one.txt",
        "!trail file version No. 1945\r\n~ Command `ProCmdViewRepaint`\r\n\r\n~ First;~ Second `a;b`;\r\n");
  EXPECT_EQ(
      L"B0 Set DTL|Run Trailfile|B1 Set DTL|Run Trailfile|E:The trail file isn't there: d:\\trails\\none.txt",
      run(task("runTrailfile", "tf='d:/trails/%COLOR% one.txt'") + task("runTrailfile", "tf='d:/trails/none.txt'")));
  EXPECT_EQ(L"~ Command `ProCmdViewRepaint`|~ First|~ Second `a;b`", played());
  EXPECT_EQ((std::vector<std::wstring>{L"~ First", L"~ Second `a;b`"}), world.session().unknownSteps());
}

TEST_F(TrailFiles, AFileThatOpensItselfEnds) {
  const std::string open =
      "~ Command `ProCmdUtilTrailTrain`;~ Update `file_open` `Inputname` `trails\\\\a.txt`;~ Activate `file_open` "
      "`Open`\n";
  trail("a.txt", "~ Command `ProCmdViewRepaint`\n" + open + "~ Command `ProCmdDwgRegenDraft`\n");
  run(task("runTrailfile", "tf='d:/trails/a.txt'"));
  const std::wstring all = played();
  EXPECT_EQ(8U, static_cast<std::size_t>(std::count(all.begin(), all.end(), L'V')));
  EXPECT_NE(std::wstring::npos,
            world.messages().find(L"trail files open each other 8 deep: d:\\trails\\a.txt isn't played"));
}

TEST_F(TrailFiles, StepsOutsideTheirDialogAreUnknown) {
  trail("a.txt",
        "~ Activate `file_open` `Open`\n~ Select `main_dlg_cur` `DrwAssyTree` 1 `node0:view_4 92 0 -1 -1 -1`\n");
  run(task("runTrailfile", "tf='d:/trails/a.txt'"));
  EXPECT_EQ(2U, world.session().unknownSteps().size());
}

TEST_F(TrailFiles, FailuresAreTold) {
  trail("a.txt", "~ A");
  world.list("list.xml", task("runTrailfile", "tf='d:/trails/a.txt'") + task("runTrailfile", "tf='d:/trails/a.txt'"));
  world.start();
  world.open(L"BRACKET", creo::ProMdlType::part);
  world.session().failNext("ProMacroLoad", creo::ProGeneralError);
  world.session().failNext("ProMacroExecute", creo::ProGeneralError);
  world.run("list.xml");
  EXPECT_EQ(L"B0 Set DTL|Run Trailfile|E:Can't load macro|B1 Set DTL|Run Trailfile|E:The trail file can't be run",
            told(world.log()));
}

}  // namespace
}  // namespace test
