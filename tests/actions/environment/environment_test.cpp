// Actions on the surroundings of a run: variables, the working folder, Creo's message area.
#include <filesystem>

#include "actions/action_fixture.h"
#include "actions/dispatch.h"
#include "core/xml.h"
#include "creo/ProUtil.h"
#include "language/user_variables.h"
#include "language/variables.h"
#include "text/encoding.h"

namespace test {
namespace {

class Environment : public ActionTest {
 protected:
  void SetUp() override { world.part(L"BRACKET").with(L"COLOR", L"red"); }
  static std::string set(const std::string& attributes) { return task("setUserVariableDirect", attributes); }
  static std::wstring variable(std::wstring_view name) {
    const std::wstring* value = language::userVariables().find(name);
    return value ? *value : L"(none)";
  }
};

TEST_F(Environment, VariablesAreSetAndCounted) {
  run(set("name='@mdln@' value='%COLOR%!'") + set("name='bracket' value='blue'") +     // overwritten in place
      set("name='N' inc='true' incno='5'") + set("name='n' inc='true' incno='5'") +    // counted up
      set("name='TEXT' value='x'") + set("name='TEXT' inc='true' incno='-2'") +        // no number counts as 0
      set("name='BIG' value='2147483647'") + set("name='BIG' inc='true' incno='1'") +  // stays in range
      set("name='EQUAL' value='1' inc='false' incno='9'") + set("name='%MISSING%' value='1'") +
      set("name='LONG' value='" + std::string(300, 'v') + "'"));
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"BRACKET", L"blue"}, {L"N", L"10"},           {L"TEXT", L"-2"},     {L"BIG", L"2147483647"},
      {L"EQUAL", L"1"},      {L"MISSING", L"(none)"}, {L"LONG", L"(none)"},
  };
  for (const auto& [name, value] : cases) EXPECT_EQ(value, variable(name));
  EXPECT_TRUE(world.logHas(L"set BRACKET = red!"));
  EXPECT_EQ(5U, language::userVariables().count());
}

// What one model has must not pass for what the next one lacks.
TEST_F(Environment, AFailedAnswerDoesntLeaveTheFormerOne) {
  const std::string failures[] = {
      set("name='v' value='%MISSING%'"),
      set("name='V' value='" + std::string(300, 'v') + "'"),
      task("setUserVariableFromUrl", "name='V' value='http://%MISSING%/'"),
      task("setUserVariableFromUrl", "name='V' value='http://127.0.0.1:9/' post='%MISSING%'"),
      task("setUserVariableFromBoundingBox", "d='V' format='%d'"),
      task("setUserVariableFromBoundingBox", "w='W' h='V' format='%g'"),  // a part without a body
  };
  std::string tasks = set("name='FIRST' value='1'");
  for (const std::string& failure : failures)
    tasks += set("name='V' value='12.50 EUR'") + set("name='LAST' value='2'") + failure +
             task("writeToCreoLog", "message='price %user:V%'");
  const std::wstring reported = run(tasks);
  std::size_t undeclared = 0;
  for (std::size_t at = 0; (at = reported.find(L"E:The user variable isn't declared", at)) != reported.npos; ++at)
    ++undeclared;
  EXPECT_EQ(std::size(failures), undeclared) << text::toUtf8(reported);
  EXPECT_EQ(reported.npos, reported.find(L"price 12.50 EUR")) << text::toUtf8(reported.substr(0, 2000));
  EXPECT_EQ(L"(none) 1 2", variable(L"V") + L" " + variable(L"FIRST") + L" " + variable(L"LAST"));
}

TEST_F(Environment, TheWorkingFolderStaysChanged) {
  std::filesystem::create_directories(world.models() + "/red");
  EXPECT_EQ(L"B0 Set working directory|B1 Set working directory|E:Can't set path as current path",
            run(task("setWorkingDirectory", "path='d:/%COLOR%'") + task("setWorkingDirectory", "path='d:/none'")));
  EXPECT_EQ(L"d:\\red\\", creo::ProDirectoryCurrentGet().value);
}

TEST_F(Environment, TheWorkingFolderIsTakenAsItStandsWithoutAModel) {
  std::filesystem::create_directories(world.models() + "/%COLOR%");
  world.start();
  const auto list = core::xmlParse(L"<task type=\"setWorkingDirectory\" version=\"3\" path=\"d:\\%COLOR%\"/>");
  actions::Subject none;
  EXPECT_EQ(actions::done, actions::dispatchAction(*core::xmlChildAt(list.value->root()->children, 0), none));
  EXPECT_EQ(L"d:\\%COLOR%\\", creo::ProDirectoryCurrentGet().value);
  EXPECT_EQ(L" 0 Set working directory|W:Set working directory without model. !!No variable replacements!!",
            L" " + told(world.log()));
}

TEST_F(Environment, MessagesReachCreoCutAt255) {
  world.config("kvd_no_debug_in_creo_log=0");
  run(task("writeToCreoLog", "message='%COLOR% a/b'") +
      task("writeToCreoLog", "message='" + std::string(254, 'm') + "xyz'"));
  const std::wstring shown = world.messages();
  EXPECT_NE(std::wstring::npos, shown.find(L"red a\\b\n"));
  EXPECT_NE(std::wstring::npos, shown.find(std::wstring(254, L'm') + L"x\n"));
  EXPECT_TRUE(world.logHas(std::wstring(254, L'm') + L"x"));
  EXPECT_FALSE(world.logHas(std::wstring(254, L'm') + L"xy"));
}

}  // namespace
}  // namespace test
