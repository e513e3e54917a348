// When the disk has what was written, and who is told where it doesn't take it.
#include "os/durable.h"

#include <gmock/gmock.h>

#include <atomic>
#include <mutex>
#include <set>
#include <thread>

#include "disk.h"
#include "os/processes.h"
#include "os/quiet_thread.h"

namespace os {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

// Files and folders that the disk was asked to take, in place of it: by their names, "temporary" for a file that hasn't
// its own yet.
class Flushes {
 public:
  [[nodiscard]] std::vector<std::string> asked() {
    const std::lock_guard guard(mutex_);
    return asked_;
  }
  // A file that ends so isn't taken.
  void refuse(const std::string& end) { refused_ = end; }
  void slowDown(std::chrono::milliseconds time) { time_ = time; }
  // Until release() the disk answers nobody.
  void hold() { held_.lock(); }
  void release() { held_.unlock(); }

 private:
  std::error_code take(const std::string& path) {
    std::this_thread::sleep_for(time_);
    { const std::lock_guard answered(held_); }
    const std::string name = path.substr(path.rfind('/') + 1);
    const std::lock_guard guard(mutex_);
    asked_.push_back(name.starts_with(".kvd-") ? "temporary" : name);
    return !refused_.empty() && path.ends_with(refused_) ? std::make_error_code(std::errc::io_error)
                                                         : std::error_code();
  }

