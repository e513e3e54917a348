// Tables on drawings, brought from files, moved and deleted by lists.
#include <sys/stat.h>

#include "actions/drawing_details_fixture.h"

namespace test {
namespace {

// Sheet 1 is A3 (420 by 297), its own coordinates are the drawing's; on sheet 2, an upright A4 (210 by 297), they are
// x * 2 + 10 and y / 2 - 1. Table 2 stands there at (100, 10); table 3 goes on from sheet 1 to sheet 2; table 4 has no
// cells, table 5 no segment.
constexpr const char* kTables = R"({"format": 1,
  "parameters": [{"name": "NUMBER", "type": "string", "value": "D-22"}],
  "currentSheet": 2,
  "sheets": [{"size": "A3", "format": "frame_a3"},
             {"size": "A4", "portrait": true, "matrix": {"scaleX": 2, "scaleY": 0.5, "offsetX": 10, "offsetY": -1}}],
  "tables": [
    {"id": 1, "segments": [{"position": {"x": 100, "y": 50}}], "columns": [20, 30], "rows": [8, 8],
     "cells": [{"row": 1, "column": 1, "lines": ["Title"]}, {"row": 2, "column": 2, "lines": ["first", "No &NUMBER"]}]},
    {"id": 2, "segments": [{"sheet": 2, "position": {"x": 45, "y": 22}}], "columns": [20], "rows": [8],
     "cells": [{"row": 1, "column": 1, "lines": ["Parts"]}]},
    {"id": 3, "segments": [{"position": {"x": 300, "y": 200}}, {"sheet": 2, "position": {"x": 1, "y": 2}}],
     "columns": [20], "rows": [8, 8]},
    {"id": 4, "segments": [{"position": {"x": 20, "y": 20}}]},
    {"id": 5, "columns": [20], "rows": [8]}]})";
constexpr const char* kStamp = R"({"id": 9, "name": "other", "fromFormat": true, "columns": [40, 20], "rows": [7],
  "cells": [{"row": 1, "column": 1, "lines": ["released &NUMBER"]}]})";

class DrawingTables : public DetailTest {
 protected:
  // What the log tells of the drawing; one operation may fail once.
  static std::wstring work(World& own, const std::string& tasks, const std::string& failing = "") {
    writeBytes(own.models() + "/sheets.drw.1", kTables);
    writeBytes(own.models() + "/cut.tbl", std::string(kStamp).substr(0, 60));
    mkdir((own.models() + "/tables").c_str(), 0755);
    writeBytes(own.models() + "/tables/stamp.tbl", kStamp);
    own.list("list.xml", tasks + task("saveModel"));
    own.start();
    creo::ProConfigoptSet(L"pro_table_dir", L"d:\\tables");
    own.open(L"SHEETS", creo::ProMdlType::drawing);
    own.openTool();
    own.choose("list.xml");
    if (!failing.empty()) own.session().failNext(failing, creo::ProGeneralError);
    const std::wstring folder = creo::ProDirectoryCurrentGet().value;
    own.pressStart();
    EXPECT_EQ(folder, creo::ProDirectoryCurrentGet().value) << tasks;
    EXPECT_TRUE(failing.empty() || own.session().calls(failing) > 0) << failing;
    return told(own.log());
  }
  // "1@1(100,50) 3@1(300,200)@2(1,2)", with "!" for one that isn't shown.
  static std::string tables(const World& own) {
    std::string all;
    const headless::ModelRecord record = saved(own);
    EXPECT_EQ(2, record.currentSheet);
    for (const headless::TableRecord& one : record.tables) {
      all += (all.empty() ? "" : " ") + std::to_string(one.id) + (one.erased ? "!" : "");
      for (const headless::SegmentRecord& segment : one.segments) all += place(segment.sheet, segment.position);
    }
    return all;
  }
  static std::string add(const std::string& attributes) { return task("addTable", "tablename='stamp' " + attributes); }
};

constexpr std::string_view kAll = "1@1(100,50) 2@2(45,22) 3@1(300,200)@2(1,2) 4@1(20,20) 5";

