// Groups over the sheets of a drawing.
#include "actions/action_fixture.h"
#include "creo/ProDwgtable.h"
#include "creo/ProMdl.h"
#include "headless/model/models.h"
#include "headless/store/compare.h"
#include "support/drawings.h"
#include "text/encoding.h"

namespace test {
namespace {

class SheetGroup : public ActionTest {
 protected:
  void SetUp() override {
    writePair(world.models());
    const std::string tell = task("setUserVariableDirect", "name='AT' value='@sheetno@ @curdrwmdln@'");
    for (const std::string frameless : {"", "true", "other"})
      world.list(
          "list" + frameless + ".xml",
          task("groupActions", "reworkMode='6'" + (frameless.empty() ? "" : " framelessSheets='" + frameless + "'"),
               "<subtasks>" + tell + "</subtasks>"));
    world.list("add.xml", task("groupActions", "reworkMode='6'",
                               "<subtasks>" +
                                   task("addModelParameter",
                                        "forInstances='false' count='1' name_0='NORM' type_0='String' value_0='WN'") +
                                   "</subtasks>"));
    world.config("kvd_write_history_in_models=0");  // each run works the models again
    ASSERT_EQ(0, world.start());
  }
  // What a group over the sheets tells, behind its title; its task tells the sheet and the current model.
  std::wstring runGroup(const std::wstring& name = L"PAIR", const std::string& frameless = "",
                        creo::ProMdlType type = creo::ProMdlType::drawing) {
    world.runOn(name, type, "list" + frameless + ".xml");
    const std::wstring all = text::replaceAll(told(world.log()), L"B0 - G0 Set user variable direct|", L"");
    const std::wstring title = L"B0 GROUP ACTION";
    EXPECT_TRUE(all.starts_with(title)) << text::toUtf8(all);
    // The drawing's parts, for which the group does nothing, are worked before it.
    const std::size_t last = all.rfind(title);
    return last == all.npos ? all : all.substr(std::min(all.size(), last + title.size() + 1));
  }
};

constexpr std::wstring_view kSearch = L"More Models found|- search in frames|";
constexpr std::wstring_view kSingle = L"Found a single model that should be the right one|";

TEST_F(SheetGroup, RunsOnEachSheetWithItsModelCurrent) {
  const std::wstring search(kSearch), single(kSingle);
  EXPECT_EQ(L"Sheet - 1|" + search + single + L"GEAR|- G0 set AT = 1 GEAR|" +  //
                L"Sheet - 2|" + search + single + L"PAIR|- G0 set AT = 2 PAIR|" + L"Sheet - 3|" + search + single +
                L"PAIR|- G0 set AT = 3 PAIR",
            runGroup());
  const creo::ProMdl pair = creo::ProMdlInit(L"PAIR", creo::ProMdlType::drawing).value;
  EXPECT_EQ(2, creo::ProDrawingCurrentSheetGet(pair).value);
  EXPECT_EQ(L"PINION", creo::ProMdlNameGet(creo::ProDrawingCurrentsolidGet(pair).value).value);
  EXPECT_EQ(2u, creo::ProDrawingTablesCollect(pair).value.size());
}

TEST_F(SheetGroup, SkipsSheetsWithoutAModelUnlessToldOtherwise) {
  writeBytes(world.models() + "/two.drw.1", R"({"format": 1,
    "models": [{"name": "GEAR", "type": "prt"}, {"name": "PINION", "type": "prt"}],
    "sheets": [{}, {}, {}],
    "tables": [{"id": 1, "segments": [{"sheet": 1}], "repeatRegions": [{"model": 1}]},
               {"id": 2, "segments": [{"sheet": 1}], "repeatRegions": [{"model": 2}]},
               {"id": 3, "segments": [{"sheet": 2}], "repeatRegions": [{"model": 9}]}]})");
  const std::wstring search(kSearch), single(kSingle), several = L"W:Found multiple possible models|",
                                                       none = L"E:No model found";
  EXPECT_EQ(L"Sheet - 1|" + search + several + none + L"|Sheet - 2|" + search + single + none + L"|Sheet - 3|" +
                search + several + none,
            runGroup(L"TWO"));
  const std::wstring frameless = L"Sheet - 1|" + search + several + L"- G0 set AT = 1 GEAR|Sheet - 2|" + search +
                                 single + L"- G0 set AT = 2 GEAR|Sheet - 3|" + search + several +
                                 L"- G0 set AT = 3 GEAR";
  EXPECT_EQ(frameless, runGroup(L"TWO", "true"));
}

TEST_F(SheetGroup, LeavesNoTraceWhereItsTasksChangeNothing) {
  const std::string models = R"("models": [{"name": "GEAR", "type": "prt"}, {"name": "PINION", "type": "prt"}],
    "sheets": [{}, {}], "tables": [{"id": 1, "segments": [{"sheet": 1}], "repeatRegions": [{"model": 2}]},
    {"id": 2, "segments": [{"sheet": 2}], "repeatRegions": [{"model": 1}]}])";
  // What shows the first sheet or the first model, said in different ways.
  const char* places[] = {R"("currentModel": "GEAR.prt")", R"("currentModel": "gear.PRT", "currentSheet": 9)",
                          R"("currentModel": "GONE.prt", "currentSheet": 2)", R"("currentModel": "pinion.PRT")"};
  int number = 0;
  for (const std::string place : places) {
    const std::wstring name = L"P" + std::to_wstring(++number);
    const std::string file = text::toUtf8(name) + ".drw";
    writeBytes(world.models() + "/" + file + ".1", R"({"format": 1, )" + models + ", " + place + "}");
    EXPECT_NE(std::wstring::npos, runGroup(name).find(L"set AT = 2 GEAR")) << place;
    const creo::ProMdl drawing = creo::ProMdlInit(name, creo::ProMdlType::drawing).value;
    EXPECT_FALSE(creo::ProMdlModificationVerify(drawing).value) << place;
    const auto differences = [&] {
      return headless::compareTexts(world.document(file), world.session().models().documentText(drawing).value,
                                    {.history = false});
    };
    EXPECT_TRUE(differences().empty()) << place;
    world.runOn(name, creo::ProMdlType::drawing, "add.xml");
    EXPECT_TRUE(creo::ProMdlModificationVerify(drawing).value) << place;
    for (const headless::Change& difference : differences())
      EXPECT_TRUE(difference.path.starts_with(L"parameters/NORM/")) << place << text::toUtf8(difference.path);
  }
}

