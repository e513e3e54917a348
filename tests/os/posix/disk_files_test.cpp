// What only the machine's own disk can get wrong: spelling of names, links, devices, a disk that fills while it writes.
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>

#include "disk.h"
#include "text/encoding.h"

namespace os {
namespace {

using std::errc;

class DiskFilesTest : public testing::Test {
 protected:
  Disk disk_;
};

TEST_F(DiskFilesTest, NamesAreFoundCaseBlindTheExactOneFirst) {
  disk_.folder("Models/Sub");
  disk_.file("Models/Sub/Geh\xC3\x84use.PRT.1", "one");
  EXPECT_EQ("one", files().read(L"D:\\MODELS\\sub\\geh\u00E4use.prt.1").value);
  EXPECT_EQ(errc::no_such_file_or_directory, files().read(L"d:\\models\\sub\\geh\u00E4use.prt.2").error);

  disk_.file("Models/A.txt", "upper");
  disk_.file("Models/a.txt", "lower");
  EXPECT_EQ("lower", files().read(L"d:\\models\\a.txt").value);
  EXPECT_EQ("upper", files().read(L"d:\\models\\A.TXT").value) << "the first in byte order";

  EXPECT_FALSE(files().write(L"d:\\models\\SUB\\new.txt", "new"));
  EXPECT_FALSE(files().write(L"d:\\models\\sub\\GEH\u00E4USE.prt.1", "two"));
  EXPECT_EQ("Geh\xC3\x84use.PRT.1 new.txt", disk_.tree("Models/Sub"));
}

// What is remembered of a large folder must follow each change, whoever made it.
TEST_F(DiskFilesTest, ALargeFolderIsFoundCaseBlindWhileItChanges) {
  disk_.folder("big");
  for (int i = 0; i < 1000; ++i) disk_.file("big/Part" + std::to_string(i) + ".prt.1", "");
  EXPECT_FALSE(files().exists(L"d:\\big\\NEW.prt.1"));
  EXPECT_TRUE(files().exists(L"d:\\big\\PART7.prt.1"));
  disk_.file("big/New.prt.1", "other program's");
  EXPECT_EQ("other program's", files().read(L"d:\\big\\NEW.prt.1").value);
  EXPECT_FALSE(files().rename(L"d:\\big\\NEW.prt.1", L"d:\\big\\Newer.prt.1"));
  EXPECT_FALSE(files().exists(L"d:\\big\\NEW.prt.1"));
  EXPECT_TRUE(files().exists(L"d:\\big\\NEWER.prt.1"));
  std::filesystem::remove(disk_.at("big/Part7.prt.1"));
  EXPECT_FALSE(files().exists(L"d:\\big\\PART7.prt.1"));
  EXPECT_FALSE(files().write(L"d:\\big\\Part7.prt.1", "again"));
  EXPECT_EQ("again", files().read(L"d:\\big\\PART7.prt.1").value);

  // Another folder under the same name.
  std::filesystem::rename(disk_.at("big"), disk_.at("old"));
  disk_.folder("big");
  disk_.file("big/Only", "");
  EXPECT_FALSE(files().exists(L"d:\\big\\PART7.prt.1"));
  EXPECT_TRUE(files().exists(L"d:\\big\\ONLY"));
  EXPECT_TRUE(files().exists(L"d:\\old\\PART8.prt.1"));
  std::filesystem::remove_all(disk_.at("old"));
  EXPECT_FALSE(files().exists(L"d:\\old\\PART8.prt.1"));
}

TEST_F(DiskFilesTest, RenameToAnotherSpellingChangesIt) {
  disk_.file("a.txt", "x");
  EXPECT_FALSE(files().rename(L"d:\\a.txt", L"d:\\A.Txt"));
  EXPECT_EQ("A.Txt", disk_.tree());
}

// The limit makes the disk fail in the middle of the content, as a full one does.
TEST_F(DiskFilesTest, AFailedWriteLeavesTheOldFileWholeAndNothingElse) {
  disk_.file("a", "old");
  rlimit before{};
  ::getrlimit(RLIMIT_FSIZE, &before);
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  const rlimit limit{4096, before.rlim_max};
  ::setrlimit(RLIMIT_FSIZE, &limit);
  const auto error = files().write(L"d:\\a", std::string(10000, 'x'));
  const auto second = files().write(L"d:\\b", std::string(10000, 'x'));
  ::setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, handler);
  EXPECT_TRUE(error && second);
  EXPECT_EQ("old", disk_.content("a"));
  EXPECT_EQ("a", disk_.tree());
}

TEST_F(DiskFilesTest, WritingKeepsModeAndLinkAndTakesTheLongestName) {
  disk_.file("script", "old");
  ::chmod(disk_.at("script").c_str(), 0750);
  ASSERT_TRUE(disk_.link("link", disk_.at("script")));
  EXPECT_FALSE(files().write(L"d:\\link", "new"));
  struct stat info {};
  EXPECT_EQ(0, ::lstat(disk_.at("script").c_str(), &info));
  EXPECT_EQ(0750U, info.st_mode & 07777U);
  EXPECT_EQ("new", disk_.content("script"));
  EXPECT_TRUE(std::filesystem::is_symlink(disk_.at("link")));
  EXPECT_FALSE(files().write(L"d:\\" + std::wstring(255, L'n'), "x"));
  EXPECT_EQ(errc::filename_too_long, files().write(L"d:\\" + std::wstring(256, L'n'), "x"));
}

TEST_F(DiskFilesTest, AWriteProtectedFileRefusesEverybody) {
  disk_.file("a", "old");
  disk_.file("b", "new");
  ::chmod(disk_.at("a").c_str(), 0444);
  EXPECT_EQ(errc::permission_denied, files().write(L"d:\\a", "x"));
  EXPECT_EQ(errc::permission_denied, files().append(L"d:\\a").error);
  EXPECT_EQ(errc::permission_denied, files().rename(L"d:\\b", L"d:\\a"));
  EXPECT_EQ("old", files().read(L"d:\\a").value);
}

TEST_F(DiskFilesTest, PipesAndDevicesAreRefusedWithoutWaiting) {
  ASSERT_EQ(0, ::mkfifo(disk_.at("pipe").c_str(), 0600));
  EXPECT_EQ(errc::operation_not_permitted, files().read(L"d:\\pipe").error);
  EXPECT_EQ(errc::operation_not_permitted, files().read(L"z:\\dev\\zero").error);
  EXPECT_EQ(errc::operation_not_permitted, files().write(L"d:\\pipe", "x"));
  EXPECT_TRUE(files().append(L"d:\\pipe").error);
  disk_.file("a", "x");
  EXPECT_EQ(errc::operation_not_permitted, files().rename(L"d:\\a", L"d:\\pipe"));
  EXPECT_EQ("a pipe", disk_.tree());
}

TEST_F(DiskFilesTest, ADanglingLinkIsListedAndRemoved) {
  ASSERT_TRUE(disk_.link("link", "nowhere"));
  EXPECT_FALSE(files().exists(L"d:\\link"));
  EXPECT_EQ(1U, files().list(L"d:\\").value.size());
  EXPECT_FALSE(files().remove(L"d:\\link"));
  EXPECT_EQ("", disk_.tree());
}

TEST_F(DiskFilesTest, FilesOfTheKernelAreReadWhole) {
  EXPECT_NE(std::string::npos, files().read(L"z:\\proc\\self\\status").value.find("VmRSS"));
}

TEST_F(DiskFilesTest, PathsOfTheMachineAndBack) {
  disk_.folder("models/sub");
  mounts().set(L'M', disk_.at("models") + "//");
  const std::string root = disk_.root();
  struct {
    std::wstring_view path;
    std::string machine;
  } const cases[] = {
      {L"d:\\a.txt", root + "/a.txt"},
      {L"D:/a/b\\c", root + "/a/b/c"},
      {L"m:\\SUB\\x", root + "/models/sub/x"},
      {L"d:\\..\\..\\etc\\passwd", root + "/etc/passwd"},
      {L"m:\\sub\\..\\..\\..\\x", root + "/models/x"},
      {L"d:", root},
      {L"d:\\.\\a\\", root + "/a"},
      {L"q:\\nowhere\\a", "/nowhere/a"},
      {L"z:\\..\\nowhere", "/nowhere"},
      {L"nowhere\\a", "/nowhere/a"},
      {L"", "/"},
      {std::wstring_view(L"d:\\a\0b", 6), root + "/a\xEF\xBF\xBD"
                                                 "b"},
  };
  for (const auto& [path, machine] : cases) EXPECT_EQ(machine, mounts().machine(path)) << text::toUtf8(path);
  EXPECT_EQ(L"m:\\sub\\x", mounts().system(root + "/models//sub/./x"));
  EXPECT_EQ(L"d:\\modelsx", mounts().system(root + "/modelsx"));
  EXPECT_EQ(L"d:\\", mounts().system(root));
  EXPECT_EQ(L"z:\\etc", mounts().system("/etc/"));
  mounts().set(L'z', root);
  EXPECT_EQ("/nowhere", mounts().machine(L"z:\\nowhere")) << "z: is always the root";
}

}  // namespace
}  // namespace os
