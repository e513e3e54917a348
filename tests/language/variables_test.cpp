#include "language/variables.h"
#include "language/substitution.h"

#include <gtest/gtest.h>

#include "core/state.h"
#include "language/user_variables.h"
#include "os/processes.h"
#include "support/world.h"
#include "text/encoding.h"

namespace language {
namespace {

using creo::ProMdlType;

// A session with one part; nothing is run, templates are put in by hand.
class Variables : public testing::Test {
 protected:
  void SetUp() override {
    world.part(L"BRACKET")
        .with(L"COLOR", L"Red")
        .with(L"LOOP", L"%LOOP%")
        .with(L"NEXT", L"x%COLOR%")
        .with(L"ZEROS", L"2.5000")
        .with(L"WHOLE", L"100")
        .with(L"COUNT", 42)
        .with(L"ALPHABET", L"\u00E9\u00F1\u0142\u0159\u00DF\u03C9\u0436\u00B5 \u00C9")
        .with(L"MASS", 2.5)
        .with(L"DONE", true);
    os::surroundings().clock = std::make_shared<os::FixedClock>(1710000000);
    world.start();
    model = world.open(L"BRACKET", ProMdlType::part);
    userVariables().set(L"Size", L"A1");
    os::setEnvironment(L"KVD_TEST_OUTER", L"\u00A7KVD_TEST_INNER\u00A7!");
    os::setEnvironment(L"KVD_TEST_INNER", L"in");
    os::setEnvironment(L"KVD_TEST_SELF", L"\u00A7KVD_TEST_SELF\u00A7");
  }
  // The outcome as a short text: "0:text", "1" for a failure that wrote nothing.
  static std::wstring outcome(const Replaced& replaced) {
    return std::to_wstring(replaced.status) + (replaced.written ? L":" + replaced.text : L"");
  }

