// What this system's disk alone can get wrong: files that others hold, long paths, names of devices, letters.
#include <windows.h>

#include <thread>

#include "disk.h"
#include "os/grants.h"
#include "os/links.h"
#include "text/encoding.h"

namespace os {
namespace {

using std::errc;

class DiskFilesHere : public testing::Test {
 protected:
  // Opens a file as a program does that lets nobody else write it.
  [[nodiscard]] HANDLE held(const std::string& path) const {
    return ::CreateFileW(disk_.place(path).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
  }
  Disk disk_;
};

TEST_F(DiskFilesHere, AHeldFileStaysWholeAndOneThatIsLetGoIsReplaced) {
  disk_.file("a", "old");
  HANDLE other = held("a");
  const auto error = files().write(L"d:\\a", "new");
  EXPECT_TRUE(error == errc::device_or_resource_busy || error == errc::permission_denied) << error.message();
  EXPECT_EQ("old", disk_.content("a"));
  EXPECT_EQ("a", disk_.tree());
  std::thread letGo([other] {
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    ::CloseHandle(other);
  });
  EXPECT_FALSE(files().write(L"d:\\a", "new"));
  letGo.join();
  EXPECT_EQ("new", disk_.content("a"));
}

TEST_F(DiskFilesHere, AWriteProtectedFileRefusesEverybodyAndAttributesStay) {
  disk_.file("a", "old");
  disk_.file("b", "new");
  ::SetFileAttributesW(disk_.place("a").c_str(), FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(errc::permission_denied, files().write(L"d:\\a", "x"));
  EXPECT_EQ(errc::permission_denied, files().append(L"d:\\a").error);
  EXPECT_EQ(errc::permission_denied, files().rename(L"d:\\b", L"d:\\a"));
  EXPECT_EQ(errc::permission_denied, files().remove(L"d:\\a"));
  EXPECT_EQ("old", disk_.content("a"));
  ::SetFileAttributesW(disk_.place("a").c_str(), FILE_ATTRIBUTE_HIDDEN);
  EXPECT_FALSE(files().write(L"d:\\a", "x"));
  EXPECT_NE(0U, ::GetFileAttributesW(disk_.place("a").c_str()) & FILE_ATTRIBUTE_HIDDEN);
}

TEST_F(DiskFilesHere, PathsMayBeLong) {
  std::wstring folder = L"d:";
  for (int i = 0; i < 6; ++i) folder += L"\\" + std::wstring(80, L'n');
  EXPECT_FALSE(files().createFolders(folder));
  EXPECT_FALSE(files().write(folder + L"\\a.txt", "x"));
  EXPECT_FALSE(files().rename(folder + L"\\a.txt", folder + L"\\B.txt"));
  EXPECT_EQ("x", files().read(folder + L"\\b.txt").value);
  EXPECT_EQ(L"B.txt", files().list(folder).value.at(0).name);
  EXPECT_FALSE(files().removeFolder(L"d:\\" + std::wstring(80, L'n'), L"d:\\"));
  EXPECT_EQ("", disk_.tree());
}

TEST_F(DiskFilesHere, DevicesAndStreamsAreRefused) {
  disk_.file("a", "x");
  for (const wchar_t* path : {L"d:\\con", L"d:\\NUL.txt", L"d:\\a:b", L"\\\\.\\pipe\\a", L"d:\\com1\\a"}) {
    EXPECT_EQ(errc::operation_not_permitted, files().read(path).error) << text::toUtf8(path);
    EXPECT_EQ(errc::operation_not_permitted, files().write(path, "x")) << text::toUtf8(path);
    EXPECT_EQ(errc::operation_not_permitted, files().append(path).error) << text::toUtf8(path);
    EXPECT_EQ(errc::operation_not_permitted, files().rename(L"d:\\a", path)) << text::toUtf8(path);
    EXPECT_FALSE(files().exists(path)) << text::toUtf8(path);
  }
  EXPECT_FALSE(files().write(L"d:\\b. ", "y"));  // as the system takes such a name
  EXPECT_EQ("a b", disk_.tree());
}

TEST_F(DiskFilesHere, PathsOfTheMachineAndBack) {
  disk_.folder("Models/sub");
  mounts().set(L'm', disk_.at("Models"));
  const std::string root = disk_.root();
  struct {
    std::wstring_view path;
    std::string machine;
  } const cases[] = {
      {L"D:/A/b\\c", root + "/A/b/c"},           {L"m:\\SUB\\x", root + "/Models/sub/x"},
      {L"d:\\..\\..\\MODELS", root + "/Models"}, {L"m:\\sub\\..\\..\\x", root + "/Models/x"},
      {L"c:\\..\\nowhere\\a", "C:/nowhere/a"},   {L"\\\\Server\\share\\..\\..\\a", "//Server/share/a"},
      {L"\\\\?\\C:\\nowhere", "C:/nowhere"},
  };
  for (const auto& [path, machine] : cases) EXPECT_EQ(machine, mounts().machine(path)) << text::toUtf8(path);
  EXPECT_EQ(L"m:\\sub\\x", mounts().system(root + "/MODELS/sub/x"));
  EXPECT_EQ(L"C:\\nowhere\\a", mounts().system("c:/nowhere/a"));
  EXPECT_EQ(L"\\\\server\\share\\a", mounts().system("//server/share/a"));
}

TEST_F(DiskFilesHere, AGrantedNameIsOneInAnySpellingAndTheProcessorsLettersArentPlain) {
  Grants grants;
  grants.allow({Permission::run, L"mail.exe"});
  EXPECT_TRUE(Grants::isOpen(grants.mayRun(L"MAIL")));
  grants.deny({Permission::run, L"Mail"});
  EXPECT_EQ(Grants::Verdict::denied, grants.mayRun(L"mail.EXE"));
  EXPECT_EQ(Grants::Verdict::denied, grants.mayRun(L"d:\\tools\\mail.cmd"));
  for (const wchar_t* line : {L"mail 'a & b'", L"mail %PATH%", L"mail a^b"}) EXPECT_FALSE(plainCommand(line).isPlain);
  EXPECT_TRUE(plainCommand(L"mail \"a & b\" c").isPlain);
  disk_.folder("kept");
  grants.openTo(Permission::write, L"d:\\");
  grants.deny({Permission::write, text::fromUtf8(disk_.at("kept"))});
  EXPECT_FALSE(Grants::isOpen(grants.mayWrite(machineBehindLinks(L"d:\\KEPT\\a"))));
}

}  // namespace
}  // namespace os
