// reportDrawingdata: the columns of a drawing, by the bytes of the report.
#include <gtest/gtest.h>

#include "os/surroundings.h"
#include "support/drawings.h"
#include "support/world.h"
#include "text/encoding.h"

namespace test {
namespace {

class DrawingData : public testing::Test {
 protected:
  // The report of the drawing, with those columns.
  std::string report(const std::vector<std::string>& columns) {
    writePair(world.models());
    const std::string file = world.temp() + "/drawings.csv";
    std::string switches;
    for (const std::string& column : columns) switches += column + "='true' ";
    world.list("data.xml",
               "<task type='reportDrawingdata' version='3' forPRT='true' forASM='true' forDRW='true' forEF='false' "
               "reporter='data' " +
                   switches + "/>",
               "<task type='openCSVReport' version='3' name='data' overwrite='true' sep='sem' file='" +
                   text::toUtf8(os::mounts().system(file)) + "'/>");
    world.runOn(L"PAIR", creo::ProMdlType::drawing, "data.xml");
    return readBytes(file);
  }
  World world;
};

TEST_F(DrawingData, TellsWhatTheDrawingHolds) {
  EXPECT_EQ(
      "\"Current sheet\";\"No. sheets\";\"Sheet names\";\"Sheet sizes\";\"Formats\";\"Scales\"\r\n"
      "\"2\";\"3\";\"1 - FRONT\n2 - SHEET2\n3 - SHEET3\";\"1 - A3\n2 - A4\n3 - variable\";"
      "\"1 - frame_a3\n2 - frame_a4\";\"1 - 5.000000\n2 - 2.000000\n3 - 1.000000\"\r\n",
      report({"currentsheet", "sheets", "sheetnames", "sheetsizes", "formats", "scales"}));
}

TEST_F(DrawingData, TellsWhatTheSheetsShow) {
  EXPECT_EQ(
      "\"Current model\";\"Models\";\"Views\";\"Tables\";\"Symbols\";\"Notes\";\"No. dimensions\"\r\n"
      "\"PINION.PRT\";\"GEAR.PRT\nPINION.PRT\nPAIR.ASM\";\"LEFT\nDETAIL\";\"1 - 100, 20 - 2 x 3\n3 - 5, 6 - 1 x 1\";"
      "\"weld - 1\";\"free of burrs\nAll edges blue\";\"3\"\r\n",
      report({"currentmodel", "models", "views", "tables", "symbols", "notes", "dimensions"}));
}

TEST_F(DrawingData, WithoutItsReportDoesNothing) {
  writePair(world.models());
  world.list("data.xml",
             "<task type='reportDrawingdata' version='3' forDRW='true' forEF='false' reporter='data' "
             "sheets='true'/>");
  world.runOn(L"PAIR", creo::ProMdlType::drawing, "data.xml");
  EXPECT_TRUE(world.logHas(L"Report can't be found"));
}

}  // namespace
}  // namespace test
