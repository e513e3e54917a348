// The history that runs leave in models, and what the dialog shows of it.
#include "run/history.h"

#include <gtest/gtest.h>

#include "core/state.h"
#include "creo/ProExtdata.h"
#include "creo/ProMdl.h"
#include "headless/proui/ui.h"
#include "os/processes.h"
#include "support/world.h"

namespace {

using namespace creo;
using core::pluginState;
using test::World;

class History : public testing::Test {
 protected:
  void SetUp() override {
    world.part(L"PIN");
    ASSERT_EQ(0, world.start());
    pin = world.open(L"PIN", ProMdlType::part);
    choose(L"standards.kvz", L"clean.xml", L"01.02.2024 10:30");
  }
  static void choose(const std::wstring& package, const std::wstring& list, const std::wstring& date) {
    pluginState().currentKvz = package;
    pluginState().currentList = list;
    pluginState().currentDate = date;
  }
  // "NrOfLists=1 KVZName1=..." of the slots that there are.
  std::wstring slots(int records) const {
    const ProExtdataClass cls{L"kvpslot", pin};
    std::wstring all = L"n=" + std::to_wstring(ProExtdataSlotRead(cls, L"NrOfLists").value.integer);
    for (int i = 1; i <= records; ++i) {
      for (const wchar_t* name : {L"KVZName", L"ListName", L"Date", L"Mac", L"Username", L"Company"}) {
        const auto slot = ProExtdataSlotRead(cls, name + std::to_wstring(i));
        if (slot) all += L" " + slot.value.text;
      }
    }
    return all;
  }

