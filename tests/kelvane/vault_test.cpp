// The PDM folder through the program: making and listing it, runs in a workspace, two people, trouble.
#include <nlohmann/json.hpp>

#include "kelvane/run/run_fixture.h"
#include "os/lock.h"
#include "os/surroundings.h"

namespace {

using nlohmann::json;
using test::Ended;
using test::recapOf;

const std::string kIn = "<task type='checkinModel' version='3' forPRT='true' forASM='true' forEF='false'/>";

class VaultProgram : public test::RunFixture {
 protected:
  void SetUp() override {
    RunFixture::SetUp();
    list("in.xml", kIn);
    list("release.xml", test::kAddNorm + test::kSave + kIn);
    part(L"SHAFT").with(L"MASS", 2.5);
    assembly(L"UNIT").uses(L"SHAFT", creo::ProMdlType::part);
    ASSERT_EQ(0, kelvane({"vault", path("plm"), "--create"}).code);
  }
  Ended vault(std::vector<std::string> more = {}) {
    more.insert(more.begin(), {"vault", path("plm")});
    return kelvane(more);
  }
  Ended runAs(const std::string& user, const std::string& folder, const std::string& list,
              std::vector<std::string> more = {}) {
    more.insert(more.begin(), {"run", path("standards"), list, path(folder), "--vault", path("plm"), "--user", user,
                               "--set", "kvd_write_history_in_models=0"});
    return kelvane(more);
  }
  Ended getAs(const std::string& user, const std::string& folder, const std::string& model) {
    return vault({"--get", model, "--models", path(folder), "--user", user});
  }
};

TEST_F(VaultProgram, TwoPeopleWorkOnOneVault) {
  EXPECT_EQ("", vault().out);
  const Ended in = runAs("ann", "models", "in.xml");
  EXPECT_EQ(0, in.code) << in.err;
  EXPECT_EQ("done  models=2 changed=2 unchanged=0 skipped=0 failed=0 saved=2  errors=0 warnings=0", recapOf(in));
  EXPECT_EQ(
      "SHAFT.PRT  A.1  /Default  -  in ann/models (A.1)\n"
      "UNIT.ASM   A.1  /Default  -  in ann/models (A.1)\n",
      vault().out);

  const Ended got = getAs("bob", "mill", "unit.asm");
  EXPECT_EQ("UNIT.ASM\nSHAFT.PRT\n", got.out) << got.err;
  const Ended bob = runAs("bob", "mill", "norm.xml", {"--check-out", "--select", "SHAFT*"});
  EXPECT_EQ(0, bob.code) << bob.err;
  const json listed = json::parse(vault({"--json"}).out);
  EXPECT_EQ("plm", listed["name"]);
  EXPECT_EQ("bob", listed["objects"][0]["checkedOut"]["user"]);
  EXPECT_EQ("mill", listed["objects"][0]["checkedOut"]["workspace"]);

  const Ended ann = runAs("ann", "models", "release.xml", {"--check-out", "--select", "SHAFT*"});
  EXPECT_EQ("done  models=1 changed=0 unchanged=0 skipped=1 failed=0 saved=0  errors=0 warnings=0", recapOf(ann))
      << "a model that somebody else has is left out";
  EXPECT_EQ(0, runAs("bob", "mill", "release.xml", {"--select", "SHAFT*"}).code);
  EXPECT_NE(std::string::npos, vault().out.find("SHAFT.PRT  A.2  /Default  -  in ann/models (A.1), bob/mill (A.2)"));

  EXPECT_EQ(0, getAs("ann", "models", "shaft.prt").code);
  EXPECT_NE(std::string::npos, vault().out.find("in ann/models (A.2), bob/mill (A.2)"));
  EXPECT_EQ("NORM", json::parse(test::readBytes(path("models/shaft.prt.3")))["parameters"][4]["name"]);
}

TEST_F(VaultProgram, HistoryBehindCheckInsFailsNothingAndHindersNothing) {
  const std::string of = " version='3' forPRT='true' forASM='true' forEF='false'/>";
  list("out.xml", test::kAddNorm + test::kSave + kIn + "<task type='checkoutModel'" + of);
  const std::string clear = "<task type='removeModelFromWorkspace'" + of;
  list("clear.xml", test::kAddNorm + test::kSave + kIn, clear);
  list("empty.xml", "", clear);
  const auto run = [&](const std::string& list) {
    std::vector<std::string> words = {"run",     path("standards"), list,     models(),
                                      "--vault", path("plm"),       "--user", "ann"};
    if (list != "empty") words.push_back("--check-out");
    return kelvane(words);
  };
  const Ended out = run("out");
  EXPECT_EQ(0, out.code) << out.err;
  EXPECT_EQ("done  models=2 changed=2 unchanged=0 skipped=0 failed=0 saved=2  errors=0 warnings=0", recapOf(out));
  EXPECT_EQ((std::vector<std::string>{"SHAFT.prt.1", "SHAFT.prt.2", "SHAFT.prt.3", "UNIT.asm.1", "UNIT.asm.2",
                                      "UNIT.asm.3", "kelvane.log"}),
            filesIn("models"))
      << "what was checked in stays as it is";
  EXPECT_EQ(test::readBytes(path("models/SHAFT.prt.2")), test::readBytes(path("plm/contents/shaft.prt.1")));
  EXPECT_THAT(test::readBytes(path("models/SHAFT.prt.3")), testing::HasSubstr("kvpslot"));
  EXPECT_EQ("done  models=2 changed=0 unchanged=0 skipped=2 failed=0 saved=0  errors=0 warnings=0",
            recapOf(run("out")));

  // On disk a history alone is what the workspace has and the vault hasn't; behind check-ins it is in memory.
  EXPECT_EQ(0, vault({"--release", "SHAFT.PRT"}).code);
  EXPECT_EQ(0, vault({"--release", "UNIT.ASM"}).code);
  const std::vector<std::string> none = {"kelvane.log"};
  EXPECT_EQ(0, run("empty").code);
  EXPECT_EQ(none, filesIn("models"));
  EXPECT_EQ(0, getAs("ann", "models", "UNIT.ASM").code);
  EXPECT_EQ(0, run("clear").code);
  EXPECT_EQ(none, filesIn("models"));
  EXPECT_THAT(vault().out, testing::ContainsRegex("SHAFT.PRT +A.2 .*\nUNIT.ASM +A.2 "));
}

TEST_F(VaultProgram, ARefusedCheckOutIsToldAndLeavesTheModelOut) {
  runAs("ann", "models", "in.xml");
  getAs("bob", "mill", "unit.asm");
  runAs("bob", "mill", "unsaved.xml", {"--check-out", "--select", "SHAFT*"});
  const std::string reason = "SHAFT.PRT is checked out by bob in the workspace mill";
  const std::string text = "warning: SHAFT.PRT can't be checked out: " + reason + "\n";
  for (const char* modifiable : {"0", "1"}) {
    const Ended ended = runAs("ann", "models", "norm.xml",
                              {"--check-out", "-q", "-n", "--set", std::string("kvd_check_modifyable=") + modifiable});
    EXPECT_EQ(0, ended.code);
    EXPECT_EQ(text, ended.err);
    EXPECT_EQ("dry  models=2 changed=1 unchanged=0 skipped=1 failed=0 saved=1  errors=0 warnings=0", recapOf(ended));
  }
  const Ended asked = runAs("ann", "models", "norm.xml",
                            {"-q", "-n", "--select", "SHAFT*", "--creo-option", "dm_checkout_on_the_fly=checkout"});
  EXPECT_EQ("warning: not checked out: " + reason + "\n", asked.err);
  EXPECT_EQ("dry  models=1 changed=0 unchanged=0 skipped=1 failed=0 saved=0  errors=0 warnings=0", recapOf(asked));
  const Ended cancelled =
      runAs("ann", "models", "norm.xml", {"--check-out", "-n", "--set", "kvd_cancel_if_not_checked_out=1"});
  EXPECT_EQ(1, cancelled.code);
  EXPECT_THAT(cancelled.err, testing::HasSubstr(text));

  list("note.xml",
       "<task type='addFileToWorkspace' version='3' forPRT='true' forEF='false' source='d:/note.txt'"
       " primary='@mdln@.prt'/>");
  file("models/note.txt", "note");
  const Ended added = runAs("ann", "models", "note.xml", {"--select", "SHAFT*", "--set", "kvd_check_modifyable=0"});
  EXPECT_EQ(1, added.code);
  EXPECT_THAT(added.err, testing::HasSubstr("warning: note.txt isn't added: " + reason + "\n"));
  EXPECT_THAT(test::readBytes(path("models/kelvane.log")),
              testing::ContainsRegex("add to primary - -49\r?\n[^\n]*SHAFT.prt isn't checked out here"));
}

TEST_F(VaultProgram, ADryRunTellsWhatItWouldCheckIn) {
  const auto before = filesIn("plm/objects");
  const Ended dry = runAs("ann", "models", "release.xml", {"-n"});
  EXPECT_EQ(0, dry.code) << dry.err;
  EXPECT_NE(std::string::npos, dry.out.find("would check in SHAFT.PRT as A.1\n")) << dry.out;
  EXPECT_EQ(before, filesIn("plm/objects"));
  EXPECT_EQ(filesIn("plm"), (std::vector<std::string>{"contents", "objects", "vault.json", "workspaces"}));
  EXPECT_EQ(std::vector<std::string>(), filesIn("plm/workspaces"));
  EXPECT_EQ((std::vector<std::string>{"SHAFT.prt.1", "UNIT.asm.1"}), filesIn("models"));
}

TEST_F(VaultProgram, CheckOutsAreTakenAwayAndRevisionsMade) {
  runAs("ann", "models", "in.xml");
  EXPECT_EQ(1, vault({"--release", "SHAFT.PRT"}).code) << "nobody has it";
  runAs("ann", "models", "unsaved.xml", {"--check-out"});
  const Ended refused = vault({"--revise", "SHAFT.PRT"});
  EXPECT_EQ(2, refused.code);
  EXPECT_EQ("kelvane: SHAFT.PRT is checked out by ann in the workspace models\n", refused.err);
  EXPECT_EQ(0, vault({"--release", "SHAFT.PRT", "--revise", "SHAFT.PRT"}).code);
  EXPECT_EQ(0u, vault().out.find("SHAFT.PRT  B.1  /Default  -")) << vault().out;
}

TEST_F(VaultProgram, TroubleIsToldInALine) {
  runAs("ann", "models", "in.xml");
  std::filesystem::copy(models(), path("copy"));
  const struct {
    Ended ended;
    int code;
    std::string line;
  } cases[] = {
      {kelvane({"vault", path("none")}), 2, "there is no folder"},
      {kelvane({"vault", models()}), 2, models() + " is no vault"},
      {vault({"--create"}), 2, path("plm") + " is a vault already"},
      {vault({"--release", "NONE.PRT"}), 2, "the vault has no NONE.PRT"},
      {getAs("bob", "mill", "NONE.PRT"), 2, "the vault has no NONE.PRT"},
      {vault({"--get", "SHAFT.PRT"}), 2, "--get needs --models DIR"},
      {runAs("ann", "copy", "in.xml", {"--workspace", "models"}), 2,
       "the workspace models of ann belongs to " + models()},
      {runAs("../ann", "models", "in.xml"), 2, "'../ann' is no name of a user or workspace"},
      {run("in.xml", {"--check-out"}), 2, "--workspace, --user and --check-out need a --vault"},
  };
  for (const auto& entry : cases) {
    EXPECT_EQ(entry.code, entry.ended.code) << entry.line;
    EXPECT_NE(std::string::npos, entry.ended.err.find(entry.line)) << entry.ended.err << entry.ended.out;
  }
  file("plm/objects/shaft.prt.json", "{\n\"format\": 1,\n\"number\": \"one\"}");
  const Ended damaged = vault();
  EXPECT_EQ(1, damaged.code);
  EXPECT_EQ(path("plm") + "/objects/shaft.prt.json:3: 'number' must be a whole number of 32 bits\n", damaged.err);
  EXPECT_EQ(0u, damaged.out.find("UNIT.ASM  A.1")) << damaged.out;
  const Ended out = runAs("ann", "models", "norm.xml", {"--check-out", "-q", "-n"});
  EXPECT_EQ(1, out.code) << "nobody can tell whether it is checked out";
  EXPECT_EQ("error: " + damaged.err + "error: SHAFT.PRT can't be checked out: the server failed\n", out.err);
  EXPECT_EQ("dry  models=2 changed=1 unchanged=0 skipped=0 failed=1 saved=1  errors=0 warnings=0", recapOf(out));
}

TEST_F(VaultProgram, ALockThatAnotherProcessHoldsIsNamed) {
  os::mounts().set(L'v', path("plm"));
  runAs("ann", "models", "in.xml");
  const auto lock = os::lockFile(L"v:\\vault.lock");
  ASSERT_TRUE(lock);
  const Ended ended = vault({"--release", "SHAFT.PRT"});
  EXPECT_EQ(2, ended.code);
  EXPECT_EQ("kelvane: the vault " + path("plm") + " is locked by another process\n", ended.err);
}

}  // namespace
