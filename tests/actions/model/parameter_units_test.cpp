// Units of parameters: what actions read and write counts in the model's units, what they show in the parameter's own.
#include "actions/action_fixture.h"
#include "text/encoding.h"

namespace test {
namespace {

constexpr const char* kPlate = R"({"format": 1, "parameters": [
  {"name": "LEN", "type": "double", "value": 5.0, "units": "in"},
  {"name": "GAP", "type": "double", "value": 3.0, "units": "in"},
  {"name": "HOLE", "type": "double", "value": 2.5, "units": "cm"},
  {"name": "WIDTH", "type": "double", "value": 10.0, "units": "mm"},
  {"name": "PLAIN", "type": "double", "value": 4.0}], "material": "STEEL", "materials": [{"name": "STEEL",
  "parameters": [{"name": "PTC_MASS_DENSITY", "type": "double", "value": 7850.0, "units": "kg/m^3"}]}]})";
constexpr const wchar_t* kUntouched = L"LEN=5.0 GAP=3.0 HOLE=2.5 WIDTH=10.0 PLAIN=4.0";

class ParameterUnits : public ActionTest {
 protected:
  struct Case {
    std::string tasks;
    std::wstring saved;   // the stored numbers afterwards
    std::wstring said{};  // a piece of the log; empty: any without a warning or an error
  };
  static void expectEach(const std::vector<Case>& cases) {
    for (const Case& entry : cases) {
      World own;
      writeBytes(own.models() + "/plate.prt.1", kPlate);
      writeBytes(own.models() + "/values.csv",
                 "model name;parameter name;present value;value\n*;LEN;127.000000;50.8\n*;GAP;3*;1\n");
      own.list("list.xml", entry.tasks + task("saveModel"));
      own.runOn(L"PLATE", creo::ProMdlType::part, "list.xml");
      EXPECT_EQ(entry.saved, own.savedParameters("PLATE.prt")) << entry.tasks;
      const std::wstring log = told(own.log());
      EXPECT_NE(std::wstring::npos, log.find(entry.said)) << entry.tasks << "\n" << text::toUtf8(log);
      EXPECT_EQ(entry.said.starts_with(L"W:"), log.find(L"W:") != log.npos) << entry.tasks << "\n" << text::toUtf8(log);
      EXPECT_EQ(log.npos, log.find(L"E:")) << entry.tasks << "\n" << text::toUtf8(log);
    }
  }
  static std::string edit(const std::string& name, const std::string& value) {
    return task("editModelParameter", "searchin='1' name='" + name + "' totype='2' value='" + value + "'");
  }
  static std::string ifEquals(const std::string& name, const std::string& value) {
    return "<task type='editModelParameter' version='3' forPRT='true' forEF='true' searchin='1' name='PLAIN' "
           "totype='2' "
           "value='1'><filter><i type='parameter' filtertype='true' param='" +
           name + "' value='" + value + "'/></filter></task>";
  }
};

TEST_F(ParameterUnits, WhatIsWrittenAndComparedCountsInTheModelsUnits) {
  expectEach({
      {edit("LEN", "25.4"), L"LEN=1.0 GAP=3.0 HOLE=2.5 WIDTH=10.0 PLAIN=4.0", L"set 'LEN' value to '25.400000'"},
      {edit("*", "@para@"), kUntouched, L"set 'GAP' value to '76.200000'"},
      {edit("HOLE", "@line@1"), L"LEN=5.0 GAP=3.0 HOLE=2.50000001 WIDTH=10.0 PLAIN=4.0"},
      {task("editModelParameter", "searchin='2' name='127' totype='2' value='254'"),
       L"LEN=10.0 GAP=3.0 HOLE=2.5 WIDTH=10.0 PLAIN=4.0"},
      {task("editModelParameterName", "searchin='2' name='76.2' value='SLOT'"),
       L"LEN=5.0 HOLE=2.5 WIDTH=10.0 PLAIN=4.0 SLOT=3.0"},
      {task("deleteModelParameter", "searchin='2' name_0='25' name_1='5' name_2='3'"),
       L"LEN=5.0 GAP=3.0 WIDTH=10.0 PLAIN=4.0"},
      {task("editParameterFromDictionary", "path='d:\\values.csv'"), L"LEN=2.0 GAP=3.0 HOLE=2.5 WIDTH=10.0 PLAIN=4.0"},
      {ifEquals("GAP", "76.2"), L"LEN=5.0 GAP=3.0 HOLE=2.5 WIDTH=10.0 PLAIN=1.0"},
      {ifEquals("LEN", "127"), L"LEN=5.0 GAP=3.0 HOLE=2.5 WIDTH=10.0 PLAIN=1.0"},
      {task("addModelParameter", "name_0='NEW' type_0='Double' value_0='2' unit_0='in'") + edit("NEW", "@para@"),
       std::wstring(kUntouched) + L" NEW=2.0", L"set 'NEW' value to '50.800000'"},
  });
}