  test::World world;
  creo::ProMdl model;
};

struct Case {
  const wchar_t* input;
  const wchar_t* expected;
  const wchar_t* logged = L"";
};

TEST_F(Variables, AreReplacedPassByPass) {
  const Case cases[] = {
      {L"abc", L"0:abc"},
      {L"", L"0:"},
      {L"@mdln@ @filename@", L"0:BRACKET BRACKET"},
      {L"@mdltype@ @genname@ @mdlno@@fileversion@", L"0:prt - 1.1"},
      {L"@MDLN@ @unknown@", L"0:@MDLN@ @unknown@"},
      {L"@datede@@mdln@", L"0:09.03.2024BRACKET"},
      // Environment
      {L"\u00A7KVD_TEST_OUTER\u00A7", L"0:in!"},
      {L"\u00A7KVD_TEST_UNSET\u00A7/x", L"0:\u00A7KVD_TEST_UNSET\u00A7/x"},
      {L"\u00A7\u00A7", L"0:\u00A7"},
      {L"\u00A7 7 \u00A7KVD_TEST_INNER\u00A7", L"0:\u00A7 7 in"},
      {L"\u00A7KVD_TEST_SELF\u00A7", L"1", L"too many replacements"},
      // Parameters
      {L"%COLOR%", L"0:Red"},
      {L"%color%/%COUNT%/%MASS%/%DONE%", L"0:Red/42/2.500000/true"},
      {L"%%", L"0:%"},
      {L"5 % of 10 %", L"0:5 % of 10 %"},
      {L"50% off 20%", L"0:50% off 20%"},
      {L"%NEXT%", L"0:xRed"},
      {L"%COLOR%%COUNT%", L"0:Red42"},
      {L"_%LOOP%", L"1", L"too many replacements"},
      {L"%OTHER_MISSING%", L"1", L"Can't find parameter: OTHER_MISSING"},
      {L"%COLOR% %OTHER%", L"1", L"Can't find parameter: OTHER"},
      // Prefixes
      {L"%user:SIZE%", L"0:A1"},
      {L"%USER:tolower:size%", L"0:a1"},
      {L"%user:length:UNDECLARED%", L"1",
       L"The user variable isn't declared with a 'set user variable' action from the environment group."},
      {L"%length:COLOR%%toupper:COLOR%%tolower:COLOR%", L"0:3REDred"},
      {L"%nozero:ZEROS%/%nozero:WHOLE%/%nozero:MASS%", L"0:2.5/1/2.500000"},
      {L"%dubase:MASS%", L"0:2.500000e+00"},
      {L"%toupper:ALPHABET%|%tolower:ALPHABET%",
       L"0:\u00C9\u00D1\u0141\u0158\u00DF\u03A9\u0416\u00B5 \u00C9|"
       L"\u00E9\u00F1\u0142\u0159\u00DF\u03C9\u0436\u00B5 \u00E9"},
      {L"%toupper:length:COLOR%", L"1", L"Can't find parameter: length:COLOR"},
      {L"%user:%", L"1", L"Can't find parameter: user:"},
  };
  for (const Case& row : cases) {
    EXPECT_EQ(row.expected, outcome(replaceVariables(row.input, model))) << text::toUtf8(row.input);
    if (*row.logged) EXPECT_TRUE(world.logHas(row.logged)) << text::toUtf8(row.logged);
  }
}

// A text on its way may have ten times its room, and is written anew for each name.
TEST_F(Variables, OfALargeTextEndWhereItIsWrittenTooOften) {
  constexpr std::size_t kRoom = 26'000;
  std::wstring text(8 * kRoom, L'x');
  for (int i = 0; i < 1000; ++i) {
    const std::wstring name = L"N" + std::to_wstring(i);
    userVariables().set(name, L"");
    text += L"%user:" + name + L"%";
  }
  EXPECT_EQ(L"1", outcome(replaceVariables(text, model, kRoom)));
  EXPECT_TRUE(world.logHas(L"too many replacements"));
}

TEST_F(Variables, WithoutAModelKeepWhatNeedsOne) {
  const Case cases[] = {
      {L"%NAME% %% @mdln@ %user:SIZE%", L"0:%NAME% %% @mdln@ %user:SIZE%"},
      {L"\u00A7KVD_TEST_INNER\u00A7 @dateen@", L"0:in 09-03-2024"},
  };
  for (const Case& row : cases)
    EXPECT_EQ(row.expected, outcome(replaceVariables(row.input, {}))) << text::toUtf8(row.input);
}

TEST_F(Variables, CountOnceATextHoweverOftenItAsks) {
  core::pluginState().numberCounter = 7;
  EXPECT_EQ(L"0:7-7", outcome(replaceVariables(L"@number@-@number@", {})));
  EXPECT_EQ(L"0:@NUMBER@", outcome(replaceVariables(L"@NUMBER@", {})));
  EXPECT_EQ(9, core::pluginState().numberCounter);
  core::pluginState().numberCounter = 123456789;
  EXPECT_EQ(L"0:1234567", outcome(replaceVariables(L"@number@", {})));
}

TEST_F(Variables, ThatDontFitSaySo) {
  const std::wstring long259(259, L'x');
  EXPECT_EQ(long259, replaceVariables(long259, model).text);
  const Replaced tooLong = replaceVariables(long259 + L"x", model);
  EXPECT_EQ(L"0:FAILURE", outcome(tooLong));
  EXPECT_TRUE(tooLong.tooLong && !tooLong);
  EXPECT_TRUE(world.logHas(L"The replaced output is to large for this task"));
  // Beyond the basic plane a character counts two.
  EXPECT_TRUE(replaceVariables(L"\U0001F600\U0001F600", model, 4).tooLong);
  EXPECT_EQ(L"1", outcome(replaceVariables(L"%" + long259 + L"x%", model)));
  EXPECT_TRUE(world.logHas(L"longer than 259 characters"));
  EXPECT_EQ(L"0:FAILURE", outcome(replaceVariables(std::wstring(200000, L'%'), model)));
}

TEST_F(Variables, FailWithTheModelTheyAsk) {
  world.session().failNext("ProMdlTypeGet", creo::ProGeneralError);
  EXPECT_EQ(L"1", outcome(replaceVariables(L"abc", model)));
  EXPECT_TRUE(world.logHas(L"Failure while get Modeltype"));
  world.session().failNext("ProMdlNameGet", creo::ProGeneralError);
  EXPECT_EQ(L"0:@mdln@ @filename@", outcome(replaceVariables(L"@mdln@ @filename@", model)));
  for (const char* operation : {"ProMdlToModelitem", "ProParameterInit", "ProParameterValueGet"}) {
    world.session().failNext(operation, creo::ProGeneralError);
    EXPECT_EQ(L"1", outcome(replaceVariables(L"%COLOR%", model))) << operation;
  }
  EXPECT_TRUE(world.logHas(L"Failure while read parameter: COLOR"));
}

TEST_F(Variables, AskOnlyWhatStandsInTheText) {
  replaceVariables(L"plain text", model);
  EXPECT_EQ(0, world.session().calls("ProParameterInit"));
  const int names = world.session().calls("ProMdlNameGet");
  replaceVariables(L"@date@ %COUNT%", model);
  EXPECT_EQ(names, world.session().calls("ProMdlNameGet"));
}

TEST_F(Variables, ReplaceLinesAndPaths) {
  EXPECT_EQ(L"0:x=1;x=1 Red", outcome(replaceVariablesLine(L"@para@;@line@ %COLOR%", model, L"x=1")));
  core::pluginState().openKvzPath = L"c:\\kvz\\";
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"@project_dir@a/%COLOR%", L"c:\\kvz\\models\\a\\Red"},
      {L"@project_dir@/a", L"c:\\kvz\\models\\a"},
      {L"\"@project_dir@\\a\" @project_dir@", L"\"c:\\kvz\\models\\a\" c:\\kvz\\models"},
      {L"d:/@project_dir@", L"d:\\@project_dir@"},
      {L"d:/%MISSING%", L"d:\\%MISSING%"},
  };
  for (const auto& [input, expected] : cases)
    EXPECT_EQ(expected, replaceVariablesPath(input, model, L"models")) << text::toUtf8(input);
}

