// Cells of drawing tables, as values of parameters and in reports.
#include "actions/action_fixture.h"
#include "creo/ProMdl.h"
#include "creo/ProParameter.h"
#include "text/encoding.h"

namespace test {
namespace {

// Two tables; the second one is on the current sheet.
const char* const kSheets = R"({"format": 1,
  "parameters": [{"name": "NUMBER", "type": "string", "value": "D-22"}, {"name": "COUNT", "type": "integer", "value": 1},
                 {"name": "MASS", "type": "double", "value": 1.5}],
  "models": [{"name": "GEAR", "type": "prt"}],
  "currentSheet": 2, "sheets": [{"size": "A3"}, {"size": "A4"}],
  "tables": [
    {"id": 1, "segments": [{"sheet": 1, "position": {"x": 100, "y": 20}}], "columns": [9, 9], "rows": [9, 9],
     "cells": [{"row": 1, "column": 1, "lines": ["Title", "block"]}, {"row": 2, "column": 1, "lines": ["M&NUMBER", "2nd"]},
               {"row": 2, "column": 2, "lines": ["7"]}]},
    {"id": 2, "segments": [{"sheet": 2, "position": {"x": 10, "y": 10}}], "columns": [9, 9], "rows": [9, 9],
     "cells": [{"row": 1, "column": 1, "lines": ["Title", "block"]}, {"row": 1, "column": 2, "lines": ["12.5"]},
               {"row": 2, "column": 1, "lines": ["say \"hi\""]}]}]})";

class TableCells : public ActionTest {
 protected:
  static void fill(const World& world) {
    writeBytes(world.models() + "/sheets.drw.1", kSheets);
    writeBytes(world.models() + "/gear.prt.1",
               R"({"format": 1, "parameters": [{"name": "NUMBER", "type": "string", "value": "G-1"}]})");
  }
  static std::string edit(const std::string& attributes) {
    return task("editModelParameterFromTablecell", "cell_n='9' " + attributes);
  }
};

TEST_F(TableCells, BecomeValuesOfParameters) {
  struct Case {
    std::string attributes;
    std::wstring saved;  // of the drawing
    std::wstring said;
  };
  const std::wstring same = L"NUMBER=D-22 COUNT=1 MASS=1.5";
  const std::string toDrawing = " mdltorework='1'";
  const Case cases[] = {
      {"cell0_0='1::1::title*' cell1_0='2:1:0' cell2_0='NUMBER'" + toDrawing, L"NUMBER=MG-1 COUNT=1 MASS=1.5",
       L"Found a table with colon separated|MG-1|set 'NUMBER' value to 'MG-1'"},
      {"cell0_0='1::1::Titleblock' cell1_0='2:2:0' cell2_0='COUNT'" + toDrawing, L"NUMBER=D-22 COUNT=7 MASS=1.5", L""},
      {"cell0_0='14.9!!10' cell1_0='1:2:0' cell2_0='mass'" + toDrawing, L"NUMBER=D-22 COUNT=1 MASS=12.5",
       L"Found a table with ! separated|Found a table with ! separated|12.5"},
      {"cell0_0='15!!10' cell1_0='1:2:0' cell2_0='MASS'" + toDrawing, same, L""},
      {"cell0_0='90!!10!!85' cell1_0='2:1:1' cell2_0='NUMBER'" + toDrawing, L"NUMBER=2nd COUNT=1 MASS=1.5", L""},
      {"cell0_0='1::1::*' cell1_0='2:1:0' cell2_0='NUMBER' onlyOnCurrentSheet='true'" + toDrawing,
       L"NUMBER=say \"hi\" COUNT=1 MASS=1.5", L""},
      {"cell0_0='1::1::*' cell1_0='2:2:1' cell2_0='COUNT'" + toDrawing, same, L"E:Less cells in row as selected cell"},
      {"cell0_0='1::1::*' cell1_0='2:2:-1' cell2_0='COUNT'" + toDrawing, same, L"E:Less cells in row as selected cell"},
      {"cell0_0='1::1::*' cell1_0='1:1:0' cell2_0='COUNT'" + toDrawing, same,
       L"E:Failure at parameter 'COUNT' while cast value 'Title' to integer"},
      {"cell0_0='1::1::*' cell1_0='1:1:0' cell2_0='NONE'" + toDrawing, same, L"E:Parameter can't be found on Model"},
      {"cell0_0='5' cell1_0='1:1:0' cell2_0='NUMBER'" + toDrawing, same, L"E:Can't parse line"},
      {"cell0_0='1::2' cell1_0='1:1:0' cell2_0='NUMBER'" + toDrawing, same, L"E:Can't parse line"},
      {"cell0_0='0::1::*' cell1_0='1:1:0' cell2_0='NUMBER'" + toDrawing, same, L"E:Row and/or Col can't be 0"},
      {"cell0_0='1::1st::*' cell1_0='1:1:0' cell2_0='NUMBER'" + toDrawing, same, L"E:Can't parse line"},
      {"cell0_0='14,9!!10' cell1_0='1:2:0' cell2_0='mass'" + toDrawing, same, L"E:Can't parse line"},
      {"cell0_0='1::1::*' cell1_0='1:1:O' cell2_0='NUMBER'" + toDrawing, same, L"E:Can't parse cellcol or cellrow"},
      {"cell0_0='1::1::*' cell1_0='0:1:0' cell2_0='NUMBER'" + toDrawing, same, L"E:Can't parse cellcol or cellrow"},
      {"cell0_9='1::1::*' cell1_9='1:1:0' cell2_9='NUMBER'" + toDrawing, same, L""},
      {"cell0_0='1::1::*' cell1_0='1:1:0' cell2_0='NUMBER' mdltorework='3'", same, L""},
  };
  for (const Case& entry : cases) {
    World own;
    fill(own);
    own.list("list.xml", edit(entry.attributes) + task("saveModel"));
    own.runOn(L"SHEETS", creo::ProMdlType::drawing, "list.xml");
    EXPECT_EQ(entry.saved, own.savedParameters("SHEETS.drw")) << entry.attributes;
    EXPECT_NE(std::wstring::npos, told(own.log()).find(entry.said)) << entry.attributes << "\n"
                                                                    << text::toUtf8(own.log());
  }
}

