// What a journal names outside its folder of models: taken back where this user's runs wrote it, or when it is asked
// for.
#include "kelvane/journal/elsewhere.h"
#include "kelvane/journal/journal_fixture.h"
#include "kelvane/journal/record.h"

namespace test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

class Elsewhere : public JournalFixture {
 protected:
  // A run that replaces a log of somebody's home, and begins a report there.
  void runIntoAHome() {
    fs::remove_all(models());
    part(L"PLATE");
    file("home/run.log", "precious");
    ASSERT_EQ(0, run("norm", {"--log", path("home/run.log")}).code);
    ASSERT_NE("precious", log());
  }
  [[nodiscard]] std::string log() const { return readBytes(path("home/run.log")); }
  [[nodiscard]] std::string records() const { return path("models/kelvane.journal/0001/run.jsonl"); }

  // Alters the records as somebody can who knows how they are written.
  void alter(const std::function<void(kelvane::Record&)>& change) const {
    std::string all;
    for (const std::wstring& line : text::lines(text::fromUtf8(readBytes(records())))) {
      auto record = kelvane::unsealed(text::toUtf8(line));
      if (!record) continue;
      change(*record);
      all += kelvane::sealedLine(*record);
    }
    writeBytes(records(), all);
  }
  static bool isOfLog(const kelvane::Record& record) {
    return kelvane::memberText(record, "path").ends_with("run.log");
  }
};

TEST_F(Elsewhere, WhatThisUsersRunsDidThereIsTakenBackAndNothingElse) {
  const std::string config = path("config_home");
  const auto asOther = [this] { os::setEnvironment(L"XDG_CONFIG_HOME", text::fromUtf8(path("other_home"))); };
  const struct {
    const char* what;
    std::function<void()> meanwhile;
    bool isOurs = false;
  } rows[] = {
      {"as it was written", [] {}, true},
      {"by another user", asOther},
      {"of another file",
       [this] {
         fs::copy(path("home/run.log"), path("home/mail.log"));
         alter([](kelvane::Record& record) {
           if (isOfLog(record))
             record["path"] = text::replaceAll(record["path"].get<std::string>(), "run.log", "mail.log");
         });
       }},
      {"of another journal",
       [this] {
         alter([](kelvane::Record& record) {
           if (record["record"] == "begin") record["id"] = "0";
         });
       }},
      {"with other content kept",
       [this] {
         std::string kept;
         alter([&](kelvane::Record& record) {
           if (!isOfLog(record) || !record.contains("had")) return;
           kept = record["had"]["kept"];
           record["had"]["sum"] = kelvane::contentOf("poisoned").sum;
         });
         writeBytes(path("models/kelvane.journal/0001/before/" + kept), "poisoned");
       }},
      {"behind a link",
       [this] {
         fs::create_symlink(path("home"), models() + "/sub");
         alter([](kelvane::Record& record) {
           if (isOfLog(record)) record["path"] = "sub/run.log";
         });
       }},
  };
  for (const auto& row : rows) {
    runIntoAHome();
    row.meanwhile();
    const Contents now = contents("home");
    const Ended ended = undo();
    EXPECT_EQ(row.isOurs ? 0 : 1, ended.code) << row.what << ended.out << ended.err;
    if (row.isOurs) {
      EXPECT_EQ("precious", log()) << row.what;
    } else {
      EXPECT_THAT(ended.err, HasSubstr(".log lies outside the folder of models, and no run of this user's wrote that "
                                       "record; --elsewhere takes it back, too\n"))
          << row.what;
      EXPECT_EQ(1, undo({"--conflict", "skip"}).code) << row.what;
      EXPECT_EQ("", difference(now, contents("home"))) << row.what;
      EXPECT_FALSE(fs::exists(models() + "/PLATE.prt.2")) << row.what << ": the rest goes back";
    }
    os::setEnvironment(L"XDG_CONFIG_HOME", text::fromUtf8(config));
  }
  // No way leads over the root of a letter.
  runIntoAHome();
  alter([](kelvane::Record& record) {
    if (isOfLog(record)) record["path"] = "../home/run.log";
  });
  const Contents now = contents("home");
  undo();
  EXPECT_EQ("", difference(now, contents("home")));
  runIntoAHome();
  asOther();
  EXPECT_EQ(0, undo({"--elsewhere"}).code);
  EXPECT_EQ("precious", log());
}

// A run that has no end is taken back by whoever comes next.
TEST_F(Elsewhere, AnOpenEndOfAStrangersFolderTouchesNothing) {
  const auto open = [this] {
    runIntoAHome();
    std::string all = readBytes(records());
    writeBytes(records(), all.substr(0, all.find("{\"record\":\"model\"")));
  };
  open();
  const Ended own = run("norm");
  EXPECT_EQ(0, own.code) << own.err;
  EXPECT_THAT(own.err, HasSubstr("run 0001 broke off; what it had begun was taken back: ")) << own.err;
  EXPECT_EQ("precious", log());

  open();
  os::setEnvironment(L"XDG_CONFIG_HOME", text::fromUtf8(path("other_home")));
  const std::string now = log();
  for (const std::vector<std::string>& words : {std::vector<std::string>{"run", path("standards"), "norm", models()},
                                                {"undo", models()},
                                                {"purge", models(), "--keep", "1"}}) {
    const Ended ended = kelvane(words);
    EXPECT_EQ(2, ended.code) << words[0] << ended.err;
    EXPECT_THAT(ended.err, HasSubstr("run 0001 broke off and can't be taken back: " + path("home/run.log") +
                                     " lies outside the folder of models"))
        << words[0];
    EXPECT_EQ(now, log()) << words[0];
  }
  EXPECT_EQ(0, run("norm", {"--elsewhere"}).code);
  EXPECT_EQ("precious", log());

  fs::create_symlink(path("home"), models() + "/kelvane.journal/0001/before/home");
  EXPECT_THAT(undo().err, HasSubstr("0001/before/home is a link, and a journal has none; remove it"));
}

// FIPS 180-4 and RFC 2104 can be worked out by anybody: the key is what nobody else has.
TEST_F(Elsewhere, TheKeyIsTheUsersAlone) {
  part(L"PLATE");
  ASSERT_EQ(0, run("norm").code);
  const std::string key = path("config_home/kelvane/journal.key");
  EXPECT_FALSE(fs::exists(key)) << "nothing was done elsewhere";
  runIntoAHome();
  ASSERT_TRUE(fs::exists(key));
  EXPECT_EQ(fs::perms::owner_read | fs::perms::owner_write, fs::status(key).permissions());
  fs::permissions(key, fs::perms::all);
  EXPECT_EQ(1, undo().code) << "one that others may have put there signs nothing";
}

}  // namespace
}  // namespace test
