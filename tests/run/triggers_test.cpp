// Lists that start by themselves: events of a session with the triggers of the configuration hung in.
#include "run/triggers.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

#include "actions/run_names.h"
#include "core/state.h"
#include "creo/ProDrawing.h"
#include "creo/ProExtdata.h"
#include "creo/ProMdl.h"
#include "creo/ProSolid.h"
#include "creo/ProUtil.h"
#include "headless/proui/ui.h"
#include "run/history.h"
#include "run/run.h"
#include "support/world.h"
#include "text/encoding.h"
#include "text/pieces.h"

namespace {

using namespace creo;
using core::pluginState;
using test::World;

const std::string kForAll = " forPRT='true' forASM='true' forDRW='true' forEF='false'";
std::string task(const std::string& type, const std::string& attributes = "") {
  return "<task type='" + type + "' version='3'" + kForAll + " " + attributes + "/>";
}
std::string say(const std::string& text) { return task("writeToCreoLog", "message='" + text + "'"); }
std::string group(const std::string& attributes, const std::string& tasks) {
  return "<task type='groupActions' version='3'" + kForAll + " " + attributes + "><subtasks>" + tasks +
         "</subtasks></task>";
}
const std::string kSave = task("saveModel");
const std::string kAddNorm = task("addModelParameter", "name_0='NORM' type_0='String' value_0='WN'");

// A world with part A and the list "say.xml", which says "did NAME.EXT" of each model.
class Triggers : public testing::Test {
 protected:
  Triggers() {
    world.part(L"A");
    world.list("say.xml", say("did @mdln@.@mdltype@"));
  }
  // key: what stands behind "kvd_start_kvz_".
  void set(const std::string& key, const std::string& value) { world.config("kvd_start_kvz_" + key + "=" + value); }
  headless::Session& session() { return world.session(); }
  void openPart(const std::wstring& name = L"A") { world.open(name, ProMdlType::part); }
  ProError save() {
    const ProError result = session().save();
    session().settle();
    return result;
  }
  ProError regenerate() {
    const ProError result = session().regenerate();
    session().settle();
    return result;
  }
  // Lines of the message area that begin so, since the last call.
  std::wstring lines(std::wstring_view start) {
    std::wstring found;
    const auto& all = session().messages();
    for (; seen_ < all.size(); ++seen_)
      if (all[seen_].starts_with(start)) found += all[seen_] + L"\n";
    return found;
  }
  bool said(const std::wstring& line) const {
    return (L"\n" + world.messages()).find(L"\n" + line + L"\n") != std::wstring::npos;
  }
  // Nothing of a trigger's run is left.
  void expectQuiet(const std::string& where) {
    EXPECT_EQ(0, pluginState().triggerType) << where;
    EXPECT_FALSE(actions::runGoesOn()) << where;
    EXPECT_FALSE(pluginState().toolOpen) << where;
    EXPECT_FALSE(session().ui().dialog("kvanerunner")) << where;
  }

