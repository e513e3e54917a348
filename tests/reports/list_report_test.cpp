// writeListReport: what each list holds, by what stands in its file.
#include <gtest/gtest.h>

#include <filesystem>

#include "os/surroundings.h"
#include "support/drawings.h"
#include "support/world.h"
#include "text/encoding.h"
#include "text/pieces.h"

namespace test {
namespace {

using creo::ProMdlType;

// A file's fields parted by "|", without quotes and CR.
std::string fields(std::string bytes) {
  std::erase(bytes, '\r');
  bytes = text::replaceAll(bytes, "\",\"", "|");
  std::erase(bytes, '"');
  return bytes;
}

class ListReport : public testing::Test {
 protected:
  [[nodiscard]] std::string file(std::size_t number) const {
    return world.temp() + "/list" + std::to_string(number) + ".csv";
  }
  [[nodiscard]] std::string task(const std::string& attributes, std::size_t number = 0) const {
    return "<task type='writeListReport' version='3' file='" + text::toUtf8(os::mounts().system(file(number))) + "' " +
           attributes + "/>";
  }
  // Runs the tasks once, for the model that is opened.
  void run(const std::wstring& model, ProMdlType type, const std::string& tasks) {
    world.list("lists.xml", "", tasks);
    world.start();
    for (const char* operation : failing) world.session().failNext(operation, creo::ProGeneralError);
    world.runOn(model, type, "lists.xml");
  }
  struct Case {
    std::string attributes, expected;
  };
  void expectLists(const std::wstring& model, ProMdlType type, const std::vector<Case>& cases) {
    std::string tasks;
    for (std::size_t i = 0; i < cases.size(); ++i) tasks += task("overwrite='true' " + cases[i].attributes, i);
    run(model, type, tasks);
    for (std::size_t i = 0; i < cases.size(); ++i)
      EXPECT_EQ(cases[i].expected, fields(readBytes(file(i)))) << cases[i].attributes;
  }
  World world;
  std::vector<const char*> failing;  // operations that fail once
};

TEST_F(ListReport, ListsWhatADrawingHolds) {
  writePair(world.models());
  const std::string notes = "File name|Item name|Item value|Item type\n";
  expectLists(
      L"PAIR", ProMdlType::drawing,
      {{"sel='8'",
        "File name|Sheet|Formats|Sizes\nPAIR.drw|1|frame_a3|A3\nPAIR.drw|2|frame_a4|A4\nPAIR.drw|3||variable\n"},
       {"sel='10'", notes + "PAIR.drw|5|free of burrs|Detail note\nPAIR.drw|8||Symbol instance\n"
                            "PAIR.drw|EDGES|All edges\n&COLOR|Detail note\nPAIR.drw|weld|a5|Symbol instance\n"},
       {"sel='10' txtform='true'",
        notes + "PAIR.drw|5|free of burrs|Detail note\nPAIR.drw|8||Symbol instance\n"
                "PAIR.drw|EDGES|All edges\nblue|Detail note\nPAIR.drw|weld|a5|Symbol instance\n"},
       {"sel='11'",
        "Drawing name|Drawing path|Model name|Model path\nPAIR.drw|d:\\|GEAR.prt|d:\\\n"
        "PAIR.drw|d:\\|PINION.prt|d:\\\nPAIR.drw|d:\\|PAIR.asm|d:\\\n"},
       {"sel='15'",
        "File name|File path|Model name|Model path|Dimension id|Dimension name|Dimension is associative|"
        "Dimension is reference|Dimension is relation driven|Dimension value|Dimension value interpreted|"
        "Dimension tolerance|Dimension text\n"
        "PAIR.drw|d:\\|GEAR.prt|d:\\|2|d2|true|false|false|2.000000|TIP 2\nboth sides|SYMMETRIC|TIP @D\nboth sides\n"
        "PAIR.drw|d:\\|PINION.prt|d:\\|3|rd3|true|true|false|1.000000|1||@D\n"},
       {"sel='17' autochangenum='true'",
        "File name|File path|Dimension Name|Dimension ID|Value|Tolerance "
        "Type\nPAIR.drw|d:\\|d1|1|3,000000|SYMMETRIC\n"},
       {"sel='18'",
        "File name|File path|Dependend file name|Dependend file path|Quantity in modeltree\n"
        "PAIR.drw|d:\\|GEAR.prt|d:\\|\nPAIR.drw|d:\\|PINION.prt|d:\\|\nPAIR.drw|d:\\|PAIR.asm|d:\\|\n"}});
}

TEST_F(ListReport, ListsWhatAPartHolds) {
  writeBytes(world.models() + "/plate.prt.1", R"({
    "format": 1,
    "dimensions": [{"id": 1, "value": 2.5}, {"id": 2, "symbol": "WIDTH", "value": 5, "associative": false,
                                             "tolerance": {"type": "standard"}},
                   {"id": 3, "symbol": "p7", "value": 0.1, "tolerance": {"upper": 1, "type": "limits"}},
                   {"id": 4, "symbol": "D8"}, {"id": 1, "value": 9.0, "reference": true}],
    "relations": ["WIDTH = 2 * d1"],
    "notes": [{"id": 7, "name": "HARDNESS", "lines": ["58 HRC", "+2"]}]
  })");
  const std::string dimensions = "File name|File path|Dimension Name|Dimension ID|Value|Tolerance Type\n";
  const std::string named = "PLATE.prt|d:\\|WIDTH|2|5.000000|DIN/ISO\n";
  expectLists(L"PLATE", ProMdlType::part,
              {{"sel='17'", dimensions + "PLATE.prt|d:\\|d1|1|2.500000|NULL\n" + named +
                                "PLATE.prt|d:\\|p7|3|0.100000|LIMITS\nPLATE.prt|d:\\|D8|4||NULL\n"},
               {"sel='17' onlyNamed='true'", dimensions + named + "PLATE.prt|d:\\|D8|4||NULL\n"},
               {"sel='10'", "File name|Item name|Item value|Item type\nPLATE.prt|HARDNESS|58 HRC\n+2|Note\n"},
               {"sel='18'", "File name|File path|Dependend file name|Dependend file path|Quantity in modeltree\n"},
               {"sel='8'", "\n"},
               {"sel='99'", "\n"},
               {"sel='12'", "\n"}});
  EXPECT_TRUE(world.logHas(L"This type of report is deprecated. Please use KV Version 5.7."));
}

TEST_F(ListReport, ListsParametersAndLayers) {
  writeBytes(world.models() + "/plate.prt.1", R"({
    "format": 1, "units": "mmKs",
    "parameters": [{"name": "LENGTH", "type": "double", "value": 2.0, "units": "cm", "description": "of the \"blank\"",
                    "designated": true, "restriction": {"minimum": 1.0}},
                   {"name": "GRADE", "type": "string", "value": "a", "restriction": {"values": ["a", "b"]}},
                   {"name": "DONE", "type": "boolean", "value": false}, {"name": "COUNT", "type": "integer", "value": 7},
                   {"name": "REMARK", "type": "note", "value": 3}],
    "layers": [{"id": 1, "name": "AXES", "status": "hidden"}, {"id": 2, "name": "DATUMS", "status": "blank"},
               {"id": 3, "name": "HOLES", "status": "display"}, {"id": 4, "name": "REST"}]
  })");
  expectLists(L"PLATE", ProMdlType::part,
              {{"sel='9'",
                "File name|Parameter|Type|Value|Description|Is designated|Restriction type\n"
                "PLATE.prt|LENGTH|Double|2.000000|of the blank|true|Range\n"
                "PLATE.prt|GRADE|String|a||false|Enumeration\nPLATE.prt|DONE|Boolean|false||false|\n"
                "PLATE.prt|COUNT|Integer|7||false|\nPLATE.prt|REMARK|Note ID|||false|\n"},
               {"sel='16'",
                "File name|File path|Layer|Status\nPLATE.prt|d:\\|AXES|HIDDEN\nPLATE.prt|d:\\|DATUMS|BLANK\n"
                "PLATE.prt|d:\\|HOLES|DISPLAY\nPLATE.prt|d:\\|REST|NORMAL\n"}});
}

