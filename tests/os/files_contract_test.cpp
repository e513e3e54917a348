// What every Files promises, whichever one it is.
#include <functional>

#include "disk.h"
#include "os/files_wrapper.h"
#include "text/encoding.h"

namespace os {
namespace {

using std::errc;

struct Implementation {
  const char* name;
  std::function<std::unique_ptr<Files>(Files& disk)> make;
};

// A path of the machine, by its own root.
std::wstring withoutMounts(const std::string& machine) { return Mounts().system(machine); }

class FilesContract : public testing::TestWithParam<Implementation> {
 protected:
  Disk disk_;
  std::unique_ptr<Files> machine_ = diskFiles();
  std::unique_ptr<Files> files_ = GetParam().make(*machine_);
};

INSTANTIATE_TEST_SUITE_P(
    Each, FilesContract,
    testing::Values(Implementation{"Disk", [](Files&) { return diskFiles(); }},
                    Implementation{"Wrapper", [](Files& disk) { return std::make_unique<FilesWrapper>(disk); }},
                    Implementation{"Faulty", [](Files& disk) { return std::make_unique<FaultyFiles>(disk); }},
                    Implementation{"DryInsideItsFreeFolder",
                                   [](Files& disk) { return std::make_unique<DryFiles>(disk, L"d:\\"); }}),
    [](const auto& parameter) { return parameter.param.name; });

TEST_P(FilesContract, WhatIsWrittenIsReadAndReplacesTheOld) {
  const std::string zeros("a\0\r\n\xFF", 5);
  EXPECT_FALSE(files_->write(L"d:\\a.txt", "longer than the next content"));
  EXPECT_FALSE(files_->write(L"d:\\a.txt", zeros));
  EXPECT_EQ(zeros, files_->read(L"d:/a.txt").value);
  EXPECT_EQ(5U, files_->size(L"d:\\a.txt").value);
  EXPECT_FALSE(files_->write(L"d:\\empty", ""));
  EXPECT_EQ("", files_->read(L"d:\\empty").value);
  EXPECT_EQ("a.txt empty", disk_.tree());
}

TEST_P(FilesContract, CreatingReplacesNothing) {
  EXPECT_FALSE(files_->create(L"d:\\a.txt", "first"));
  EXPECT_FALSE(files_->createFolders(L"d:\\sub"));
  const bool hasLink = disk_.link("link", "nowhere");
  for (const wchar_t* taken : {L"d:\\a.txt", L"d:\\A.TXT", L"d:\\sub", L"d:\\link"})
    if (hasLink || std::wstring_view(taken) != L"d:\\link")
      EXPECT_EQ(errc::file_exists, files_->create(taken, "second")) << text::toUtf8(taken);
  EXPECT_EQ("first", files_->read(L"d:\\a.txt").value);
  EXPECT_EQ(hasLink ? "a.txt link sub/" : "a.txt sub/", disk_.tree());
}

TEST_P(FilesContract, WhatIsNotThereSaysSo) {
  const auto missing = errc::no_such_file_or_directory;
  EXPECT_FALSE(files_->exists(L"d:\\no") || files_->isFolder(L"d:\\no"));
  EXPECT_EQ(missing, files_->read(L"d:\\no").error);
  EXPECT_EQ(missing, files_->size(L"d:\\no").error);
  EXPECT_EQ(missing, files_->modified(L"d:\\no").error);
  EXPECT_EQ(missing, files_->remove(L"d:\\no"));
  EXPECT_EQ(missing, files_->rename(L"d:\\no", L"d:\\yes"));
  EXPECT_EQ(missing, files_->list(L"d:\\no").error);
  EXPECT_EQ(missing, files_->write(L"d:\\no\\a", "x"));
  EXPECT_EQ(missing, files_->create(L"d:\\no\\a", "x"));
  EXPECT_EQ(missing, files_->append(L"d:\\no\\a").error);
  EXPECT_FALSE(files_->removeFolder(L"d:\\no", L"d:\\"));
  EXPECT_EQ("", disk_.tree());
}

TEST_P(FilesContract, FoldersAndFilesAreToldApart) {
  EXPECT_FALSE(files_->createFolders(L"d:\\sub\\deep\\"));
  EXPECT_FALSE(files_->createFolders(L"d:\\sub\\deep"));
  EXPECT_FALSE(files_->write(L"d:\\sub\\file", "x"));
  EXPECT_TRUE(files_->exists(L"d:\\sub\\") && files_->isFolder(L"d:\\sub"));
  EXPECT_FALSE(files_->isFolder(L"d:\\sub\\file"));
  EXPECT_EQ(errc::is_a_directory, files_->read(L"d:\\sub").error);
  EXPECT_EQ(errc::is_a_directory, files_->write(L"d:\\sub", "x"));
  EXPECT_EQ(errc::is_a_directory, files_->append(L"d:\\sub").error);
  EXPECT_EQ(errc::is_a_directory, files_->remove(L"d:\\sub"));
  EXPECT_EQ(errc::is_a_directory, files_->rename(L"d:\\sub\\file", L"d:\\sub\\deep"));
  EXPECT_EQ(errc::file_exists, files_->createFolders(L"d:\\sub\\file"));
  EXPECT_TRUE(files_->createFolders(L"d:\\sub\\file\\deeper"));
  EXPECT_EQ(errc::no_such_file_or_directory, files_->list(L"d:\\sub\\file").error);
  EXPECT_EQ(errc::not_a_directory, files_->removeFolder(L"d:\\sub\\file", L"d:\\sub"));
  EXPECT_EQ("sub/ sub/deep/ sub/file", disk_.tree());
}

TEST_P(FilesContract, AppendedBytesAreThereAtOnceAndBehindThoseOfOthers) {
  disk_.file("log", "old\n");
  auto log = files_->append(L"d:\\log");
  EXPECT_FALSE(log.value->write("one\n"));
  EXPECT_EQ("old\none\n", disk_.content("log"));
  EXPECT_FALSE(files_->append(L"d:\\log").value->write("two\n"));
  EXPECT_FALSE(log.value->write("three\n"));
  EXPECT_EQ("old\none\ntwo\nthree\n", disk_.content("log"));
  EXPECT_FALSE(files_->append(L"d:\\new").error);
  EXPECT_EQ("log new", disk_.tree());
}

TEST_P(FilesContract, RenameReplacesTheTarget) {
  disk_.file("a", "new");
  disk_.file("b", "old");
  EXPECT_FALSE(files_->rename(L"d:\\a", L"d:\\b"));
  EXPECT_EQ("new", disk_.content("b"));
  EXPECT_FALSE(files_->remove(L"d:\\b"));
  EXPECT_EQ("", disk_.tree());
}

TEST_P(FilesContract, ListIsSortedInByteOrderWithSizes) {
  disk_.folder("B/inner");
  disk_.file("a", "12");
  disk_.file("Z", "1");
  disk_.file("\xC3\xA4", "");
  std::wstring text;
  for (const Entry& entry : files_->list(L"d:\\").value) {
    text += entry.name + (entry.isFolder ? L"\\ " : L" " + std::to_wstring(entry.size) + L" ");
  }
  EXPECT_EQ(L"B\\ Z 1 a 2 \u00E4 0 ", text);
}

TEST_P(FilesContract, ModifiedIsUtcWithMilliseconds) {
  disk_.file("a", "");
  test::setModified(disk_.place("a"), 951782399, 987);  // 2000-02-28 23:59:59 UTC
  const FileTime at = files_->modified(L"d:\\a").value;
  EXPECT_EQ((std::vector{2000, 2, 28, 23, 59, 59, 987}),
            (std::vector{at.year, at.month, at.day, at.hour, at.minute, at.second, at.millisecond}));
}

TEST_P(FilesContract, RemoveFolderStaysWithin) {
  disk_.folder("tmp/open/deep");
  disk_.folder("other");
  disk_.file("tmp/open/deep/a", "");
  disk_.file("other/keep", "");
  disk_.folder("tmp2");
  const auto refused = errc::operation_not_permitted;
  // Only paths of this test's own folder: a fault here must not reach the machine's.
  const std::wstring byRoot = withoutMounts(disk_.root()) + L"\\other";
  for (const std::wstring& path :
       {std::wstring(L"d:\\tmp"), std::wstring(L"d:\\TMP\\."), std::wstring(L"d:\\tmp\\..\\other"),
        std::wstring(L"d:\\other"), std::wstring(L"d:\\tmp2"), std::wstring(L"d:\\tmp\\open\\..\\..\\..\\other"),
        std::wstring(L"d:\\tmp\\open\\.."), byRoot}) {
    EXPECT_EQ(refused, files_->removeFolder(path, L"d:\\tmp\\")) << text::toUtf8(path);
  }
  EXPECT_EQ(refused, files_->removeFolder(L"d:\\tmp\\open", L""));
  EXPECT_EQ("other/ other/keep tmp/ tmp/open/ tmp/open/deep/ tmp/open/deep/a tmp2/", disk_.tree());
  EXPECT_FALSE(files_->removeFolder(L"D:\\Tmp\\OPEN\\", L"d:\\tmp"));
  EXPECT_EQ("other/ other/keep tmp/ tmp2/", disk_.tree());
}

TEST_P(FilesContract, RemoveFolderFollowsNoLink) {
  disk_.folder("tmp/open");
  disk_.folder("other/sub");
  disk_.file("other/keep", "");
  KVD_NEEDS(disk_.link("tmp/open/inner", disk_.at("other")) && disk_.link("tmp/out", disk_.at("other")));
  EXPECT_EQ(errc::operation_not_permitted, files_->removeFolder(L"d:\\tmp\\out\\sub", L"d:\\tmp"));
  EXPECT_FALSE(files_->removeFolder(L"d:\\tmp\\out\\", L"d:\\tmp"));
  EXPECT_FALSE(files_->removeFolder(L"d:\\tmp\\open", L"d:\\tmp"));
  EXPECT_EQ("other/ other/keep other/sub/ tmp/", disk_.tree());
}

}  // namespace
}  // namespace os