TEST_F(TableCells, GoToTheCurrentModel) {
  fill(world);
  run(edit("cell0_0='1::1::*' cell1_0='1:1:1' cell2_0='NUMBER' mdltorework='2'"), L"SHEETS", creo::ProMdlType::drawing);
  const auto gear = creo::ProMdlInit(L"GEAR", creo::ProMdlType::part);
  const auto number = creo::ProParameterInit(creo::ProMdlToModelitem(gear.value).value, L"NUMBER");
  EXPECT_EQ(L"block", creo::ProParameterValueGet(number.value).value.string);
}

// What an edit can't read it leaves as it was, and says so.
TEST_F(TableCells, AFailingOperationChangesNothing) {
  const std::pair<const char*, creo::ProError> operations[] = {
      {"ProDrawingTablesCollect", creo::ProGeneralError}, {"ProDrawingCurrentSheetGet", creo::ProGeneralError},
      {"ProDwgtableCelltextGet", creo::ProNotFound},      {"ProDrawingCurrentsolidGet", creo::ProGeneralError},
      {"ProParameterInit", creo::ProGeneralError},        {"ProParameterValueSet", creo::ProGeneralError}};
  for (const auto& [operation, code] : operations) {
    World own;
    fill(own);
    own.list("list.xml", edit("cell0_0='1::1::*' cell1_0='1:1:0' cell2_0='NUMBER' mdltorework='2' "
                              "onlyOnCurrentSheet='true'"));
    own.start();
    own.open(L"SHEETS", creo::ProMdlType::drawing);
    own.openTool();
    own.choose("list.xml");
    own.session().failNext(operation, code);
    own.pressStart();
    const auto gear = creo::ProMdlInit(L"GEAR", creo::ProMdlType::part);
    const auto number = creo::ProParameterInit(creo::ProMdlToModelitem(gear.value).value, L"NUMBER");
    EXPECT_EQ(L"G-1", creo::ProParameterValueGet(number.value).value.string) << operation;
    EXPECT_EQ(std::string_view(operation) == "ProDrawingTablesCollect",
              own.logHas(L"The tables of the drawing can't be read"))
        << operation;
  }
}

TEST_F(TableCells, AreReported) {
  fill(world);
  const std::string cells = "cell0_0='1::1::*' cell1_0='1:1' cell0_1='1::1::*' cell1_1='2:1' cell2_1='number' ";
  world.list("list.xml",
             task("reportTablecell", "reporter='cells' asText='true' ss='true' " + cells) +
                 task("reportTablecell", "reporter='cells' nolinebreaks='true' quoterepl='true' " + cells) +
                 task("reportTablecell", "reporter='cells' onlyfirsttable='true' asText='true' " + cells) +
                 task("reportTablecell", "reporter='cells' onlyOnCurrentSheet='true' " + cells) +
                 task("reportTablecell",
                      "reporter='cells' cell0_0='1' cell1_0='1:1' cell0_7='1::1::*' cell1_7='0:1' cell0_8='1::1::*'"),
             task("openCSVReport", "name='cells' file='t:\\cells.csv' overwrite='true' sep='sem'"));
  world.runOn(L"SHEETS", creo::ProMdlType::drawing, "list.xml");
  EXPECT_EQ(
      "\"1::1::*--1:1\";\"number\";\"1::1::*--1:1\";\"number\";\"1::1::*--1:1\";\"number\";\"1::1::*--1:1\";\"number\";"
      "\"1--1:1\";\"1::1::*--0:1\"\r\n"
      "\"1: \nTitle\nblock\n2: \nTitle\nblock\n\";\"1: \nMG-1\n2nd\n2: \nsay \"\"hi\"\"\n\";"
      "\"TitleblockTitleblock\";\"M&NUMBER2ndsay ''hi''\";\"Title\nblock\n\";\"MG-1\n2nd\n\";"
      "\"Title\nblock\n\";\"say \"\"hi\"\"\n\";\"\";\"\"\r\n",
      readBytes(world.temp() + "/cells.csv"));
  EXPECT_TRUE(world.logHas(L"Can't parse line"));
  EXPECT_TRUE(world.logHas(L"Can't parse cellcol or cellrow"));
}

}  // namespace
}  // namespace test
