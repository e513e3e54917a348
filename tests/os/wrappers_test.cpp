// Dry runs and arranged faults.
#include "disk.h"
#include "os/files_wrapper.h"

namespace os {
namespace {

using std::errc;

class WrappersTest : public testing::Test {
 protected:
  Disk disk_;
};

TEST_F(WrappersTest, ADryRunTouchesNothingAndTellsEachChangeOnce) {
  disk_.folder("models");
  disk_.folder("tmp");
  disk_.file("models/a.prt.1", "one");
  disk_.file("models/b", "two");
  DryFiles dry(files(), L"d:\\tmp\\");
  EXPECT_FALSE(dry.write(L"d:\\models\\a.prt.1", "changed"));
  EXPECT_FALSE(dry.write(L"d:/models/a.prt.1", "again"));
  EXPECT_FALSE(dry.append(L"d:\\out.csv").value->write("line"));
  EXPECT_FALSE(dry.createFolders(L"d:\\models"));  // there already: no change
  EXPECT_FALSE(dry.createFolders(L"d:\\new\\sub"));
  EXPECT_FALSE(dry.rename(L"d:\\models\\b", L"d:\\tmp\\b"));
  EXPECT_FALSE(dry.rename(L"d:\\out.csv", L"d:\\final.csv"));  // what the run itself would have written
  EXPECT_FALSE(dry.remove(L"d:\\models\\b"));
  EXPECT_EQ(errc::no_such_file_or_directory, dry.remove(L"d:\\models\\none"));
  EXPECT_FALSE(dry.removeFolder(L"d:\\models", L"d:\\"));
  EXPECT_EQ((std::vector<std::wstring>{L"write d:\\models\\a.prt.1", L"write d:\\out.csv", L"create d:\\new\\sub",
                                       L"rename d:\\models\\b to d:\\tmp\\b", L"rename d:\\out.csv to d:\\final.csv",
                                       L"remove d:\\models\\b", L"remove d:\\models"}),
            dry.withheld());
  EXPECT_EQ("one", dry.read(L"d:\\models\\a.prt.1").value);
  EXPECT_FALSE(dry.exists(L"d:\\out.csv"));
  EXPECT_EQ("models/ models/a.prt.1 models/b tmp/", disk_.tree());
}

// As a test whether a folder can be written; the next one finds nothing left of it.
TEST_F(WrappersTest, WhatADryRunMakesAndTakesAwayAgainIsNothing) {
  DryFiles dry(files(), L"d:\\tmp\\");
  for (int times = 0; times < 2; ++times) {
    EXPECT_FALSE(dry.create(L"d:\\models\\probe", ""));
    EXPECT_EQ(errc::file_exists, dry.create(L"d:/models/probe", ""));
    EXPECT_FALSE(dry.remove(L"d:/models/probe"));
  }
  EXPECT_TRUE(dry.withheld().empty());
}

TEST_F(WrappersTest, ADryRunWorksInItsFreeFolderButDoesNotLeaveItByName) {
  disk_.folder("tmp");
  DryFiles dry(files(), L"d:\\tmp\\");
  EXPECT_FALSE(dry.createFolders(L"d:\\TMP\\open"));
  EXPECT_FALSE(dry.write(L"d:\\tmp\\open\\a", "x"));
  EXPECT_FALSE(dry.write(L"d:\\tmp\\..\\b", "x"));
  EXPECT_FALSE(dry.write(L"d:\\tmpb", "x"));
  EXPECT_EQ("tmp/ tmp/open/ tmp/open/a", disk_.tree());
  EXPECT_FALSE(dry.removeFolder(L"d:\\tmp\\open", L"d:\\tmp"));
  EXPECT_EQ("tmp/", disk_.tree());
  EXPECT_EQ((std::vector<std::wstring>{L"write d:\\tmp\\..\\b", L"write d:\\tmpb"}), dry.withheld());
}

TEST_F(WrappersTest, AFolderWithoutPermissionRefusesEveryChange) {
  disk_.folder("locked/sub");
  disk_.file("locked/a", "old");
  disk_.file("b", "b");
  FaultyFiles faulty(files());
  auto open = faulty.append(L"d:\\locked\\a");
  faulty.denyWrites(L"d:\\locked");
  const auto denied = errc::permission_denied;
  EXPECT_EQ(denied, faulty.write(L"d:\\LOCKED\\a", "new"));
  EXPECT_EQ(denied, faulty.append(L"d:\\locked\\a").error);
  EXPECT_EQ(denied, open.value->write("more"));
  EXPECT_EQ(denied, faulty.createFolders(L"d:\\locked\\new"));
  EXPECT_EQ(denied, faulty.remove(L"d:\\locked\\a"));
  EXPECT_EQ(denied, faulty.rename(L"d:\\locked\\a", L"d:\\c"));
  EXPECT_EQ(denied, faulty.rename(L"d:\\b", L"d:\\locked\\b"));
  EXPECT_EQ(denied, faulty.removeFolder(L"d:\\locked\\sub", L"d:\\locked"));
  EXPECT_EQ("old", faulty.read(L"d:\\locked\\a").value);
  faulty.denyReads(L"d:\\locked");
  EXPECT_EQ(denied, faulty.read(L"d:\\locked\\a").error);
  EXPECT_EQ("b locked/ locked/a locked/sub/", disk_.tree());
  faulty.heal();
  EXPECT_FALSE(open.value->write("more"));
  EXPECT_EQ("oldmore", faulty.read(L"d:\\locked\\a").value);
}

TEST_F(WrappersTest, ADiskThatFillsTakesWhatFits) {
  FaultyFiles faulty(files());
  auto log = faulty.append(L"d:\\log");
  faulty.fillAfter(6);
  EXPECT_FALSE(faulty.write(L"d:\\a", "1234"));
  EXPECT_EQ(errc::no_space_on_device, faulty.write(L"d:\\a", "new"));
  EXPECT_EQ("1234", disk_.content("a"));
  EXPECT_FALSE(log.value->write("56"));
  EXPECT_EQ(errc::no_space_on_device, log.value->write("7"));
  EXPECT_EQ("56", disk_.content("log"));
}

}  // namespace
}  // namespace os
