// Taking runs back: what comes back, what is a conflict, what the journals tell.
#include "kelvane/journal/undo.h"
#include "kelvane/journal/journal_fixture.h"
#include "kelvane/show/model_folder.h"

namespace test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

class Undo : public JournalFixture {};

// Replaces what follows "to " in the newest document of that name, as another program would.
void changeBehindTheRun(const std::string& file) { writeBytes(file, readBytes(file) + "\n"); }

TEST_F(Undo, GivesTheFolderBackByteForByteAndIsARunThatCanBeUndone) {
  for (const std::string list : {"norm", "rename", "copy", "step", "all", "report"}) {
    fs::remove_all(models());
    gearbox();
    file("models/block.stp", "an export that was there");
    file("models/audit.csv", "");
    file("models/kelvane.log", "the log before");
    const Contents before = contents();
    const Ended ended = run(list);
    ASSERT_EQ(0, ended.code) << list << ended.err;
    const Contents after = contents();
    ASSERT_NE("", difference(before, after)) << list;

    const Ended dry = undo({"-n"});
    EXPECT_EQ(0, dry.code) << dry.err;
    EXPECT_THAT(dry.out, HasSubstr("would ")) << list;
    EXPECT_EQ("", difference(after, contents())) << list << ": nothing was done yet";

    const Ended undone = undo();
    EXPECT_EQ(0, undone.code) << list << undone.err;
    EXPECT_EQ("", difference(before, contents())) << list;
    EXPECT_EQ(2, undo().code) << list << ": nothing is left";

    const Ended again = undo({"0002"});
    EXPECT_EQ(0, again.code) << list << again.err;
    EXPECT_EQ("", difference(after, contents())) << list << ": an undo is undone";
  }
}

// Whether it is to stop is asked before each group; behind the last one there is nothing to be stopped.
TEST_F(Undo, ThatHasNoRestIsWhole) {
  part(L"PLATE");
  ASSERT_EQ(0, run("norm").code);
  fs::copy(models(), path("other"), fs::copy_options::recursive);
  const auto takenBack = [](const std::string& folder, int stopsAt) {
    const kelvane::Book book(kelvane::mountModels(folder));
    int groups = 0;
    const auto reached = [&groups](const kelvane::Record&) {
      ++groups;
      return std::error_code();
    };
    const auto done =
        kelvane::UndoPlan(book, "0001", kelvane::Outside::own).carryOut(reached, [&] { return groups == stopsAt; });
    return std::pair(groups, done.failed.empty());
  };
  EXPECT_EQ(std::pair(0, false), takenBack(path("other"), 0));
  const int all = takenBack(path("other"), -1).first;
  EXPECT_LT(0, all);
  EXPECT_EQ(std::pair(all, true), takenBack(models(), all));
}

TEST_F(Undo, NumbersOfVersionsNeverComeTwice) {
  part(L"PLATE");
  EXPECT_EQ(0, run("norm").code);
  EXPECT_EQ(0, undo().code);
  const Ended again = run("norm");
  EXPECT_THAT(recapOf(again), HasSubstr("models=1 changed=1 ")) << again.err;
  EXPECT_EQ((std::vector<std::string>{"PLATE.prt.1", "PLATE.prt.3", "kelvane.log"}), filesIn("models"));
  EXPECT_EQ(0, undo().code);
  EXPECT_EQ(0, kelvane({"purge", models(), "--keep", "1"}).code);
  EXPECT_EQ(0, run("norm").code);
  EXPECT_EQ((std::vector<std::string>{"PLATE.prt.1", "PLATE.prt.4", "kelvane.log"}), filesIn("models"))
      << "also when the journal is gone that told of them";
}

