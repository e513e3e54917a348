// Workbooks that become CSV files for the time of a run.
#include "language/workbook.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "os/doors.h"
#include "os/surroundings.h"
#include "support/folders.h"
#include "support/world.h"
#include "text/encoding.h"
#include "text/units.h"

namespace test {
namespace {

using namespace language;
namespace fs = std::filesystem;

class Workbooks : public testing::Test {
 protected:
  Workbooks() {
    os::surroundings().processes = os::machineProcesses();
    fs::create_directories(world_.models() + "/sub $HOME");
  }
  ~Workbooks() override { deleteConvertedFiles(); }

  void script(const std::string& commands) const { place("#!/bin/sh\n" + commands); }
  static void place(const std::string& content) {
    const std::string file = World::machine(L"c:\\conf\\xls2csv.vbs");
    writeBytes(file, content);
    fs::permissions(file, fs::perms::owner_all);
  }
  void workbook(const std::string& name, const std::string& content) const {
    writeBytes(world_.models() + "/" + name, content);
  }
  static std::wstring converted(const std::wstring& path, int expected) {
    std::wstring out = L"before";
    EXPECT_EQ(convertWorkbook(out, text::kTextSize, path), expected) << text::toUtf8(path);
    return out;
  }
  [[nodiscard]] int timesLogged(const std::wstring& line) const {
    const std::wstring log = world_.log();
    int times = 0;
    for (std::size_t at = 0; (at = log.find(line, at)) != log.npos; ++at) ++times;
    return times;
  }
  static std::string content(const std::wstring& path) { return os::files().read(path).value; }

  static void expectTable(const std::wstring& book) {
    SCOPED_TRACE(text::toUtf8(book));
    std::size_t number = 0;
    ASSERT_EQ(readCSVtoTable(number, converted(book, 0), L';', L",ccs=UTF-8"), 0);
    const CsvTable& read = csvTable(number);
    ASSERT_EQ(read.rowCount(), 2U);
    EXPECT_EQ(read.header(1), L"value");
    EXPECT_EQ(read.cell(0, 0), L"a;b");
    EXPECT_EQ(read.cell(0, 1), L"say \"hi\"");
    EXPECT_EQ(read.cell(1, 0), L"\u00E4\u20AC");
    EXPECT_EQ(read.cell(1, 1), L"12.5");
    freeCsvTables();
  }

