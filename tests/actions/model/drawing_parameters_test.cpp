// Parameters of a drawing that come from its model: which model is taken, and what is copied.
#include "actions/action_fixture.h"
#include "text/encoding.h"

namespace test {
namespace {

class DrawingParameters : public ActionTest {
 protected:
  // A drawing of GEAR and PINION whose frames hold these texts, on a sheet each.
  static void pair(
      const World& world, const std::vector<std::string>& frames, const std::string& choice = "-",
      const std::string& models = R"({"name": "GEAR", "type": "prt"}, {"name": "PINION", "type": "asm"})") {
    std::string sheets, tables;
    for (std::size_t i = 0; i < frames.size(); ++i) {
      const std::string number = std::to_string(i + 1);
      sheets += std::string(i > 0 ? "," : "") + R"({"size": "A4"})";
      tables += std::string(i > 0 ? "," : "") + R"({"id": )" + number +
                R"(, "fromFormat": true, "segments": [{"sheet": )" + number +
                R"(}], "columns": [9], "rows": [9, 9], "cells": [{"row": 2, "column": 1, "lines": [")" + frames[i] +
                R"("]}]})";
    }
    writeBytes(world.models() + "/pair.drw.1", R"({"format": 1, "parameters": [
  {"name": "MODEL", "type": "string", "value": ")" +
                                                   choice + R"("}, {"name": "COLOR", "type": "string", "value": "old"},
  {"name": "TEETH", "type": "integer", "value": 1}], "models": [)" +
                                                   models + R"(], "sheets": [)" + sheets + R"(], "tables": [)" +
                                                   tables + "]}");
    const char* const gear = R"({"format": 1, "parameters": [{"name": "COLOR", "type": "string", "value": "red"},
                                                           {"name": "TEETH", "type": "integer", "value": 31}]})";
    writeBytes(world.models() + "/gear.prt.1", gear);
    writeBytes(world.models() + "/pinion.asm.1",
               R"({"format": 1, "parameters": [{"name": "COLOR", "type": "string", "value": "blue"}]})");
  }
  static std::string copy(const std::string& attributes, const std::string& level = "1") {
    return task("editDrawingParameterFromModel", "mdlNameParameter='MODEL' errOrWar='" + level +
                                                     "' name_0='COLOR' newname_0='COLOR' "
                                                     "name_1='TEETH' newname_1='TEETH' " +
                                                     attributes) +
           task("saveModel");
  }
};

TEST_F(DrawingParameters, ComeFromTheModelThatIsChosen) {
  struct Case {
    std::vector<std::string> frames;
    std::string choice, attributes;
    std::wstring saved, said;
    std::string level = "1";  // errOrWar
  };
  const std::wstring none = L"MODEL=- COLOR=old TEETH=1", gear = L"MODEL=GEAR.prt COLOR=red TEETH=31",
                     pinion = L"MODEL=PINION.asm COLOR=blue TEETH=1";
  const Case cases[] = {
      {{""}, "gear.PRT", "multiModelSelection='2'", gear, L"Found model 'GEAR' with parameter check"},
      {{""}, "pinion.asm", "multiModelSelection='2'", pinion, L"W:Parameter can't be found on Model"},
      {{""},
       "lost.prt",
       "multiModelSelection='1'",
       gear,
       L"Check with parameter|Check with selected way|- current model"},
      {{""}, "-", "multiModelSelection='1'", gear, L"Found current model"},
      {{""}, "", "multiModelSelection='2'", none, L"- failure message|E:Found more than one model"},
      {{""}, "", "multiModelSelection='4'", none, L"- do nothing"},
      {{""}, "", "multiModelSelection='3'", none, L"- search in frames|W:Found multiple possible models"},
      {{"&model_name:2", "{0:&model_name:2}"},
       "",
       "multiModelSelection='3'",
       pinion,
       L"Found a single model that should be the right one|table created|PINION|ASSEM"},
      {{"&model_name:1", "&model_name:2"}, "", "multiModelSelection='3'", none, L"W:Found multiple possible models"},
      {{"scale 1:2", "{0:Sheet}{1:&type:1}"}, "", "multiModelSelection='3'", gear, L"GEAR|PART"},
      {{"&type:1"}, "", "multiModelSelection='3'", gear, L"GEAR|PART"},
      {{"&model_name:9"}, "", "multiModelSelection='3'", none, L"table created"},
      {{""},
       "",
       "multiModelSelection='1' name_2='COLOR' newname_2='NOWHERE'",
       gear,
       L"W:Parameter can't be found on Drawing"},
      {{""},
       "",
       "multiModelSelection='1' name_2='NOWHERE' newname_2='COLOR' errOrWar='2'",
       gear,
       L"E:Parameter can't be found on Model",
       "2"},
  };
  for (const Case& entry : cases) {
    World own;
    pair(own, entry.frames, entry.choice);
    own.list("list.xml", copy(entry.attributes, entry.level));
    own.runOn(L"PAIR", creo::ProMdlType::drawing, "list.xml");
    EXPECT_EQ(entry.saved, own.savedParameters("PAIR.drw")) << entry.attributes << entry.choice << entry.frames.front();
    EXPECT_NE(std::wstring::npos, told(own.log()).find(entry.said)) << entry.attributes << "\n"
                                                                    << text::toUtf8(own.log());
    EXPECT_EQ(std::string::npos, own.document("PAIR.drw").find("10.0")) << "the table of one cell is still there";
  }
}