TEST_F(Undo, AClockThatJumpsChangesNoNumberAndNoOrder) {
  part(L"PLATE");
  const auto runAt = [this](std::int64_t seconds, const std::vector<std::string>& more) {
    static_cast<os::FixedClock&>(os::clock()).set(seconds);
    return run("norm", more);
  };
  constexpr std::int64_t kYear = 365LL * 24 * 3600, kNow = 1'700'000'000;
  for (const std::int64_t at : {kNow, kNow - 20 * kYear, kNow + 20 * kYear, kNow - kYear})
    EXPECT_THAT(recapOf(runAt(at, {"--again"})), HasSubstr(" saved=1 ")) << at;
  EXPECT_THAT(recapOf(runAt(kNow - 2 * kYear, {})), HasSubstr("changed=0 ")) << "it was worked, whenever that was";
  const std::string runs = kelvane({"runs", models()}).out;
  EXPECT_LT(runs.find("0001  2023-"), runs.find("0002  2003-"));
  EXPECT_LT(runs.find("0002  2003-"), runs.find("0003  2043-"));
  for (const char* newest : {"PLATE.prt.5", "PLATE.prt.4", "PLATE.prt.3", "PLATE.prt.2"}) {
    static_cast<os::FixedClock&>(os::clock()).set(kNow - 30 * kYear);
    EXPECT_THAT(undo().out, HasSubstr("remove " + std::string(newest) + "\n")) << "a run that wrote nothing is none";
  }
  EXPECT_EQ(std::vector<std::string>{"PLATE.prt.1"}, filesIn("models"));
  EXPECT_EQ(0, runAt(0, {}).code);
  EXPECT_EQ((std::vector<std::string>{"PLATE.prt.1", "PLATE.prt.6", "kelvane.log"}), filesIn("models"));
}

TEST_F(Undo, WhatSomebodyChangedSinceIsAConflict) {
  const auto remove = [this](const std::string& name) { fs::remove(path("models/" + name)); };
  const struct {
    const char* list;
    std::function<void()> meanwhile;
    std::string conflict;  // empty: none
    const char* skipped;   // what --conflict skip takes back all the same
  } cases[] = {
      {"norm", [&] { changeBehindTheRun(path("models/PIN.prt.2")); }, "conflict: PIN.prt.2 was changed since\n",
       "remove GEAR.prt.2\n"},
      {"norm", [&] { fs::copy(path("models/PIN.prt.2"), path("models/PIN.prt.3")); },
       "conflict: PIN.prt.3 was written since\n", "remove GEAR.prt.2\n"},
      {"norm",
       [&] {
         run("norm", {"--again", "--select", "PIN.PRT"});
       },
       "conflict: PIN.prt.3 was written since by run 0002\n", "remove GEAR.prt.2\n"},
      {"norm", [&] { remove("PIN.prt.2"); }, "", "remove GEAR.prt.2\n"},
      {"rename", [&] { remove("wheel.prt.1"); }, "conflict: GEAR.prt.1 can't come back: its content was kept nowhere\n",
       "remove PIN.prt.2\n"},
      {"rename", [&] { fs::copy(path("models/BOX.asm.2"), path("models/BOX.asm.3")); },
       "conflict: BOX.asm.3 was written since\n", "remove PIN.prt.2\n"},
      {"step",
       [&] {
         for (const auto& kept : fs::directory_iterator(path("models/kelvane.journal/0001/before")))
           changeBehindTheRun(kept.path().string());
       },
       "/before/1 isn't as it was kept\n", "remove kelvane.log\n"},
  };
  for (const auto& c : cases) {
    fs::remove_all(models());
    gearbox();
    file("models/block.stp", "an export that was there");
    const Contents before = contents();
    ASSERT_EQ(0, run(c.list).code);
    c.meanwhile();
    const Contents changed = contents();
    const Ended ended = undo({"0001"});
    if (c.conflict.empty()) {
      EXPECT_EQ(0, ended.code) << ended.err;
      EXPECT_EQ("", difference(before, contents())) << "what was to go is gone";
      continue;
    }
    EXPECT_EQ(1, ended.code) << c.conflict;
    EXPECT_THAT(ended.err, HasSubstr(c.conflict));
    EXPECT_EQ("", difference(changed, contents())) << c.conflict << "nothing is done by halves";
    const Ended skipped = undo({"0001", "--conflict", "skip"});
    EXPECT_EQ(1, skipped.code) << c.conflict;
    EXPECT_THAT(skipped.out, HasSubstr(c.skipped));
    const auto left = filesIn("models");
    const bool isRename = std::string(c.list) == "rename";
    EXPECT_EQ(isRename, std::find(left.begin(), left.end(), "GEAR.prt.1") == left.end())
        << "what was renamed stays together with its users";
  }
}

