// Formats of drawings' sheets, exchanged by lists.
#include <sys/stat.h>

#include "actions/drawing/drawing_details_fixture.h"

namespace test {
namespace {

// Two models; the format of sheet 1 names the second, sheet 2 is blanked, sheet 3 has no format.
constexpr const char* kDrawing = R"({"format": 1,
  "models": [{"name": "GEAR", "type": "prt"}, {"name": "PAIR", "type": "asm"}],
  "currentSheet": 3,
  "sheets": [{"size": "A3", "format": "old_a3"}, {"size": "A4", "format": "old_a4", "formatBlanked": true},
             {"size": "A4"}],
  "tables": [
    {"id": 1, "fromFormat": true, "segments": [{"position": {"x": 300, "y": 10}}], "columns": [20], "rows": [8],
     "cells": [{"row": 1, "column": 1, "lines": ["{0:&model_name:2}"]}]},
    {"id": 2, "fromFormat": true, "segments": [{"position": {"x": 10, "y": 200}}], "columns": [20], "rows": [8],
     "cells": [{"row": 1, "column": 1, "lines": ["Changes"]}]},
    {"id": 3, "segments": [{"position": {"x": 50, "y": 60}}], "columns": [20], "rows": [8]},
    {"id": 4, "fromFormat": true, "segments": [{"sheet": 2, "position": {"x": 1, "y": 2}}], "columns": [5], "rows": [5]}]})";
// Its second sheet has no tables.
constexpr const char* kNew = R"({"format": 1,
  "sheets": [{"size": "A2", "matrix": {"scaleX": 2, "scaleY": 2, "offsetX": 10}}, {"size": "A1", "portrait": true}],
  "drafts": [{"sheet": 1, "lines": [[0, 0, 10, 5, 0.5]]}],
  "notes": [{"id": 1, "lines": ["&dwg_name"], "position": {"x": 7, "y": 8}}],
  "tables": [
    {"id": 1, "segments": [{"position": {"x": 200, "y": 5}}], "columns": [20], "rows": [8],
     "cells": [{"row": 1, "column": 1, "lines": ["&model_name of &dwg_name, &COLOR"]}]},
    {"id": 2, "segments": [{"position": {"x": 0, "y": 100}}], "columns": [20], "rows": [8],
     "cells": [{"row": 1, "column": 1, "lines": ["Changes"]}]}]})";

class ReplaceFormat : public DetailTest {
 protected:
  static std::wstring work(World& own, const std::string& attributes, const std::string& failing = "") {
    writeBytes(own.models() + "/sheets.drw.1", kDrawing);
    writeBytes(own.models() + "/other.drw.1", R"({"format": 1, "sheets": [{}, {"size": "A0"}]})");
    writeBytes(own.models() + "/gear.prt.1", R"({"format": 1})");
    writeBytes(own.models() + "/pair.asm.1", R"({"format": 1})");
    writeBytes(own.models() + "/cut.frm.1", R"({"format": 1, "sheets": [)");
    mkdir((own.models() + "/new").c_str(), 0755);
    writeBytes(own.models() + "/new/new.frm.1", kNew);
    own.list("list.xml", task("replaceFormat", attributes) + task("saveModel"));
    own.start();
    creo::ProConfigoptSet(L"pro_format_dir", L"d:\\frames");
    own.open(L"SHEETS", creo::ProMdlType::drawing);
    own.openTool();
    own.choose("list.xml");
    if (!failing.empty()) own.session().failNext(failing, creo::ProGeneralError);
    own.pressStart();
    EXPECT_EQ(L"d:\\frames", creo::ProConfigoptGet(L"pro_format_dir").value);
    const std::wstring log = told(own.log());
    const std::size_t begin = log.rfind(L"B0 ");  // the drawing comes behind its models
    return begin == log.npos ? log : log.substr(begin);
  }
  // "old_a3 A3 / ..." with "-" for a blanked format; then the tables, "*" before those of a format.
  static std::string outcome(const World& own) {
    const headless::ModelRecord record = saved(own);
    EXPECT_EQ(3, record.currentSheet);
    std::string all;
    for (const headless::SheetRecord& entry : record.sheets)
      all += (all.empty() ? "" : " ") + (entry.format.empty() ? std::string("none") : entry.format) +
             (entry.formatSheet ? ":" + std::to_string(entry.formatSheet) : "") + (entry.formatBlanked ? "-" : "");
    all += " |";
    for (const headless::TableRecord& table : record.tables)
      all += (table.fromFormat ? " *" : " ") + std::to_string(table.id) +
             place(table.segments[0].sheet, table.segments[0].position);
    return all;
  }
};