TEST_F(DrawingTables, ComeFromFilesOntoTheirSheets) {
  const struct {
    std::string attributes, added;
  } cases[] = {
      {"fn_0='' posx_0='50' posy_0='60'", "6@1(50,60) 7@2(20,122)"},
      {"fn_0='' posx_0='-50' posy_0='-7' sheet_0='0'", "6@1(370,290) 7@2(75,582)"},
      {"fn_0='FRAME_*' posx_0='50' posy_0='60' sheet_0='-1'", "6@1(50,60)"},
      {"fn_0='no_format' posx_0='50' posy_0='60'", "6@2(20,122)"},
      {"fn_0='' posx_0='1' posy_0='2' sheet_0='1' fn_99='' posx_99='10' posy_99='0' sheet_99='2'", "6@1(1,2) 7@2(0,2)"},
      {"fn_0='' posx_0='1' posy_0='2' sheet_0='@sheetno@' tablepath='@pro_table_dir@'", "6@2(-4.5,6)"},
      {"fn_0='' posx_0='1' posy_0='2' sheet_0='1' tablepath='d:/tables'", "6@1(1,2)"},
      {"fn_0='' posy_0='2' sheet_0='1'", ""},
      {"fn_0='' posx_0='1' posy_0='x' sheet_0='1'", ""},
      {"fn_0='' posx_0='1' posy_0='2' sheet_0='3'", ""},
      {"posx_0='1' posy_0='2' sheet_0='1'", ""},
      {"fn_0='' posx_0='1' posy_0='2' sheet_0='1' tablepath='d:/gone'", ""},
  };
  for (const auto& one : cases) {
    World own;
    work(own, add(one.attributes));
    EXPECT_EQ(std::string(kAll) + (one.added.empty() ? "" : " ") + one.added, tables(own)) << one.attributes;
  }
}

TEST_F(DrawingTables, TellWhatIsDoneAndWhatFails) {
  World own;
  EXPECT_EQ(
      L"B0 Add table|Insert from PRO_TABLE_DIR|The format of page 1 is frame_a3.|Check Sheet 1 = 1|"
      L"Sheet 1 is worked|Table is retrieved and displayed|The format of page 2 is no_format.|Check Sheet 2 = 1|"
      L"B1 Save model",
      work(own, add("fn_0='' posx_0='1' posy_0='2' sheet_0='1'")));
  const headless::ModelRecord record = saved(own);
  ASSERT_EQ(6u, record.tables.size());
  EXPECT_EQ("stamp", record.tables.back().name);
  EXPECT_FALSE(record.tables.back().fromFormat);
  EXPECT_EQ("released &NUMBER", record.tables.back().cells.at(0).lines.at(0));

  const struct {
    std::string action, failing;
    std::wstring said;
    std::string added;
  } cases[] = {
      {add(""), "ProDwgtableRetrieve", L"E:Failure while retrieving the table : -1", ""},
      {add(""), "ProDwgtableInfoGet", L"E:Can't get Table info", " 6@1(1,2)"},
      {add(""), "ProDwgtableSegMove", L"E:Can't move table segment|Table is retrieved and displayed", " 6@1(1,2)"},
      {add(""), "ProDwgtableDisplay", L"E:Table is can't be displayed", " 6@1(1,2)"},
      {add(""), "ProDrawingSheetTrfGet", L"E:The matrix of sheet 1 can't be read", ""},
      {task("addTable", "tablename='gone'"), "", L"E:Failure while retrieving the table : -4", ""},
      {task("addTable", "tablename='../tables/stamp'"), "", L"E:Failure while retrieving the table : -2", ""},
      {task("addTable", "tablename='cut' tablepath='d:/'"), "", L"E:Failure while retrieving the table : -1", ""},
  };
  for (const auto& one : cases) {
    World site;
    std::string with = one.action;
    with.insert(with.find(" forEF"), " fn_0='' posx_0='1' posy_0='2' sheet_0='1'");
    const std::wstring log = work(site, with, one.failing);
    EXPECT_TRUE(has(log, one.said)) << text::toUtf8(log);
    EXPECT_EQ(std::string(kAll) + one.added, tables(site)) << one.failing;
  }
}