TEST_F(ListReport, FlagsOfDimensionsReachTheList) {
  writePair(world.models());
  writeBytes(world.models() + "/gear.prt.2", R"({"format": 1,
    "dimensions": [{"id": 2, "symbol": "TIP", "value": 2.0, "associative": false, "text": ["@S = @D"],
                    "tolerance": {"upper": 1, "lower": 1, "type": "symmetricSuperscript"}}],
    "relations": ["tip = 2"]})");
  run(L"PAIR", ProMdlType::drawing, task("sel='15' overwrite='true'"));
  EXPECT_NE(std::string::npos,
            fields(readBytes(file(0))).find("|2|TIP|false|false|true|2.000000|TIP = 2|SYMMETRIC_SUPERSCRIPT|@S = @D\n"))
      << readBytes(file(0));
}

TEST_F(ListReport, ListsFamiliesAsTheAttributesChoose) {
  writeBytes(world.models() + "/bolt.prt.1", R"({
    "format": 1,
    "parameters": [{"name": "LENGTH", "type": "double", "value": 10.0, "units": "cm"},
                   {"name": "REMARK", "type": "note", "value": 3},
                   {"name": "COATED", "type": "boolean", "value": true}],
    "familyTable": {
      "items": [{"type": "parameter", "name": "LENGTH"}, {"type": "parameter", "name": "REMARK"},
                {"type": "feature", "name": "HEAD"}, {"type": "parameter", "name": "COATED"}],
      "instances": [{"name": "BOLT_20", "values": {"LENGTH": 20.0}}, {"name": "BOLT_30", "values": {"COATED": false}}]}
  })");
  const std::string header = "File name|File path|Extension|Generic";
  const std::string generic = "BOLT|d:\\|PRT|\n";
  const std::string instances = "BOLT_20|d:\\|PRT|BOLT\nBOLT_30|d:\\|PRT|BOLT\n";
  expectLists(L"BOLT", ProMdlType::part,
              {{"sel='7'", header + "\n" + generic + instances},
               {"sel='7' instances='true'", header + "\n" + instances},
               {"sel='7' generics='true' instances='false'", header + "\n" + generic},
               {"sel='7' mwFamtab='true'", header + "\n"},
               {"sel='7' paras='true'", header + "|LENGTH VALUE|REMARK VALUE|COATED VALUE\n"
                                                 "BOLT|d:\\|PRT||10.000000|not supported type|true\n"
                                                 "BOLT_20|d:\\|PRT|BOLT|20.000000|not supported type|true\n"
                                                 "BOLT_30|d:\\|PRT|BOLT|10.000000|not supported type|false\n"}});
}