constexpr const char* kFrom = "path='d:/new' namef_0='old_a3' namet_0='new.frm' ";

TEST_F(ReplaceFormat, TakesSheetsFromFormatsAndDrawings) {
  const std::string two = " 3@1(50,60) *4@2(1,2)", fresh = " *5@1(410,10) *6@1(10,200)";
  const std::pair<std::string, std::string> cases[] = {
      {kFrom, "new old_a4- none |" + two + fresh},
      {"path='d:/new' namef_0='old_a3' namet_0='new.frm:2'", "new:2 old_a4- none |" + two},
      {"path='d:/new' namef_0='old_a3' namet_0='new.frm:2nd'", "old_a3 old_a4- none | *1@1(300,10) *2@1(10,200)" + two},
      {"namef_0='OLD_A3' namet_0='other.DRW:2'", "other.drw:2 old_a4- none |" + two},
      {"path='d:/new' namef_0='old_a4' namet_0='new'",
       "old_a3 new- none | *1@1(300,10) *2@1(10,200) 3@1(50,60) *4@2(410,10) *5@2(10,200)"},
      {"path='d:/new' namef_0='noFormatFound' namet_0='new' onlyCurrentSheet='true'",
       "old_a3 old_a4- new | *1@1(300,10) *2@1(10,200) 3@1(50,60) *4@2(1,2) *5@3(410,10) *6@3(10,200)"},
      {std::string(kFrom) + "onlyCurrentSheet='true'", "old_a3 old_a4- none | *1@1(300,10) *2@1(10,200)" + two},
  };
  for (const auto& [attributes, expected] : cases) {
    World own;
    const std::wstring log = work(own, attributes);
    EXPECT_EQ(expected, outcome(own)) << attributes << "\n" << text::toUtf8(log);
  }
}

// A table that the rule is about stays, and becomes the drawing's own; the new format's doesn't come beside it.
TEST_F(ReplaceFormat, KeepsTheTablesThatARuleIsAbout) {
  const std::string kept = "new old_a4- none | 2@1(10,200) 3@1(50,60) *4@2(1,2) *5@1(410,10)";
  const std::pair<std::string, std::string> cases[] = {
      {"tab_0='10:200'", kept},
      {"tab_0='15:205'", kept},
      {"tab_0='15.1:200'", "new old_a4- none | 3@1(50,60) *4@2(1,2) *5@1(410,10) *6@1(10,200)"},
      {"tab_0='18:200:8'", kept},
      {"tab_0='1!!1!!chang*'", kept},
      {"tab_0='1!!2!!*'", "new old_a4- none | 3@1(50,60) *4@2(1,2) *5@1(410,10) *6@1(10,200)"},
      {"tab_0='1!!1!!/(*LIMIT_MATCH=5)(?:.?){9}[#~]/'",
       "new old_a4- none | 1@1(300,10) 2@1(10,200) 3@1(50,60) *4@2(1,2) *5@1(410,10) *6@1(10,200)"},
  };
  for (const auto& [rule, expected] : cases) {
    World own;
    work(own, std::string(kFrom) + rule);
    EXPECT_EQ(expected, outcome(own)) << rule;
  }
  // A rule that can't be read would delete as none does.
  for (const char* rule : {"word", "10,5:200", "10:200mm", "10:200:wide", "10", "1!!1st!!chang*", "1!!chang*"}) {
    World own;
    const std::wstring log = work(own, std::string(kFrom) + "tab_0='" + rule + "'");
    EXPECT_EQ("old_a3 old_a4- none | *1@1(300,10) *2@1(10,200) 3@1(50,60) *4@2(1,2)", outcome(own)) << rule;
    EXPECT_TRUE(has(log, L"E:tab_0 is neither x:y, x:y:tolerance nor row!!column!!pattern: ")) << text::toUtf8(log);
  }
  World own;
  const std::wstring log = work(own, std::string(kFrom) + "tab_0='10:200'");
  EXPECT_TRUE(has(log,
                  L"delete table found with x => 300.000000 = 10.000000 ; y => 10.000000 = 200.000000|"
                  L"table found with x => 10.000000 = 10.000000 ; y => 200.000000 = 200.000000 (not deleted)"))
      << text::toUtf8(log);
}