  std::mutex mutex_, held_;
  std::vector<std::string> asked_;
  std::string refused_;
  std::chrono::milliseconds time_{0};
  FlushInstead instead_{[this](const std::string& path) { return take(path); }};
};

class DurableTest : public testing::Test {
 protected:
  // Files that were waited for before they took their names.
  [[nodiscard]] std::ptrdiff_t temporaries() {
    const auto asked = flushes_.asked();
    return std::count(asked.begin(), asked.end(), "temporary");
  }
  [[nodiscard]] std::string folder() const { return disk_.root().substr(disk_.root().rfind('/') + 1); }
  Disk disk_;
  Flushes flushes_;
};

// One file under a free name, written twice, and one that was there before.
void writeThree(const std::wstring& fresh) {
  EXPECT_FALSE(files().create(fresh, "1"));
  EXPECT_FALSE(files().write(fresh, "2"));
  EXPECT_FALSE(files().write(L"d:\\old", "2"));
}

TEST_F(DurableTest, EachWriteIsWaitedForUnlessSomebodySaysOtherwise) {
  disk_.file("old", "1");
  const auto eachWaits = ElementsAre("temporary", folder(), "temporary", folder(), "temporary", folder());
  writeThree(L"d:\\first");
  EXPECT_THAT(flushes_.asked(), eachWaits);
  {
    const Durable durable(Durability::none);
    writeThree(L"d:\\second");
    EXPECT_FALSE(settleWritten());
  }
  EXPECT_THAT(flushes_.asked(), testing::SizeIs(6)) << "nobody waits";
  EXPECT_EQ("222", disk_.content("first") + disk_.content("second") + disk_.content("old"));
}

TEST_F(DurableTest, ARunWaitsInTheEndAndBeforeItReplacesWhatWasThereBefore) {
  for (const char* name : {"old", "older"}) disk_.file(name, "1");
  const Durable durable(Durability::run);
  flushes_.hold();
  // What the run itself makes may be made again, under another name too.
  EXPECT_FALSE(files().create(L"d:\\new", "1"));
  EXPECT_FALSE(files().write(L"d:\\new", "2"));
  EXPECT_FALSE(files().rename(L"d:\\new", L"d:\\newer"));
  EXPECT_FALSE(files().write(L"d:\\newer", "3"));
  EXPECT_THAT(flushes_.asked(), IsEmpty());
  flushes_.release();
  EXPECT_FALSE(settleWritten());
  EXPECT_THAT(flushes_.asked(), testing::Contains("newer"));
  EXPECT_EQ(0, temporaries());
  // What was there before, or somebody may have been told of, keeps its name until the disk has the new content.
  EXPECT_FALSE(files().write(L"d:\\old", "2"));
  EXPECT_EQ(1, temporaries());
  EXPECT_FALSE(files().write(L"d:\\newer", "4"));
  EXPECT_EQ(2, temporaries());
  EXPECT_FALSE(files().create(L"d:\\draft", "2"));
  EXPECT_FALSE(files().rename(L"d:\\draft", L"d:\\older"));
  EXPECT_THAT(flushes_.asked(), testing::Contains("draft"));
  // Another program's file isn't the run's for having its name.
  EXPECT_FALSE(files().create(L"d:\\made", "1"));
  EXPECT_FALSE(files().remove(L"d:\\made"));
  disk_.file("made", "another program's");
  EXPECT_FALSE(files().write(L"d:\\made", "2"));
  EXPECT_EQ(3, temporaries());
}

TEST_F(DurableTest, WhatTheDiskDidntTakeIsToldOnceToWhoWaitsAndOnceByName) {
  Durable durable(Durability::run);
  flushes_.refuse("bad");
  for (const wchar_t* path : {L"d:\\good", L"d:\\bad"}) EXPECT_FALSE(files().create(path, "x"));
  EXPECT_EQ(std::errc::io_error, settleWritten());
  EXPECT_FALSE(settleWritten());
  // Refused once more it is no second failure, and yet nobody is told of it as safe.
  EXPECT_FALSE(files().remove(L"d:\\bad"));
  EXPECT_FALSE(files().create(L"d:\\bad", "y"));
  EXPECT_EQ(std::errc::io_error, settleWritten());
  const std::vector<Unsafe> failures = durable.takeFailures();
  ASSERT_EQ(1U, failures.size());
  EXPECT_EQ(L"d:\\bad", failures[0].path);
  EXPECT_EQ(std::errc::io_error, failures[0].error);
  EXPECT_THAT(durable.takeFailures(), IsEmpty());
  EXPECT_EQ("bad good", disk_.tree());
  // Where it is waited for, the writing itself fails and leaves nothing.
  flushes_.refuse(".tmp");
  disk_.file("old", "1");
  EXPECT_EQ(std::errc::io_error, files().write(L"d:\\old", "2"));
  EXPECT_EQ("1", disk_.content("old"));
  EXPECT_EQ("bad good old", disk_.tree());
}

TEST_F(DurableTest, WhatIsReplacedOrRemovedMeanwhileNeedsNoPlaceOnTheDisk) {
  const Durable durable(Durability::run);
  flushes_.hold();
  // The first ones keep all threads busy.
  for (const wchar_t* path : {L"d:\\1", L"d:\\2", L"d:\\3", L"d:\\4"}) EXPECT_FALSE(files().create(path, "x"));
  EXPECT_FALSE(files().create(L"d:\\twice", "1"));
  EXPECT_FALSE(files().create(L"d:\\gone", "1"));
  EXPECT_FALSE(files().write(L"d:\\twice", "2"));
  EXPECT_FALSE(files().remove(L"d:\\gone"));
  flushes_.release();
  EXPECT_FALSE(settleWritten());
  const auto asked = flushes_.asked();
  EXPECT_THAT(std::set<std::string>(asked.begin(), asked.end()),
              UnorderedElementsAre("1", "2", "3", "4", "twice", folder()));
}

TEST_F(DurableTest, ManyFilesWaitForASlowDiskAndAllGetThere) {
  constexpr int kFiles = 1000;
  {
    const Durable durable(Durability::run);
    flushes_.slowDown(std::chrono::milliseconds(1));
    for (int i = 0; i < kFiles; ++i) EXPECT_FALSE(files().create(L"d:\\" + std::to_wstring(i), "x"));
  }  // the end waits too
  std::vector<std::string> asked = flushes_.asked();
  std::erase(asked, folder());
  EXPECT_EQ(kFiles, std::set<std::string>(asked.begin(), asked.end()).size());
}

TEST_F(DurableTest, WithoutThreadsWhoWritesWaitsForFilesAndFolders) {
  const NoQuietThreads alone;
  const Durable durable(Durability::run);
  EXPECT_FALSE(files().create(L"d:\\new", "1"));
  EXPECT_THAT(flushes_.asked(), testing::IsSupersetOf({std::string("new"), folder()}));
  const std::size_t before = flushes_.asked().size();
  EXPECT_FALSE(files().rename(L"d:\\new", L"d:\\newer"));
  ASSERT_GT(flushes_.asked().size(), before);
  EXPECT_EQ(folder(), flushes_.asked().back());
  EXPECT_FALSE(settleWritten());
}

TEST_F(DurableTest, NoProgramIsToldOfAFileThatIsntSafe) {
  const Durable durable(Durability::run);
  RecordedProcesses processes;
  flushes_.refuse("bad");
  flushes_.slowDown(std::chrono::milliseconds(20));
  EXPECT_FALSE(files().create(L"d:\\bad", "x"));
  EXPECT_EQ(std::errc::io_error, processes.run(L"mail d:\\bad", L"").error);
  EXPECT_THAT(processes.asked(), IsEmpty());
  EXPECT_FALSE(files().create(L"d:\\good", "x"));
  EXPECT_FALSE(processes.start(L"mail", L"d:\\good", L""));
  EXPECT_THAT(flushes_.asked(), testing::Contains("good"));
  EXPECT_THAT(processes.asked(), ElementsAre(L"start mail d:\\good"));
}

}  // namespace
}  // namespace os
