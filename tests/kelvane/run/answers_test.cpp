// Runs of lists that ask, without a person to answer.
#include "kelvane/run/run_fixture.h"

namespace test {
namespace {

using testing::HasSubstr;

std::string ask(const std::string& type, const std::string& attributes) {
  return "<task type='setUserVariable' version='3' forPRT='true' forEF='false' varType='" + type + "' " + attributes +
         "/>";
}
const std::string kWrite =
    "<task type='editModelParameter' version='3' forPRT='true' forEF='false' forInstances='false' searchin='1'"
    " name='NORM' totype='0' value='%user:V%'/>" +
    kSave;

class Answers : public RunFixture {
 protected:
  void SetUp() override { part(L"A").with(L"NORM", L"old"); }
};

TEST_F(Answers, AnAnswerOrElseTheStartValueIsTaken) {
  const std::string choice =
      "varName='V' combo_c='2' combo_value_0='st' combo_name_0='steel' combo_value_1='br'"
      " combo_name_1='brass'";
  const std::string check = "varName='V' check_true='yes' check_false='no'";
  const struct {
    std::string question;
    std::vector<std::string> more;
    const char* value;
  } rows[] = {
      {ask("1", "varName='V' varValue='@mdln@!'"), {}, "A!"},
      {ask("1", "varName='V'"), {"--answer", "v=first", "--answer", "v=a=b"}, "a=b"},
      {ask("2", choice), {}, "st"},
      {ask("2", choice), {"--answer", "V=br"}, "br"},
      {ask("2", choice), {"--answer", "V=brass"}, "br"},
      {ask("3", check), {}, "no"},
      {ask("3", check), {"--answer", "V=true"}, "yes"},
      {ask("3", check), {"--answer", "V=yes"}, "yes"},
      {ask("3", check + " check_def='true'"), {"--answer", "V=no"}, "no"},
      {ask("4", "") + ask("1", "varName='V' varValue='b'"), {}, "b"},
      {ask("6", "varName='V'"), {"--answer", "V=" + models()}, "\\models"},
      {ask("5", "varName='V' varValue='d:\\x.csv'"), {}, "d:\\x.csv"},
  };
  for (const auto& row : rows) {
    std::vector<std::string> more = row.more;
    more.insert(more.end(), {"--again"});
    list("ask.xml", row.question + kWrite);
    const Ended ended = run("ask", more);
    EXPECT_EQ(0, ended.code) << row.question << ended.err << ended.out;
    EXPECT_THAT(kelvane({"show", models(), "A.PRT"}).out, HasSubstr(row.value)) << row.question;
  }
}

TEST_F(Answers, AQuestionWithNeitherEndsTheRunBeforeItBegins) {
  const std::string refused = "<filter><item type='filename' filtertype='positive' filename='NOBODY'/></filter>";
  const std::string inGroup = "<task type='groupActions' version='3' forPRT='true' forEF='false'><subtasks>" +
                              ask("1", "varName='V'") + "</subtasks></task>";
  const struct {
    std::string question;
    std::vector<std::string> more;
    std::string fault;
  } rows[] = {
      {ask("1", "varName='V'"),
       {},
       "actionlists/ask.xml: it asks for V (B0, a text, without a start value); give --answer NAME=VALUE"},
      {ask("1", "varName='X' varValue='1'") + inGroup, {}, "V (B1 - G0, a text"},
      {"<task type='setUserVariable' version='3' forEF='true' varType='1' varName='V'>" + refused + "</task>",
       {},
       "V (B0, "},
      {ask("2", "varName='V'"), {}, "V (B0, a choice, without a start value)"},
      {ask("7", "varName='V' varValue='d:\\'"), {}, "V (B0, a file to read, without"},
      {ask("1", "varName='V'"), {"--answer", "V"}, "--answer V: write NAME=VALUE"},
      {ask("1", "varName='VALUE'"),
       {"--answer", "VALU=1"},
       "--answer: the list doesn't ask for 'VALU'; did you mean 'VALUE'?"},
      {ask("2", "varName='V' combo_c='1' combo_value_0='steel'"),
       {"--answer", "V=stel"},
       "--answer V: there is no choice 'stel'; did you mean 'steel'?"},
      {ask("7", "varName='V'"), {"--answer", "V=" + path("none.csv")}, "none.csv' can't be chosen as a file to read"},
  };
  for (const auto& row : rows) {
    list("ask.xml", row.question + kWrite);
    const Ended ended = run("ask", row.more);
    EXPECT_EQ(2, ended.code) << row.question;
    EXPECT_THAT(ended.err, HasSubstr(row.fault)) << row.question;
    EXPECT_EQ(1, std::count(ended.err.begin(), ended.err.end(), '\n')) << ended.err;
  }
  EXPECT_EQ(std::vector<std::string>{"A.prt.1"}, filesIn("models"));
}

TEST_F(Answers, AQuestionThatIsSwitchedOffNeedsNone) {
  list("ask.xml", ask("1", "varName='V' deak='true'") +
                      "<task type='groupActions' version='3' forPRT='true' forEF='false' deak='yes'><subtasks>" +
                      ask("1", "varName='V'") + "</subtasks></task>" + kAddNorm + kSave);
  EXPECT_EQ(0, run("ask").code);
}

TEST_F(Answers, WhatTurnsOutToBeNoAnswerIsCancelledAndTold) {
  list("ask.xml", ask("5", "varName='V' varValue='d:\\none\\@mdln@.csv'") +
                      ask("3", "varName='W' check_true='@mdln@' check_false='no'") + kAddNorm + kSave);
  const Ended ended = run("ask", {"--answer", "W=B"});
  EXPECT_EQ(1, ended.code);
  EXPECT_THAT(ended.err, HasSubstr("error: the question for V: '" + models() + "/none/A.csv' can't be chosen"));
  EXPECT_THAT(ended.err, HasSubstr("error: the question for W: 'B' is neither 'true' nor 'false' nor one of 'A / no'"));
}

TEST_F(Answers, ListsNamesTheQuestionsAndCheckTheirFaults) {
  list("ask.xml", ask("2", "varName='V' combo_c='2' combo_value_0='st' combo_value_1='br'") + ask("1", "varName='W'"));
  EXPECT_EQ(
      "ask.xml\n         asks for V: a choice: st, br, at first 'st'\n"
      "         asks for W: a text, without a start value\n",
      kelvane({"lists", path("standards")}).out);
  EXPECT_THAT(kelvane({"lists", path("standards"), "--json"}).out, HasSubstr("\"variable\": \"W\""));
  list("ask.xml", ask("9", "varName='V'") + ask("2", "varName='V' combo_c='2'") + ask("1", ""));
  const std::string found = kelvane({"check", path("standards")}).out;
  EXPECT_THAT(found, HasSubstr("B0: 'varType': none of 1, 2, 3, 4, 5, 6, 7: '9'"));
  EXPECT_THAT(found, HasSubstr("B1: the question has nothing to choose from"));
  EXPECT_THAT(found, HasSubstr("B2: the question has no 'varName': its answer is lost"));
}

TEST_F(Answers, ADryRunSendsNoRequest) {
  list("ask.xml",
       "<task type='setUserVariableFromUrl' version='3' forPRT='true' forEF='false' name='V'"
       " value='http://u:pw@127.0.0.1:1/@mdln@'/>");
  const Ended ended = run("ask", {"-n"});
  EXPECT_EQ(0, ended.code) << ended.err;
  EXPECT_THAT(ended.out, HasSubstr("would send GET http://127.0.0.1:1/A\n"));
}

}  // namespace
}  // namespace test
