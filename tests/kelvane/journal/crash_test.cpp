// A run that is killed at any moment, and a disk that fills: run again, and undo.
#include <fstream>
#include <nlohmann/json.hpp>
#include <random>
#include <regex>

#include "kelvane/journal/journal_fixture.h"
#include "kelvane/journal/record.h"

namespace test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

constexpr int kKills = 20;
constexpr int kMostUndos = 10;

class Crash : public JournalFixture {
 protected:
  [[nodiscard]] std::vector<std::string> words(const std::string& list, const std::string& folder) const {
    return {"run", path("standards"), list, path(folder), "-q"};
  }
  // Connected with the vault beside that folder.
  [[nodiscard]] std::vector<std::string> inVault(const std::string& list, const std::string& world) const {
    auto all = words(list, world + "/models");
    for (const std::string& word : {std::string("--vault"), path(world + "/plm"), std::string("--user"),
                                    std::string("ann"), std::string("--check-out")})
      all.push_back(word);
    return all;
  }
  // How many changes in a folder that makes.
  [[nodiscard]] int changesOf(const std::vector<std::string>& words, const std::string& folder) const {
    const os::SurroundingsGuard guard;
    const auto files = std::make_shared<FatefulFiles>(os::surroundings().files, path(folder), Fate::none, 0);
    os::surroundings().files = files;
    (void)kelvane(words);
    return files->changes();
  }
  void renew(const std::string& to, const std::string& from = "models") const {
    fs::remove_all(path(to));
    fs::copy(path(from), path(to), fs::copy_options::recursive);
  }

  // The newest content of each document, whatever its number, and the other files. Times that exports write are left
  // out.
  [[nodiscard]] Contents state(const std::string& folder) const {
    static const std::regex number(R"(\.(\d+)$)"), time(R"(\d{4}-\d\d-\d\d[T ]\d\d:\d\d:\d\d)");
    std::map<std::string, int> newest;
    Contents all;
    for (const auto& [name, bytes] : contents(folder)) {
      std::smatch found;
      if (!std::regex_search(name, found, number)) {
        if (name != "kelvane.log") all[name] = std::regex_replace(bytes, time, "");
        continue;
      }
      const std::string stem = name.substr(0, name.size() - static_cast<std::size_t>(found.length()));
      const int version = std::stoi(found[1]);
      if (version < newest[stem]) continue;
      newest[stem] = version;
      all[stem] = bytes;
    }
    return all;
  }
};

// A folder of models and a vault on a disk that kills. "clean" and "whole" are copies of it: before the run and behind
// it.
class Kills : public Crash {
 protected:
  void SetUp() override {
    Crash::SetUp();
    gearbox();
    part(L"AXLE").with(L"IN", L"yes");
    fs::create_directories(path("world"));
    renew("world/models", "models");
    file("world/models/block.stp", "an export that was there");
    ASSERT_EQ(0, kelvane({"vault", path("world/plm"), "--create"}).code);
    ASSERT_EQ(0, kelvane(inVault("in", "world")).code);
    fs::remove_all(path("world/models/kelvane.journal"));
    writeBytes(path("world/models/kelvane.log"), "the log before");
    renew("clean", "world");
    before_ = contents("world/models");
    vaultBefore_ = vault(false);
    changes_ = changesOf(inVault("release", "world"), "world");
    undisturbed_ = state("world/models");
    vaultUndisturbed_ = vault(true);
    ASSERT_TRUE(fs::exists(path("world/plm/contents/axle.prt.2"))) << "a check-in is among them";
    ASSERT_GT(changes_, kKills);
    renew("whole", "world");
    undoChanges_ = changesOf({"undo", path("world/models")}, "world");
  }

  // The vault's files but for the numbers of versions and objects, which have gaps behind what was taken back.
  // iterations: all of them; else the newest content of each object, whatever its number.
  [[nodiscard]] Contents vault(bool iterations) const {
    Contents all = iterations ? contents("world/plm") : state("world/plm");
    // A killed process leaves the file of its lock, which holds nobody up.
    std::erase_if(all, [](const auto& entry) { return entry.first == "vault.json" || entry.first == "vault.lock"; });
    for (auto& [name, bytes] : all) {
      auto record = nlohmann::json::parse(bytes, nullptr, false);
      if (!name.starts_with("objects/") || !record.is_object()) continue;
      record.erase("number");
      for (auto& member : record["workspaces"]) member.erase("version");
      if (!iterations) record.erase("iterations");
      if (!iterations)
        for (auto& member : record["workspaces"]) member.erase("base");
      bytes = record.dump();
    }
    return all;
  }