  World world_;
};

TEST_F(Workbooks, AreConvertedOnceARun) {
  world_.start();
  script("cp \"$1\" \"$2\"\n");
  workbook("a.XLS", "one");
  workbook("sub $HOME/a.xls", "two");
  workbook("a.xlsx", "three");
  workbook("A.Ods", "four");
  workbook("plain.csv", "x");
  writeBytes(world_.temp() + "/a_xls.csv", "of an earlier day");
  EXPECT_EQ(converted(L"d:\\plain.csv", 0), L"before");
  EXPECT_EQ(converted(L"d:\\none.csv", -1), L"before");
  EXPECT_EQ(converted(L"d:\\a.XLS", 0), L"t:\\a_xls.csv");
  EXPECT_EQ(content(L"t:\\a_xls.csv"), "one");
  workbook("a.XLS", "changed");
  EXPECT_EQ(converted(L"d:\\a.XLS", 1), L"t:\\a_xls.csv");
  EXPECT_EQ(content(L"t:\\a_xls.csv"), "one");
  // Another workbook of that name, in a folder whose name means something to a shell.
  EXPECT_EQ(converted(L"d:\\sub $HOME\\a.xls", 0), L"t:\\a_xls_2.csv");
  EXPECT_EQ(content(L"t:\\a_xls_2.csv"), "two");
  EXPECT_EQ(converted(L"d:\\a.xlsx", 0), L"t:\\a_xlsx.csv");
  EXPECT_EQ(content(L"t:\\a_xlsx.csv"), "three");
  EXPECT_EQ(converted(L"d:\\A.Ods", 0), L"t:\\A_ods.csv");
  EXPECT_EQ(content(L"t:\\A_ods.csv"), "four");
  deleteConvertedFiles();
  EXPECT_FALSE(os::files().exists(L"t:\\a_xls.csv"));
  EXPECT_FALSE(os::files().exists(L"t:\\a_xls_2.csv"));
  for (const wchar_t* line : {L"The file 'd:\\none.csv' was not found",
                              L"File 'a_xls.csv' is already a csv and it's going to be overriden and deleted",
                              L"c:\\conf\\xls2csv.vbs \"d:\\sub $HOME\\a.xls\" \"t:\\a_xls_2.csv\""})
    EXPECT_TRUE(world_.logHas(line)) << text::toUtf8(line);
}

TEST_F(Workbooks, ThatCantBeConvertedAreSaidToBe) {
  world_.start();
  workbook("a.xls", "one");
  workbook("b\"; touch evil \".xls", "two");
  EXPECT_EQ(converted(L"d:\\none.xls", -1), L"before");
  converted(L"d:\\a.xls", -1);
  EXPECT_TRUE(world_.logHas(L"c:\\conf\\xls2csv.vbs: The file not found"));
  const std::string tries = world_.temp() + "/tries";
  script("echo x >>'" + tries + "'\nexit 3\n");
  // What an earlier conversion left isn't taken for this one's.
  writeBytes(world_.temp() + "/a_xls.csv", "of an earlier day");
  converted(L"d:\\a.xls", -1);
  EXPECT_FALSE(os::files().exists(L"t:\\a_xls.csv"));
  // It isn't tried again for each model, but each is told.
  converted(L"d:\\a.xls", -1);
  EXPECT_EQ(readBytes(tries), "x\n");
  EXPECT_EQ(timesLogged(L"c:\\conf\\xls2csv.vbs \"d:\\a.xls\" \"t:\\a_xls.csv\""), 2);
  EXPECT_EQ(timesLogged(L"xls2csv.vbs made no file of d:\\a.xls, its exit status is 3"), 2);
  converted(L"d:\\b\"; touch evil \".xls", -1);
  EXPECT_TRUE(world_.logHas(L"A workbook with a quote in its name can't be converted"));
  std::wstring out;
  EXPECT_EQ(convertWorkbook(out, 9, L"d:\\a.xls"), -1);
  const os::DoorsGuard guard;
  os::doors().programs = os::Door::closed;
  workbook("c.xls", "three");
  converted(L"d:\\c.xls", -1);
  EXPECT_TRUE(world_.logHas(L"xls2csv.vbs isn't started: "));
}

// The installation's own script, with LibreOffice: there and back.
TEST_F(Workbooks, GoThroughTheInstallationsScript) {
  world_.start();
  place(readBytes(sourceFolder() + "/installation/linux/conf/xls2csv.vbs"));
  ASSERT_EQ(std::system("command -v soffice >/dev/null"), 0) << "install libreoffice-calc-nogui";
  const std::string table = "name;value\n\"a;b\";\"say \"\"hi\"\"\"\n\xC3\xA4\xE2\x82\xAC;12.5\n";
  workbook("t\xC3\xA4 x.csv", table);
  const std::string make = "cd '" + world_.models() + "' && for kind in xls xlsx; do LC_ALL=C.UTF-8 soffice " +
                           "-env:UserInstallation=file://'" + world_.temp() +
                           "/profile' --headless --infilter='CSV:59,34,76,1' --convert-to $kind 't\xC3\xA4 x.csv' "
                           ">/dev/null 2>&1 || exit 1; done";
  ASSERT_EQ(std::system(make.c_str()), 0);
  for (const wchar_t* book : {L"d:\\t\u00E4 x.xls", L"d:\\t\u00E4 x.xlsx"}) expectTable(book);
}

TEST_F(Workbooks, TheScriptTellsWhatIsMissing) {
  const std::string script = sourceFolder() + "/installation/linux/conf/xls2csv.vbs", said = world_.temp() + "/said";
  workbook("a.xls", "one");
  struct Row {
    std::string command;
    int status;
    const char* message;
  };
  const std::string book = " '" + world_.models() + "/a.xls' ", target = "'" + world_.temp() + "/out.csv'";
  const Row rows[] = {
      {script + book, 2, "xls2csv: two arguments are needed"},
      {script + " /none.xls " + target, 1, "xls2csv: /none.xls can't be read"},
      {"PATH= /bin/sh " + script + book + target, 127, "there is no program soffice (Debian: libreoffice-calc-nogui)"},
  };
  for (const Row& row : rows) {
    const int ended = std::system((row.command + " 2>'" + said + "'").c_str());
    EXPECT_EQ(WEXITSTATUS(ended), row.status) << row.command;
    EXPECT_THAT(readBytes(said), testing::HasSubstr(row.message));
  }
}

}  // namespace
}  // namespace test