  World world;
  ProMdl pin;
};

TEST_F(History, EachRunAddsARecord) {
  run::writeHistory(pin);
  EXPECT_EQ(L"n=1 standards.kvz clean.xml 01.02.2024 10:30 00:00:00:00:00:00 tester OSTELO Works", slots(1));
  run::writeHistory(pin);
  EXPECT_EQ(L"2", slots(2).substr(2, 1));
  ASSERT_EQ(ProNoError, ProMdlSave(pin));
  EXPECT_NE(std::string::npos, world.document("PIN.prt").find("clean.xml")) << "the records go with the model";
}

TEST_F(History, TheTextMarksTheChosenListAndPadsItsColumns) {
  EXPECT_EQ(L"No history found", run::historyText("PIN.PRT"));
  run::writeHistory(pin);
  choose(L"standards.kvz", L"other.xml", L"03.04.2024 11:00");
  os::setEnvironment(L"username", L"");
  run::writeHistory(pin);
  EXPECT_EQ(
      L"n=2 standards.kvz clean.xml 01.02.2024 10:30 00:00:00:00:00:00 tester OSTELO Works"
      L" standards.kvz other.xml 03.04.2024 11:00 00:00:00:00:00:00 OSTELO Works",
      slots(2));
  const std::wstring package = L"standards.kvz" + std::wstring(37, L' '), gap(6, L' ');
  const std::wstring padding(41, L' ');
  EXPECT_EQ(L" 01.02.2024 10:30" + gap + package + gap + L"clean.xml" + padding + gap + L"tester\n*03.04.2024 11:00" +
                gap + package + gap + L"other.xml" + padding + gap + L"tester\n",
            run::historyText("PIN.PRT"))
      << "a user that is missing reads as the one before";
  EXPECT_EQ(L"No history found", run::historyText("ABSENT.PRT"));
  EXPECT_EQ(L"No model selected", run::historyText("PIN"));
}

TEST_F(History, TheReworkTestAsksForPackageAndList) {
  EXPECT_FALSE(run::isAlreadyReworked(pin)) << "a model without records";
  run::writeHistory(pin);
  const struct {
    const wchar_t *package, *list;
    bool reworked;
  } cases[] = {
      {L"standards.kvz", L"clean.xml", true},
      {L"standards.kvz", L"other.xml", false},
      {L"others.kvz", L"clean.xml", false},
      {L"STANDARDS.KVZ", L"clean.xml", false},
  };
  for (const auto& c : cases) {
    choose(c.package, c.list, L"");
    EXPECT_EQ(c.reworked, run::isAlreadyReworked(pin)) << c.package << c.list;
  }
  choose(L"standards.kvz", L"clean.xml", L"");
  pluginState().writeExtData = 0;
  run::writeHistory(pin);
  EXPECT_EQ(L"1", slots(0).substr(2)) << "switched off nothing is written";
  EXPECT_TRUE(run::isAlreadyReworked(pin)) << "and older records are still seen";
  pluginState().autoUnsetReworkedData = 0;
  EXPECT_FALSE(run::isAlreadyReworked(pin));
}

TEST_F(History, NamesLongerThanTheirSlotsAreFoundAgain) {
  const std::wstring longName(400, L'k');
  choose(longName, L"clean.xml", L"");
  run::writeHistory(pin);
  EXPECT_EQ(259u, ProExtdataSlotRead({L"kvpslot", pin}, L"KVZName1").value.text.size());
  EXPECT_TRUE(run::isAlreadyReworked(pin));
}

TEST_F(History, DataThatCannotBeOpenedOrIsDamagedStopsNothing) {
  for (const char* operation : {"ProExtdataInit", "ProExtdataLoadAll", "ProExtdataClassRegister"}) {
    world.session().failNext(operation, ProGeneralError);
    run::writeHistory(pin);
    EXPECT_EQ(L"n=0", slots(1)) << operation;
  }
  run::writeHistory(pin);
  ProExtdataValue count;
  count.integer = 2'000'000'000;
  ASSERT_EQ(ProNoError, ProExtdataSlotWrite({L"kvpslot", pin}, L"NrOfLists", count, 1));
  EXPECT_EQ(1U, run::readHistory(pin).size()) << "what isn't there is no record";
  EXPECT_EQ(2'000'000'000, run::historyCount(pin));
  choose(L"another.kvz", L"clean.xml", L"");
  EXPECT_FALSE(run::isAlreadyReworked(pin)) << "ends although the count says two thousand million";
  world.session().failNext("ProExtdataInit", ProGeneralError);
  EXPECT_FALSE(run::isAlreadyReworked(pin));
}

TEST_F(History, EmptyNamesAreSaidInTheMessageArea) {
  choose(L"", L"", L"");
  run::writeHistory(pin);
  EXPECT_NE(std::wstring::npos, world.messages().find(L"currentkvzname == ''"));
  EXPECT_NE(std::wstring::npos, world.messages().find(L"currentactname == ''"));
}

TEST(HistoryDialog, ShowsTheFirstMarkedRowAndGoes) {
  World world;
  world.part(L"PIN");
  world.list("a.xml", "<task type='saveModel' version='3' forPRT='true' forEF='false'/>");
  world.runOn(L"PIN", ProMdlType::part, "a.xml");
  headless::Ui& ui = world.session().ui();
  std::wstring shown;
  ui.answerQuestions([&](const headless::Question& question) {
    shown = ui.dialog(question.dialog)->text("kvaneHistoryTA");
    ui.press(question.dialog, "kvaneHistoryOkBtn");
    return 0;
  });
  ui.press("kvanerunner", "HistoryBtn_MenuRMBChooser");
  EXPECT_EQ(L"", shown) << "no row is marked";
  ui.selectRows("kvanerunner", "LargeTable", {"PIN.PRT"});
  ui.press("kvanerunner", "HistoryBtn_MenuRMBChooser");
  EXPECT_NE(std::wstring::npos, shown.find(L"standards.kvz")) << "the dialog's text";
  EXPECT_EQ(L'*', shown[0]);
  EXPECT_EQ(nullptr, ui.dialog("kvanehistory"));
}

}  // namespace
