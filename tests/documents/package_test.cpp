// Packages from their zip file to the choosers: what is unpacked, what is refused, and that nothing leaves its folder.
#include <gtest/gtest.h>
#include <zip.h>

#include <filesystem>

#include "core/state.h"
#include "documents/package_rules.h"
#include "documents/unpack.h"
#include "headless/proui/ui.h"
#include "os/interrupt.h"
#include "run/choosers.h"
#include "support/world.h"
#include "text/encoding.h"

namespace {

namespace fs = std::filesystem;
using core::pluginState;
using documents::Unpacked;
using documents::unpackPackage;
using test::World;

struct Member {
  std::string name, content;
  unsigned mode = 0;  // Unix file mode; 0 leaves it out
  bool isEncrypted = false;
};

std::vector<Member> requiredMembers() {
  return {{"system/index.kvane", "1\nabout\n"},
          {"models/readme.txt", "m"},
          {"reports/readme.txt", "r"},
          {"checklist/readme.txt", "c"}};
}
std::vector<Member> withRequired(Member extra) {
  auto members = requiredMembers();
  members.push_back(std::move(extra));
  return members;
}

void pack(const std::string& path, const std::vector<Member>& members) {
  int fault = 0;
  zip_t* zip = zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, &fault);
  ASSERT_TRUE(zip) << path;
  for (const Member& member : members) {
    zip_source_t* source = zip_source_buffer(zip, member.content.data(), member.content.size(), 0);
    const zip_int64_t index = zip_file_add(zip, member.name.c_str(), source, ZIP_FL_ENC_UTF_8);
    ASSERT_GE(index, 0) << member.name;
    if (member.mode)
      zip_file_set_external_attributes(zip, static_cast<zip_uint64_t>(index), 0, ZIP_OPSYS_UNIX, member.mode << 16);
    if (member.isEncrypted)
      ASSERT_EQ(0, zip_file_set_encryption(zip, static_cast<zip_uint64_t>(index), ZIP_EM_AES_256, "secret"));
  }
  ASSERT_EQ(0, zip_close(zip)) << path;
}

// The number in every place where the file says how much a member of that many bytes unpacks to.
std::string declaring(std::string bytes, std::uint32_t is, std::uint32_t said) {
  const auto little = [](std::uint32_t number) {
    std::string four;
    for (int i = 0; i < 4; ++i) four += static_cast<char>((number >> (8 * i)) & 0xff);
    return four;
  };
  for (auto at = bytes.find(little(is)); at != std::string::npos; at = bytes.find(little(is), at + 4))
    bytes.replace(at, 4, little(said));
  return bytes;
}

// Every file and folder under a folder, a line each.
std::string tree(const std::string& folder) {
  std::set<std::string> all;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) all.insert(entry.path());
  std::string lines;
  for (const std::string& line : all) lines += line + "\n";
  return lines;
}

class Packages : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(0, world.start());
    outside = tree(fs::path(world.temp()).parent_path());
  }
  std::string file(const std::string& name) const { return world.packages() + "/" + name; }
  std::string unpacked(const std::string& path) const { return world.temp() + "/open_kvz_x/" + path; }
  // Files of digits alone, in the package's folder.
  int markers() const {
    int count = 0;
    for (const auto& entry : fs::directory_iterator(unpacked(""))) {
      const std::string name = entry.path().filename();
      if (name.find_first_not_of("0123456789_") == std::string::npos) ++count;
    }
    return count;
  }
  bool said(std::wstring_view piece) const { return world.messages().find(piece) != std::wstring::npos; }

  World world;
  std::string outside;
};

