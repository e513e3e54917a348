// Symbols of drawings: placed from files, found by place and name, moved, deleted, switched, brought up to date.
#include <filesystem>

#include "actions/drawing/drawing_details_fixture.h"
#include "creo/ProDtlsym.h"

namespace test {
namespace {

class Symbols : public DetailTest {
 protected:
  static constexpr const char* kAll = "7:weld@1(100,50) 8:rough@1(200,100) 9:lost@2(45,22)";
  static constexpr const char* kArrow = R"({"lines": [[0, 0, 5, 5, 0.3]], "groups": [{"id": 1, "name": "tip"}]})";
};

TEST_F(Symbols, AreFoundByPlaceOrName) {
  const std::string weld = "7:weld@1(100,50)", rough = "8:rough@1(200,100)", lost = "9:lost@2(45,22)";
  struct Case {
    std::string attributes, left;
  };
  const Case cases[] = {
      {"posx_0='104.9' posy_0='50'", rough + " " + lost},
      {"posx_0='105.0' posy_0='45'", rough + " " + lost},
      {"posx_0='105.1' posy_0='50'", kAll},
      {"posx_0='100' posy_0='55.1'", kAll},
      {"posx_0='-320' posy_0='-247'", rough + " " + lost},
      {"posx_0='-110' posy_0='10' sheet_0='2'", weld + " " + rough},
      {"posx_0='100' posy_0='10' sheet_0='1'", kAll},
      {"posx_0='100' posy_0='50' sheet_0='0'", rough + " " + lost},
      {"posx_0='100' posy_0='50' symname_0='ROUGH'", lost},
      {"posx_0='' symname_0='w*'", rough + " " + lost},
      {"symname_0='*' fn_0='frame_a3'", lost},
      {"symname_0='*' fn_0='frame_a4'", kAll},
      {"symname_0='*' fn_0=''", lost},
      {"symname_0='lost'", kAll},
      {"symname_0='weld' symname_99='rough' symname_100='*'", lost},
      {"symname_0='*' sheet_0='%NUMBER%'", kAll},
      {"posx_0='x' posy_0='50'", kAll},
      {"posx_0='100'", kAll},
      {"posx_0='' symname_0=''", kAll},
  };
  for (const Case& entry : cases) {
    World own;
    work(own, task("deleteSymbol", entry.attributes));
    EXPECT_EQ(entry.left, symbols(own)) << entry.attributes;
  }
}

TEST_F(Symbols, TellHowTheyWereFound) {
  World own;
  EXPECT_EQ(
      L"B0 Delete Symbol|The format of page 1 is frame_a3|x: 100.000000, y: 50.000000, m1:1.000000, m2:1.000000|"
      L"recalc x: 100.000000, y: 50.000000|check r* => weld|x: 200.000000, y: 100.000000, m1:1.000000, "
      L"m2:1.000000|recalc x: 200.000000, y: 100.000000|check r* => rough|found a symbol|Symbol is deleted|"
      L"The format of page 2 is|B1 Save model",
      work(own, task("deleteSymbol", "posx_0='9' posy_0='9' symname_0='r*' sheet_0='1'")));
}

TEST_F(Symbols, MoveAndKeepHowTheyHang) {
  World own;
  const std::wstring log = work(own, task("moveSymbol",
                                          "symname_0='rough' nposx_0='-20' nposy_0='30' posx_1='100' posy_1='10' "
                                          "nposx_1='50' nposy_1='-288' sheet_1='2' posx_2='100' posy_2='50'"));
  EXPECT_EQ("7:weld@1(100,50) 8:rough@1(400,30) 9:lost@2(20,20)", symbols(own));
  EXPECT_EQ(3, saved(own).symbols[1].attachment);
  EXPECT_TRUE(has(log, L"values x: 50.000000, y: -288.000000|set to recalc x: 20.000000, y: 20.000000|Symbol is moved"))
      << text::toUtf8(log);
}

TEST_F(Symbols, ShowTheChosenGroupWithThoseAroundIt) {
  struct Case {
    std::string attributes, weld;
  };
  const Case cases[] = {
      {"symname_0='weld' nvariant_0='ALL*'", "[1,2,3]"},  // the first that fits, outermost first
      {"symname_0='weld' nvariant_0='all over'", "[4]"},
      {"symname_0='weld' nvariant_0='none'", ""},
      {"symname_0='weld'", ""},
      {"posx_0='200' posy_0='100' nvariant_0='*'", ""},
  };
  for (const Case& entry : cases) {
    World own;
    work(own, task("changeSymbolGroup", entry.attributes));
    EXPECT_EQ("7:weld@1(100,50)" + entry.weld + " 8:rough@1(200,100) 9:lost@2(45,22)", symbols(own))
        << entry.attributes;
    const headless::ModelRecord record = saved(own);
    const headless::SymbolRecord& weld = record.symbols.front();
    EXPECT_EQ(entry.weld.empty() ? creo::ProSymbolGroups::interactive : creo::ProSymbolGroups::custom,
              weld.groupOption);
    EXPECT_EQ(std::vector<std::string>{"a5"}, weld.texts);
  }
}

TEST_F(Symbols, ArePlacedFromFiles) {
  struct Case {
    std::string attributes, added;
  };
  const Case cases[] = {
      {"sympath='@project_dir@' symname='packed' fn_0='' posx_0='-50' posy_0='-7'",
       " 10:packed@1(370,290) 11:packed@2(75,582)"},
      {"sympath='' symname='%NAME%arrow' fn_0='*a3' posx_0='1' posy_0='2' fn_1='*a3' posx_1='3' posy_1='4'", ""},
      {"symname='arrow' fn_0='*a3' posx_0='1' posy_0='2' fn_1='*a3' posx_1='3' posy_1='4'",
       " 10:arrow@1(1,2) 11:arrow@1(3,4)"},
      {"sympath='@pro_symbol_dir@' symname='ARROW' fn_0='no_format' posx_0='50' posy_0='9'", " 10:ARROW@2(20,20)"},
      {"sympath='d:\\nowhere' symname='Rough' fn_0='' posx_0='1' posy_0='2' sheet_0='1'", " 10:rough@1(1,2)"},
      {"sympath='parts' symname='inner' fn_0='*a3' posx_0='1' posy_0='2'", " 10:inner@1(1,2)"},
      {"symname='arrow' posx_0='1' posy_0='2'", ""},
      {"symname='arrow' fn_0='' posx_0='1'", ""},
      {"symname='..\\arrow' fn_0='' posx_0='1' posy_0='2'", ""},
  };
  for (const Case& entry : cases) {
    World own;
    own.member("models/packed.sym", kArrow);
    writeBytes(own.models() + "/arrow.sym", kArrow);
    std::filesystem::create_directory(own.models() + "/parts");
    writeBytes(own.models() + "/parts/inner.sym", kArrow);
    const std::wstring log = work(own, task("addSymbol", entry.attributes));
    EXPECT_EQ(kAll + entry.added, symbols(own)) << entry.attributes;
    EXPECT_EQ(1, saved(own).currentSheet);
    EXPECT_EQ(entry.added.empty(), !has(log, L"Symbol instance is created and displayed")) << entry.attributes;
  }
}

TEST_F(Symbols, TellHowTheyArePlaced) {
  World own;
  writeBytes(own.models() + "/arrow.sym", kArrow);
  EXPECT_EQ(
      L"B0 Add symbol|The format of page 1 is frame_a3.|Check Sheet 1 = 2|The format of page 2 is no_format.|"
      L"Check Sheet 2 = 2|Sheet 2 is worked|Input position x: 50.000000, y:9.000000|"
      L"Recalc input position x: 20.000000, y:20.000000|Symbol is retrieved|"
      L"Symbol instance is created and displayed|B1 Save model",
      work(own, task("addSymbol", "symname='arrow' fn_0='' posx_0='50' posy_0='9' sheet_0='2'")));
  const headless::ModelRecord record = saved(own);
  const headless::SymbolDefinitionRecord& arrow = record.symbolDefinitions.back();
  EXPECT_EQ(3, arrow.id);
  EXPECT_EQ(1U, arrow.lines.size());
  EXPECT_EQ(creo::ProSymbolGroups::all, record.symbols.back().groupOption);
}

TEST_F(Symbols, OfAFileThatCantBeTakenArentPlaced) {
  struct Case {
    std::string file;
    std::wstring message;
  };
  const Case cases[] = {
      {R"({"lines": [[0, 0)", L"arrow.sym:1:"},
      {"[]", L"arrow.sym:1: a symbol definition is an object"},
      {"{\n\"groups\": [{\"id\": 1, \"name\": \"a\", \"groups\": [{\"id\": 1, \"name\": \"b\"}]}]}",
       L"two groups have the id 1"},
  };
  for (const Case& entry : cases) {
    World own;
    writeBytes(own.models() + "/arrow.sym", entry.file);
    const std::wstring log = work(own, task("addSymbol", "symname='arrow' fn_0='' posx_0='1' posy_0='2' sheet_0='1'"));
    EXPECT_TRUE(has(log, L"E:Failure while retrieving the symbol : -1")) << text::toUtf8(log);
    EXPECT_TRUE(own.messages().find(entry.message) != std::wstring::npos) << text::toUtf8(own.messages());
    EXPECT_EQ(kAll, symbols(own));
  }
}

TEST_F(Symbols, TellWhichStepFailed) {
  struct Case {
    const char* operation;
    std::wstring said;
    bool placed;
  };
  const std::wstring step = L"E:SourceCode - add Symbol failure ", failed = L"|E:Symbol can't be displayed";
  const Case cases[] = {
      {"ProDtlsyminstdataAlloc", step + L"1|" + step + L"2|" + step + L"3|" + step + L"4|" + step + L"6" + failed,
       false},
      {"ProDtlsyminstdataDefSet", step + L"2" + failed, false},
      {"ProDtlsyminstdataGroupoptionsSet", step + L"3|Symbol instance is created", true},
      {"ProDtlsyminstdataAttachtypeSet", step + L"4|Symbol instance is created", true},
      {"ProDtlattachAlloc", step + L"5|" + step + L"6" + failed, false},
      {"ProDtlsyminstdataAttachmentSet", step + L"6" + failed, false},
      {"ProDtlsyminstCreate", L"Symbol is retrieved" + failed, false},
      {"ProDtlsyminstShow", L"Symbol is retrieved" + failed, false},
      {"ProDrawingSheetTrfGet", L"E:The matrix of sheet 1 can't be read", false},
      {"ProDrawingSheetInfoGet", L"E:The size of sheet 1 can't be read|Input position x: -1.000000, y:2.000000", true},
  };
  for (const Case& entry : cases) {
    World own;
    writeBytes(own.models() + "/arrow.sym", kArrow);
    const std::wstring log =
        work(own, task("addSymbol", "symname='arrow' fn_0='' posx_0='-1' posy_0='2' sheet_0='1'"), entry.operation);
    EXPECT_TRUE(has(log, entry.said)) << entry.operation << "\n" << text::toUtf8(log);
    EXPECT_EQ(entry.placed, symbols(own) != kAll) << entry.operation;
  }
  World left;
  writeBytes(left.models() + "/arrow.sym", kArrow);
  const std::string add = task("addSymbol", "symname='arrow' fn_0='' posx_0='-1' posy_0='2' sheet_0='1'");
  const std::wstring log = work(left, add, "ProDtlsyminstShow", creo::ProGeneralError, "ProDtlsyminstDelete");
  EXPECT_TRUE(has(log, failed + L"|E:The symbol that isn't shown can't be deleted")) << text::toUtf8(log);
}

// Whatever fails once while symbols are changed: they stay as they were, and the log says so.
TEST_F(Symbols, StayWholeWhereAnOperationFails) {
  struct Case {
    const char *action, *operation;
    std::wstring said;
  };
  const Case cases[] = {
      {"moveSymbol", "ProDtlsyminstModify", L"E:Can't move the symbol"},
      {"moveSymbol", "ProDtlattachAlloc", L"E:Can't move the symbol"},
      {"moveSymbol", "ProDtlsyminstDataGet", L"E:A symbol can't be read"},
      {"moveSymbol", "ProDtlsymdefNameGet", L""},
      {"deleteSymbol", "ProDtlsyminstDelete", L"E:Can't delete the symbol"},
      {"changeSymbolGroup", "ProDtlsyminstdataGroupoptionsSet", L"E:Can't change the symbol"},
      {"changeSymbolGroup", "ProDtlsyminstModify", L"E:Can't change the symbol"},
      {"changeSymbolGroup", "ProDtlsyminstSymgroupsCollect", L"E:The groups of the symbol can't be read"},
      {"deleteSymbol", "ProDrawingDtlsyminstVisit", L"E:The symbols can't be visited"},
  };
  for (const Case& entry : cases) {
    World own;
    const std::wstring log =
        work(own, task(entry.action, "symname_0='weld' nposx_0='1' nposy_0='1' nvariant_0='near'"), entry.operation);
    EXPECT_TRUE(has(log, entry.said)) << entry.operation << "\n" << text::toUtf8(log);
    EXPECT_EQ(kAll, symbols(own)) << entry.operation;
  }
}

TEST_F(Symbols, GetTheDefinitionsOfTheirFiles) {
  {
    World own;
    writeBytes(own.models() + "/weld.sym", R"({"id": 99, "name": "other", "lines": [[0, 0, 1, 1]]})");
    const std::wstring log = work(own, task("updateSymbolDefinitions"));
    EXPECT_EQ(L"B0 Update symbol definitions|Update for weld found.|No update for rough found.|B1 Save model", log);
    const headless::ModelRecord record = saved(own);
    EXPECT_EQ(1, record.symbolDefinitions[0].id);
    EXPECT_EQ("weld", record.symbolDefinitions[0].name);
    EXPECT_EQ(1U, record.symbolDefinitions[0].lines.size());
    EXPECT_TRUE(record.symbolDefinitions[0].groups.empty());
    EXPECT_EQ(2U, record.symbolDefinitions.size());
    EXPECT_EQ(kAll, symbols(own));
  }
  World failing;
  EXPECT_EQ(L"B0 Update symbol definitions|E:The symbol definitions of the drawing can't be read|B1 Save model",
            work(failing, task("updateSymbolDefinitions"), "ProDrawingDtlsymdefsCollect"));
}

TEST_F(Symbols, StayAsTheyAreWhereTheUpdateHasAPath) {
  EXPECT_EQ(L"B0 Update symbol definitions|B1 Save model", work(world, task("updateSymbolDefinitions", "path=''")));
}

TEST_F(Symbols, OfPartsDontExist) {
  for (const char* action : {"addSymbol", "moveSymbol", "deleteSymbol", "changeSymbolGroup", "updateSymbolDefinitions",
                             "addNote", "moveNote", "deleteNote", "setCurrentDrawingModel", "editModelNotesFromFile"}) {
    World own;
    own.part(L"BRACKET");
    own.list("list.xml", task(action, "symname='x' symname_0='*' posx_0='1' posy_0='1' sheet_0='1' path='d:\\x.csv'"));
    own.runOn(L"BRACKET", creo::ProMdlType::part, "list.xml");
    EXPECT_EQ(std::wstring::npos, told(own.log()).find(L'|')) << action << text::toUtf8(own.log());
  }
}

TEST_F(Symbols, CurrentModelOfTheDrawing) {
  struct Case {
    std::string attributes, current;
    std::wstring said;
  };
  const Case cases[] = {
      {"value='pair.*'", "PAIR.asm", L"set drawing model to : PAIR.asm"},
      {"value='GEAR'", "", L""},
      {"value='/^(GEAR|PAIR)/'", "", L"set drawing model to : GEAR.prt"},
      {"", "", L""},
  };
  for (const Case& entry : cases) {
    World own;
    const std::wstring log = work(own, task("setCurrentDrawingModel", entry.attributes));
    EXPECT_EQ(entry.current, saved(own).currentModel) << entry.attributes;
    EXPECT_EQ(L"B0 Set current drawing model|" + entry.said + (entry.said.empty() ? L"" : L"|") + L"B1 Save model",
              log);
  }
  const std::wstring log = work(world, task("setCurrentDrawingModel", "value='*asm'"), "ProDrawingCurrentsolidSet");
  EXPECT_TRUE(has(log, L"E:Can't set drawing model to : PAIR.asm"));
}

}  // namespace
}  // namespace test
