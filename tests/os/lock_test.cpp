#include "os/lock.h"

#include "disk.h"

namespace os {
namespace {

TEST(Lock, IsHeldByOneAndLeavesNoFile) {
  const Disk disk;
  for (int round = 0; round < 2; ++round) {
    const auto lock = lockFile(L"d:\\run.lock");
    ASSERT_TRUE(lock) << lock.error.message();
    EXPECT_EQ("run.lock", disk.tree());
    EXPECT_EQ(std::errc::device_or_resource_busy, lockFile(L"d:\\run.lock").error);
    EXPECT_EQ("run.lock", disk.tree());
  }
  EXPECT_EQ("", disk.tree());
  EXPECT_EQ(std::errc::no_such_file_or_directory, lockFile(L"d:\\none\\run.lock").error);
}

TEST(Lock, FollowsNoLink) {
  const Disk disk;
  disk.file("victim", "keep");
  KVD_NEEDS(disk.link("run.lock", disk.at("victim")));
  EXPECT_FALSE(lockFile(L"d:\\run.lock"));
  EXPECT_EQ("keep", disk.content("victim"));
}

}  // namespace
}  // namespace os
