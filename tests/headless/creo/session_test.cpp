#include "creo/ProMacro.h"
#include "creo/ProMdlCopy.h"
#include "creo/ProMenu.h"
#include "creo/ProMessage.h"
#include "creo/ProServer.h"
#include "creo/ProSession.h"
#include "creo/ProSolid.h"
#include "creo/ProUtil.h"
#include "creo/ProWindow.h"
#include "creo/pfcSession.h"
#include "headless/macros/macros.h"
#include "headless/model/models.h"
#include "headless/proui/ui.h"
#include "headless/session/menu.h"
#include "headless/session/options.h"
#include "headless/session_fixture.h"

namespace headless {
namespace {

using namespace creo;

class SessionOfModels : public test::HeadlessSession {
 protected:
  SessionOfModels() {
    model("a.prt.1");
    model("b.prt.1");
    model("d.drw.1");
  }
  // Every notification is written down as "26:A/1 ".
  void listen() {
    for (const int type : {9, 24, 26, 29, 41, 90, 94, 100, 103, 110})
      ProNotificationSet(ProNotifyType{type}, [this](const ProNotification& notification) {
        heard += std::to_string(static_cast<int>(notification.type)) + ":" +
                 text::toUtf8(ProMdlNameGet(notification.model).value) + "/" + std::to_string(notification.window) +
                 " ";
        return ProNoError;
      });
  }
  std::string heardSoFar() {
    std::string out = std::move(heard);
    heard.clear();
    return out;
  }
  std::string heard;
};

TEST_F(SessionOfModels, AHandlersErrorKeepsAModelFromBeingSavedOrErased) {
  const ProMdl part = retrieve(L"A");
  ProError answer = ProStopVisit;
  for (const auto type : {ProNotifyType::saveBefore, ProNotifyType::eraseBefore, ProNotifyType::regenerateBefore})
    ProNotificationSet(type, [&answer](const ProNotification&) { return answer; });
  EXPECT_EQ(ProGeneralError, ProMdlSave(part));
  EXPECT_EQ(ProGeneralError, ProMdlErase(part));
  EXPECT_EQ(ProGeneralError, ProMdlEraseAll(part));
  EXPECT_EQ(
      "A.PRT isn't saved: the handler of notification 103 answered -25\n"
      "A.PRT isn't erased: the handler of notification 9 answered -25\n"
      "A.PRT isn't erased: the handler of notification 9 answered -25\n",
      messages());
  EXPECT_EQ(ProNoError, ProSolidRegenerate(part, kRegenerateNoFlags)) << "no other answer is read";
  ProNotificationSet(ProNotifyType::saveBefore,
                     [](const ProNotification&) -> ProError { throw std::runtime_error("full"); });
  EXPECT_EQ(ProGeneralError, ProMdlSave(part)) << "nor does a broken handler let it go on";
  EXPECT_TRUE(session().savedDocuments().empty());
  answer = ProNoError;
  EXPECT_EQ(ProNoError, ProMdlErase(part));
}

TEST_F(SessionOfModels, NotificationsComeOnceControlIsBack) {
  session();
  listen();
  const ProMdl a = session().open(L"A", ProMdlType::part).value;
  EXPECT_EQ("", heardSoFar());
  EXPECT_EQ(a, ProMdlCurrentGet().value);
  session().settle();
  EXPECT_EQ("110:A/1 41:A/1 90:A/1 26:A/1 ", heardSoFar());

  EXPECT_EQ(ProNotFound, ProObjectwindowCreate(L"B", ProMdlType::part).error) << "it isn't in memory";
  const ProMdl b = retrieve(L"B");
  EXPECT_EQ(ProNotFound, ProMdlWindowGet(b).error);
  const int window = ProObjectwindowCreate(L"B", ProMdlType::part).value;
  EXPECT_EQ(b, ProWindowMdlGet(window).value);
  EXPECT_EQ(window, ProObjectwindowCreate(L"B", ProMdlType::part).value);
  EXPECT_EQ("90:B/2 ", heardSoFar());
  EXPECT_EQ(ProNoError, ProMdlDisplay(b));
  EXPECT_EQ(ProNoError, ProWindowActivate(window));
  EXPECT_EQ(a, ProMdlCurrentGet().value) << "the window isn't in front before control is back";
  session().settle();
  EXPECT_EQ("24:B/2 41:B/2 26:B/2 ", heardSoFar());
  EXPECT_EQ(b, ProMdlCurrentGet().value);

  EXPECT_EQ(ProNoError, ProWindowActivate(1));
  EXPECT_EQ(ProNoError, ProWindowCurrentClose());
  EXPECT_EQ(2, ProWindowCurrentGet().value) << "nor is one closed";
  ProMdlSave(a);
  EXPECT_EQ("103:A/0 ", heardSoFar()) << "before the save, at once";
  session().settle();
  EXPECT_EQ("26:A/1 29:B/2 ", heardSoFar());
  EXPECT_EQ(1, ProWindowCurrentGet().value);
  EXPECT_EQ(ProNotFound, ProMdlWindowGet(b).error);
  EXPECT_EQ(ProBadInputs, ProWindowActivate(2));
  EXPECT_EQ(ProBadInputs, ProWindowCurrentSet(0));

  ProMdlDisplay(b);  // into the current window
  EXPECT_EQ(b, ProMdlCurrentGet().value);
  ProMdlErase(b);
  EXPECT_EQ(b, ProMdlCurrentGet().value);
  session().settle();
  EXPECT_EQ(ProNotFound, ProMdlCurrentGet().error) << "the window is empty";
}

// Calls act in the current window; the person sees the active one, and edits its model.
TEST_F(SessionOfModels, TheCurrentWindowIsntAlwaysTheActiveOne) {
  session();
  EXPECT_EQ(1, ProWindowCurrentGet().value) << "the first window is there, and empty";
  EXPECT_EQ(ProNotFound, ProWindowCurrentClose());
  const ProMdl a = session().open(L"A", ProMdlType::part).value;
  const ProMdl b = session().open(L"B", ProMdlType::part).value;
  EXPECT_EQ(2, ProMdlWindowGet(b).value);
  EXPECT_EQ(ProNoError, ProWindowCurrentSet(1));
  EXPECT_EQ(1, ProWindowCurrentGet().value);
  EXPECT_EQ(b, ProMdlCurrentGet().value);
  const ProMdl d = retrieve(L"D", ProMdlType::drawing);
  EXPECT_EQ(ProNoError, ProMdlDisplay(d));
  EXPECT_EQ(d, ProWindowMdlGet(1).value);
  EXPECT_EQ(b, ProMdlCurrentGet().value);

  EXPECT_EQ(ProGeneralError, ProWindowDelete(1)) << "the current one";
  EXPECT_EQ(ProGeneralError, ProWindowDelete(2)) << "the active one";
  EXPECT_EQ(ProBadInputs, ProWindowDelete(7));
  EXPECT_EQ(ProNoError, ProWindowCurrentSet(2));
  EXPECT_EQ(ProNoError, ProWindowDelete(1));
  EXPECT_EQ(ProNotFound, ProWindowMdlGet(1).error) << "emptied, at once";
  EXPECT_EQ(ProNotFound, ProWindowRefit(1));
  EXPECT_EQ(ProBadInputs, ProWindowRefit(kAnyWindow));
  EXPECT_EQ(ProNoError, ProWindowRefit(2));
  EXPECT_EQ(1, ProObjectwindowCreate(L"A", ProMdlType::part).value) << "an empty one is taken first";
  EXPECT_EQ(3, ProObjectwindowCreate(L"D", ProMdlType::drawing).value);
  EXPECT_EQ(ProNoError, ProWindowDelete(3));
  EXPECT_EQ(ProBadInputs, ProWindowMdlGet(3).error);

  EXPECT_EQ(ProNoError, session().close());
  session().settle();
  EXPECT_EQ(a, ProMdlCurrentGet().value) << "the window that was active before";
  EXPECT_EQ(ProNoError, session().close());
  session().settle();
  EXPECT_EQ(ProNotFound, ProMdlCurrentGet().error);
  EXPECT_EQ(1, ProWindowCurrentGet().value);
}

TEST_F(SessionOfModels, ErasuresAreCompleteOnceControlIsBack) {
  model("top.asm.1", R"("components": [{"name": "a", "type": "prt"}, {"name": "b", "type": "prt"}])");
  model("lone.asm.1", R"("components": [{"name": "c", "type": "prt"}])");
  model("user.asm.1", R"("components": [{"name": "c", "type": "prt"}])");
  model("pair.asm.1", R"("components": [{"name": "e", "type": "prt"}])");
  for (const char* part : {"c.prt.1", "e.prt.1"}) model(part);
  const ProMdl pair = retrieve(L"PAIR", ProMdlType::assembly), e = retrieve(L"E");
  const ProMdl top = retrieve(L"TOP", ProMdlType::assembly), lone = retrieve(L"LONE", ProMdlType::assembly);
  const ProMdl a = retrieve(L"A"), b = retrieve(L"B"), c = retrieve(L"C"), d = retrieve(L"D", ProMdlType::drawing);
  EXPECT_EQ(ProGeneralError, ProMdlErase(a));
  EXPECT_EQ("A.PRT isn't erased: another model in memory uses it\n", messages());
  session().clearMessages();
  // One behind the other: who goes himself doesn't keep what he uses.
  EXPECT_EQ(ProNoError, ProMdlErase(top));
  EXPECT_EQ(ProNoError, ProMdlErase(a));
  EXPECT_EQ(ProNoError, ProMdlEraseAll(lone));
  EXPECT_EQ(ProNoError, ProMdlErase(c));
  EXPECT_EQ(ProNoError, ProMdlErase(d));
  EXPECT_EQ(ProNoError, ProMdlEraseAll(pair));
  EXPECT_EQ(ProNoError, ProMdlErase(pair)) << "which takes nothing of that back";
  EXPECT_EQ(top, retrieve(L"TOP", ProMdlType::assembly)) << "all are there still";
  EXPECT_EQ(ProExists, ProMdlCopy(b, L"A").error) << "and their names aren't free";
  // Two of them are wanted again meanwhile.
  retrieve(L"USER", ProMdlType::assembly);
  EXPECT_EQ(ProNoError, ProMdlDisplay(d));
  session().settle();
  EXPECT_EQ("C.PRT isn't erased: another model in memory uses it\nD.DRW isn't erased: a window shows it by now\n",
            messages());
  for (const ProMdl gone : {top, a, lone, pair, e}) EXPECT_EQ(ProBadInputs, ProMdlNameGet(gone).error);
  EXPECT_EQ(L"C", ProMdlNameGet(c).value);
  EXPECT_EQ(d, ProMdlCurrentGet().value);
  EXPECT_TRUE(ProMdlCopy(b, L"A"));
  EXPECT_EQ(ProNoError, ProMdlErase(d)) << "a model that stands in its window is another matter";
  session().settle();
  EXPECT_EQ(ProNotFound, ProSessionMdlList(ProMdlType::drawing).error);
}

TEST_F(SessionOfModels, APersonsCommandsRaiseTheirNotifications) {
  session();
  EXPECT_EQ(ProNotFound, session().save());
  EXPECT_EQ(ProNotFound, session().erase());
  listen();
  EXPECT_TRUE(session().create(L"n", ProMdlType::part));
  session().settle();
  EXPECT_EQ("100:N/1 41:N/1 90:N/1 26:N/1 ", heardSoFar());
  EXPECT_EQ(ProNoError, session().save());
  EXPECT_EQ("a.prt.1 b.prt.1 d.drw.1 n.prt.1", files());
  EXPECT_EQ(ProNoError, session().erase());
  EXPECT_EQ("103:N/0 9:/0 ", heardSoFar()) << "at once; of an erasure no model is told";
  session().settle();
  EXPECT_EQ("29:/1 ", heardSoFar());
  session().open(L"D", ProMdlType::drawing);
  EXPECT_EQ(ProBadInputs, session().regenerate());
  EXPECT_EQ(ProNoError, session().close());
  session().settle();
  EXPECT_EQ(ProNotFound, session().close());
  EXPECT_EQ(ProExists, session().create(L"B", ProMdlType::part).error);
  EXPECT_EQ(ProBadInputs, session().create(L"x/y", ProMdlType::part).error);
}

TEST_F(SessionOfModels, ListenersHearOfOpeningsAndDisplays) {
  session();
  std::string reported;
  pfcSessionActionListener listener;
  listener.OnAfterModelRetrieveAll = [&](const pfcModelDescriptor& model) {
    reported += text::toUtf8(model.name) + " ";
  };
  listener.OnAfterModelDisplay = [&] { reported += "shown "; };
  const int number = pfcSessionActionListenerAdd(listener).value;
  listener = {};
  listener.OnAfterModelDisplay = [] { throw std::runtime_error("lost"); };
  pfcSessionActionListenerAdd(listener);
  const ProMdl b = retrieve(L"B");
  session().settle();
  EXPECT_EQ("", reported) << "nobody opened it";
  session().open(L"A", ProMdlType::part);
  session().settle();
  EXPECT_EQ("A shown ", reported);
  EXPECT_EQ("a listener of the session ended with an exception: lost\n", messages());
  EXPECT_EQ(ProNoError, pfcSessionActionListenerRemove(number));
  EXPECT_EQ(ProNotFound, pfcSessionActionListenerRemove(number));
  ProMdlDisplay(b);
  session().settle();
  EXPECT_EQ("A shown ", reported);
  EXPECT_EQ(b, ProWindowMdlGet(1).value);
  EXPECT_EQ(ProBadInputs, ProWindowMdlGet(7).error);
  EXPECT_EQ(2u, ProSessionMdlList(ProMdlType::part).value.size());
}

TEST_F(SessionOfModels, WindowsOfClosedOnesAreNotActivated) {
  session();
  session().open(L"A", ProMdlType::part);
  session().open(L"B", ProMdlType::part);
  session().settle();
  listen();
  ProWindowCurrentClose();
  ProWindowActivate(2);
  session().settle();
  EXPECT_EQ("29:B/2 ", heardSoFar());
}

TEST_F(SessionOfModels, WithoutGraphicsThereAreNoWindowsToActivate) {
  options.graphics = false;
  session();
  EXPECT_EQ(ProNoGraphics, ProWindowActivate(0));
  EXPECT_EQ(ProNoGraphics, ProObjectwindowCreate(L"A", ProMdlType::part).error);
  EXPECT_TRUE(session().open(L"A", ProMdlType::part));
  EXPECT_TRUE(ProMdlCurrentGet());
}

TEST_F(SessionOfModels, TenThousandActivationsDontRecurse) {
  session().open(L"A", ProMdlType::part);
  session().settle();
  int count = 0;
  char* lowest = nullptr;
  ProNotificationSet(ProNotifyType::windowActivated, [&](const ProNotification& notification) {
    char here = 0;
    if (!lowest) lowest = &here;
    EXPECT_LT(std::abs(lowest - &here), 4096);
    ProNotificationUnset(ProNotifyType::windowActivated);
    if (++count < 10000) {
      ProNotificationSet(ProNotifyType::windowActivated, [&](const ProNotification&) {
        ++count;
        if (count < 10000) ProWindowActivate(1);
        return ProNoError;
      });
      ProWindowActivate(notification.window);
    }
    return ProNoError;
  });
  ProWindowActivate(1);
  session().settle();
  EXPECT_EQ(10000, count);
}

TEST_F(SessionOfModels, ExceptionsOfHandlersBecomeLines) {
  session().open(L"A", ProMdlType::part);
  session().settle();
  ProNotificationSet(ProNotifyType::windowActivated,
                     [](const ProNotification&) -> ProError { throw std::runtime_error("lost"); });
  ProWindowActivate(1);
  ProMacroLoad(L"~ Command `ProCmdViewRepaint`;");
  session().settle();
  EXPECT_EQ("the handler of notification 26 ended with an exception: lost\n", messages());
  EXPECT_EQ(1u, session().ranSteps().size()) << "the rest is worked all the same";
  EXPECT_EQ(ProNoError, ProNotificationUnset(ProNotifyType::windowActivated));
  EXPECT_EQ(ProNotFound, ProNotificationUnset(ProNotifyType::windowActivated));
}

// Waiting steps answer Creo's message dialog; what they don't answer is asked.
TEST_F(SessionOfModels, AMessageDialogIsAnsweredInAdvance) {
  session();
  const auto ask = [] { return ProUIMessageDialogDisplay(L"Title", L"Text", {L"Cancel", L"OK"}).value; };
  const std::wstring focus = L"~Activate `UI Message Dialog` `UI Message Dialog`;";
  ProMacroLoad(focus + L"~Activate `UI Message Dialog` `ok`;~ Command `ProCmdViewRepaint`;");
  EXPECT_EQ(1, ask());
  EXPECT_TRUE(session().ui().questions().empty());
  EXPECT_EQ(0, ask());  // the repaint is no answer
  ProMacroLoad(focus);
  EXPECT_EQ(0, ask());
  EXPECT_EQ(2U, session().ui().questions().size());
  ProMacroLoad(focus);
  session().settle();
  EXPECT_EQ(5U, session().ranSteps().size());
  EXPECT_EQ("", messages());
}

TEST_F(SessionOfModels, MacrosAreSplitAtSemicolonsOutsideBackquotes) {
  const std::pair<const wchar_t*, std::vector<std::wstring>> rows[] = {
      {L"", {}},
      {L" ; ;", {}},
      {L"~ Command `A;B` ;~ Activate `x` `y` 1;\n rest", {L"~ Command `A;B`", L"~ Activate `x` `y` 1", L"rest"}},
      {L"~ Command `open;", {L"~ Command `open;"}}};
  for (const auto& [text, steps] : rows) EXPECT_EQ(steps, macroSteps(text)) << text::toUtf8(text);
}

TEST_F(SessionOfModels, KnownStepsActAndOthersAreReportedOnce) {
  session();
  listen();
  EXPECT_EQ(ProNotFound, ProMacroExecute());
  session().open(L"A", ProMdlType::part);
  ProMacroLoad(L"~ Command `ProCmdDwgTblRegUpd`;");
  ProMacroExecute();
  EXPECT_EQ("", heardSoFar()) << "no drawing is current";
  session().open(L"D", ProMdlType::drawing);
  ProMacroLoad(L"~ Command `ProCmdDwgUpdateSheets` ;~ Command `ProCmdDwgRegenDraft` ;~ Command `ProCmdDwgTblRegUpd`;");
  ProMacroExecute();
  EXPECT_EQ("94:D/2 ", heardSoFar());
  ProMacroLoad(L"~ Activate `main_dlg_cur` `page_Table_control_btn` 1;~ Trail;~ Command `ProCmdOther`;~ Trail");
  session().settle();
  EXPECT_EQ(L"page_Table", session().pageControl());
  EXPECT_EQ((std::vector<std::wstring>{L"~ Trail", L"~ Command `ProCmdOther`"}), session().unknownSteps());
  EXPECT_EQ("unknown macro step: ~ Trail\nunknown macro step: ~ Command `ProCmdOther`\n", messages());
  EXPECT_EQ(8u, session().ranSteps().size());

  ProMacroLoad(L"~ Trail `first`;~ Trail `second`");
  ProMacroLoad(L"~ Trail `third`");
  ProMacroExecute();
  EXPECT_EQ((std::vector<std::wstring>{L"~ Trail `third`", L"~ Trail `first`", L"~ Trail `second`"}),
            std::vector<std::wstring>(session().ranSteps().end() - 3, session().ranSteps().end()))
      << "the macro that was loaded last runs first";
}

TEST_F(SessionOfModels, ArrangedFaultsAndCounts) {
  const ProMdl a = retrieve(L"A");
  session().failNext("ProMdlSave", ProUnattachedFeats);
  session().failNext("ProMdlSave", ProNotFound);
  EXPECT_EQ(ProUnattachedFeats, ProMdlSave(a));
  EXPECT_EQ(ProNotFound, ProMdlSave(a));
  EXPECT_EQ(ProNoError, ProMdlSave(a));
  EXPECT_EQ("a.prt.1 a.prt.2 b.prt.1 d.drw.1", files());
  EXPECT_EQ(3, session().calls("ProMdlSave"));
  EXPECT_EQ(0, session().calls("ProMdlErase"));
  session().failEvery(3);
  std::string results;
  for (int i = 0; i < 7; ++i) results += ProMdlNameGet(a) ? "." : "x";
  EXPECT_EQ("..x..x.", results);
  session().failEvery(0);
  EXPECT_TRUE(ProMdlNameGet(a));
}

struct Watching : SessionObserver {
  std::string seen;
  void message(const std::wstring& text) override { seen += "message " + text::toUtf8(text) + "\n"; }
  void saved(const SavedDocument& document) override { seen += "saved " + text::toUtf8(document.path) + "\n"; }
  void operation(std::string_view name, int result, long long taken) override {
    seen += std::string(name) + " " + std::to_string(result) + (taken > 0 ? "\n" : " in no time\n");
  }
};

TEST_F(SessionOfModels, ObserversSeeOperationsWithTheirResults) {
  Watching watching;
  const ProMdl a = retrieve(L"A");
  session().observe(&watching);
  ProMdlSave(a);
  session().trace(true);
  ProMdlRetrieve(L"NONE", ProMdlType::part);
  session().failNext("ProMdlErase", ProUserAbort);
  ProMdlErase(a);
  session().showMessage(L"Ä");
  session().observe(nullptr);
  ProMdlErase(a);
  EXPECT_EQ("saved d:\\models\\a.prt.2\nProMdlRetrieve -4\nProMdlErase -3\nmessage Ä\n", watching.seen);
}

TEST_F(SessionOfModels, CommandsOfTheMenu) {
  std::string texts;
  for (const char* key : {"KVD Menu", "l", "h", "d"}) texts += std::string(key) + "\r\ntext\r\n#\r\n#\r\n";
  write("text/usascii/kvusermsg.txt", texts);
  session();
  int runs = 0, access = kCommandAvailable;
  EXPECT_EQ(ProNotFound, ProMenubarMenuAdd("Menu", "KVD None", "Info", L"kvusermsg.txt"));
  EXPECT_EQ(ProNotFound, ProMenubarMenuAdd("Menu", "KVD Menu", "Info", L"none.txt"));
  EXPECT_EQ(ProNoError, ProMenubarMenuAdd("Menu", "KVD Menu", "Info", L"kvusermsg.txt"));
  EXPECT_EQ(ProExists, ProMenubarMenuAdd("Menu", "KVD Menu", "Info", L"kvusermsg.txt"));
  const ProCommand start = ProCmdActionAdd(
                               "Start", [&] { ++runs; }, [&] { return access; })
                               .value;
  const ProCommand bad = ProCmdActionAdd(
                             "Bad", [] { throw std::runtime_error("no"); }, nullptr)
                             .value;
  EXPECT_EQ(ProNotFound, ProMenubarmenuPushbuttonAdd("Other", "b", "l", "h", L"kvusermsg.txt", start));
  EXPECT_EQ(ProNotFound, ProMenubarmenuPushbuttonAdd("Menu", "b", "l", "none", L"kvusermsg.txt", start));
  EXPECT_EQ(ProNoError, ProMenubarmenuPushbuttonAdd("Menu", "b", "l", "h", L"kvusermsg.txt", start));
  EXPECT_EQ(ProNoError, ProMenubarmenuPushbuttonAdd("Menu", "b", "h", "h", L"kvusermsg.txt", bad));
  ASSERT_EQ(1U, session().menu().buttons().size()) << "the second call is passed over";
  EXPECT_EQ("Start", session().menu().buttons().front().command);
  EXPECT_EQ(ProExists, ProCmdActionAdd("Start", nullptr, nullptr).error);
  EXPECT_EQ(ProNotFound, ProCmdDesignate(bad, "l", "h", "none", L"kvusermsg.txt"));
  EXPECT_EQ(ProNoError, ProCmdDesignate(bad, "l", "h", "d", L"kvusermsg.txt"));
  ProCmdActionAdd("Hidden", nullptr, nullptr);
  EXPECT_EQ(ProBadInputs, ProCmdDesignate(ProCommand{99}, "l", "h", "d", L"kvusermsg.txt"));
  EXPECT_EQ(ProNotFound, ProCmdIconSet(start, "none.png"));
  EXPECT_EQ((std::vector<std::string>{"Start", "Bad"}), session().commands());
  EXPECT_EQ(ProNoError, session().runCommand("Start"));
  access = 2;
  EXPECT_EQ(ProGeneralError, session().runCommand("Start"));
  EXPECT_EQ(1, runs);
  EXPECT_EQ(ProNotFound, session().runCommand("None"));
  EXPECT_EQ(ProNoError, session().runCommand("Hidden"));
  EXPECT_EQ(ProGeneralError, session().runCommand("Bad"));
  EXPECT_EQ("the command Bad ended with an exception: no\n", messages());
}

TEST_F(SessionOfModels, MessageFilesAndSettings) {
  write("text/usascii/kvusermsg.txt", "%CIKVD Line\r\n%CIsaid %0s\r\n#\r\n#\r\nKVD Two\r\nzwei\r\n#\r\n#\r\n");
  write("config.pro", "! comment\nsearch_path d:\\a\n\nSEARCH_PATH   d:\\b c  \nbare\n");
  session();
  EXPECT_EQ(ProNoError, ProMessageDisplay(L"kvusermsg.txt", "KVD Line", L"100% ä"));
  EXPECT_EQ("%CIsaid 100% ä\n", messages()) << "the mark of a class stands before the key";
  EXPECT_EQ(L"zwei", ProMessageToBuffer(L"kvusermsg.txt", "KVD Two").value);
  EXPECT_EQ(ProNotFound, ProMessageToBuffer(L"kvusermsg.txt", "zwei").error);
  EXPECT_EQ(ProNotFound, ProMessageDisplay(L"none.txt", "KVD Two", L""));
  EXPECT_EQ(ProNotFound, ProInputFileRead({}, L"d:\\none.pro", ProInputFileType::configuration));
  EXPECT_EQ(ProNoError, ProInputFileRead({}, L"d:\\config.pro", ProInputFileType::configuration));
  write("models/sheet.dtl", "drawing_text_height 4.5\n");
  const auto details = [](const wchar_t* path) { return ProInputFileRead({}, path, ProInputFileType::detailOptions); };
  EXPECT_EQ(ProNoError, ProDirectoryChange(L"d:\\models\\"));
  EXPECT_EQ(ProBadInputs, details(L"sheet.dtl")) << "no drawing is current";
  session().open(L"D", ProMdlType::drawing);
  EXPECT_EQ(ProNoError, details(L"sheet.dtl"));
  EXPECT_EQ(ProBadInputs, details(L"d:\\models\\sheet.dtl")) << "a name has no folders";
  EXPECT_EQ(ProNotFound, details(L"none.dtl"));
  const ConfigOptions& settings = session().configuration();
  EXPECT_EQ((std::vector<std::wstring>{L"d:\\a", L"d:\\b c"}), settings.values(L"Search_Path"));
  EXPECT_EQ(std::vector<std::wstring>{L""}, settings.values(L"bare"));
  EXPECT_EQ(L"d:\\text\\", ProToolkitApplTextPathGet().value);
  EXPECT_EQ(ProNotFound, ProServerActiveGet().error);
}

TEST_F(SessionOfModels, AnEndlessLoopOfEventsEnds) {
  session().open(L"A", ProMdlType::part);
  ProNotificationSet(ProNotifyType::windowActivated,
                     [](const ProNotification& notification) { return ProWindowActivate(notification.window); });
  EXPECT_THROW(session().settle(), std::runtime_error);
}

TEST(SessionOfTheProcess, ThereIsOneAtATime) {
  EXPECT_EQ(nullptr, Session::currentOrNull());
  EXPECT_THROW(Session::current(), std::logic_error);
  EXPECT_EQ(ProGeneralError, ProMdlRetrieve(L"A", ProMdlType::part).error);
  Session first(SessionOptions{});
  EXPECT_THROW(Session second(SessionOptions{}), std::logic_error);
  EXPECT_EQ(&first, Session::currentOrNull());
}

}  // namespace
}  // namespace headless
