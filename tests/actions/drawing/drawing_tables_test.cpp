// Tables of drawings: brought from files, found by place and text, moved, deleted; formats of sheets exchanged.
#include <gmock/gmock.h>

#include "actions/action_fixture.h"
#include "creo/ProUtil.h"
#include "headless/store/document.h"
#include "text/encoding.h"
#include "text/letters.h"
#include "text/numbers.h"

namespace test {
namespace {

using testing::HasSubstr;

// Sheet 1 is A3 (420 by 297) with the drawing's own coordinates; on sheet 2, a plain A4 (297 by 210), they are
// x * 2 + 10 and y * 2: table 3 stands there at (100, 60).
constexpr const char* kDrawing = R"({"format": 1, "currentSheet": 2,
  "parameters": [{"name": "NO", "type": "string", "value": "D-7"}],
  "models": [{"name": "GEAR", "type": "prt"}, {"name": "PIN", "type": "prt"}],
  "sheets": [{"size": "A3", "format": "frame_a3"}, {"size": "A4", "matrix": {"scaleX": 2, "scaleY": 2, "offsetX": 10}}],
  "tables": [
    {"id": 1, "segments": [{"position": {"x": 100, "y": 50}}], "columns": [20, 20], "rows": [5, 5, 5],
     "cells": [{"row": 2, "column": 1, "lines": ["other", "&NO rev"]}, {"row": 3, "column": 2, "lines": ["Rev. A"]}]},
    {"id": 2, "fromFormat": true, "segments": [{"position": {"x": 300, "y": 10}}], "columns": [20], "rows": [5],
     "cells": [{"row": 1, "column": 1, "lines": ["Title"]}]},
    {"id": 3, "segments": [{"sheet": 2, "position": {"x": 45, "y": 30}}], "columns": [], "rows": []}]})";
constexpr const char* kTable =
    R"({"columns": [10], "rows": [5], "cells": [{"row": 1, "column": 1, "lines": ["new"]}]})";
constexpr const char* kFormat = R"({"format": 1, "sheets": [{"size": "A2"}],
  "tables": [{"id": 9, "segments": [{"position": {"x": 400, "y": 10}}], "columns": [30], "rows": [6],
              "cells": [{"row": 1, "column": 1, "lines": ["&model_name"]}]}]})";

class DrawingTables : public ActionTest {
 protected:
  static void fill(const World& own) {
    writeBytes(own.models() + "/plan.drw.1", kDrawing);
    writeBytes(own.models() + "/gear.prt.1", R"({"format": 1})");
    writeBytes(own.models() + "/pin.prt.1", R"({"format": 1})");
    writeBytes(own.models() + "/box.tbl", kTable);
    writeBytes(own.models() + "/cut.tbl", std::string(kTable).substr(0, 30));
    writeBytes(own.models() + "/frame_a2.frm.1", kFormat);
    writeBytes(own.models() + "/torn.frm.1", "{");
  }
  static std::wstring work(World& own, const std::string& tasks, const std::string& failing = "") {
    fill(own);
    own.list("list.xml", tasks + task("saveModel"));
    own.start();
    own.open(L"PLAN", creo::ProMdlType::drawing);
    own.openTool();
    own.choose("list.xml");
    if (!failing.empty()) own.session().failNext(failing, creo::ProGeneralError);
    own.pressStart();
    const std::wstring log = told(own.log());
    const std::size_t begin = log.rfind(L"B0 ");
    return begin == log.npos ? log : log.substr(begin);
  }
  static headless::ModelRecord saved(const World& own) {
    headless::ModelRecord record;
    EXPECT_FALSE(headless::readDocument(own.document("PLAN.drw"), record, {}));
    return record;
  }
  // "1@1(100,50) 3@2(45,30)": id, sheet, place in the drawing's coordinates.
  static std::string tables(const World& own) {
    std::string all;
    for (const headless::TableRecord& table : saved(own).tables) {
      const headless::SegmentRecord& at = table.segments.at(0);
      all += (all.empty() ? "" : " ") + std::to_string(table.id) + "@" + std::to_string(at.sheet) + "(" +
             text::toUtf8(text::shortest(at.position.x)) + "," + text::toUtf8(text::shortest(at.position.y)) + ")";
    }
    return all;
  }
};