TEST_F(ListReport, WhatRelationsDriveIsEachInstancesOwn) {
  writeBytes(world.models() + "/bolt.prt.1", R"({"format": 1, "relations": ["VOL = D * 2"],
    "parameters": [{"name": "D", "type": "double", "value": 2.0}, {"name": "VOL", "type": "double", "value": 4.0}],
    "familyTable": {"items": [{"type": "parameter", "name": "D"}, {"type": "parameter", "name": "VOL"}],
      "instances": [{"name": "B3", "values": {"D": 3.0}}, {"name": "B4", "values": {"D": 4.0, "VOL": 1.0}}]}})");
  expectLists(L"BOLT", ProMdlType::part,
              {{"sel='7' paras='true'",
                "File name|File path|Extension|Generic|D VALUE|VOL VALUE\n"
                "BOLT|d:\\|PRT||2.000000|4.000000\nB3|d:\\|PRT|BOLT|3.000000|6.000000\n"
                "B4|d:\\|PRT|BOLT|4.000000|8.000000\n"}});
}

TEST_F(ListReport, AnInstanceIsOneRow) {
  world.part(L"BOLT").column(L"LENGTH").with(L"LENGTH", 1.0).instance(L"BOLT_20", {"20.0"});
  const std::string header = "File name|File path|Extension|Generic";
  expectLists(L"BOLT_20", ProMdlType::part,
              {{"sel='7' paras='true'", header + "|LENGTH VALUE\nBOLT_20|d:\\|PRT|BOLT|20.000000\n"},
               {"sel='7' generics='true'", header + "\n"}});
}

TEST_F(ListReport, AModelWithoutATableIsARowOnRequest) {
  world.part(L"PLATE");
  const std::string header = "File name|File path|Extension|Generic\n";
  expectLists(L"PLATE", ProMdlType::part,
              {{"sel='7'", header}, {"sel='7' mwFamtab='true' paras='true'", header + "PLATE|d:\\|PRT|\n"}});
}

TEST_F(ListReport, QuantitiesCountTheWholeTree) {
  const std::string parts = R"({"name": "PIN", "type": "prt"}, {"name": "PIN", "type": "prt"})";
  writeBytes(world.models() + "/pin.prt.1", R"({"format": 1})");
  writeBytes(world.models() + "/lost.prt.2", "{");
  writeBytes(world.models() + "/sub.asm.1", R"({"format": 1, "components": [)" + parts + R"(,
      {"name": "TOP", "type": "asm"}]})");  // a ring
  writeBytes(world.models() + "/top.asm.1", R"({"format": 1,
      "features": [{"id": 40, "type": 1000, "status": "suppressed"}],
      "components": [{"name": "PIN", "type": "prt", "feature": 40}, {"name": "SUB", "type": "asm"},
                     {"name": "SUB", "type": "asm"}, {"name": "PIN", "type": "prt"},
                     {"name": "LOST", "type": "prt"}]})");
  expectLists(L"TOP", ProMdlType::assembly,
              {{"sel='18'",
                "File name|File path|Dependend file name|Dependend file path|Quantity in modeltree\n"
                "TOP.asm|d:\\|PIN.prt|d:\\|5\nTOP.asm|d:\\|SUB.asm|d:\\|2\nTOP.asm|d:\\|LOST.prt||\n"}});
}

