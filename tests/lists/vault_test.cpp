// The PDM folder as lists and the tool see it: check-in, check-out, the workspace, filters, tokens, labels.
#include "headless/vault/vault.h"

#include "actions/action_fixture.h"
#include "creo/ProMdl.h"
#include "creo/ProMdlCopy.h"
#include "creo/ProParameter.h"
#include "creo/ProUtil.h"
#include "documents/parsed.h"
#include "headless/model/models.h"
#include "headless/proui/ui.h"
#include "headless/vault/servers.h"
#include "language/user_variables.h"
#include "language/variables.h"

namespace {

using namespace creo;
using headless::ObjectRecord;
using headless::Vault;

const std::string kSaveTask =
    "<task type='saveModel' version='3' forPRT='true' forASM='true' forDRW='true' forEF='false'/>";
constexpr const char* kMain = "kvanerunner";

class VaultLists : public test::ActionTest {
 protected:
  VaultLists() {
    world.config("kvd_write_history_in_models=0");
    world.config("kvd_check_modifyable=0");
    world.part(L"BRACKET").with(L"COLOR", L"red");
    world.list("in.xml", task("checkinModel", "path='Designs'"));
    world.list("out.xml", task("checkoutModel"));
    world.list("save.xml", task("addModelParameter",
                                "forInstances='false' count='1' name_0='NORM' type_0='String' "
                                "value_0='WN'") +
                               kSaveTask);
    world.list("clear.xml", task("removeModelFromWorkspace"));
    EXPECT_TRUE(Vault::create(L"c:\\plm", "plm"));
  }
  void begin(const std::wstring& name = L"BRACKET") {
    ASSERT_EQ(0, world.start());
    ASSERT_EQ(L"", world.session().servers().connect({L"c:\\plm", L"design", L"ann", 0}));
    world.open(name, ProMdlType::part);
  }
  std::wstring told(const std::string& list) {
    world.run(list);
    return told();
  }
  // Titles without their tags.
  std::wstring told() const {
    std::wstring all = L"|" + test::told(world.log());
    for (const wchar_t* tag : {L"|B0 ", L"|B1 ", L"|B2 ", L"|B3 "}) all = text::replaceAll(all, tag, L"|");
    return all.substr(1);
  }
  static std::unique_ptr<Vault> vault() {
    headless::VaultAnswer answer;
    auto opened = Vault::open(L"c:\\plm", false, answer);
    EXPECT_TRUE(opened) << text::toUtf8(answer.reason);
    return opened;
  }
  // "A.2 /Designs ann/design BRACKET": newest, location, who has it with which names.
  static std::string object(const std::wstring& name = L"BRACKET") {
    ObjectRecord record;
    if (!vault()->object({name, ProMdlType::part}, record)) return "none";
    std::string all = text::toUtf8(headless::iterationText(record, static_cast<int>(record.iterations.size()))) + " " +
                      record.location;
    if (!record.checkOut) return all;
    all += " " + record.checkOut->user + "/" + record.checkOut->workspace;
    for (const std::string& entry : record.checkOut->names) all += " " + entry;
    return all;
  }
  // Somebody else takes what the vault has into a workspace of his own and checks it out.
  static void checkOutByBob() {
    const headless::ObjectName name{L"BRACKET", ProMdlType::part};
    ASSERT_TRUE(vault()->enter(name, {"bob", "mill"}, 1));
    ASSERT_TRUE(vault()->checkOut(name, {"bob", "mill"}, {"BRACKET"}));
  }
  std::string label() { return world.session().ui().dialog(kMain)->image("BRACKET.PRT_wc"); }
  void refill() { world.session().ui().choose(kMain, "kvaneActionlistChooser", "in.xml"); }
};

TEST_F(VaultLists, AModelGoesInAndOutAndIsClosedBetween) {
  begin();
  EXPECT_EQ(L"checkinModel|Model checked in", told("in.xml"));
  EXPECT_EQ("A.1 /Designs", object());
  EXPECT_EQ(L"COLOR=red PTC_WM_LOCATION=/Designs PTC_WM_REVISION=A PTC_WM_ITERATION=1",
            world.savedParameters("BRACKET.prt"));
  EXPECT_EQ(2, world.version("BRACKET.prt"));

  EXPECT_NE(std::wstring::npos, told("save.xml").find(L"E:Failure while save model"));
  EXPECT_NE(std::wstring::npos, world.messages().find(L"BRACKET.prt.3: can't be written: the model isn't checked out"));
  EXPECT_EQ(2, world.version("BRACKET.prt"));

  EXPECT_EQ(L"checkoutModel|Model checked out", told("out.xml"));
  EXPECT_EQ("A.1 /Designs ann/design BRACKET", object());
  told("save.xml");
  EXPECT_EQ(3, world.version("BRACKET.prt"));
  EXPECT_EQ(L"checkinModel|Model checked in", told("in.xml"));
  EXPECT_EQ("A.2 /Designs", object());
  EXPECT_EQ(3, world.version("BRACKET.prt")) << "the version that the session wrote takes the server's parameters";
  std::string content;
  ASSERT_TRUE(vault()->content({L"BRACKET", ProMdlType::part}, 2, content));
  EXPECT_EQ(world.document("BRACKET.prt"), content);
  ASSERT_TRUE(vault()->content({L"BRACKET", ProMdlType::part}, 1, content));
  EXPECT_EQ(std::string::npos, content.find("NORM"));
}

TEST_F(VaultLists, WithoutAServerOrAWorkspaceTheActionsAreSilent) {
  const std::string all = task("checkinModel") + task("checkoutModel") + task("removeModelFromWorkspace") +
                          task("addFileToWorkspace", "source='d:\\bracket.prt.1'");
  world.list("all.xml", all);
  EXPECT_EQ(0, world.start());
  world.open(L"BRACKET", ProMdlType::part);
  const std::wstring titles = L"checkinModel|checkoutModel|Clear workspace|Add file to workspace";
  EXPECT_EQ(titles, told("all.xml"));
  EXPECT_EQ(1, world.version("BRACKET.prt"));
  ASSERT_EQ(L"", world.session().servers().connect({L"c:\\plm", L"design", L"ann", 0}));
  for (int i = 0; i < 4; ++i) world.session().failNext("ProServerWorkspaceGet", ProGeneralError);
  world.pressStart();
  EXPECT_EQ(titles, told());
  EXPECT_EQ("none", object());
}

TEST_F(VaultLists, ConflictsAreToldWithTheirReason) {
  begin();
  told("in.xml");
  EXPECT_EQ(L"checkinModel|E:BRACKET.PRT isn't checked out", told("in.xml"));
  checkOutByBob();
  EXPECT_EQ(L"checkinModel|E:BRACKET.PRT is checked out by bob in the workspace mill", told("in.xml"));
  EXPECT_EQ(L"checkoutModel|E:BRACKET.PRT is checked out by bob in the workspace mill", told("out.xml"));
  EXPECT_EQ("A.1 /Designs bob/mill BRACKET", object());
  // Bob checks in: the workspace is behind.
  headless::NextIteration next;
  const headless::ObjectName name{L"BRACKET", ProMdlType::part};
  const auto plm = vault();
  ASSERT_TRUE(plm->next(name, {"BOB", "Mill"}, "", next)) << "names are case-blind";
  ASSERT_TRUE(plm->checkIn(name, {"bob", "mill"}, next, "{}", 2));
  EXPECT_EQ(L"checkoutModel|E:BRACKET.PRT: the workspace has A.1, the vault A.2", told("out.xml"));
}

TEST_F(VaultLists, WhatWasSavedWithoutACheckOutConflictsAtCheckIn) {
  begin();
  told("in.xml");
  const ProMdl part = ProMdlInit(L"BRACKET", ProMdlType::part).value;
  EXPECT_FALSE(ProMdlIsModifiable(part, true).value) << "nobody answers";
  world.session().setOption(L"dm_checkout_on_the_fly", L"continue");
  EXPECT_FALSE(ProMdlIsModifiable(part, false).value) << "nobody may be asked";
  EXPECT_TRUE(ProMdlIsModifiable(part, true).value);
  told("save.xml");
  EXPECT_EQ(3, world.version("BRACKET.prt"));
  refill();
  EXPECT_EQ("notcheckedoutmod.gif", label());
  EXPECT_EQ(L"checkinModel|E:BRACKET.PRT isn't checked out", told("in.xml"));
  EXPECT_EQ("A.1 /Designs", object());
  EXPECT_NE(std::wstring::npos, world.savedParameters("BRACKET.prt").find(L"NORM=WN")) << "nothing is lost";
}

TEST_F(VaultLists, ARunMayCheckOutOnTheFly) {
  world.config("kvd_check_modifyable=1");
  begin();
  told("in.xml");
  EXPECT_EQ(L"", told("save.xml")) << "a closed model is left out";
  world.session().setOption(L"dm_checkout_on_the_fly", L"checkout");
  told("save.xml");
  EXPECT_EQ("A.1 /Designs ann/design BRACKET", object());
  EXPECT_EQ(3, world.version("BRACKET.prt"));
}

TEST_F(VaultLists, TheTableShowsEachState) {
  begin();
  world.openTool();
  EXPECT_EQ("fromHDD.gif", label());
  told("in.xml");
  refill();
  EXPECT_EQ("notcheckedout.gif", label());
  ASSERT_EQ(ProNoError, world.session().ui().press(kMain, "kvaneCheckout"));
  EXPECT_EQ("checkedout.gif", label());
  EXPECT_EQ("A.1 /Designs ann/design BRACKET", object());
  told("save.xml");
  refill();
  EXPECT_EQ("checkedoutmod.gif", label());
  headless::Ui& ui = world.session().ui();
  const auto chosenAfter = [&ui](bool before) {
    ui.setCheck(kMain, "BRACKET.PRT_cb", before);
    EXPECT_EQ(ProNoError, ui.press(kMain, "SelectOnlyPDMBtn_MenuRMBChooser"));
    return ui.dialog(kMain)->checked("BRACKET.PRT_cb");
  };
  EXPECT_TRUE(chosenAfter(true)) << "checked out and changed stays";
  EXPECT_FALSE(chosenAfter(false)) << "nothing is chosen anew";
  ui.setCheck(kMain, "BRACKET.PRT_cb", true);
  told("in.xml");
  refill();
  EXPECT_EQ("notcheckedout.gif", label());
  EXPECT_FALSE(chosenAfter(true));
  ui.setCheck(kMain, "BRACKET.PRT_cb", true);
  checkOutByBob();
  world.session().ui().press(kMain, "kvaneCheckout");
  EXPECT_EQ("checkoutrefused.gif", label());
  EXPECT_NE(std::wstring::npos, world.messages().find(L"<KVD> Can't checkout,because conflicts"));
}

TEST_F(VaultLists, ARunIsCancelledWhereAModelIsNotCheckedOut) {
  world.config("kvd_cancel_if_not_checked_out=1");
  world.list("told.xml", task("saveModel"), task("setUserVariableDirect", "name='HEAD' value='ran'"),
             task("setUserVariableDirect", "name='FOOT' value='ran'"));
  begin();
  world.run("told.xml");
  EXPECT_TRUE(world.logHas(L"A file isn't checked out"));
  EXPECT_NE(nullptr, language::userVariables().find(L"HEAD"));
  EXPECT_EQ(nullptr, language::userVariables().find(L"FOOT"));
  EXPECT_EQ(1, world.version("BRACKET.prt"));
  const ProMdl part = ProMdlInit(L"BRACKET", ProMdlType::part).value;
  std::wstring conflicts;
  ASSERT_EQ(ProNoError, ProServerObjectsCheckin(part, {}, conflicts));
  ASSERT_EQ(ProNoError, ProServerObjectsCheckout(part, {}, conflicts));
  world.run("told.xml");
  EXPECT_NE(nullptr, language::userVariables().find(L"FOOT"));
  EXPECT_EQ(3, world.version("BRACKET.prt"));
}

TEST_F(VaultLists, InstancesComeAlongOnlyWhenAsked) {
  world.part(L"BOLT").with(L"L", 1.0).column(L"L").instance(L"BOLT_20", {"20.0"}).instance(L"BOLT_30", {"30.0"});
  world.list("level.xml", task("checkoutModel", "instance_level='1'"));
  begin(L"BOLT");
  told("in.xml");
  told("out.xml");
  EXPECT_EQ("A.1 /Designs ann/design BOLT", object(L"BOLT"));
  const auto isOut = [](const wchar_t* file) {
    return ProServerObjectStatusGet(L"plm", L"design", file).value.checkedOut;
  };
  ASSERT_TRUE(ProMdlRetrieve(L"BOLT_20", ProMdlType::part));
  EXPECT_TRUE(isOut(L"bolt.prt"));
  EXPECT_FALSE(isOut(L"bolt_20.prt"));
  told("level.xml");
  EXPECT_EQ("A.1 /Designs ann/design BOLT BOLT_20 BOLT_30", object(L"BOLT"));
  EXPECT_TRUE(isOut(L"BOLT_20.PRT"));
}

TEST_F(VaultLists, AClearedWorkspaceIsFilledFromTheVaultAgain) {
  begin();
  told("in.xml");
  told("out.xml");
  EXPECT_EQ(L"Clear workspace|E:BRACKET.PRT is checked out", told("clear.xml"));
  told("save.xml");
  told("in.xml");
  EXPECT_EQ(L"Clear workspace", told("clear.xml"));
  EXPECT_EQ(0, world.version("BRACKET.prt"));
  EXPECT_EQ("A.2 /Designs", object());
  EXPECT_EQ(ProNotFound, ProServerObjectStatusGet(L"plm", L"design", L"bracket.prt").error);
  ProMdlErase(ProMdlInit(L"BRACKET", ProMdlType::part).value);
  world.session().settle();
  const auto again = ProMdlRetrieve(L"bracket", ProMdlType::part);
  ASSERT_TRUE(again);
  EXPECT_EQ(L"COLOR=red PTC_WM_LOCATION=/Designs PTC_WM_REVISION=A PTC_WM_ITERATION=2 NORM=WN",
            world.savedParameters("BRACKET.prt"));
  EXPECT_FALSE(ProMdlIsModifiable(again.value, false).value);
  EXPECT_EQ(ProNotFound, ProMdlRetrieve(L"NOWHERE", ProMdlType::part).error);
}

TEST_F(VaultLists, FilesAreAddedToTheWorkspaceAndToAPrimaryObject) {
  test::writeBytes(world.models() + "/sheet.pdf", "%PDF");
  const auto add = [](const std::string& attributes) { return task("addFileToWorkspace", attributes); };
  world.list("none.xml", add("source='d:\\none.pdf'"));
  world.list("plain.xml", add("source='d:\\sheet.pdf'"));
  world.list("primary.xml", add("source='d:/sheet.pdf' primary='@mdln@.prt'"));
  world.list("stranger.xml", add("source='d:\\sheet.pdf' primary='none.prt'"));
  world.list("nonsense.xml", add("source='d:\\sheet.pdf' primary='nonsense'"));
  begin();
  told("in.xml");
  const std::wstring failure = L"Add file to workspace|E:failure while add to workspace / add to primary - ";
  EXPECT_EQ(failure + L"-4", told("none.xml"));
  EXPECT_EQ(failure + L"-49|E:BRACKET.prt isn't checked out here", told("primary.xml"));
  EXPECT_EQ(failure + L"-4", told("stranger.xml"));
  EXPECT_EQ(failure + L"-2", told("nonsense.xml"));
  EXPECT_EQ(L"Add file to workspace|ok", told("plain.xml"));
  EXPECT_EQ(std::vector<std::wstring>{L"sheet.pdf"}, vault()->filesOf({"ann", "design"}));
  told("out.xml");
  EXPECT_EQ(L"Add file to workspace|ok", told("primary.xml"));
  told("in.xml");
  ObjectRecord record;
  ASSERT_TRUE(vault()->object({L"BRACKET", ProMdlType::part}, record));
  ASSERT_EQ(1u, record.iterations.back().attachments.size());
  EXPECT_EQ("%PDF", test::readBytes(world.machine(L"c:\\plm\\attachments\\bracket.prt.2\\sheet.pdf")));
}

TEST_F(VaultLists, FiltersAndTokensKnowTheServersObjects) {
  begin();
  const ProMdl part = ProMdlInit(L"BRACKET", ProMdlType::part).value;
  const auto oid = [&] { return language::replaceVariables(L"@oid@", part).text; };
  EXPECT_EQ(L"no_oid", oid());
  told("in.xml");
  EXPECT_EQ(L"VR%3adocument%3a1", oid());
  EXPECT_EQ(L"BRACKET VR%3adocument%3a1", language::replaceVariables(L"@mdln@ @oid@", part).text);
  EXPECT_EQ(L"VR:document:1", language::replaceVariables(L"$$repl$%3a$:$@oid@$$", part).text);
  EXPECT_EQ(L"wtws://plm/design/", language::replaceVariables(L"@mdlpath@", part).text);
  struct Case {
    const wchar_t* attributes;
    int in, out;
  };
  const Case cases[] = {
      {L"type='pdmobject' pdmobj='true'", 1, 1},
      {L"type='pdmobject' pdmobj='false'", 0, 0},
      {L"type='pdmobject' pdmobj='true' pdmcheckedout='true' pdmcheckedoutsel='3'", 0, 1},
      {L"type='pdmobject' pdmobj='true' pdmcheckedout='true' pdmcheckedoutsel='1'", 0, 0},
      {L"type='pdmobject_2' cs_checked_out='true'", 0, 1},
      {L"type='pdmobject_2' cs_not_checked_out='true'", 1, 0},
      {L"type='pdmobject_2' hdd='true'", 0, 0},
  };
  for (const Case& entry : cases)
    EXPECT_EQ(entry.in, test::predicate(entry.attributes, part)) << text::toUtf8(entry.attributes);
  told("out.xml");
  for (const Case& item : cases)
    EXPECT_EQ(item.out, test::predicate(item.attributes, part)) << text::toUtf8(item.attributes);
  EXPECT_EQ(ProNoError, ProDirectoryChange(L"wtws://plm/design/"));
  EXPECT_EQ(L"d:\\", ProDirectoryCurrentGet().value);
}

TEST_F(VaultLists, TheServersNamesAndAddresses) {
  begin();
  EXPECT_EQ(ProNotFound, ProServerModelNameToAliasedURL(L"bracket.prt").error);
  const ProMdl part = ProMdlInit(L"BRACKET", ProMdlType::part).value;
  EXPECT_EQ(ProNoError, ProMdlCommonnameSet(part, L"Angle")) << "no server's";
  told("in.xml");
  told("out.xml");
  EXPECT_EQ(L"wtws://plm/design/bracket.prt", ProServerModelNameToAliasedURL(L"BRACKET.PRT").value);
  const auto address = ProServerAliasedURLToURL(L"wtws://plm/design/bracket.prt");
  EXPECT_NE(std::wstring::npos, address.value.find(L"&oid=VR:document:1&"));
  EXPECT_EQ(ProBadInputs, ProServerAliasedURLToURL(L"http://plm/bracket.prt").error);
  EXPECT_EQ(ProGeneralError, ProMdlCommonnameSet(part, L"Other"));
  EXPECT_EQ(L"Angle", ProMdlCommonnameGet(part).value);
  world.session().setOption(L"let_proe_rename_pdm_objects", L"yes");
  EXPECT_EQ(ProNoError, ProMdlCommonnameSet(part, L"Other"));
  // An object that the workspace doesn't have lies in the common space.
  ASSERT_TRUE(vault()->release({L"BRACKET", ProMdlType::part}));
  ASSERT_TRUE(vault()->leave({L"BRACKET", ProMdlType::part}, {"ann", "design"}));
  EXPECT_EQ(L"wtpub://plm/Designs/bracket.prt", ProServerModelNameToAliasedURL(L"bracket.prt").value);
  EXPECT_EQ(address.value, ProServerAliasedURLToURL(L"wtpub://plm/Designs/bracket.prt").value);
}

TEST_F(VaultLists, UnsavedChangesStayBehindACheckIn) {
  begin();
  const ProMdl part = ProMdlInit(L"BRACKET", ProMdlType::part).value;
  const auto norm = [](const std::string& document) { return document.find("NORM") != std::string::npos; };
  ProParamvalue value;
  value.type = ProParamvalueType::string;
  value.string = L"WN";
  ASSERT_TRUE(ProParameterCreate(ProMdlToModelitem(part).value, L"NORM", value));
  std::wstring conflicts;
  ASSERT_EQ(ProNoError, ProServerObjectsCheckin(part, {}, conflicts));
  EXPECT_FALSE(norm(world.document("BRACKET.prt")));
  EXPECT_TRUE(ProMdlModificationVerify(part).value);
  // The action saves before it checks in.
  told("out.xml");
  EXPECT_EQ(L"checkinModel|Model checked in", told("in.xml"));
  std::string content;
  ASSERT_TRUE(vault()->content({L"BRACKET", ProMdlType::part}, 2, content));
  EXPECT_TRUE(norm(content));
  EXPECT_EQ(content, world.document("BRACKET.prt"));
  // What another program wrote isn't checked in as what this session has.
  told("out.xml");
  const std::string before = object();
  test::writeBytes(world.models() + "/BRACKET.prt.9", R"({"format": 1})");
  EXPECT_EQ(ProGeneralError, ProServerObjectsCheckin(part, {}, conflicts));
  EXPECT_NE(std::wstring::npos, world.messages().find(L"BRACKET.prt.9: another program wrote version 9 meanwhile"));
  EXPECT_EQ(9, world.version("BRACKET.prt"));
  EXPECT_EQ(before, object());
  // One that was never saved isn't in the workspace.
  const ProMdl fresh = ProMdlCopy(part, L"FRESH").value;
  world.session().models().find(fresh)->document->folder.clear();
  EXPECT_EQ(ProConflicts, ProServerObjectsCheckin(fresh, {}, conflicts));
  EXPECT_EQ(L"FRESH.PRT was never saved in the workspace", conflicts);
}

TEST_F(VaultLists, AHeldLockAndADiskThatFailsLoseNothing) {
  begin();
  {
    const auto lock = os::lockFile(L"c:\\plm\\vault.lock");
    ASSERT_TRUE(lock);
    EXPECT_EQ(L"checkinModel|E:Failure happend while checkin", told("in.xml"));
    EXPECT_NE(std::wstring::npos, world.messages().find(L"/plm is locked by another process"));
  }
  EXPECT_EQ("none", object());
  for (const wchar_t* folder : {L"c:\\plm\\contents\\", L"c:\\plm\\objects\\", L"c:\\plm\\", L"d:\\"}) {
    world.disk().denyWrites(folder);
    EXPECT_EQ(L"checkinModel|E:Failure happend while checkin", told("in.xml")) << text::toUtf8(folder);
    world.disk().heal();
    EXPECT_EQ("none", object());
  }
  world.session().failNext("ProServerObjectsCheckin", ProGeneralError);
  EXPECT_EQ(L"checkinModel|E:Failure happend while checkin", told("in.xml"));
  EXPECT_EQ(L"checkinModel|Model checked in", told("in.xml"));
  world.disk().denyWrites(L"c:\\plm\\objects\\");
  EXPECT_EQ(L"checkoutModel|E:Failure happend while checkin", told("out.xml"));
  world.disk().heal();
  EXPECT_EQ("A.1 /Designs", object());
  EXPECT_EQ(L"checkoutModel|Model checked out", told("out.xml"));
}

TEST_F(VaultLists, TwoServersAndOneIsActive) {
  begin();
  EXPECT_TRUE(Vault::create(L"c:\\archive", "archive"));
  ASSERT_EQ(L"", world.session().servers().connect({L"c:\\archive", L"old", L"ann", 0}));
  EXPECT_EQ(L"plm", ProServerActiveGet().value);
  told("in.xml");
  EXPECT_EQ(ProNotFound, ProServerActivate(L"nowhere"));
  EXPECT_EQ(ProNoError, ProServerActivate(L"ARCHIVE"));
  EXPECT_EQ(L"old", ProServerWorkspaceGet(L"archive").value);
  EXPECT_EQ(ProNotFound, ProServerObjectStatusGet(L"archive", L"old", L"bracket.prt").error);
  EXPECT_EQ(L"d", ProMdlDataGet(ProMdlInit(L"BRACKET", ProMdlType::part).value).value.device);
  EXPECT_EQ(ProNoError, ProServerActivate(L"plm"));
  EXPECT_EQ(L"wtws", ProMdlDataGet(ProMdlInit(L"BRACKET", ProMdlType::part).value).value.device);
}

}  // namespace