  // Kills the program at any of so many changes, and tells at which. mayEnd: it may make fewer.
  std::string killed(const std::vector<std::string>& words, int changes, bool mayEnd = false) {
    const Fate fate = std::array{Fate::killBefore, Fate::killHalfway, Fate::killBehind}[random_() % 3];
    const int last = fate == Fate::killBehind ? changes - 1 : changes;  // behind its last change it is done
    const int at = std::uniform_int_distribution(1, last)(random_);
    EXPECT_TRUE(!survives(words, "world", fate, at) || mayEnd) << at;
    return "; " + words[0] + " at " + std::to_string(at) + " of " + std::to_string(changes) + ", " +
           std::to_string(static_cast<int>(fate));
  }
  void expectUndone(const std::string& where) {
    Ended ended;
    int undos = 0;
    do ended = undo({}, "world/models");
    while (ended.code == 0 && ++undos < kMostUndos);
    EXPECT_THAT(ended.err, HasSubstr(" is there to be taken back\n")) << where << ended.out;
    EXPECT_EQ("", difference(before_, contents("world/models"))) << where << ended.err;
    EXPECT_EQ("", difference(vaultBefore_, vault(false))) << where << ended.err;
  }

  int changes_ = 0, undoChanges_ = 0;
  Contents before_, undisturbed_, vaultBefore_, vaultUndisturbed_;
  std::mt19937 random_{static_cast<unsigned>(testing::UnitTest::GetInstance()->random_seed())};
};

// In a run, in an undo, and in what the next run or undo takes back first.
TEST_F(Kills, AtAnyMomentLeaveWhatRunsAgainAndCanBeUndone) {
  constexpr int kOfRecovery = 8;
  const std::vector<std::string> run = inVault("release", "world"), takesBack = {"undo", path("world/models")};
  for (int i = 0; i < kKills; ++i) {
    std::string where = "seed " + std::to_string(testing::UnitTest::GetInstance()->random_seed());
    const bool isInUndo = i % 3 == 2;
    renew("world", isInUndo ? "whole" : "clean");
    where += isInUndo ? killed(takesBack, undoChanges_) : killed(run, changes_);
    if (i % 4 == 3) where += killed(random_() % 2 == 0 ? takesBack : run, kOfRecovery, true);
    if (!isInUndo && i % 2 == 0) {
      const Ended again = kelvane(run);
      EXPECT_EQ(0, again.code) << where << again.err;
      EXPECT_EQ("", difference(undisturbed_, state("world/models"))) << where << again.err;
      EXPECT_EQ("", difference(vaultUndisturbed_, vault(true))) << where << again.err;
    }
    expectUndone(where);
  }
}

// What was checked in stays finished, and gets no further iteration.
TEST_F(Kills, OfARunAndThenOfItsUndoLeaveFinishedWhatThatHasntTakenBack) {
  renew("world", "clean");
  ASSERT_FALSE(survives(inVault("release", "world"), "world", Fate::killBefore, changes_));
  renew("killed", "world");
  const std::string undos = path("world/models/kelvane.journal/0002/run.jsonl");
  const auto hasBegun = [&undos] { return fs::exists(undos) && !readBytes(undos).empty(); };
  for (int at = 1; at < undoChanges_ && !hasBegun(); ++at) {
    renew("world", "killed");
    ASSERT_FALSE(survives({"undo", path("world/models")}, "world", Fate::killBehind, at)) << at;
  }
  ASSERT_TRUE(hasBegun());
  const Ended again = kelvane(inVault("release", "world"));
  EXPECT_EQ(0, again.code) << again.err;
  EXPECT_THAT(again.err, HasSubstr("warning: undo 0002 broke off; nothing was half done\n"));
  EXPECT_EQ("", difference(undisturbed_, state("world/models")));
  EXPECT_EQ("", difference(vaultUndisturbed_, vault(true)));
}