TEST_F(DrawingTables, MoveWhereTheyAreFound) {
  const std::string to = " nposx_0='200' nposy_0='-97'";
  const std::string moved1 = "1@1(200,200) 2@2(45,22) 3@1(300,200)@2(1,2) 4@1(20,20) 5",
                    moved2 = "1@1(100,50) 2@2(95,402) 3@1(300,200)@2(1,2) 4@1(20,20) 5", all(kAll);
  const std::pair<std::string, std::string> cases[] = {
      {"posx_0='104.9' posy_0='50'" + to, moved1},
      {"posx_0='105.0' posy_0='45'" + to, moved1},
      {"posx_0='105.1' posy_0='50'" + to, all},
      {"posx_0='100' posy_0='55.1'" + to, all},
      {"posx_0='-320' posy_0='-247'" + to, moved1},
      {"posx_0='100' posy_0='50'", all},
      {"posx_0='100' posy_0='50' sheet_0='0'" + to, all},
      {"posx_0='100' posy_0='50' sheet_0='-1'" + to, moved1},
      {"posx_0='100' posy_0='50' sheet_0='2'" + to, all},
      {"posx_0='-110' posy_0='10'" + to, moved2},
      {"posx_0='100' fn_0='frame*' sheet_0=''" + to, all},
      {"posx_0='100' posy_0='50' fn_0='other*'" + to, all},
      {"text_0='parts' textc_0='*' textr_0='*'" + to, moved2},
      {"text_0='no d-22' textc_0='*' textr_0='2'" + to, moved1},
      {"text_0='no d-22' textc_0='2' textr_0='1'" + to, all},
      {"text_0='No &amp;NUMBER' textc_0='*' textr_0='*'" + to, all},
      {"text_0='Title' textc_0='1' textr_0='x'" + to, all},
      {"text_0='Title' textc_0='1' textr_0='1' posx_0='1' posy_0='1'" + to, moved1},
      {"posx_0='300' posy_0='200'" + to, "1@1(100,50) 2@2(45,22) 3@1(200,200)@2(1,2) 4@1(20,20) 5"},
      {"posx_0='100' posy_0='50' nposx_0='200'", all},
  };
  for (const auto& [attributes, expected] : cases) {
    World own;
    work(own, task("moveTable", attributes));
    EXPECT_EQ(expected, tables(own)) << attributes << "\n" << text::toUtf8(told(own.log()));
  }
  World own;
  const std::wstring log =
      work(own, task("moveTable", "text_0='first' textc_0='*' textr_0='*'" + to), "ProDwgtableSegMove");
  EXPECT_TRUE(has(log,
                  L"The format of page 1 is frame_a3|y:2, x:2, lc:0, first|found a table|"
                  L"values x: 200.000000, y: -97.000000|set to recalc x: 200.000000, y: 200.000000|"
                  L"E:Can't move the table"))
      << text::toUtf8(log);
}

TEST_F(DrawingTables, AreDeletedByPlaceOrText) {
  const std::string without1 = "2@2(45,22) 3@1(300,200)@2(1,2) 4@1(20,20) 5",
                    without2 = "1@1(100,50) 3@1(300,200)@2(1,2) 4@1(20,20) 5", all(kAll);
  const std::pair<std::string, std::string> cases[] = {
      {"posx_0='105' posy_0='50'", without1},
      {"posx_0='105.1' posy_0='50'", all},
      {"posx_0='100' posy_0='50' sheet_0='0'", without1},
      {"posx_0='100' posy_0='10' sheet_0='2'", without2},
      {"posx_0='100' posy_0='10' sheet_0='1'", all},
      {"posx_0='100' posy_0='50' sheet_0='%NONE%'", all},
      {"text_0='parts' textc_0='1' textr_0='1' sheet_0='2'", without2},
      // Without a sheet all tables are looked at, also those of sheets whose format doesn't fit.
      {"text_0='parts' textc_0='1' textr_0='1' fn_0='frame_a3'", without2},
      {"text_0='parts' textc_0='1' textr_0='1' fn_0='frame_a3' sheet_0='2'", all},
      {"posx_0='20' posy_0='20' posx_7='100' posy_7='50' sheet_7='1'", "2@2(45,22) 3@1(300,200)@2(1,2) 5"},
      {"posx_0='' posy_0='50'", all},
  };
  for (const auto& [attributes, expected] : cases) {
    World own;
    work(own, task("deleteTable", attributes));
    EXPECT_EQ(expected, tables(own)) << attributes << "\n" << text::toUtf8(told(own.log()));
  }
  World own;
  const std::wstring log = work(own, task("deleteTable", "posx_0='100' posy_0='50' sheet_0='1'"), "ProDwgtableDelete");
  EXPECT_TRUE(has(log,
                  L"x: 100.000000, y: 50.000000|recalc x: 100.000000, y: 50.000000|found a table|"
                  L"E:Can't delete the table"))
      << text::toUtf8(log);
  EXPECT_EQ(kAll, tables(own)) << "what stays is shown";
}

TEST_F(DrawingTables, OtherModelsAreLeftAlone) {
  World own;
  own.part(L"GEAR");
  own.list("list.xml",
           add("fn_0='' posx_0='1' posy_0='2'") + task("moveTable", "nposx_0='1'") + task("deleteTable", "posx_0='1'"));
  own.runOn(L"GEAR", creo::ProMdlType::part, "list.xml");
  EXPECT_EQ(L"B0 Add table|Insert from PRO_TABLE_DIR|B1 Move table|B2 Delete table", told(own.log()));
  EXPECT_TRUE(own.session().calls("ProDrawingTablesUpdate") > 0);
}

}  // namespace
}  // namespace test