TEST_F(ReplaceFormat, BindsTextsToTheModelOfTheFrame) {
  auto bound = std::make_unique<World>();
  World& own = *bound;
  const std::wstring log = work(own, std::string(kFrom) + "multiModelsSel='3' onlyCurrentSheet='false'");
  EXPECT_TRUE(has(log,
                  L"- search in frames|Number : 2|Found a single model that should be the right one|"
                  L"table created|PAIR|ASSEM|delete table found with x => 300.000000 ; y => 10.000000"))
      << text::toUtf8(log);
  EXPECT_TRUE(has(log, L"W:Found multiple or no possible model, use active one.")) << "on the other sheets";
  EXPECT_EQ("&model_name:2 of &dwg_name, &COLOR:2", saved(own).tables.at(2).cells.at(0).lines.at(0));
  bound.reset();
  World active;
  work(active, kFrom);
  EXPECT_EQ("&model_name:1 of &dwg_name, &COLOR:1", saved(active).tables.at(2).cells.at(0).lines.at(0));
}

TEST_F(ReplaceFormat, AFailureLeavesTheSheetAsItWas) {
  const std::string before = "old_a3 old_a4- none | *1@1(300,10) *2@1(10,200) 3@1(50,60) *4@2(1,2)";
  const struct {
    std::string attributes, failing;
    std::wstring said;
  } cases[] = {
      {"namef_0='old_a3' namet_0='gone'", "", L"E:Can't retrieve format model gone"},
      {"namef_0='old_a3' namet_0='cut'", "", L"E:Can't retrieve format model cut"},
      {"namef_0='old_a3' namet_0='.frm'", "", L"E:Can't detect frame_name"},
      {"namef_0='old_a3'", "", L"E:Can't detect frame_name"},
      {"path='d:/new' namef_0='old_a4' namet_0='new'", "ProDrawingSheetFormatShow", L"E:Sheet 2 is blanked"},
      {"path='d:/new' namef_0='old_a3' namet_0='new'", "ProDrawingFormatGet", L"noFormatFound"},
  };
  for (const auto& entry : cases) {
    World own;
    const std::wstring log = work(own, entry.attributes, entry.failing);
    EXPECT_EQ(before, outcome(own)) << entry.attributes;
    EXPECT_TRUE(has(log, entry.said)) << text::toUtf8(log);
  }
  World own;
  const std::string kept = std::string(kFrom) + "tab_0='10:200'";
  EXPECT_TRUE(has(work(own, kept, "ProDrawingFormatAdd"), L"E:An unknown error happened"));
  EXPECT_EQ("old_a3 old_a4- none | *2@1(10,200) 3@1(50,60) *4@2(1,2)", outcome(own)) << "the table that was kept";
}

}  // namespace
}  // namespace test