TEST_F(DrawingParameters, OfADrawingOfOneModelNeedNoChoice) {
  pair(world, {""}, "gear.prt", R"({"name": "GEAR", "type": "prt"})");
  const std::wstring log = run(copy(""), L"PAIR", creo::ProMdlType::drawing);
  EXPECT_TRUE(log.ends_with(
      L"B0 Edit drawing parameter from model|Parameter found|gear.prt|One Model found|"
      L"W:One Model found in drawing, ignore parameter value|Found a model and do the work|set 'COLOR' value to 'red'|"
      L"set 'TEETH' value to '31'|set 'MODEL' value to 'GEAR.prt'|B1 Save model"))
      << text::toUtf8(log);
}

TEST_F(DrawingParameters, NeedAModel) {
  pair(world, {""}, "x", "");
  EXPECT_NE(std::wstring::npos, run(copy(""), L"PAIR", creo::ProMdlType::drawing)
                                    .find(L"No Model found|E:No model found in drawing to copy parameters"));
}

TEST_F(DrawingParameters, DoWithoutAParameterForTheChoice) {
  pair(world, {""}, "x", R"({"name": "GEAR", "type": "prt"})");
  const std::wstring log =
      run(task("editDrawingParameterFromModel", "mdlNameParameter='TEETH' name_0='COLOR' newname_0='COLOR'") +
              task("editDrawingParameterFromModel", "mdlNameParameter='NONE'") + task("saveModel"),
          L"PAIR", creo::ProMdlType::drawing);
  EXPECT_NE(std::wstring::npos, log.find(L"E:Parameter TEETH is no String parameter"));
  EXPECT_NE(std::wstring::npos, log.find(L"W:Can't find parameter: NONE"));
  EXPECT_EQ(L"MODEL=x COLOR=red TEETH=1", world.savedParameters("PAIR.drw"));
}

// Whatever fails once: no value of another model, no table left behind, the current sheet as before.
TEST_F(DrawingParameters, AFailingOperationLeavesTheDrawingWhole) {
  const char* operations[] = {"ProDrawingSolidsCollect",   "ProDrawingSheetsCount", "ProDrawingCurrentSheetGet",
                              "ProDrawingCurrentSheetSet", "ProDrawingTableVisit",  "ProDwgtableIsFromFormat",
                              "ProDwgtableSegSheetGet",    "ProDwgtableRowsCount",  "ProDwgtableColumnsCount",
                              "ProDwgtableCelltextGet",    "ProDrawingTableCreate", "ProDwgtableTextEnter",
                              "ProDwgtableDelete",         "ProParameterInit",      "ProParameterValueSet",
                              "ProParameterDriverGet",     "ProMdlToModelitem"};
  for (const char* operation : operations) {
    World own;
    pair(own, {"&model_name:2", "&model_name:2"});
    own.list("list.xml", copy("multiModelSelection='3'"));
    own.start();
    own.open(L"PAIR", creo::ProMdlType::drawing);
    own.openTool();
    own.choose("list.xml");
    // A general error of a cell says that it has no text.
    const bool isCell = std::string_view(operation) == "ProDwgtableCelltextGet";
    own.session().failNext(operation, isCell ? creo::ProNotFound : creo::ProGeneralError);
    own.pressStart();
    EXPECT_GT(own.session().calls(operation), 0) << operation;
    const std::string saved = own.document("PAIR.drw");
    EXPECT_EQ(std::string::npos, saved.find("10.0")) << operation;
    EXPECT_EQ(std::string::npos, saved.find("currentSheet")) << operation;
    EXPECT_EQ(std::string::npos, saved.find("\"red\"")) << operation;
  }
}

}  // namespace
}  // namespace test