// Others may build on an iteration that they have taken.
TEST_F(Kills, InACheckInLeaveItWhereSomebodyHasTakenItSince) {
  const std::string records = path("world/models/kelvane.journal/0001/run.jsonl");
  const auto isInCheckIn = [&] {
    const std::string all = fs::exists(records) ? readBytes(records) : "";
    return all.rfind(R"("record":"checkIn")") != all.npos &&
           all.rfind(R"("record":"checkIn")") > all.rfind(R"("record":"model")");
  };
  for (int at = changes_ / 2; at < changes_ && !isInCheckIn(); ++at) {
    renew("world", "clean");
    ASSERT_FALSE(survives(inVault("release", "world"), "world", Fate::killBehind, at)) << at;
  }
  ASSERT_TRUE(isInCheckIn());
  const std::string told = readBytes(records), object = R"("object":")";
  const std::size_t start = told.rfind(object) + object.size();
  const std::string taken = told.substr(start, told.find('"', start) - start);
  ASSERT_EQ(0, kelvane({"vault", path("world/plm"), "--get", taken, "--models", path("bob"), "--user", "bob"}).code);
  const Ended again = kelvane(inVault("release", "world"));
  EXPECT_EQ(0, again.code) << again.err;
  EXPECT_THAT(again.err, HasSubstr("warning: run 0001: " + taken +
                                   " was changed in the vault since: what the run did up to there stays\n"));
  // What was taken is an iteration more, and the models tell theirs.
  const std::regex iteration(R"re("PTC_WM_ITERATION"[^}]*"value": "\d+")re");
  Contents behind = state("world/models");
  for (Contents* all : {&undisturbed_, &behind})
    for (auto& [name, bytes] : *all) bytes = std::regex_replace(bytes, iteration, "");
  EXPECT_EQ("", difference(undisturbed_, behind));
}

// Whatever the first change is that the disk doesn't take: an error, no half of anything, and the way back.
TEST_F(Crash, AFullDiskIsToldAndTakenBack) {
  gearbox();
  const Contents before = contents();
  renew("whole");
  const int changes = changesOf(words("all", "whole"), "whole");
  const auto fills = [this](const std::vector<std::string>& words, int at) {
    const os::SurroundingsGuard guard;
    os::surroundings().files =
        std::make_shared<FatefulFiles>(os::surroundings().files, path("full"), Fate::fullFrom, at);
    const Ended ended = kelvane(words);
    EXPECT_NE(0, ended.code) << at;
    EXPECT_THAT(ended.err, HasSubstr("No space left on device")) << at;
  };
  for (int at = 1; at < changes; at += 3) {
    renew("full");
    fills(words("all", "full"), at);
    while (undo({}, "full").code == 0) continue;
    EXPECT_EQ("", difference(before, contents("full"))) << "from change " << at << " of " << changes;
  }
  renew("taken", "whole");
  const int undoChanges = changesOf({"undo", path("taken")}, "taken");
  for (int at = 1; at < undoChanges; at += 4) {
    renew("full", "whole");
    fills({"undo", path("full")}, at);
    while (undo({}, "full").code == 0) continue;
    EXPECT_EQ("", difference(before, contents("full"))) << "undo from change " << at << " of " << undoChanges;
  }
}

// A designer saves where the run was about to, or over what it had written.
TEST_F(Crash, WhatAPersonSavedBehindTheKillIsKept) {
  part(L"PLATE");
  renew("whole");
  const int changes = changesOf(words("norm", "whole"), "whole");
  const std::string designers = readBytes(path("models/PLATE.prt.1"));
  int kept = 0;
  for (int at = 1; at < changes; ++at) {
    renew("killed");
    ASSERT_FALSE(survives(words("norm", "killed"), "killed", Fate::killBefore, at)) << at;
    writeBytes(path("killed/PLATE.prt.2"), designers);
    const Ended again = kelvane(words("norm", "killed"));
    EXPECT_EQ(0, again.code) << at << again.err;
    const std::string aside = path("killed/kelvane.journal/0001/before/found-1-PLATE.prt.2");
    const bool isAside = fs::exists(aside);
    EXPECT_EQ(designers, readBytes(isAside ? aside : path("killed/PLATE.prt.2"))) << at;
    EXPECT_EQ(isAside, again.err.find("PLATE.prt.2 isn't as it was written then; it was put aside as " + aside) !=
                           std::string::npos)
        << at << again.err;
    kept += isAside ? 1 : 0;
  }
  EXPECT_GE(kept, 2) << "before the deed and behind it";
}

