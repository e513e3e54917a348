// Whole runs over a drawing: filters that ask it, texts that name its sheets, a group over them.
#include <gtest/gtest.h>

#include "support/drawings.h"

namespace test {
namespace {

std::string task(const std::string& type, const std::string& attributes, const std::string& children = "") {
  return "<task type='" + type + "' version='3' forPRT='false' forASM='false' forDRW='true' " + attributes + ">" +
         children + "</task>";
}
// A parameter for drawings for which the item holds.
std::string mark(const std::string& name, const std::string& value, const std::string& item) {
  return task("addModelParameter", "forEF='true' name_0='" + name + "' type_0='String' value_0='" + value + "'",
              "<filter><i filtertype='true' " + item + "/></filter>");
}

TEST(RunOnADrawing, MarksItByItsSheetsTablesAndModels) {
  World world;
  writePair(world.models());
  const std::string saySheet =
      task("setUserVariableDirect", "forEF='false' name='ALL' value='%user:ALL% @sheetno@:@curdrwmdln@'");
  world.list("drawings.xml",
             mark("FORMAT", "@cursheetformat@ @cursheetsize@", "type='formatName' value='frame_a*'") +
                 mark("SCALE", "@cursheetcurmdlscaleISO@", "type='sheetsize' hs='290' wb='211'") +
                 mark("TABLE", "blue", "type='tableOnDrawing' sheet='1' cell-s='blue' cell-x='1' cell-y='1'") +
                 mark("NONE", "wrong", "type='symbolOnDrawing' currmat='lost'") +
                 mark("ALSO", "wrong", "type='drawingCurrentModel' value='gear.prt'") +
                 task("groupActions", "forEF='false' reworkMode='6'", "<subtasks>" + saySheet + "</subtasks>") +
                 mark("SHEETS", "%user:ALL% of @maxpage@", "type='isMultiModelDrawing'") +
                 task("saveModel", "forEF='false'"),
             task("setUserVariableDirect", "forEF='false' name='ALL' value='seen'"));
  world.runOn(L"PAIR", creo::ProMdlType::drawing, "drawings.xml");
  EXPECT_EQ(L"NUMBER=D-22 COLOR=white FORMAT=frame_a4 A4 SCALE=2:1 TABLE=blue SHEETS=seen 1:GEAR 2:PAIR 3:PAIR of 3",
            world.savedParameters("PAIR.drw"));
  const std::string saved = world.document("PAIR.drw");
  EXPECT_NE(std::string::npos, saved.find("\"currentModel\": \"PINION.prt\"")) << saved;
  EXPECT_EQ(std::string::npos, saved.find("&model_name")) << "the helper table of the group is gone";
}

}  // namespace
}  // namespace test