TEST_F(SheetGroup, TakesTheOnlyModelAndNothingFromOtherModels) {
  const struct {
    const char *models, *frameless;
    const wchar_t* expected;
  } cases[] = {
      {R"({"name": "GEAR", "type": "prt"})", "", L"Sheet - 1|One Model found|GEAR|- G0 set AT = 1 GEAR"},
      {"", "", L"Sheet - 1|No Model found|E:No model found"},
      {"", "true", L"Sheet - 1|No Model found|- G0 set AT = 1 -"},
      {"", "other", L"Sheet - 1|No Model found|E:No model found"},
  };
  int number = 0;
  for (const auto& c : cases) {
    const std::string name = "D" + std::to_string(++number);
    writeBytes(world.models() + "/" + name + ".drw.1", std::string(R"({"format": 1, "models": [)") + c.models + "]}");
  }
  number = 0;
  for (const auto& c : cases) {
    const std::wstring name = L"D" + std::to_wstring(++number);
    EXPECT_EQ(c.expected, runGroup(name, c.frameless)) << text::toUtf8(name);
  }
  EXPECT_EQ(L"", runGroup(L"GEAR", "", creo::ProMdlType::part));
}

TEST_F(SheetGroup, SurvivesFailingOperations) {
  for (const char* operation : {"ProDrawingSheetsCount", "ProDrawingCurrentSheetSet", "ProDrawingSolidsCollect",
                                "ProDrawingTableCreate", "ProDwgtableTextEnter", "ProDrawingCurrentsolidSet"}) {
    world.session().failNext(operation, creo::ProGeneralError);
    const std::wstring all = runGroup();
    const creo::ProMdl pair = creo::ProMdlInit(L"PAIR", creo::ProMdlType::drawing).value;
    EXPECT_EQ(2, creo::ProDrawingCurrentSheetGet(pair).value) << operation << text::toUtf8(all);
    EXPECT_EQ(2u, creo::ProDrawingTablesCollect(pair).value.size()) << operation;
    EXPECT_EQ(all.find(L"Sheet - 3|") != all.npos, std::string(operation) != "ProDrawingSheetsCount") << operation;
  }
}

}  // namespace
}  // namespace test