TEST_F(Undo, JournalsTellWhatRunsDidAndWhy) {
  gearbox();
  list("some.xml", text::replaceAll(kAddNorm, "forASM='true'", "forASM='false'") + kSave +
                       "<task type='runMSDOScommand' version='3' forPRT='true' forEF='false' cmd='true' args=''"
                       " uncup='false' waitafter='0'/>");
  EXPECT_EQ(0, run("some", {"--reason", "the norm of May", "--select", "P*"}).code);
  EXPECT_EQ(0, run("some").code);
  EXPECT_THAT(kelvane({"runs", models()}).out,
              testing::ContainsRegex("0001 .*  some.xml of standards.kvz  versions=1 files=.*  the norm of May\n"
                                     "0002 .*  some.xml of standards.kvz  versions=3 "));
  const std::pair<const char*, const char*> reasons[] = {
      {"0001 GEAR.PRT", "no   run 0001: --select leaves it out\n"},
      {"0001 PIN.PRT", "yes  run 0001: worked: changed; wrote PIN.prt.2\n"},
      {"0002 PIN.PRT", "no   run 0002: this list has worked it before\n"},
      {"0002 NUT.PRT", "no   run 0002: it had no row: no start of the run leads to it\n"},
  };
  for (const auto& [words, line] : reasons) {
    const std::string run(words, 4), model(words + 5);
    const Ended why = kelvane({"why", models() + "/kelvane.journal/" + run, model});
    EXPECT_THAT(why.out, HasSubstr(line)) << words << why.err;
    EXPECT_EQ(std::string_view(line).starts_with("yes") ? 0 : 1, why.code);
  }
  const Ended undone = undo();
  EXPECT_THAT(undone.err, testing::ContainsRegex("warning: nothing takes back: (ran|started) .* \\([23] times\\)\n"));
  EXPECT_THAT(kelvane({"runs", models(), "--json"}).out, HasSubstr(R"("of": "0002")"));
  const auto told = [this] { return kelvane({"runs", models()}).out; };
  EXPECT_THAT(told(), testing::ContainsRegex("0002 .*  fine; taken back by 0003\n"));
  const std::string why = kelvane({"why", models() + "/kelvane.journal/0003", "GEAR.PRT"}).out;
  EXPECT_THAT(why, testing::ContainsRegex("run 0003: undo of 0002, .*\nyes  run 0003: took it back\n"));
  EXPECT_EQ(0, undo({"0003"}).code);
  EXPECT_THAT(told(), testing::ContainsRegex("0002 .*  fine\n0003 .*  fine; taken back by 0004\n"));
  // Verbs that look at models pass over the journal.
  EXPECT_THAT(kelvane({"models", models()}).out, testing::Not(HasSubstr("journal")));
  EXPECT_EQ(0, kelvane({"diff", models(), models()}).code);
  EXPECT_EQ(0, run("norm", {"--into", path("copy"), "-q"}).code);
  EXPECT_THAT(kelvane({"runs", path("copy")}).out, testing::StartsWith("0001 ")) << "a copy begins its own";
}

TEST_F(Undo, PurgeDropsWhatNoKeptRunNeeds) {
  part(L"PLATE");
  for (int i = 0; i < 4; ++i) EXPECT_EQ(0, run("norm", {"--again"}).code);
  EXPECT_EQ(2, kelvane({"purge", models()}).code) << "a number must be given";
  EXPECT_THAT(kelvane({"purge", models(), "--keep", "-1"}).err, HasSubstr("--keep: '-1' is less than 0"));
  const Contents before = contents();
  const Ended dry = kelvane({"purge", models(), "--keep", "2", "-n"});
  EXPECT_THAT(dry.out, HasSubstr("would remove PLATE.prt.1\nwould drop run 0001\nwould drop run 0002\n"));
  EXPECT_EQ("", difference(before, contents()));
  EXPECT_EQ(0, kelvane({"purge", models(), "--keep", "2"}).code);
  EXPECT_EQ((std::vector<std::string>{"PLATE.prt.2", "PLATE.prt.3", "PLATE.prt.4", "PLATE.prt.5", "kelvane.log"}),
            filesIn("models"));
  EXPECT_EQ(0, undo().code);
  EXPECT_EQ(0, undo().code);
  EXPECT_EQ((std::vector<std::string>{"PLATE.prt.2", "PLATE.prt.3", "kelvane.log"}), filesIn("models"));
}