TEST(ReplaceAllText, ReadsAsFarAsItsRoomGoes) {
  const struct {
    const wchar_t *source, *find, *by;
    std::size_t size;
    const wchar_t* expected;
  } cases[] = {
      {L"a.b.c", L".", L"--", 20, L"a--b--c"},
      {L"aaa", L"aa", L"a", 20, L"aa"},
      {L"abc", L"", L"x", 20, L"abc"},
      {L"a.b.c", L".", L"", 4, L"ab"},
      {L"abcd", L"cd", L"x", 4, L"abx"},
      {L"abc", L"a", L"xyz", 3, L"xy"},
      {L"abc", L"a", L"x", 0, L""},
  };
  for (const auto& row : cases)
    EXPECT_EQ(row.expected, replaceAllText(row.source, row.find, row.by, row.size)) << text::toUtf8(row.source);
}

TEST(UserVariables, KeepTheirOrderAndIgnoreCase) {
  UserVariableTable table;
  table.set(L"B", L"1");
  table.set(L"\u00C4", L"2");
  table.set(L"b", L"3");
  table.set(std::wstring(300, L'n'), std::wstring(300, L'v'));
  EXPECT_EQ((std::vector<std::wstring>{L"B", L"\u00C4", std::wstring(259, L'n')}), table.names());
  EXPECT_EQ((std::vector<std::wstring>{L"3", L"2", std::wstring(259, L'v')}), table.values());
  EXPECT_EQ(L"2", *table.find(L"\u00E4"));
  EXPECT_EQ(nullptr, table.find(L"C"));
}

}  // namespace
}  // namespace language