TEST_F(ListReport, TheTreeOfADeepAssemblyIsReadOnce) {
  world.part(L"A0");
  for (int i = 1; i <= 40; ++i) {
    const std::string below = "A" + std::to_string(i - 1), type = i == 1 ? "prt" : "asm";
    const std::string component = R"({"name": ")" + below + R"(", "type": ")" + type + R"("})";
    writeBytes(world.models() + "/a" + std::to_string(i) + ".asm.1",
               R"({"format": 1, "components": [)" + component + "," + component + "]}");
  }
  run(L"A40", ProMdlType::assembly, task("sel='18' overwrite='true'"));
  EXPECT_NE(std::string::npos, fields(readBytes(file(0))).find("A40.asm|d:\\|A39.asm|d:\\|2\n"));
}

TEST_F(ListReport, AppendsUnderTheColumnsOfEarlierLists) {
  writePair(world.models());
  run(L"PAIR", ProMdlType::drawing, task("sel='8'") + task("sel='11' charsetUTF='true' fnfirst='true'"));
  EXPECT_EQ(
      "File name|Sheet|Formats|Sizes|Drawing path|Model name|Model path\n"
      "PAIR.drw|1|frame_a3|A3\nPAIR.drw|2|frame_a4|A4\nPAIR.drw|3||variable\n"
      "PAIR.drw||||d:\\|GEAR.prt|d:\\\nPAIR.drw||||d:\\|PINION.prt|d:\\\nPAIR.drw||||d:\\|PAIR.asm|d:\\\n",
      fields(readBytes(file(0))));
  EXPECT_TRUE(world.logHas(L"Mode: append"));
  EXPECT_TRUE(world.logHas(L"Sheet formats / sizes"));
}

// Thousands of models go into one file: where its header line stays, nothing of it is written anew, and it is never
// read whole.
TEST_F(ListReport, AppendingUnderTheSameColumnsOnlyAppends) {
  writePair(world.models());
  world.disk().denyReads(os::mounts().system(file(0)));
  run(L"PAIR", ProMdlType::drawing, task("sel='11'") + task("sel='11'") + task("sel='11'"));
  const std::string rows = "PAIR.drw|d:\\|GEAR.prt|d:\\\nPAIR.drw|d:\\|PINION.prt|d:\\\nPAIR.drw|d:\\|PAIR.asm|d:\\\n";
  EXPECT_EQ("Drawing name|Drawing path|Model name|Model path\n" + rows + rows + rows, fields(readBytes(file(0))));
  EXPECT_FALSE(std::filesystem::exists(file(0) + "t"));
  const std::wstring log = world.log(), line = L"Replace Header Line: writeListReport";
  std::size_t reported = 0;
  for (std::size_t at = 0; (at = log.find(line, at)) != log.npos; ++at) ++reported;
  EXPECT_EQ(4U, reported);
}

TEST_F(ListReport, OverridingBeginsWithAMarkWhereItIsUtf8) {
  writePair(world.models());
  const std::string again = task("sel='8' overwrite='true' charsetUTF='true' sep='sem'");
  run(L"PAIR", ProMdlType::drawing, again + again);
  EXPECT_EQ(
      "\xEF\xBB\xBF\"File name\";\"Sheet\";\"Formats\";\"Sizes\"\r\n\"PAIR.drw\";\"1\";\"frame_a3\";\"A3\"\r\n"
      "\"PAIR.drw\";\"2\";\"frame_a4\";\"A4\"\r\n\"PAIR.drw\";\"3\";\"\";\"variable\"\r\n",
      readBytes(file(0)));
}

TEST_F(ListReport, AFailingOperationLeavesItsFieldEmpty) {
  writePair(world.models());
  failing = {"ProDrawingFormatGet", "ProDrawingSheetSizeGet", "ProDimensionValueGet", "ProDimensionTolTypeGet"};
  expectLists(
      L"PAIR", ProMdlType::drawing,
      {{"sel='8'", "File name|Sheet|Formats|Sizes\nPAIR.drw|1||\nPAIR.drw|2|frame_a4|A4\nPAIR.drw|3||variable\n"},
       {"sel='17'", "File name|File path|Dimension Name|Dimension ID|Value|Tolerance Type\nPAIR.drw|d:\\|d1|1||\n"}});
}

TEST_F(ListReport, AFileThatCantBeWrittenIsALineAndNoMore) {
  writePair(world.models());
  world.disk().denyWrites(os::mounts().system(file(0)));
  expectLists(L"PAIR", ProMdlType::drawing, {{"sel='11'", ""}});
  EXPECT_TRUE(world.logHas(L"Failure while open report."));
}

}  // namespace
}  // namespace test