TEST_F(Undo, WithoutAJournalNothingStarts) {
  part(L"PLATE");
  file("models/kelvane.journal", "in its place");
  const Ended ended = run("norm");
  EXPECT_EQ(2, ended.code);
  EXPECT_THAT(ended.err, testing::ContainsRegex("the journal .*/kelvane.journal/0001/? can't be begun: "));
  EXPECT_EQ(std::vector<std::string>{"PLATE.prt.1"}, filesIn("models"));
  for (const char* option : {"-n", "--read-only"}) EXPECT_EQ(0, run("norm", {option}).code) << option;
  fs::remove(path("models/kelvane.journal"));
  for (const char* option : {"-n", "--read-only"}) EXPECT_EQ(0, run("norm", {option}).code) << option;
  EXPECT_FALSE(fs::exists(path("models/kelvane.journal"))) << "what changes no model keeps none";
  EXPECT_EQ("kelvane: no run of " + models() + " is there to be taken back\n", undo().err);
  EXPECT_EQ(2, undo({"7"}).code);
}

// A check-in is told outside: a further iteration has what was there before.
TEST_F(Undo, ACheckInBecomesAFurtherIterationWithTheContentBefore) {
  part(L"SHAFT").with(L"MASS", 2.5);
  const std::string in = "<task type='checkinModel' version='3' forPRT='true' forEF='false'/>";
  list("in.xml", in);
  list("release.xml", kAddNorm + kSave + in);
  ASSERT_EQ(0, kelvane({"vault", path("plm"), "--create"}).code);
  const auto inVault = [&](const std::string& list, std::vector<std::string> more = {}) {
    more.insert(more.begin(), {"--vault", path("plm"), "--user", "ann", "--set", "kvd_write_history_in_models=0"});
    return run(list, more);
  };
  const std::string content = path("plm/contents/shaft.prt.");
  ASSERT_EQ(0, inVault("in").code);
  const Contents before = contents();
  ASSERT_EQ(0, inVault("release", {"--check-out"}).code);
  EXPECT_NE(readBytes(content + "1"), readBytes(content + "2"));
  const Ended undone = undo();
  EXPECT_EQ(0, undone.code) << undone.err;
  EXPECT_THAT(undone.out, HasSubstr("vault SHAFT.PRT: checked in with the content of A.1\n"));
  EXPECT_EQ(readBytes(content + "1"), readBytes(content + "3"));
  EXPECT_EQ("SHAFT.PRT  A.3  /Default  -  in ann/models (A.3)\n", kelvane({"vault", path("plm")}).out);
  EXPECT_EQ("", difference(before, contents()));
  const Ended first = undo();
  EXPECT_EQ(0, first.code) << first.err;
  EXPECT_THAT(first.err,
              HasSubstr("warning: nothing takes back: SHAFT.PRT stays in the vault, which didn't have it\n"));

  EXPECT_EQ(0, inVault("release", {"--check-out"}).code) << "the workspace is whole";
  ASSERT_EQ(0, kelvane({"vault", path("plm"), "--revise", "SHAFT.PRT"}).code);
  const Contents released = contents();
  const Ended refused = undo();
  EXPECT_EQ(1, refused.code);
  EXPECT_THAT(refused.err, HasSubstr("conflict: SHAFT.PRT was changed in the vault since\n"));
  EXPECT_EQ("", difference(released, contents())) << "the document here goes with its object";
}

}  // namespace
}  // namespace test