TEST_F(DrawingTables, AreFoundByPlaceOrText) {
  const std::string first = "1@1(100,50)", second = "2@1(300,10)", third = "3@2(45,30)";
  const std::string all = first + " " + second + " " + third;
  const std::pair<std::string, std::string> cases[] = {
      {"posx_0='104.9' posy_0='50'", second + " " + third},
      {"posx_0='105.0' posy_0='45' sheet_0='1'", second + " " + third},
      {"posx_0='105.1' posy_0='50' sheet_0='1'", all},
      {"posx_0='-320' posy_0='-247' sheet_0='1'", second + " " + third},
      {"posx_0='100' posy_0='60' sheet_0='2'", first + " " + second},
      {"text_0='D-7*' textc_0='1' textr_0='2'", second + " " + third},
      {"text_0='D-7*' textc_0='*' textr_0='3'", all},
      {"text_0='rev*' textc_0='*' textr_0='*' sheet_0='0'", second + " " + third},
      {"posx_0='300' posy_0='10' text_0='Rev. A' textc_0='2' textr_0='3'", third},
      {"text_0='Title' textc_0='1' textr_0='1' fn_0='frame_a4'", all},
      {"text_0='*' textc_0='7' textr_0='*'", all},
      {"posx_0='100mm' posy_0='50'", all},
      {"posx_0='100' posy_0='50,5'", all},
      {"posx_0='100' posy_0='50' sheet_0='1;2'", all},
      {"posx_0='100' posy_0='50' sheet_0='1.0'", second + " " + third},
      {"text_0='D-7*' textc_0='1.' textr_0='2nd'", all},
  };
  for (const auto& [attributes, left] : cases) {
    World own;
    work(own, task("deleteTable", attributes));
    EXPECT_EQ(left, tables(own)) << attributes;
    EXPECT_EQ(2, saved(own).currentSheet);
  }
}

TEST_F(DrawingTables, AreMovedWhereTheSheetSays) {
  const std::pair<std::string, std::string> cases[] = {
      {"posx_0='100' posy_0='50' nposx_0='-20' nposy_0='7'", "1@1(400,7) 2@1(300,10) 3@2(45,30)"},
      {"posx_0='100' posy_0='60' nposx_0='30' nposy_0='20' sheet_0='2'", "1@1(100,50) 2@1(300,10) 3@2(10,10)"},
      {"posx_0='100' posy_0='50'", "1@1(100,50) 2@1(300,10) 3@2(45,30)"},
      {"posx_0='100' posy_0='50' nposx_0='7,5' nposy_0='7'", "1@1(100,50) 2@1(300,10) 3@2(45,30)"},
      {"posx_0='100' posy_0='50' nposx_0='1' nposy_0='1' sheet_0='0'", "1@1(100,50) 2@1(300,10) 3@2(45,30)"},
  };
  for (const auto& [attributes, left] : cases) {
    World own;
    work(own, task("moveTable", attributes));
    EXPECT_EQ(left, tables(own)) << attributes;
  }
}

TEST_F(DrawingTables, AreBroughtFromFilesOntoTheSheetsThatFit) {
  World own;
  EXPECT_EQ(
      L"B0 Add table|d:\\|The format of page 1 is frame_a3.|Check Sheet 1 = -1|Sheet 1 is worked|"
      L"Table is retrieved and displayed|The format of page 2 is no_format.|B1 Add table|d:\\|"
      L"The format of page 1 is frame_a3.|Check Sheet 1 = 2|The format of page 2 is no_format.|Check Sheet 2 = 2|"
      L"Sheet 2 is worked|W:'20 mm' is read as 20|Table is retrieved and displayed|B2 Save model",
      work(own,
           task("addTable", "tablepath='d:\\' tablename='box' fn_0='frame*' sheet_0='-1' posx_0='-50' posy_0='20'") +
               task("addTable",
                    "tablepath='d:\\' tablename='BOX.tbl' fn_0='' sheet_0='2' posx_0='20 mm' posy_0='-10'")));
  EXPECT_EQ("1@1(100,50) 2@1(300,10) 3@2(45,30) 4@1(370,20) 5@2(5,100)", tables(own));
  EXPECT_EQ(2, saved(own).currentSheet);
}

TEST_F(DrawingTables, FilesThatArentThereOrAreCutLeaveTheDrawing) {
  World own;
  EXPECT_THAT(
      work(own, task("addTable", "tablepath='d:\\' tablename='none' fn_0='' sheet_0='1' posx_0='1' posy_0='1'") +
                    task("addTable", "tablepath='d:\\' tablename='cut' fn_0='' sheet_0='1' posx_0='1' posy_0='1'") +
                    task("addTable", "tablepath='d:\\nowhere' tablename='box' fn_0='' posx_0='1' posy_0='1'")),
      testing::AllOf(HasSubstr(L"E:Failure while retrieving the table : -4"),
                     HasSubstr(L"E:Failure while retrieving the table : -1"),
                     HasSubstr(L"E:Can't set path as current path: d:\\nowhere")));
  EXPECT_EQ("1@1(100,50) 2@1(300,10) 3@2(45,30)", tables(own));
}