  World world;
  std::size_t seen_ = 0;
};

TEST(TriggerEvents, EachStartsItsListAndWritesItsLines) {
  using Event = std::function<void(World&)>;
  const Event open = [](World& w) { w.open(L"A", ProMdlType::part); };
  const auto behindOpen = [open](ProError (headless::Session::*then)()) {
    return [open, then](World& w) {
      open(w);
      (w.session().*then)();
      w.session().settle();
    };
  };
  const Event create = [](World& w) {
    w.session().create(L"A2", ProMdlType::part);
    w.session().settle();
  };
  using S = headless::Session;
  const struct {
    const char* key;
    const wchar_t* line;
    Event event;
  } cases[] = {{"after_create", L"after create 1", create},
               {"after_open", L"after open", open},
               {"before_save", L"before save", behindOpen(&S::save)},
               {"after_occupy", L"after occupy", open},
               {"after_solid_regen", L"after solid regenerate", behindOpen(&S::regenerate)},
               {"before_solid_regen", L"before solid regenerate", behindOpen(&S::regenerate)},
               {"before_erase", L"before erase", behindOpen(&S::erase)}};
  for (const auto& [key, line, event] : cases) {
    for (const bool withoutTool : {false, true}) {
      World world;
      world.part(L"A");
      world.list("a.xml", say("the first list"));
      world.list("say.xml", say("did @mdln@"));
      world.config("kvd_start_trigger_without_kvd=" + std::to_string(withoutTool ? 1 : 0));
      world.config(std::string("kvd_start_kvz_") + key + "=STANDARDS Say");
      world.start();
      event(world);
      const std::wstring name = std::string(key) == "after_create" ? L"A2" : L"A";
      EXPECT_NE(std::wstring::npos, world.messages().find(L"\ndid " + name + L"\n"))
          << key << text::toUtf8(world.messages());
      EXPECT_EQ(std::wstring::npos, world.messages().find(L"the first list")) << key;
      const std::wstring begins = std::wstring(L"<KVD> start trigger ") + line + L"\n";
      const std::wstring ends = std::wstring(L"<KVD> end trigger ") + line + L"\n";
      const std::size_t begin = world.messages().find(begins), end = world.messages().find(ends);
      EXPECT_LT(begin, end) << key;
      EXPECT_NE(std::wstring::npos, end) << key;
      EXPECT_EQ(std::wstring::npos, world.messages().find(begins, begin + 1)) << key << " fires once";
      EXPECT_EQ(0, pluginState().triggerType) << key;
      EXPECT_FALSE(pluginState().toolOpen) << key;
    }
  }
}

TEST_F(Triggers, HangInAndOutWithTheirLines) {
  for (const char* key : {"after_create", "after_open", "before_save", "after_occupy", "after_solid_regen",
                          "before_solid_regen", "before_erase"}) {
    set(key, "standards say");
  }
  set("after_open_conf", "1");  // this one's run would tell
  set("after_occupy_conf", "1110");
  set("before_erase_conf", "1110x");
  world.start();
  const std::wstring left = L"<KVD> Failure while hang in because config length isn't 5 times 0 or 1\n";
  EXPECT_EQ(
      L"<KVD> Kelvane User 8.0.1.1 started\n<KVD> hang in trigger after open\n<KVD> hang in trigger at new\n"
      L"<KVD> hang in trigger before save\n<KVD> hang in trigger after occupy\n" +
          left +
          L"<KVD> hang in trigger after solid regen\n<KVD> hang in trigger before solid regen\n"
          L"<KVD> hang in trigger before erase\n" +
          left,
      lines(L"<KVD>"));
  session().unloadPlugin();
  EXPECT_EQ(
      L"<KVD> remove Trigger\n<KVD> hang out trigger after open\n<KVD> hang out trigger at new\n"
      L"<KVD> hang out trigger before save\n<KVD> hang out trigger occupy post\n"
      L"<KVD> hang out trigger after regeneration\n<KVD> hang out trigger before regeneration\n"
      L"<KVD> hang out trigger before erase\n",
      lines(L"<KVD>"));
  openPart();
  save();
  regenerate();
  EXPECT_EQ(L"", lines(L""));
}

TEST_F(Triggers, BadDigitsKeepATriggerOut) {
  set("after_occupy", "standards say");
  set("after_occupy_conf", "1110");
  world.start();
  openPart();
  EXPECT_FALSE(said(L"Check pre trigger"));
}

TEST_F(Triggers, WhatTheListChangesIsInTheSavedFile) {
  world.list("norm.xml", kAddNorm + kSave);
  set("before_save", "standards norm");
  world.start();
  openPart();
  lines(L"");
  EXPECT_EQ(ProNoError, save());
  EXPECT_EQ(0u, lines(L"").find(L"can't read name\n<KVD> start trigger before save\n"));
  EXPECT_EQ(3, world.version("A.prt")) << "the list's own save, then the one that was asked for";
  EXPECT_EQ(L"NORM=WN", world.savedParameters("A.prt"));
  EXPECT_TRUE(said(L"<KVD> Already inside a trigger -> break new one"));
  expectQuiet("behind the save");
}

TEST_F(Triggers, ARunThatSavesRegeneratesAndErasesStartsNoOther) {
  world.part(L"B");
  for (const char* key : {"before_save", "after_solid_regen", "before_solid_regen", "before_erase", "after_occupy"}) {
    set(key, "standards busy");
  }
  const std::string other = "reworkMode='5' mdlname='B.PRT' removeFromSession='1'";
  set("before_solid_regen_write_check_rework_history", "00");
  world.list("busy.xml", kSave + group("reworkMode='7' simprepname='Master Rep'", say("regenerated")) +
                             group(other, kSave) + say("did @mdln@"));
  world.start();
  openPart();
  EXPECT_EQ(L"did A\n", lines(L"did ")) << "by the window that was occupied";
  const ProMdl a = ProMdlCurrentGet().value;
  EXPECT_EQ(ProNoError, ProSolidRegenerate(a, 0));
  session().settle();
  EXPECT_EQ(L"did A\n", lines(L"did ")) << "before the regeneration; behind it the history holds the list";
  EXPECT_FALSE(ProMdlInit(L"B", ProMdlType::part)) << "erased";
  EXPECT_EQ(3, world.version("B.prt"));
  expectQuiet("behind the regeneration");
}

TEST_F(Triggers, AModelThatTheListWouldEraseIsKeptForItsSave) {
  world.list("gone.xml", group("reworkMode='5' mdlname='A.PRT' removeFromSession='1'", say("in")));
  set("before_save", "standards gone");
  world.start();
  openPart();
  EXPECT_EQ(ProNoError, save());
  EXPECT_TRUE(world.logHas(L"Can't erase the model"));
  EXPECT_EQ(2, world.version("A.prt"));
  expectQuiet("behind the save");
  openPart();
  EXPECT_TRUE(ProMdlCurrentGet());
}

TEST_F(Triggers, AModelThatTheListErasesIsSavedBeforeItGoes) {
  world.part(L"B");
  world.list("gone.xml", group("reworkMode='5' mdlname='B.PRT' removeFromSession='1'", say("in")));
  set("before_save", "standards gone");
  world.start();
  const ProMdl b = ProMdlRetrieve(L"B", ProMdlType::part).value;
  openPart();
  EXPECT_EQ(ProNoError, ProMdlSave(b)) << "the trigger took this one away, which is complete once control is back";
  session().settle();
  EXPECT_FALSE(ProMdlInit(L"B", ProMdlType::part));
  EXPECT_EQ(2, world.version("B.prt"));
  expectQuiet("behind the save");
  EXPECT_TRUE(ProMdlRetrieve(L"B", ProMdlType::part));
}

TEST_F(Triggers, ARegenerationFiresOnceAModelAndVersion) {
  set("after_solid_regen", "standards say");
  set("after_solid_regen_write_check_rework_history", "00");
  world.part(L"B");
  world.start();
  const auto fired = [this] { return lines(L"did "); };
  openPart();
  regenerate();
  EXPECT_EQ(L"did A.prt\n", fired());
  regenerate();
  EXPECT_EQ(L"", fired());
  save();
  regenerate();
  EXPECT_EQ(L"did A.prt\n", fired()) << "the saved version is another one";
  openPart(L"B");
  regenerate();
  openPart(L"A");
  regenerate();
  EXPECT_EQ(L"did B.prt\ndid A.prt\n", fired()) << "only the last one is remembered";
}

TEST_F(Triggers, DigitsSayForWhichTypes) {
  world.config("kvd_write_history_in_models=0");
  world.assembly(L"A").uses(L"A", ProMdlType::part);
  world.drawing(L"A").uses(L"A", ProMdlType::part);
  const struct {
    const char* digits;
    std::wstring did;
  } cases[] = {{"00101", L"did A.drw\n"}, {"01000", L"did A.asm\n"}, {"11111", L"did A.prt\ndid A.asm\ndid A.drw\n"}};
  for (const auto& [digits, did] : cases) {
    set("before_save_conf", digits);  // the fifth is on in any case; a later line wins
    set("before_save", "standards say");
    world.start();
    for (const ProMdlType type : {ProMdlType::part, ProMdlType::assembly, ProMdlType::drawing}) {
      world.open(L"A", type);
      EXPECT_EQ(ProNoError, save());
    }
    std::wstring said;
    for (const std::wstring& line : session().messages())
      if (line.starts_with(L"did ")) said += line + L"\n";
    EXPECT_EQ(did, said) << digits;
    world.endSession();
  }
}

TEST_F(Triggers, ARunOverSeveralModelsOutlivesItsEvent) {
  world.part(L"B");
  world.assembly(L"TOP").uses(L"A", ProMdlType::part).uses(L"B", ProMdlType::part);
  set("before_solid_regen", "standards say");
  set("before_solid_regen_conf", "11100");
  world.start();
  world.open(L"TOP", ProMdlType::assembly);
  EXPECT_EQ(ProNoError, session().regenerate());
  EXPECT_EQ(6, pluginState().triggerType) << "the run waits for a window";
  EXPECT_EQ(ProNoError, session().save());
  session().settle();
  EXPECT_EQ(L"did A.prt\ndid B.prt\ndid TOP.asm\n", lines(L"did "));
  expectQuiet("at the run's end");
}

TEST_F(Triggers, TheTableIsFilledOnceAndByTheFilterOfItsList) {
  world.part(L"B");
  world.assembly(L"TOP").uses(L"A", ProMdlType::part).uses(L"B", ProMdlType::part);
  world.list("a.xml", say("no"), "", "",
             "<root><f type='isregenerateable' filtertype='true'/><f type='hammer'/></root>");
  world.list("only_b.xml", say("did @mdln@"), "", "",
             "<root><f type='filename' filename='B*' filtertype='true'/></root>");
  set("after_occupy", "standards only_b");
  set("after_occupy_conf", "11100");
  for (const bool isOpen : {false, true}) {
    SCOPED_TRACE(isOpen);
    world.start();
    if (isOpen) {
      world.openTool();
      world.choose("only_b.xml");
    }
    world.open(L"TOP", ProMdlType::assembly);
    EXPECT_EQ(L"did B\n", lines(L"did "));
    EXPECT_EQ(isOpen ? 2 : 1, session().calls("ProMdlDependenciesList")) << "an open dialog follows the opening itself";
    EXPECT_EQ(0, session().calls("ProSolidRegenerate"));
    EXPECT_FALSE(world.logHas(L"hammer"));
    expectQuiet("behind the run");
    world.endSession();
    seen_ = 0;
  }
}

TEST_F(Triggers, ADialogThatStaysShowsTheRowsOfItsChoosers) {
  world.list("a.xml", say("no"), "", "", "<root><f type='filename' filename='NONE*' filtertype='true'/></root>");
  set("before_save", "standards none");
  world.start();
  openPart();
  world.openTool();
  world.choose("say.xml");
  EXPECT_EQ(std::vector<std::string>{"A.PRT"}, world.rows());
  EXPECT_EQ(ProNoError, save());
  EXPECT_TRUE(said(L"<KVD> Can't find the described actionlist"));
  EXPECT_EQ("a.xml", text::toUtf8(pluginState().currentList)) << "the choice of the package took it";
  EXPECT_EQ(std::vector<std::string>{}, world.rows());
}

TEST_F(Triggers, ARunWithoutGraphicsOrWithoutItsListEndsAndTheNextEventFires) {
  world.part(L"B");
  world.assembly(L"TOP").uses(L"A", ProMdlType::part).uses(L"B", ProMdlType::part);
  world.member("actionlists/empty.xml", "");
  for (const std::string list : {"say", "empty"}) {
    set("before_solid_regen", "standards " + list);
    set("before_solid_regen_conf", "11100");
    ASSERT_EQ(0, world.start(list == "empty"));
    const ProMdl top = world.open(L"TOP", ProMdlType::assembly);
    EXPECT_EQ(ProNoError, session().regenerate());
    expectQuiet(list);
    EXPECT_EQ(list == "say" ? L"did A.prt\ndid B.prt\ndid TOP.asm\n" : L"", lines(L"did ")) << list;
    EXPECT_EQ(list == "say" ? 1U : 0U, run::readHistory(top).size()) << list;
    lines(L"");
    session().regenerate();
    EXPECT_NE(L"", lines(L"<KVD> start trigger before solid")) << list;
    world.endSession();
    seen_ = 0;
  }
}

TEST_F(Triggers, ClosingTheToolEndsATriggersRun) {
  world.part(L"B");
  world.assembly(L"TOP").uses(L"A", ProMdlType::part).uses(L"B", ProMdlType::part);
  set("before_solid_regen", "standards say");
  set("before_solid_regen_conf", "11100");
  set("before_solid_regen_showUI", "1");
  world.start();
  world.open(L"TOP", ProMdlType::assembly);
  session().regenerate();
  ASSERT_TRUE(actions::runGoesOn());
  world.closeTool();
  expectQuiet("behind the closing");
}

TEST_F(Triggers, FaultyListsAreToldAtEachEventWhichGoesOn) {
  const struct {
    const char* list;
    const wchar_t* line;
  } cases[] = {{"mypackage", L"<KVD> Failure while split list, please correct the configuration"},
               {"mypackage say", L"<KVD> Can't find the described kvz file"},
               {"standards say.xml", L"<KVD> Can't find the described actionlist"},
               {"standards ", L"<KVD> Can't find the described actionlist"}};
  for (const auto& [list, line] : cases) {
    set("before_save", list);
    world.start();
    openPart();
    const int version = world.version("A.prt");
    for (int event = 1; event <= 2; ++event) {
      EXPECT_EQ(ProNoError, save());
      EXPECT_EQ(version + event, world.version("A.prt")) << list;
      EXPECT_EQ(event, std::count(session().messages().begin(), session().messages().end(), line)) << list;
      expectQuiet(list);
    }
    EXPECT_EQ(-25, run::fireTrigger({}, text::fromUtf8(list), L"", L"", 0, 3)) << list;
    EXPECT_FALSE(said(L"<KVD> end trigger before save")) << list;
    world.endSession();
  }
}

TEST_F(Triggers, APackageThatHasGoneStartsNothing) {
  world.list("norm.xml", kAddNorm);
  set("before_save", "standards norm");
  world.start();
  openPart();
  world.openTool();
  std::filesystem::remove(world.packages() + "/standards.kvz");
  EXPECT_EQ(ProNoError, save());
  EXPECT_TRUE(said(L"<KVD> Can't find the described actionlist"));
  EXPECT_TRUE(pluginState().toolOpen) << "a person opened it";
  world.closeTool();
  EXPECT_EQ(ProNoError, save());
  EXPECT_TRUE(said(L"<KVD> No kvz files found"));
  EXPECT_EQ(L"", world.savedParameters("A.prt"));
  EXPECT_EQ(3, world.version("A.prt"));
  expectQuiet("without a package");
}

TEST_F(Triggers, HistoryDigitsHoldForOneRun) {
  const struct {
    const char* digits;
    int runs;     // of two saves
    int records;  // in the model's history
  } cases[] = {{"", 1, 1}, {"00", 2, 0}, {"01", 2, 2}, {"10", 2, 0}, {"11", 1, 1}, {"1", 1, 1}};
  for (const auto& [digits, runs, records] : cases) {
    World own;
    own.part(L"A");
    own.list("say.xml", say("did @mdln@"));
    own.config("kvd_start_kvz_before_save=standards say");
    own.config(std::string("kvd_start_kvz_before_save_write_check_rework_history=") + digits);
    own.start();
    const ProMdl a = own.open(L"A", ProMdlType::part);
    own.session().save();
    own.session().save();
    const auto& messages = own.session().messages();
    EXPECT_EQ(runs, std::count(messages.begin(), messages.end(), L"did A")) << digits;
    EXPECT_EQ(records, static_cast<int>(run::readHistory(a).size())) << digits;
    EXPECT_EQ(1, pluginState().writeExtData) << digits;
    EXPECT_EQ(1, pluginState().autoUnsetReworkedData) << digits;
    const bool complains = own.messages().find(L"history needs zero or two inputs [0,1]") != std::wstring::npos;
    EXPECT_EQ(std::string(digits) == "1", complains) << digits;
  }
}

TEST_F(Triggers, TheWorkingFolderComesBack) {
  std::filesystem::create_directories(world.models() + "/elsewhere");
  world.list("move.xml", task("setWorkingDirectory", "path='d:\\elsewhere\\'"));
  set("before_save", "standards move");
  world.start();
  openPart();
  const std::wstring before = ProDirectoryCurrentGet().value;
  save();
  EXPECT_TRUE(world.logHas(L"Set working directory"));
  EXPECT_FALSE(world.logHas(L"(ERR)"));
  EXPECT_EQ(before, ProDirectoryCurrentGet().value);
}

TEST_F(Triggers, AKeptDialogIsShownWithTheLogAndGuardsTheRunAllTheSame) {
  world.list("norm.xml", kSave + say("did @mdln@"));
  set("before_save", "standards norm");
  set("before_save_showUI", "1");
  world.start();
  openPart();
  EXPECT_EQ(ProNoError, save());
  EXPECT_EQ(L"did A\n", lines(L"did "));
  EXPECT_EQ(3, world.version("A.prt"));
  EXPECT_EQ(0, pluginState().triggerType);
  ASSERT_TRUE(pluginState().toolOpen);
  const headless::Dialog& dialog = *session().ui().dialog("kvanerunner");
  EXPECT_TRUE(dialog.visible);
  EXPECT_NE(std::wstring::npos, dialog.tree("kvaneLogTT").find(L"Write To Creo Log"));
  world.closeTool();
  expectQuiet("closed");
}

TEST_F(Triggers, ARunOfAPersonIsNotDisturbed) {
  world.list("norm.xml", kSave + say("behind the save"));
  set("before_save", "standards say");
  set("before_solid_regen", "standards say");
  world.start();
  openPart();
  world.run("norm.xml");
  EXPECT_TRUE(said(L"<KVD> Already inside a run -> break trigger"));
  EXPECT_TRUE(world.logHas(L"behind the save"));
  EXPECT_TRUE(pluginState().toolOpen);
  EXPECT_EQ("norm.xml", text::toUtf8(pluginState().currentList));
}

TEST_F(Triggers, AFilterThatRegeneratesAndErasesKeepsItsTable) {
  world.part(L"BOLT").instance(L"BOLT_M6");
  world.member("filters/regen.xml",
               "<root><i type=\"isregenerateable\" filtertype=\"true\" opand=\"true\"/>"
               "<i type=\"hasInstanceWithName\" filename=\"*M6\" filtertype=\"true\"/></root>");
  for (const char* key : {"before_solid_regen", "after_solid_regen", "before_erase"}) set(key, "standards say");
  world.start();
  openPart(L"BOLT");
  world.openTool();
  session().ui().choose("kvanefilter", "kvaneFilterChooser", "regen.xml");
  session().settle();
  EXPECT_EQ(std::vector<std::string>{"BOLT.PRT"}, world.rows());
  EXPECT_FALSE(ProMdlInit(L"BOLT_M6", ProMdlType::part)) << "the filter built and erased it";
  EXPECT_EQ(L"", lines(L"did "));
  EXPECT_TRUE(pluginState().toolOpen);
  world.closeTool();
  session().erase();
  session().settle();
  EXPECT_EQ(L"did BOLT.prt\n", lines(L"did "));
}

TEST_F(Triggers, OnlyNewModelsAreCreated) {
  world.drawing(L"TEMPLATE");
  set("after_create", "standards say");
  world.start();
  openPart();
  EXPECT_EQ(L"", lines(L"did ")) << "it was there";
  const auto created = [this](const wchar_t* name) {
    EXPECT_TRUE(session().create(name, ProMdlType::part));
    session().settle();
    return lines(L"did ");
  };
  EXPECT_EQ(L"did N1.prt\n", created(L"N1"));
  world.openTool();
  world.closeTool();
  EXPECT_EQ(L"did N2.prt\n", created(L"N2")) << "the tool took the notification and gave it back";
  EXPECT_EQ(ProExists, session().create(L"A", ProMdlType::part).error);
  EXPECT_EQ(ProBadInputs, session().create(L"..\\A", ProMdlType::part).error);
  // Made behind the model that the user sees: of every two calls the second counts.
  const ProMdl shown = ProMdlCurrentGet().value;
  for (const wchar_t* name : {L"D1", L"D2", L"D3"}) {
    EXPECT_TRUE(ProDrawingFromTmpltCreate(name, L"TEMPLATE", shown, 0)) << name;
    session().settle();
  }
  EXPECT_EQ(L"did D2.drw\n", lines(L"did "));
}

TEST_F(Triggers, ANewModelFiresOnceHoweverOftenItIsShown) {
  world.list("show.xml", group("reworkMode='7' simprepname='Master Rep'", say("did @mdln@")));
  set("after_create", "standards show");
  set("at_new_write_check_rework_history", "00");
  world.start();
  for (int made = 0; made < 2; ++made) {
    ASSERT_TRUE(session().create(L"N", ProMdlType::part)) << made;
    session().settle();
    EXPECT_EQ(L"did N\n", lines(L"did ")) << "its group shows the model again";
    session().erase();
    session().settle();
  }
}

TEST_F(Triggers, AnOpenedModelIsCountedAndFiresOnItsFirstDisplay) {
  world.part(L"B");
  world.assembly(L"TOP").uses(L"A", ProMdlType::part).uses(L"B", ProMdlType::part);
  set("after_open", "standards say");
  world.start();
  lines(L"");
  const ProMdl top = world.open(L"TOP", ProMdlType::assembly);
  EXPECT_EQ(0u, lines(L"").find(L"after retrieve all TOP\nFIRST DISPLAY\nTOP\nASM\nDRW:count :0\nASM:count :1\n"
                                L"PRT:count :2\nTOP\n<KVD> start trigger after open\n"));
  ProMdlDisplay(top);
  session().settle();
  EXPECT_EQ(L"", lines(L"")) << "a second display is no opening";
}

TEST_F(Triggers, AnyOperationMayFailAndTheNextEventFires) {
  set("before_save", "standards say");
  set("before_save_write_check_rework_history", "00");
  world.start();
  openPart();
  for (const char* operation :
       {"ProMdlTypeGet", "ProDirectoryCurrentGet", "ProUIDialogCreate", "ProUIOptionmenuNamesGet",
        "ProUIOptionmenuSelectednamesSet", "ProUIOptionmenuSelectednamesGet", "ProUICheckbuttonSet",
        "ProUICheckbuttonGetState", "ProUITableRownamesGet", "ProDirectoryChange", "ProMdlRetrieve"}) {
    const int version = world.version("A.prt");
    session().failNext(operation, ProGeneralError);
    EXPECT_EQ(ProNoError, save()) << operation;
    expectQuiet(operation);
    EXPECT_GT(world.version("A.prt"), version) << operation;
    lines(L"");
    EXPECT_EQ(ProNoError, save()) << operation;
    EXPECT_EQ(L"did A.prt\n", lines(L"did ")) << operation;
  }
}

}  // namespace
