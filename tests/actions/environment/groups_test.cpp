#include "actions/action_fixture.h"
#include "language/user_variables.h"
#include "language/variables.h"
#include "os/interrupt.h"

namespace test {
namespace {

class Groups : public ActionTest {
 protected:
  void SetUp() override { world.part(L"BRACKET").with(L"ROUNDS", 2); }
  static std::string group(const std::string& attributes, const std::string& tasks) {
    return task("groupActions", attributes, "<subtasks>" + tasks + "</subtasks>");
  }
  static std::string count(const std::string& name, const std::string& step = "1") {
    return task("setUserVariableDirect", "name='" + name + "' inc='true' incno='" + step + "'");
  }
};

TEST_F(Groups, RunTheirTasksInTheirModes) {
  const std::string name = "name='X' value='1'";
  const std::string set = task("setUserVariableDirect", name);
  const std::string drawingsOnly = "<task type='saveModel' version='3' forDRW='true' forEF='false'/>";
  const std::wstring unknown = L"|E:Filter not found: unknown|E:CAN'T FIND THIS FUNCTION, FAILURE IN DLL";
  const std::wstring done = L"B0 - G0 Set user variable direct|- G0 set X = 1";
  const std::pair<std::string, std::wstring> cases[] = {
      {group("", set), done},
      {group("reworkMode='0'", set + "<note/>" + drawingsOnly),
       done + L"|B0 - G2 Save model|W:Action canceled, because filter returns false"},
      {group("reworkMode='4' forcount='0'", set), L""},
      {group("reworkMode='4' forcount='%NONE%'", set), L"E:Can't find parameter: NONE"},
      {group("reworkMode='4' forcount='%ROUNDS%'", "<task type='unknown'/>"),
       L"loop no - 0" + unknown + L"|loop no - 1" + unknown},
      {group("reworkMode='4' forcount='2,5'", "<task type='unknown'/>"),
       L"W:'2,5' is read as 2: the decimal sign is a point|loop no - 0" + unknown + L"|loop no - 1" + unknown},
      {group("reworkMode='4' forcount='twice'", set), L"W:'twice' is read as 0"},
      {group("reworkMode='6'", set), L""},
      {group("reworkMode='9'", set), L""},
      {task("groupActions"), L""},
      {"<task type='groupActions' version='3'><subtasks>" + set + "</subtasks></task>", done},
      {"<task type='groupActions' version='3' forASM='false'><subtasks>" + set + "</subtasks></task>",
       L"W:Action canceled, because filter returns false"},
  };
  for (const auto& [list, expected] : cases) {
    World own;
    own.part(L"BRACKET").with(L"ROUNDS", 2);
    own.list("list.xml", list);
    own.runOn(L"BRACKET", creo::ProMdlType::part, "list.xml");
    EXPECT_EQ(L"B0 GROUP ACTION" + (expected.empty() ? L"" : L"|" + expected), told(own.log())) << list;
  }
}

TEST_F(Groups, ReadTheirBoundAgainEachRound) {
  run(task("setUserVariableDirect", "name='N' value='3'") +
      group("reworkMode='4' forcount='%user:N%'", count("N", "-1") + count("DONE")));
  EXPECT_EQ(L"2", *language::userVariables().find(L"DONE"));
}

TEST_F(Groups, LoopsWithoutAnEndAreLeftWhereAStopIsAsked) {
  const struct {
    const char* loop;
    const wchar_t* rounds;  // that ran, when the stop is asked for before the third
    const wchar_t* line;
  } cases[] = {
      {"reworkMode='4' forcount='%user:N%'", L"3",
       L"GROUP ACTION - work now on BRACKET.PRT - The loop is left after 3 of 4 rounds, as the run is to end"},
      {"reworkMode='4' forcount='2000000000'", L"2",
       L"The loop is left after 2 of 2000000000 rounds, as the run is to end"},
      {"reworkMode='4' forcount='5'", L"5", nullptr},
  };
  for (const auto& c : cases) {
    World own;
    own.part(L"BRACKET");
    own.list("list.xml", task("setUserVariableDirect", "name='N' value='1'") +
                             task("setUserVariableDirect", "name='DONE' value='0'") +
                             group(c.loop, count("N") + count("DONE")));
    language::userVariables().remove(L"DONE");
    const os::InterruptSource stop([] {
      const std::wstring* done = language::userVariables().find(L"DONE");
      return done && *done >= L"2";
    });
    own.runOn(L"BRACKET", creo::ProMdlType::part, "list.xml");
    const auto* done = language::userVariables().find(L"DONE");
    ASSERT_NE(nullptr, done) << c.loop;
    EXPECT_EQ(c.rounds, *done) << c.loop;
    EXPECT_EQ(c.line != nullptr, own.logHas(c.line ? c.line : L"The loop is left")) << c.loop;
  }
}

TEST_F(Groups, NestWithTheirNumbersInTheLog) {
  EXPECT_EQ(
      L"B0 GROUP ACTION|loop no - 0|B0 - G0 GROUP ACTION|- G0 loop no - 0|"
      L"B0 - G0 - G0 Set user variable direct|- G0 - G0 set A = 1|"
      L"B0 - G0 - G1 Set user variable direct|- G0 - G1 set A = 2",
      run(group("reworkMode='4' forcount='1'", group("reworkMode='4' forcount='1'", count("A") + count("A")))));
}

TEST_F(Groups, RefuseToNestWithoutEnd) {
  const std::string whole = group("", count("DEEP"));
  const std::size_t inner = whole.find("<subtasks>") + 10;
  std::string list, closing;
  for (int i = 0; i < 3000; ++i) {
    list += whole.substr(0, inner);
    closing += "</subtasks></task>";
  }
  list += count("DEEP") + closing;
  run(list + count("AFTER"));
  EXPECT_TRUE(world.logHas(L"Groups nested deeper than 64 levels aren't carried out"));
  EXPECT_EQ(nullptr, language::userVariables().find(L"DEEP"));
  EXPECT_NE(nullptr, language::userVariables().find(L"AFTER"));
}

}  // namespace
}  // namespace test
