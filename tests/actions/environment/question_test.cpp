// Questions of a list to its user, answered as a person answers them.
#include "actions/environment/question.h"
#include "actions/action_fixture.h"
#include "actions/dispatch.h"
#include "core/state.h"
#include "core/xml.h"
#include "creo/ProUI.h"
#include "headless/proui/ui.h"
#include "language/user_variables.h"
#include "language/variables.h"
#include "support/drawings.h"
#include "text/encoding.h"

namespace test {
namespace {

using headless::FileQuestion;
using namespace actions::question;

class Questions : public ActionTest {
 protected:
  void SetUp() override {
    world.part(L"BRACKET").with(L"COLOR", L"red");
    world.config("kvd_write_history_in_models=0");
  }
  static std::string ask(const std::string& type, const std::string& attributes) {
    return task("setUserVariable", "varName='V' varType='" + type + "' " + attributes);
  }
  static std::string direct(const std::string& value) {
    return task("setUserVariableDirect", "name='V' value='" + value + "'");
  }
  headless::Ui& ui() { return world.session().ui(); }
  headless::Dialog& dialog() { return *ui().dialog(kDialog); }
  // Runs a list with those tasks; the person does `action` in each question.
  std::wstring answered(const std::string& tasks, std::function<void()> action) {
    world.list("list.xml", tasks);
    world.start();
    ui().answerQuestions([action = std::move(action)](const headless::Question&) {
      action();
      return 0;
    });
    world.open(L"BRACKET", creo::ProMdlType::part);
    world.run("list.xml");
    return told(world.log());
  }
  void ok() { EXPECT_EQ(creo::ProNoError, ui().press(kDialog, kOk)); }
  static std::wstring variable(std::wstring_view name = L"v") {
    const std::wstring* value = language::userVariables().find(name);
    return value ? *value : L"(none)";
  }
  // What a person sees of the inputs: "kvaneUVInputPanel=red".
  std::string seen() {
    std::string all;
    for (const char* name : {"kvaneUVValueLabel", kPanel, kMenu, kCheck}) {
      if (!dialog().shown(name)) continue;
      std::wstring text = name == kMenu ? L"" : dialog().text(name);
      if (name == kMenu) {
        for (std::size_t i = 0; i < dialog().choices(kMenu).size(); ++i)
          text += text::fromUtf8(dialog().choices(kMenu)[i]) + L":" + dialog().labels(kMenu)[i] + L",";
      }
      all += std::string(name) + "=" + text::toUtf8(text) + " ";
    }
    return all;
  }
};

const std::string kChoices =
    "combo_c='4' combo_value_0='st' combo_name_0='steel' combo_value_1='br' combo_name_1='brass' combo_value_3='x'"
    " combo_value_4='beyond'";

TEST_F(Questions, EachKindShowsItsInputAndSetsWhatItHolds) {
  const struct {
    std::string type, attributes, seen;
    std::function<void()> answer;
    std::wstring value;
  } rows[] = {
      {"1", "varValue='%COLOR%!'", "kvaneUVValueLabel=Value kvaneUVInputPanel=red! ", [] {}, L"red!"},
      {"1", "varValue='%NONE%'", "kvaneUVValueLabel=Value kvaneUVInputPanel=%NONE% ",
       [this] { ui().type(kDialog, kPanel, L"typed"); }, L"typed"},
      {"2", kChoices, "kvaneUVValueLabel=Value kvaneUVChooser=st:steel,br:brass,x:x, ", [] {}, L"st"},
      {"2", kChoices, "kvaneUVValueLabel=Value kvaneUVChooser=st:steel,br:brass,x:x, ",
       [this] { ui().choose(kDialog, kMenu, "br"); }, L"br"},
      {"2", "", "kvaneUVValueLabel=Value kvaneUVChooser= ", [] {}, L"old"},
      {"3", "check_true='%COLOR%' check_false='%NONE%' check_def='true'",
       "kvaneUVValueLabel=Value kvaneUVCheck=red / %NONE% ", [] {}, L"red"},
      {"3", "check_true='yes' check_false='no'", "kvaneUVValueLabel=Value kvaneUVCheck=yes / no ", [] {}, L"no"},
      {"3", "check_true='yes' check_false='no'", "kvaneUVValueLabel=Value kvaneUVCheck=yes / no ",
       [this] { ui().setCheck(kDialog, kCheck, true); }, L"yes"},
      {"4", "varValue='x'", "", [] {}, L"old"},
  };
  std::string tasks;
  for (const auto& row : rows)
    tasks += direct("old") + ask(row.type, row.attributes) +
             task("setUserVariableDirect", "name='@number@' value='%user:V%'");
  std::size_t at = 0;
  answered(tasks, [&] {
    EXPECT_EQ(rows[at].seen, seen()) << at;
    rows[at++].answer();
    ok();
  });
  EXPECT_EQ(std::size(rows), at);
  for (std::size_t i = 0; i < std::size(rows); ++i) EXPECT_EQ(rows[i].value, variable(std::to_wstring(i))) << i;
  EXPECT_EQ(nullptr, ui().dialog(kDialog));
}

TEST_F(Questions, EnterCountsAsOkAndTheCrossAsCancel) {
  int asked = 0;
  EXPECT_EQ(L"B0 Set user variable|Exit with - OK Button|B1 Set user variable|Exit with - Cancel",
            answered(ask("1", "varValue='a'") + ask("1", "varValue='b'"), [&] {
              EXPECT_EQ(L"V", actions::openQuestion()->variable);
              if (asked++ == 0) ui().pressEnter(kDialog, kPanel);  // the second is left to the cross
            }));
  EXPECT_EQ(L"a", variable());
  EXPECT_EQ(nullptr, actions::openQuestion());
}

TEST_F(Questions, DescriptionsAndTheModelStandBeside) {
  const std::string lines = "varDescc='40' varDesc_0='For @mdln@' varDesc_1='" + std::string(249, 'a') +
                            "' varDesc_2='" + std::string(250, 'b') + "' varDesc_3='%NONE%' varDesc_39='too far'";
  const std::wstring reported = answered(ask("4", lines), [&] {
    EXPECT_EQ(L"BRACKET", dialog().text("kvaneUVModel"));
    EXPECT_EQ(L"For BRACKET", dialog().text("kvaneUVDescription_0"));
    EXPECT_EQ(std::wstring(249, L'a'), dialog().text("kvaneUVDescription_1"));
    EXPECT_EQ(L"", dialog().text("kvaneUVDescription_2"));
    EXPECT_EQ(L"%NONE%", dialog().text("kvaneUVDescription_3"));
    ok();
  });
  EXPECT_EQ(
      L"B0 Set user variable|W:Description length > 150 Characters per line aren't supported atm.|E:Can't find "
      L"parameter: NONE|W:The dialog has no place for description line 39|Exit with - OK Button",
      reported);
}

TEST_F(Questions, WithoutAModelTheDialogSaysSo) {
  world.list("list.xml", "");
  world.start();
  std::wstring model;
  ui().answerQuestions([&](const headless::Question&) {
    model = dialog().text("kvaneUVModel");
    ok();
    return 0;
  });
  const auto list =
      core::xmlParse(L"<task type=\"setUserVariable\" version=\"3\" varType=\"1\" varName=\"v\" varValue=\"%A%\"/>");
  actions::Subject none;
  EXPECT_EQ(actions::done, actions::dispatchAction(*core::xmlChildAt(list.value->root()->children, 0), none));
  EXPECT_EQ(L"no model (head or foot)", model);
  EXPECT_EQ(L"%A%", variable());
}

TEST_F(Questions, ADrawingsModelsAreChoices) {
  world.assembly(L"GEAR").uses(L"BRACKET", creo::ProMdlType::part);
  world.drawing(L"SHEET").uses(L"BRACKET", creo::ProMdlType::part).uses(L"GEAR", creo::ProMdlType::assembly);
  world.list("list.xml", ask("2", "combo_autosel='1' " + kChoices));
  world.start();
  std::string choices;
  ui().answerQuestions([&](const headless::Question&) {
    if (actions::openQuestion() && dialog().text("kvaneUVModel") == L"SHEET") {
      choices = seen();
      ui().choose(kDialog, kMenu, "GEAR.asm");
      ok();
    }
    return 0;
  });
  world.open(L"SHEET", creo::ProMdlType::drawing);
  world.run("list.xml");
  EXPECT_EQ("kvaneUVValueLabel=Value kvaneUVChooser=BRACKET.prt:BRACKET.prt,GEAR.asm:GEAR.asm, ", choices);
  EXPECT_EQ(L"GEAR.asm", variable());
}

TEST_F(Questions, FilesAndFoldersAreChosen) {
  writeBytes(world.models() + "/in.csv", "a");
  const std::string title(40, 't'), filter(90, 'f');
  const std::string texts = "varDesc_0='" + title + "' extension='" + filter + "' varValue=";
  const struct {
    std::string type, start;
    std::wstring folder, proposal, answer, value;
  } rows[] = {
      {"5", "d:/%COLOR%.csv", L"d:\\", L"red.csv", L"d:\\new.csv", L"d:\\new.csv"},
      {"5", "d:\\out\\name", L"d:\\out\\", L"", L"d:\\none\\new.csv", L"old"},  // no such folder
      {"5", "", L"d:\\", L"", std::wstring(L"d:\\") + std::wstring(280, L'x'), L"(none)"},
      {"6", "d:\\%COLOR%", L"d:\\red", L"", L"d:\\", L"d:\\"},
      {"7", "d:\\a.prt.3", L"d:\\", L"a.prt", L"d:\\in.csv", L"d:\\in.csv"},
      {"7", "%NONE%", L"d:\\", L"", L"d:\\none.csv", L"old"},  // no such file
      {"7", "x." + std::string(200, 'e'), L"d:\\", L"x." + std::wstring(178, L'e'), L"", L"old"},
  };
  std::string tasks;
  for (const auto& row : rows)
    tasks += direct("old") + ask(row.type, texts + "'" + row.start + "'") +
             task("setUserVariableDirect", "name='@number@' value='%user:V%'");
  world.list("list.xml", tasks);
  world.start();
  std::size_t at = 0;
  ui().answerFileQuestions([&](const FileQuestion& question) -> std::optional<std::wstring> {
    const auto& row = rows[at++];
    const bool isFolder = question.what == FileQuestion::What::folder;
    EXPECT_EQ(row.folder, question.folder) << at;
    EXPECT_EQ(row.proposal, question.proposal) << at;
    EXPECT_EQ(std::wstring(31, L't'), question.title);
    EXPECT_EQ(std::wstring(isFolder ? 0 : 80, L'f'), question.filter);
    if (row.answer.empty()) return std::nullopt;
    return row.answer;
  });
  world.open(L"BRACKET", creo::ProMdlType::part);
  world.run("list.xml");
  for (std::size_t i = 0; i < std::size(rows); ++i) EXPECT_EQ(rows[i].value, variable(std::to_wstring(i))) << i;
  EXPECT_TRUE(world.logHas(L"The chosen path is too long for a user variable"));
  EXPECT_EQ(std::size(rows), at);
}

TEST_F(Questions, AnUnknownTypeAsksNothing) {
  EXPECT_EQ(L"B0 Set user variable|E:Type not supported now|B1 Set user variable|E:Type not supported now",
            answered(ask("8", "") + ask("12", ""), [] { ADD_FAILURE() << "asked"; }));
  EXPECT_EQ(L"(none)", variable());
}

// What was answered for the model before isn't the answer for this one.
TEST_F(Questions, AFailingOperationLeavesNoAnswerAndNoDialog) {
  const std::wstring unread = L"The answer can't be read";
  const struct {
    const char *operation, *type;
    std::wstring error;
  } rows[] = {
      {"ProUIDialogCreate", "1", L"Exit, with Error at PROUIDialogCreate"},
      {"ProUIDialogActivate", "1", L"Exit, with Error at ProUIDialogActivate"},
      {"ProUIInputpanelShow", "1", L"Exit, the question's dialog can't be filled"},
      {"ProUIInputpanelValueSet", "1", L"Exit, the question's dialog can't be filled"},
      {"ProUIOptionmenuNamesSet", "2", L"Exit, the question's dialog can't be filled"},
      {"ProUIOptionmenuLabelsSet", "2", L"Exit, the question's dialog can't be filled"},
      {"ProUICheckbuttonTextSet", "3", L"Exit, the question's dialog can't be filled"},
      {"ProUIDialogCloseActionSet", "3", L"Exit, the question's dialog can't be filled"},
      {"ProUIInputpanelValueGet", "1", unread},
      {"ProUIOptionmenuSelectednamesGet", "2", unread},
      {"ProUICheckbuttonGetState", "3", unread},
      {"ProFileMdlnameSave", "5", L"The dialog for files can't be shown"},
      {"ProDirectoryChoose", "6", L"The dialog for files can't be shown"},
  };
  const std::string attributes = "varValue='new' check_true='new' check_false='new' combo_c='1' combo_value_0='new'";
  for (const char* type : {"1", "2", "3", "5", "6"})
    world.list(std::string("list") + type + ".xml", direct("old") + ask(type, attributes));
  world.start();
  world.open(L"BRACKET", creo::ProMdlType::part);
  for (const auto& row : rows) {
    const auto answer = [&](const headless::Question&) {
      if (row.error == unread) world.session().failNext(row.operation, creo::ProGeneralError);
      ui().press(kDialog, kOk);
      return 0;
    };
    ui().answerQuestions(answer);
    if (!core::pluginState().toolOpen) world.openTool();
    world.choose(std::string("list") + row.type + ".xml");
    if (row.error != unread) world.session().failNext(row.operation, creo::ProGeneralError);
    world.pressStart();
    EXPECT_EQ(L"(none)", variable()) << row.operation;
    EXPECT_EQ(nullptr, ui().dialog(kDialog)) << row.operation;
    EXPECT_TRUE(world.logHas(row.error)) << row.operation;
  }
}

}  // namespace
}  // namespace test
