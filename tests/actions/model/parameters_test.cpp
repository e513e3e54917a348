// addModelParameter with its list, and saveModel.
#include "actions/action_fixture.h"
#include "core/state.h"
#include "creo/ProParameter.h"

namespace test {
namespace {

class AddParameter : public ActionTest {
 protected:
  void SetUp() override { world.part(L"BRACKET").with(L"COLOR", L"red").dimension(L"d1").dimension(L"rd2", true); }
  static std::string add(const std::string& attributes) { return task("addModelParameter", attributes); }
  // Description and designation of a parameter of BRACKET as it is in memory: "text" or "text*".
  static std::wstring marks(const std::wstring& name) {
    const auto model = creo::ProMdlRetrieve(L"BRACKET", creo::ProMdlType::part);
    const auto parameter = creo::ProParameterInit(creo::ProMdlToModelitem(model.value).value, name);
    if (!parameter) return L"(none)";
    return creo::ProParameterDescriptionGet(parameter.value).value +
           (creo::ProParameterDesignationVerify(parameter.value).value ? L"*" : L"");
  }
};

TEST_F(AddParameter, MakesEachTypeAndSaves) {
  const std::wstring log =
      run(add("name_0='A_@mdln@' type_0='String' value_0='%COLOR%' name_1='B' type_1='Integer' value_1='12x' "
              "name_3='C' type_3='Double' value_3='2.5' name_4='D' type_4='Boolean' value_4='true' "
              "name_5='E' type_5='Boolean' value_5='TRUE' name_100='F' type_100='String'") +
          task("saveModel"));
  EXPECT_EQ(L"COLOR=red A_BRACKET=%COLOR% B=12 C=2.5 D=true E=false", world.savedParameters("BRACKET.prt"));
  EXPECT_EQ(
      L"B0 Add model parameter|Try to create parameter:A_BRACKET|Parameter created|"
      L"Try to create parameter:B|W:'12x' is read as 12|Parameter created|Try to create parameter:C|Parameter created|"
      L"Try to create parameter:D|Parameter created|Try to create parameter:E|Parameter created|B1 Save model",
      log);
}

TEST_F(AddParameter, TellsWhatItCantMake) {
  const std::string longest(80, 'd');
  const std::pair<std::string, std::wstring> cases[] = {
      {"name_0='color' type_0='String' value_0='blue'", L"Try to create parameter:color|Parameter exists already"},
      {"name_0='X' type_0='Text'",
       L"Try to create parameter:X|E:The parameter type 'Text' isn't one of String, Integer, Double, Boolean"},
      {"name_0='X' type_0='Double' value_0='1e999'", L"Try to create parameter:X|E:Failure while ProParamvalueSet"},
      {"name_0='X' type_0='Double' value_0='Information sheet'",
       L"Try to create parameter:X|E:Failure while ProParamvalueSet"},
      {"name_0='X' type_0='Double' value_0='50abc'",
       L"Try to create parameter:X|W:'50abc' is read as 50|Parameter created"},
      {"name_0='X' type_0='Integer' value_0='7.9'",
       L"Try to create parameter:X|W:'7.9' is read as 7|Parameter created"},
      {"name_0='X' type_0='Integer' value_0='99999999999'",
       L"Try to create parameter:X|W:'99999999999' is read as 2147483647|Parameter created"},
      {"name_0='COLOR' type_0='Integer' value_0='7.9'", L"Try to create parameter:COLOR|Parameter exists already"},
      {"name_0='X' type_0='Double' value_0='' name_1='Y' type_1='Integer'",
       L"Try to create parameter:X|Parameter created|Try to create parameter:Y|Parameter created"},
      {"name_0='1X' type_0='String'", L"Try to create parameter:1X|E:Can't create parameter: 1X"},
      {"name_0='X' type_0='Double' value_0='1' unit_0='parsecs'",
       L"Try to create parameter:X|E:Can't create parameter: X"},
      {"name_0='X' type_0='String' value_0='1' unit_0='mm' name_1='Y' type_1='Integer' value_1='1' unit_1='mm'",
       L"Try to create parameter:X|E:'X' isn't created: only numbers have a unit|Try to create parameter:Y|"
       L"Parameter created"},
      {"name_0='%NONE%' type_0='String'", L"E:Can't find parameter: NONE"},
      {"name_0='D1' type_0='String' name_1='X' type_1='String'",
       L"Try to create parameter:D1|E:This parameter name is already used as a dimension name"},
      {"name_0='rd2' type_0='String'",
       L"Try to create parameter:rd2|E:This parameter name is already used as a reference dimension name"},
      {"name_0='X' type_0='String' description_0='" + longest + "'",
       L"Try to create parameter:X|Parameter created|Set description"},
      {"name_0='X' type_0='String' description_0='" + longest + "e'",
       L"Try to create parameter:X|Parameter created|E:Can't set description with more than 80 characters"},
      {"count='' name_99='X' type_99='String'", L"Try to create parameter:X|Parameter created"},
      {"count='1' name_1='X' type_1='String'", L""},
      {"count='2000000000' name_1999999999='X' type_1999999999='String'",
       L"Try to create parameter:X|Parameter created"},
  };
  for (const auto& [attributes, expected] : cases) {
    World own;
    own.part(L"BRACKET").with(L"COLOR", L"red").dimension(L"d1").dimension(L"rd2", true);
    own.list("list.xml", add(attributes));
    own.runOn(L"BRACKET", creo::ProMdlType::part, "list.xml");
    EXPECT_EQ(L"B0 Add model parameter" + (expected.empty() ? L"" : L"|" + expected), told(own.log())) << attributes;
  }
}

TEST_F(AddParameter, DescribesAndDesignatesAsItsSwitchesSay) {
  const std::string mark = " type_0='String' description_0='new' designated_0='true'";
  const std::string again = " type_0='String' description_0='other' designated_0='false'";
  run(add("name_0='PLAIN'" + mark) + add("name_0='MARKED' desig='false'" + mark) +
      add("name_0='KEPT' desig='true'" + mark) + add("name_0='KEPT' desig='false' descr='false'" + again) +
      add("name_0='TURNED' desig='true'" + mark) + add("name_0='TURNED' desig='true' descr='true'" + again) +
      add("name_0='TAKEN' desig='true'" + mark) + add("name_0='TAKEN' desig='true' type_0='String'") +
      add("name_0='COLOR' descr='true' type_0='String' description_0='" + std::string(90, 'd') + "'"));
  const std::pair<const wchar_t*, std::wstring> cases[] = {
      {L"PLAIN", L"new"},    {L"MARKED", L"new*"}, {L"KEPT", L"new*"},
      {L"TURNED", L"other"}, {L"TAKEN", L"new*"},  {L"COLOR", std::wstring(80, L'd')},
  };
  for (const auto& [name, expected] : cases) EXPECT_EQ(expected, marks(name));
}

// Where nothing tells that it is so, it is done again.
TEST_F(AddParameter, OneThatIsDesignatedAlreadyIsNoFault) {
  const std::string all = task("changeAllDesignationFlags", "to='true'");
  run(add("name_0='X' type_0='String'") + all);
  core::pluginState().autoUnsetReworkedData = 0;  // the list runs on the model once more
  world.session().failNext("ProParameterDesignationVerify", creo::ProGeneralError);
  EXPECT_EQ(std::wstring::npos, run(all).find(L"E:"));
  EXPECT_EQ(L"*", marks(L"X"));
}

TEST_F(AddParameter, SurvivesEachFailureOfCreo) {
  const std::string list =
      add("name_0='X' type_0='Double' value_0='1' unit_0='mm' desig='' designated_0='true' "
          "description_0='d' name_1='Y' type_1='String'");
  const std::pair<const char*, std::wstring> cases[] = {
      {"ProParamvalueSet", L"E:Failure while ProParamvalueSet"},
      {"ProParameterWithUnitsCreate", L"E:Can't create parameter: X"},
      {"ProParameterDescriptionSet", L"E:Can't set description of parameter: X"},
      {"ProParameterDesignationAdd", L"E:Failure occured while set designation of parameter X"},
  };
  for (const auto& [operation, line] : cases) {
    World own;
    own.part(L"BRACKET").with(L"COLOR", L"red");
    own.list("list.xml", list + task("saveModel"));
    own.start();
    own.session().failNext(operation, creo::ProGeneralError);
    own.runOn(L"BRACKET", creo::ProMdlType::part, "list.xml");
    EXPECT_NE(std::wstring::npos, told(own.log()).find(line)) << operation;
    EXPECT_NE(std::wstring::npos, own.savedParameters("BRACKET.prt").find(L"Y=")) << operation;
  }
}

TEST(SaveModel, TellsThatItFailed) {
  World world;
  world.part(L"BRACKET");
  world.list("list.xml", "<task type='saveModel' version='3' forPRT='true' forEF='false'/>");
  world.start();
  world.session().failNext("ProMdlSave", creo::ProGeneralError);
  world.runOn(L"BRACKET", creo::ProMdlType::part, "list.xml");
  EXPECT_EQ(L"B0 Save model|E:Failure while save model", told(world.log()));
}

class FamilyParameter : public ActionTest {
 protected:
  void SetUp() override {
    world.part(L"BOLT").with(L"SIZE", 1.0).column(L"SIZE").instance(L"M4", {"4.0"}).instance(L"M5", {"5.0"});
  }
  static std::string add(const std::string& forInstances) {
    return task("addModelParameter",
                "forInstances='" + forInstances + "' name_0='GRADE' type_0='String' value_0='8.8'");
  }
};

TEST_F(FamilyParameter, BecomesAColumnOfTheGeneric) {
  EXPECT_EQ(
      L"B0 Add model parameter|Model is generic|Try to create parameter:GRADE|Parameter created|"
      L"Parameter added to Family Table|"
      L"B1 Add model parameter|Model is generic|Try to create parameter:GRADE|Parameter exists already|"
      L"W:Parameter is already in family table, or no family table exists|"
      L"B2 Add model parameter|Try to create parameter:GRADE|Parameter exists already|B3 Save model",
      run(add("true") + add("true") + add("false") + task("saveModel"), L"BOLT"));
  EXPECT_NE(std::string::npos, world.document("BOLT.prt").find("\"GRADE\""));
}

TEST_F(FamilyParameter, LeavesInstancesAloneWhenAsked) {
  world.config("kvd_filter_inst=1\nkvd_filter_curmod=1");
  EXPECT_EQ(
      L"B0 Add model parameter|W:Model is a instance, action is canceled|"
      L"B1 Add model parameter|Model is a instance|Try to create parameter:GRADE|Parameter created",
      run(add("false") + add("true"), L"M4"));
}

}  // namespace
}  // namespace test