TEST_F(Crash, WhatIsFoundIsToldAndTornVersionsGo) {
  gearbox();
  renew("whole");
  const int changes = changesOf(words("norm", "whole"), "whole");
  const Contents undisturbed = state("whole");
  ASSERT_FALSE(survives(words("norm", "models"), "models", Fate::killBehind, changes - 6));
  // As a loss of power leaves it: the name is there, the content isn't.
  ASSERT_TRUE(fs::exists(path("models/GEAR.prt.2")));
  fs::resize_file(path("models/GEAR.prt.2"), 100);
  file("models/.kvd-999999999-0.tmp", "half of it");
  std::ofstream(path("models/kelvane.journal/0001/run.jsonl"), std::ios::app) << R"({"record":"write","n":99,"pa)";
  const Contents killed = contents();
  EXPECT_THAT(undo({"-n"}).err, HasSubstr("warning: run 0001 has no end; what it had begun is taken back first\n"));
  EXPECT_THAT(kelvane({"purge", models(), "--keep", "1", "-n"}).err, HasSubstr("warning: run 0001 has no end"));
  EXPECT_THAT(run("norm", {"-n"}).err, HasSubstr("warning: run 0001 has no end: it is at work, or broke off"));
  const Ended into = run("norm", {"--into", path("copy")});
  EXPECT_EQ(2, into.code);
  EXPECT_THAT(into.err, HasSubstr("--into: run 0001 of " + models() + " has no end"));
  EXPECT_TRUE(contents().contains("GEAR.prt.2") && contents().at("GEAR.prt.2") == killed.at("GEAR.prt.2"));
  const Ended again = run("norm", {"-q"});
  EXPECT_EQ(0, again.code) << again.err;
  EXPECT_THAT(again.err, HasSubstr("warning: run 0001 broke off"));
  EXPECT_THAT(again.err, HasSubstr("warning: run 0001 left torn versions, which were removed: GEAR.prt.2\n"));
  EXPECT_THAT(again.err, HasSubstr("warning: run 0001: 1 record of its journal was cut\n"));
  EXPECT_EQ("", difference(undisturbed, state("models")));
  EXPECT_THAT(run("norm", {"-q"}).err, testing::Not(HasSubstr("broke off"))) << "once";
}

// An editor that changes the ends of lines spoils all checksums.
TEST_F(Crash, RecordsThatSomebodyAlteredAreNotThrownAway) {
  gearbox();
  renew("whole");
  const int changes = changesOf(words("rename", "whole"), "whole");
  const Contents undisturbed = state("whole");
  ASSERT_FALSE(survives(words("rename", "models"), "models", Fate::killBehind, changes / 2));
  const std::string records = path("models/kelvane.journal/0001/run.jsonl"), whole = readBytes(records);
  writeBytes(records, text::replaceAll(whole, "\n", "\r\n"));
  const Ended refused = run("rename", {"-q"});
  EXPECT_EQ(2, refused.code);
  EXPECT_THAT(refused.err, testing::ContainsRegex("the records of .*/kelvane.journal/0001 can't be read"));
  writeBytes(records, whole);
  EXPECT_EQ(0, run("rename", {"-q"}).code);
  EXPECT_EQ("", difference(undisturbed, state("models"))) << "nothing was lost";
}

// A record within, a later format, the numbers of versions.
TEST_F(Crash, WhatCantBeReadOfAJournalIsTold) {
  gearbox();
  ASSERT_EQ(0, run("norm", {"-q"}).code);
  const Contents after = contents();
  const std::string records = path("models/kelvane.journal/0001/run.jsonl"), whole = readBytes(records);
  std::string cut = whole;
  const std::size_t at = cut.rfind(R"({"record":"write")");
  cut.erase(at + 20, 10);
  writeBytes(records, cut);
  const Ended refused = undo();
  EXPECT_EQ(1, refused.code);
  EXPECT_THAT(refused.err,
              HasSubstr("conflict: 1 record of the journal can't be read; what was told there stays as it is\n"));
  EXPECT_EQ("", difference(after, contents()));
  writeBytes(records, whole);

  const auto expectRefused = [this](const std::string& line) {
    for (const Ended& ended : {run("norm", {"-q"}), undo()}) {
      EXPECT_EQ(2, ended.code) << line;
      EXPECT_THAT(ended.err, HasSubstr(line));
    }
  };
  fs::create_directories(path("models/kelvane.journal/0002"));
  writeBytes(path("models/kelvane.journal/0002/run.jsonl"),
             kelvane::sealedLine({{"record", "begin"}, {"format", 2}, {"run", "0002"}, {"verb", "run"}}));
  expectRefused("/kelvane.journal/0002/run.jsonl is of a later release of this program\n");
  fs::remove_all(path("models/kelvane.journal/0002"));
  const std::string numbers = path("models/kelvane.journal/numbers.json");
  fs::resize_file(numbers, fs::file_size(numbers) / 2);
  expectRefused("/kelvane.journal/numbers.json can't be read: it isn't as it was written\n");
}

}  // namespace
}  // namespace test