TEST_F(DrawingTables, WhatFailsIsToldAndTheRestStays) {
  const std::string all = "1@1(100,50) 2@1(300,10) 3@2(45,30)", brought = all + " 4@1(370,20)";
  const std::string add = "tablepath='d:\\' tablename='box' fn_0='' sheet_0='1' posx_0='-50' posy_0='20'",
                    move = "posx_0='100' posy_0='50' sheet_0='1' nposx_0='1' nposy_0='2'";
  const struct {
    const char *action, *operation;
    std::string attributes, left;
    std::wstring said;
  } cases[] = {
      {"addTable", "ProDwgtableRetrieve", add, all, L"E:Failure while retrieving the table : -1"},
      {"addTable", "ProDwgtableInfoGet", add, brought, L"E:Can't get Table info"},
      {"addTable", "ProDwgtableSegMove", add, brought, L"E:Can't move table segment|Table is retrieved and displayed"},
      {"addTable", "ProDwgtableDisplay", add, brought, L"E:Table is can't be displayed"},
      {"addTable", "ProDrawingSheetTrfGet", add, all, L"E:The matrix of sheet 1 can't be read"},
      {"addTable", "ProDrawingCurrentSheetSet", add, all, L"E:Can't make sheet 1 the current one"},
      {"addTable", "ProPntTrfEval", add, all, L"E:posx_0, posy_0 is no place on sheet 1"},
      {"moveTable", "ProDwgtableSegMove", move, all, L"E:Can't move the table"},
      {"moveTable", "ProDwgtableSegCount", move, all, L"The format of page 1 is frame_a3|"},
      {"moveTable", "ProDrawingTablesCollect", move, all, L"E:The tables of the drawing can't be read"},
      {"deleteTable", "ProDwgtableInfoGet", move, all, L"The format of page 1 is frame_a3|"},
      {"deleteTable", "ProDwgtableDelete", move, all, L"E:Can't delete the table"},
  };
  for (const auto& entry : cases) {
    World own;
    EXPECT_THAT(work(own, task(entry.action, entry.attributes), entry.operation), HasSubstr(entry.said))
        << entry.operation;
    EXPECT_EQ(entry.left, tables(own)) << entry.action << entry.operation;
    EXPECT_EQ(2, saved(own).currentSheet) << entry.operation;
    EXPECT_EQ(L"d:\\", creo::ProDirectoryCurrentGet().value);
  }
}

// Of the drawing's parts Creo refuses it anyway, without a line.
TEST_F(DrawingTables, ThatCantBeUpdatedAreTold) {
  const std::string attributes = "tablepath='d:\\' tablename='box' fn_0='' sheet_0='1' posx_0='-50' posy_0='20'";
  const std::wstring line = L"E:The tables of the drawing can't be updated";
  {
    World own;
    EXPECT_THAT(work(own, "<task type='addTable' version='3' forDRW='true' forEF='false' " + attributes + "/>",
                     "ProDrawingTablesUpdate"),
                HasSubstr(line));
    EXPECT_EQ("1@1(100,50) 2@1(300,10) 3@2(45,30) 4@1(370,20)", tables(own));
  }
  World parts;
  work(parts, task("addTable", attributes));
  EXPECT_EQ(std::wstring::npos, told(parts.log()).find(line));
}

TEST_F(DrawingTables, AFormatIsExchangedWithItsTables) {
  World own;
  work(own, task("replaceFormat", "path='d:\\' namef_0='frame_a3' namet_0='frame_a2.frm'"));
  const headless::ModelRecord record = saved(own);
  EXPECT_EQ("frame_a2", text::toUtf8(text::lower(text::fromUtf8(record.sheets.at(0).format))));
  EXPECT_EQ("", record.sheets.at(1).format);
  const auto& tables = record.tables;
  EXPECT_TRUE(std::none_of(tables.begin(), tables.end(), [](const auto& table) { return table.id == 2; }));
  const auto brought = std::find_if(tables.begin(), tables.end(), [](const auto& entry) { return entry.fromFormat; });
  ASSERT_NE(tables.end(), brought);
  EXPECT_EQ("&model_name:1", brought->cells.at(0).lines.at(0));
  EXPECT_EQ(2, record.currentSheet);
}

TEST_F(DrawingTables, AFormatThatCantBeReadChangesNothing) {
  for (const char* name : {"torn", "gone"}) {
    World own;
    EXPECT_THAT(work(own, task("replaceFormat", std::string("path='d:\\' namef_0='frame_a3' namet_0='") + name + "'")),
                HasSubstr(L"E:Can't retrieve format model "));
    EXPECT_EQ("frame_a3", saved(own).sheets.at(0).format) << name;
    EXPECT_EQ("1@1(100,50) 2@1(300,10) 3@2(45,30)", tables(own)) << name;
  }
}

}  // namespace
}  // namespace test