TEST_F(Packages, AnUnchangedFileIsUnpackedOnceAndAChangedOneAnew) {
  pack(file("x.kvz"), withRequired({"actionlists/deep/er/a.xml", "<a/>"}));
  EXPECT_EQ(Unpacked::ready, unpackPackage("x.kvz"));
  EXPECT_EQ(L"t:\\open_kvz_x\\", pluginState().openKvzPath);
  EXPECT_EQ("<a/>", test::readBytes(unpacked("actionlists/deep/er/a.xml")));
  EXPECT_EQ(1, markers());

  test::writeBytes(unpacked("left.txt"), "by a run");
  EXPECT_EQ(Unpacked::ready, unpackPackage("p:\\x.kvz")) << "its folder may stand before it";
  EXPECT_TRUE(fs::exists(unpacked("left.txt")));

  fs::last_write_time(file("x.kvz"), fs::last_write_time(file("x.kvz")) + std::chrono::minutes(3));
  EXPECT_EQ(Unpacked::ready, unpackPackage("x.kvz"));
  EXPECT_FALSE(fs::exists(unpacked("left.txt")));
  EXPECT_EQ(1, markers());

  fs::remove(unpacked("models/readme.txt"));
  EXPECT_EQ(Unpacked::ready, unpackPackage("x.kvz"));
  EXPECT_TRUE(fs::exists(unpacked("models/readme.txt"))) << "a folder that lost a required member isn't whole";
}

TEST_F(Packages, AMarkerNamesTheTimeWithMillisecondsForSeconds) {
  pack(file("x.kvz"), requiredMembers());
  // 2023-02-03 04:05:06.078 UTC
  const auto written = std::chrono::sys_days{std::chrono::February / 3 / 2023} + std::chrono::hours(4) +
                       std::chrono::minutes(5) + std::chrono::seconds(6) + std::chrono::milliseconds(78);
  fs::last_write_time(file("x.kvz"), std::chrono::file_clock::from_sys(written));
  EXPECT_EQ(Unpacked::ready, unpackPackage("x.kvz"));
  EXPECT_EQ("f", test::readBytes(unpacked("2023_2_3_4_5_78")));
  EXPECT_EQ(1, markers());
}

