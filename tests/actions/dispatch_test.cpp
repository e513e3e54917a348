// From a task's `type` to what happens.
#include "actions/dispatch.h"
#include "actions/action_fixture.h"
#include "core/state.h"
#include "core/xml.h"

namespace test {
namespace {

class Dispatch : public ActionTest {
 protected:
  void SetUp() override { world.part(L"BRACKET").with(L"COLOR", L"red"); }
};

TEST_F(Dispatch, TellsWhatItDoesntKnowOrCantRun) {
  const std::string deak = "<task type='saveModel' deak='true'/><task type='unknown' deak=''/>";
  EXPECT_EQ(
      L"E:Filter not found: SaveModel|E:CAN'T FIND THIS FUNCTION, FAILURE IN DLL|"
      L"E:The 'Open XLS Report' action is removed with Kelvane 7.0. Please change to 'Open CSV Report.'|"
      L"E:The 'Edit model parameter from audit trail' action is removed with Kelvane 7.0.'|"
      L"B6 Save model|E:Function isn't used because false version code, please update Kelvane User and Kelvane to the "
      L"newest version|"
      L"B7 Save model",
      run(task("SaveModel") + task("openXLSReport") + "<task type='editModelParameterFromPrueftrail'/>" + deak +
          task("kv_reportNewRows") + "<task type='saveModel' version='4' forPRT='true' forEF='false'/>" +
          task("saveModel", "deak='false'")));
  EXPECT_EQ(2, world.version("BRACKET.prt"));
}

TEST_F(Dispatch, WritesKnownEmptyKeysToCreoOnly) {
  world.config("kvd_no_debug_in_creo_log=9");
  run(task("asmFastOpen"));
  EXPECT_NE(std::wstring::npos, world.messages().find(L"asmFastOpen not implemented inside KVP"));
}

TEST_F(Dispatch, RunsPredicatesForTheirEffectAlone) {
  EXPECT_EQ(L"B1 Save model", run("<task type='isGeneric'/>" + task("saveModel")));
}

TEST_F(Dispatch, TakesTheCurrentModelInHead) {
  world.list("list.xml", "", task("saveModel"));
  world.runOn(L"BRACKET", creo::ProMdlType::part, "list.xml");
  EXPECT_EQ(L"H0 Save model", told(world.log()));
  EXPECT_EQ(2, world.version("BRACKET.prt"));
}

TEST_F(Dispatch, RefusesModelActionsWithoutAModel) {
  auto list = core::xmlParse(L"<task type=\"saveModel\"/>");
  world.start();
  actions::Subject none;
  core::pluginState().currentAction = L"Run Mapkey";  // the action before
  EXPECT_EQ(actions::notHandled, actions::dispatchAction(*core::xmlChildAt(list.value->root()->children, 0), none));
  EXPECT_EQ(L"E:This function need a model to get worked on it|E:CAN'T FIND THIS FUNCTION, FAILURE IN DLL",
            told(world.log()));
  EXPECT_FALSE(world.logHas(L"Run Mapkey"));
  EXPECT_TRUE(world.logHas(L"saveModel -  - This function need a model"));
}

TEST_F(Dispatch, RefusesByFilterWithAWarning) {
  EXPECT_EQ(L"B0 Save model|W:Action canceled, because filter returns false",
            run("<task type='saveModel' version='3' forDRW='true' forEF='false'/>"));
  EXPECT_EQ(1, world.version("BRACKET.prt"));
}

TEST_F(Dispatch, StopsOnEachActionAtItsBreakpoint) {
  world.start();
  world.list("list.xml", task("saveModel"));
  core::pluginState().breakpoint = 8;
  world.runOn(L"BRACKET", creo::ProMdlType::part, "list.xml");
  EXPECT_EQ(L"", told(world.log()));
}

}  // namespace
}  // namespace test