TEST_F(ParameterUnits, AnotherFilterValueDoesNotPass) {
  writeBytes(world.models() + "/plate.prt.1", kPlate);
  run(ifEquals("LEN", "5") + task("saveModel"), L"PLATE");
  EXPECT_EQ(kUntouched, world.savedParameters("PLATE.prt"));
}

// The number alone goes over: that of 5 in is 5, and 5 is written as mm.
TEST_F(ParameterUnits, ANumberThatLosesItsUnitIsWarnedOf) {
  const std::wstring counts = L" now: what is written counts in the model's units";
  expectEach({
      {edit("GAP", "%LEN%"), L"LEN=5.0 GAP=0.1968503937007874 HOLE=2.5 WIDTH=10.0 PLAIN=4.0",
       L"W:'%LEN%' is 5 in, and 'GAP' is 0.1968503937007874 in" + counts},
      {edit("HOLE", "%HOLE%"), L"LEN=5.0 GAP=3.0 HOLE=0.25 WIDTH=10.0 PLAIN=4.0",
       L"W:'%HOLE%' is 2.5 cm, and 'HOLE' is 0.25 cm" + counts},
      {edit("WIDTH", "%dubase:LEN%"), L"LEN=5.0 GAP=3.0 HOLE=2.5 WIDTH=5.0 PLAIN=4.0",
       L"W:'%dubase:LEN%' is 5 in, and 'WIDTH' is 5 mm" + counts},
      {edit("LEN", "%WIDTH%"), L"LEN=0.393700787401575 GAP=3.0 HOLE=2.5 WIDTH=10.0 PLAIN=4.0"},
      {edit("PLAIN", "%LEN%"), L"LEN=5.0 GAP=3.0 HOLE=2.5 WIDTH=10.0 PLAIN=5.0"},
      {edit("LEN", "%PLAIN%"), L"LEN=0.15748031496063 GAP=3.0 HOLE=2.5 WIDTH=10.0 PLAIN=4.0"},
  });
}

TEST_F(ParameterUnits, AMaterialsDensityIsEditedInTheUnitsOfItsPart) {
  writeBytes(world.models() + "/plate.prt.1", kPlate);
  run(task("editMaterialParameter", "searchin='1' name='PTC_MASS_DENSITY' totype='2' value='7.2e-6'") +
          task("saveModel"),
      L"PLATE");
  EXPECT_NE(std::string::npos, world.document("PLATE.prt").find("\"value\": 7200.0")) << world.document("PLATE.prt");
}

TEST_F(ParameterUnits, ADrawingTakesANumberWithAWarning) {
  writeBytes(world.models() + "/plate.prt.1", kPlate);
  writeBytes(world.models() + "/plate.drw.1", R"({"format": 1, "models": [{"name": "PLATE", "type": "prt"}],
    "parameters": [{"name": "FROM", "type": "string", "value": "-"},
      {"name": "L", "type": "double", "value": 0.0, "units": "in"},
      {"name": "W", "type": "double", "value": 0.0, "units": "mm"}], "sheets": [{}]})");
  const std::wstring log = run(task("editDrawingParameterFromModel",
                                    "mdlNameParameter='FROM' multiModelSelection='1' errOrWar='2' "
                                    "name_0='LEN' newname_0='L' name_1='WIDTH' newname_1='W'") +
                                   task("saveModel"),
                               L"PLATE", creo::ProMdlType::drawing);
  EXPECT_EQ(L"FROM=PLATE.prt L=0.1968503937007874 W=10.0", world.savedParameters("PLATE.drw")) << text::toUtf8(log);
  EXPECT_NE(log.npos, log.find(L"W:'%LEN%' is 5 in, and 'L' is 0.1968503937007874 in now")) << text::toUtf8(log);
  EXPECT_EQ(log.npos, log.find(L"'%WIDTH%' is")) << text::toUtf8(log);
}

}  // namespace
}  // namespace test