TEST_F(Packages, WhatIsHostileOrNoZipIsRefusedAndWritesNothing) {
  const std::string whole = [&] {
    pack(file("x.kvz"), requiredMembers());
    return test::readBytes(file("x.kvz"));
  }();
  const std::string zeros(3'000'000, '\0');
  std::string deep;
  while (deep.size() < 1024) deep += "d/";
  struct Case {
    const char* what;
    std::vector<Member> members;
    std::string bytes;  // in their place
    const wchar_t* line;
  };
  const Case cases[] = {
      {"text", {}, "no zip at all", L"zip file appears invalid..."},
      {"truncated", {}, whole.substr(0, whole.size() - 30), L"zip file appears invalid..."},
      {"half", {}, whole.substr(0, whole.size() / 2), L"zip file appears invalid..."},
      {"nothing in it", {}, std::string("PK\5\6") + std::string(18, '\0'), L"zero files inside zip..."},
      {"climbs", withRequired({"../../x", "!"}), "", L"has a member that leaves the package's folder: ../../x"},
      {"climbs inside", withRequired({"a/../../../x", "!"}), "", L"has a member that leaves the package's folder:"},
      {"climbs by \\", withRequired({"a\\..\\..\\x", "!"}), "", L"has a member that leaves the package's folder:"},
      {"climbs by a blank", withRequired({".. /.. /x", "!"}), "", L"has a member that leaves the package's folder:"},
      {"absolute", withRequired({"/x", "!"}), "", L"has a member with an absolute path: /x"},
      {"absolute by \\", withRequired({"\\x", "!"}), "", L"has a member with an absolute path:"},
      {"drive", withRequired({"C:\\x", "!"}), "", L"has a member with a drive: C:\\x"},
      {"drive alone", withRequired({"C:x", "!"}), "", L"has a member with a drive:"},
      {"link", withRequired({"models/l", "/etc", 0120777}), "", L"has a member that is a link: models/l"},
      {"control", withRequired({"models/a\nb", "!"}), "", L"has a member with a control character in its name:"},
      {"long part", withRequired({"models/" + std::string(256, 'x'), "!"}), "",
       L"has a member whose name is too long: models/xx"},
      {"deep", withRequired({deep + "x", "!"}), "", L"has a member whose name is too long: d/d/"},
      {"bomb", withRequired({"models/zeros", zeros}), "", L"would unpack to more than is allowed"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    const std::string name = std::string(c.what) + ".kvz";
    if (c.bytes.empty())
      pack(file("x.kvz"), c.members);
    else
      test::writeBytes(file("x.kvz"), c.bytes);
    const std::wstring before = world.messages();
    EXPECT_EQ(Unpacked::refused, unpackPackage("x.kvz"));
    EXPECT_NE(std::wstring::npos, world.messages().find(c.line, before.size())) << "the line is missing";
    fs::remove(file("x.kvz"));
    EXPECT_EQ(outside, tree(fs::path(world.temp()).parent_path()));
  }
  EXPECT_EQ(Unpacked::refused, unpackPackage("x.kvz")) << "no such file";
  EXPECT_TRUE(said(L"Package refused: x.kvz can't be read: No such file or directory"));
}

TEST(PackageRules, MoreMembersThanAnyPackageHasAreRefused) {
  std::vector<documents::ZipMember> members(documents::kMostMembers);
  for (documents::ZipMember& member : members) member.name = L"a";
  EXPECT_EQ(L"", documents::packageFault(members, 1).what);
  members.push_back(members.front());
  EXPECT_EQ(L"has more than 100000 members", documents::packageFault(members, 1).what);
}

TEST_F(Packages, ProgramsStayProgramsAndWhatIsEncryptedIsSaidToBe) {
  auto members = withRequired({"models/tool.sh", "#!/bin/sh\n", 0100755});
  members.push_back({"models/plain.txt", "x", 0100644});
  members.push_back({"models/secret.txt", "x", 0, true});
  pack(file("x.kvz"), members);
  EXPECT_EQ(Unpacked::incomplete, unpackPackage("x.kvz"));
  EXPECT_TRUE(said(L"failure while extract file models\\secret.txt (it is encrypted)"));
  const auto runs = [&](const char* name) {
    return (fs::status(unpacked(name)).permissions() & fs::perms::owner_exec) != fs::perms::none;
  };
  EXPECT_TRUE(runs("models/tool.sh"));
  EXPECT_FALSE(runs("models/plain.txt"));
}

// What is there then counts for nothing: the next selection begins anew.
TEST_F(Packages, AnInterruptEndsUnpacking) {
  pack(file("x.kvz"), withRequired({"models/a.prt.1", std::string(100'000, 'a')}));
  {
    static int asked;
    asked = 0;
    const os::InterruptSource source([] { return ++asked > 5; });
    EXPECT_EQ(Unpacked::refused, unpackPackage("x.kvz"));
  }
  EXPECT_TRUE(said(L"<KVD> Unpacking was interrupted: x.kvz"));
  EXPECT_FALSE(fs::exists(unpacked("models/a.prt.1")));
  EXPECT_EQ(0, markers());
  EXPECT_EQ(Unpacked::ready, unpackPackage("x.kvz"));
}

TEST_F(Packages, ABombThatDeclaresLittleIsStoppedWhileItUnpacks) {
  const std::string zeros(3'000'000, '\0');
  pack(file("x.kvz"), withRequired({"models/zeros", zeros}));
  test::writeBytes(file("x.kvz"), declaring(test::readBytes(file("x.kvz")), 3'000'000, 1000));
  EXPECT_EQ(Unpacked::refused, unpackPackage("x.kvz"));
  EXPECT_TRUE(said(L"unpacks to more than is allowed"));
  EXPECT_FALSE(fs::exists(unpacked("")));
}

TEST_F(Packages, AMissingRequiredMemberIsTriedFiveTimesMore) {
  auto members = requiredMembers();
  members.erase(members.begin() + 1);
  pack(file("x.kvz"), members);
  EXPECT_EQ(Unpacked::incomplete, unpackPackage("x.kvz"));
  int again = 0;
  for (const std::wstring& line : world.session().messages())
    if (line.find(L"KVD: FAILURE WHILE EXTRACT KVZ FILE, TRY AGAIN.") != std::wstring::npos) ++again;
  EXPECT_EQ(5, again);
  EXPECT_EQ(0, markers());
  EXPECT_TRUE(fs::exists(unpacked("reports/readme.txt")));
}

TEST_F(Packages, ADamagedMemberIsNamedTheRestIsThereAndThePackageIsNotTakenForWhole) {
  pack(file("x.kvz"), withRequired({"models/a.prt.1", "stored text"}));
  std::string bytes = test::readBytes(file("x.kvz"));
  const auto at = bytes.find("stored text");
  ASSERT_NE(std::string::npos, at) << "a text as short as this is stored";
  bytes[at] = 'S';
  test::writeBytes(file("x.kvz"), bytes);
  EXPECT_EQ(Unpacked::incomplete, unpackPackage("x.kvz"));
  EXPECT_TRUE(said(L"failure while extract file models\\a.prt.1"));
  EXPECT_FALSE(fs::exists(unpacked("models/a.prt.1"))) << "half a file is none";
  EXPECT_TRUE(fs::exists(unpacked("checklist/readme.txt")));
  EXPECT_EQ(0, markers());
}

TEST_F(Packages, AFullDiskLeavesNoMarker) {
  pack(file("x.kvz"), withRequired({"models/a.prt.1", std::string(100'000, 'a') + std::string(100'000, 'b')}));
  world.disk().fillAfter(5'000);
  EXPECT_EQ(Unpacked::incomplete, unpackPackage("x.kvz"));
  EXPECT_TRUE(said(L"failure while extract file models\\a.prt.1 (No space left on device)"));
  world.disk().heal();
  EXPECT_EQ(0, markers());
  EXPECT_EQ(Unpacked::ready, unpackPackage("x.kvz"));
}

TEST_F(Packages, ANameThatLeadsElsewhereIsRefused) {
  fs::create_directories(file("sub"));
  pack(file("sub/x.kvz"), requiredMembers());
  outside = tree(fs::path(world.temp()).parent_path());
  for (const char* name : {"sub\\x.kvz", "sub/x.kvz", "..\\x.kvz", "..\\..\\x.kvz", "p:\\sub\\x.kvz", "d:\\x.kvz", "..",
                           "", "..kvz", "x..kvz", "t:x.kvz"}) {
    EXPECT_EQ(Unpacked::refused, unpackPackage(name)) << name;
  }
  EXPECT_EQ(outside, tree(fs::path(world.temp()).parent_path()));
}

TEST_F(Packages, ANameMayHoldDotsAndCapitals) {
  pack(file("v1..2.kvz"), requiredMembers());
  pack(file("BIG.KVZ"), requiredMembers());
  EXPECT_EQ(Unpacked::ready, unpackPackage("v1..2.kvz"));
  EXPECT_EQ(L"t:\\open_kvz_v1..2\\", pluginState().openKvzPath);
  EXPECT_EQ(Unpacked::ready, unpackPackage("BIG.KVZ"));
  EXPECT_EQ(L"t:\\open_kvz_BIG\\", pluginState().openKvzPath);
}

TEST_F(Packages, AFolderOutsideTheTempFolderIsNeverUsed) {
  pack(file("x.kvz"), requiredMembers());
  pluginState().openKvzPath = L"t:\\";  // as without a main configuration
  pluginState().unpackedSubdir.clear();
  EXPECT_EQ(Unpacked::ready, unpackPackage("x.kvz"));
  EXPECT_EQ(L"t:\\open_kvz_x\\", pluginState().openKvzPath);
}

// ---- the choosers

std::string joinedNames(const std::vector<std::string>& names) {
  std::string all;
  for (const std::string& name : names) all += (all.empty() ? "" : " ") + name;
  return all;
}

TEST(PackageChoosers, ShowPackagesListsFiltersAndDescriptions) {
  World world;
  world.list("b.xml", "");
  world.list("a.xml", "");
  world.member("actionlists/a.xmlinfo",
               "Pr\xfc"
               "ft alles");  // in the narrow code page
  world.member("actionlists/note.txt", "no list");
  world.member("filters/z.xml", "<root/>");
  world.member("filters/p.xml", "<root/>");
  world.member("filters/p.txt", "no filter");
  ASSERT_EQ(0, world.start());
  pack(world.packages() + "/a.kvz.bak", withRequired({"actionlists/old.xml", "<a/>"}));
  pack(world.packages() + "/zz.KVZ", withRequired({"actionlists/big.xml", "<a/>"}));
  test::writeBytes(world.packages() + "/.kvz", "too short a name");
  test::writeBytes(world.packages() + "/a.zip", "another kind");
  world.openTool();
  headless::Ui& ui = world.session().ui();
  const auto& main = *ui.dialog("kvanerunner");
  EXPECT_EQ("a.kvz.bak standards.kvz zz.KVZ", joinedNames(main.choices("kvaneKVZChooser")));
  EXPECT_EQ("old.xml", joinedNames(main.choices("kvaneActionlistChooser")));
  EXPECT_EQ(L"a.kvz.bak", pluginState().currentKvz);
  EXPECT_EQ(L"No info file.", main.text("kvaneALInfoTa"));
  EXPECT_EQ("no Filter", joinedNames(ui.dialog("kvanefilter")->choices("kvaneFilterChooser")));

  ui.choose("kvanerunner", "kvaneKVZChooser", "standards.kvz");
  EXPECT_EQ("a.xml b.xml", joinedNames(main.choices("kvaneActionlistChooser")));
  EXPECT_EQ("a.xml", joinedNames(main.selected("kvaneActionlistChooser")));
  EXPECT_EQ(L"a.xml", pluginState().currentList);
  EXPECT_EQ(L"A package for tests \nsecond line", main.text("kvaneKVZInfoTa"));
  EXPECT_EQ(L"Pr\u00fcft alles", main.text("kvaneALInfoTa"));
  EXPECT_EQ("no Filter p.xml z.xml", joinedNames(ui.dialog("kvanefilter")->choices("kvaneFilterChooser")));
  EXPECT_EQ(L"t:\\open_kvz_standards\\actionlists\\a.xml", run::selectedListPath());
}

TEST(PackageChoosers, ADamagedPackageKeepsTheListsThatWereThere) {
  World world;
  world.list("a.xml", "");
  ASSERT_EQ(0, world.start());
  test::writeBytes(world.packages() + "/z.kvz", "no zip");
  world.openTool();
  EXPECT_EQ(1, run::selectPackage("z.kvz"));
  EXPECT_EQ("a.xml", joinedNames(world.session().ui().dialog("kvanerunner")->choices("kvaneActionlistChooser")));
  EXPECT_FALSE(fs::exists(world.temp() + "/open_kvz_z"));
}

TEST(PackageChoosers, WithoutPackagesOrListsOrTheFolderTheLinesSaySo) {
  World world;
  ASSERT_EQ(0, world.start());
  world.openTool();
  EXPECT_EQ(1, run::selectPackage("standards.kvz"));
  EXPECT_NE(std::wstring::npos, world.messages().find(L"<KVD> NO ACTIONLISTS"));
  fs::remove(world.packages() + "/standards.kvz");
  EXPECT_EQ(1, run::listPackages());
  EXPECT_TRUE(world.logHas(L"0 NO KVZ FILES FOUND"));
  EXPECT_TRUE(world.logHas(L"NO KVZ FILES FOUND\n2(ERR)"));
  EXPECT_NE(std::wstring::npos, world.messages().find(L"<KVD> No kvz files found"));
  fs::remove_all(world.packages());
  EXPECT_EQ(-1, run::listPackages());
  EXPECT_NE(std::wstring::npos, world.messages().find(L"<KVANE> Can't find KVZ Path"));
}

TEST(PackageChoosers, ADescriptionIsCutWhereItsCharactersEnd) {
  World world;
  std::string text(4095, 'x');
  text += "\xc3\xa4 and more";  // the 4096th byte is half a character
  world.list("a.xml", "");
  world.member("actionlists/a.xmlinfo", text);
  world.member("system/index.kvane", "ignored\r\n" + std::string(5000, 'y') + "\r\n");
  ASSERT_EQ(0, world.start());
  world.openTool();
  const auto& main = *world.session().ui().dialog("kvanerunner");
  EXPECT_EQ(std::wstring(4095, L'x'), main.text("kvaneALInfoTa"));
  EXPECT_EQ(std::wstring(4095, L'y'), main.text("kvaneKVZInfoTa"));
}

}  // namespace
