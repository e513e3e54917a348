// The CSV writer against literal bytes: what stands in the report and in its side file after opening, filling, closing.
#include "reports/csv_report.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>

#include "actions/dispatch.h"
#include "core/xml.h"
#include "creo/ProMdl.h"
#include "os/surroundings.h"
#include "support/world.h"
#include "text/encoding.h"
#include "text/format.h"

namespace test {
namespace {

using namespace reports;

class CsvReportTest : public testing::Test {
 protected:
  CsvReportTest() { world_.start(); }

  // The action, with further attributes; the report that it opened.
  CsvReport& open(const std::string& attributes, const std::string& name = "audit") {
    const std::wstring path = os::mounts().system(world_.temp() + "/" + name + ".csv");
    const std::string xml = "<task type=\"openCSVReport\" version=\"3\" name=\"" + name + "\" file=\"" +
                            text::toUtf8(path) + "\" " + attributes + "/>";
    const std::wstring file = os::mounts().system(world_.temp() + "/task.xml");
    writeBytes(World::machine(file), xml);
    document_ = core::xmlLoadFile(file).value;
    actions::Subject subject;
    EXPECT_EQ(actions::dispatchAction(*core::xmlChildAt(document_->root()->children, 0), subject), actions::done);
    return *reportRegistry().find(text::fromUtf8(name));
  }
  void closeAll() { reportsCloseAll(reportRegistry()); }
  [[nodiscard]] std::string bytes(const std::string& ending = "") const {
    return readBytes(world_.temp() + "/audit.csv" + ending);
  }
  void existing(const std::string& content, const std::string& ending = "") const {
    writeBytes(world_.temp() + "/audit.csv" + ending, content);
  }
  // A row of two columns.
  static void fill(CsvReport& report, std::wstring_view a, std::wstring_view b) {
    reportNextRow(report);
    reportAddColumn(report, L"B0a", L"A");
    reportAddColumn(report, L"B1b", L"B");
    reportSetValue(report, L"B0a", a);
    reportSetValue(report, L"B1b", b);
  }
  World world_;
  std::unique_ptr<core::XmlDocument> document_;
};

TEST_F(CsvReportTest, WritesEachFormByteForByte) {
  struct Row {
    const char* attributes;
    const wchar_t *a, *b;
    const char* expected;
  };
  const Row rows[] = {
      {"overwrite=\"true\"", L"1", L"", "\"A\",\"B\"\r\n\"1\",\"\"\r\n"},
      {"overwrite=\"true\" sep=\"sem\" charsetUTF=\"true\"", L"\u00E4\u20AC", L"say \"hi\"",
       "\xEF\xBB\xBF\"A\";\"B\"\r\n\"\xC3\xA4\xE2\x82\xAC\";\"say \"\"hi\"\"\"\r\n"},
      {"overwrite=\"true\"", L"\u00E4\u201C\u2013", L"a\nb\t\r", "\"A\",\"B\"\r\n\"\xE4\"\"-\",\"a\nb\"\r\n"},
      {"overwrite=\"true\"", L"\u0416\U0001F600", L"x", "\"A\",\"B\"\r\n\"??\",\"x\"\r\n"},
      {"overwrite=\"true\" changecomma=\"true\"", L"-12.5e-3", L"12.5mm 1.2.3",
       "\"A\",\"B\"\r\n\"-12,5e-3\",\"12.5mm 1.2.3\"\r\n"},
      {"overwrite=\"true\" changecomma=\"true\" winUnix=\"true\"", L"1.2.3", L"7.25",
       "\"A\",\"B\"\r\n\"1.2.3\",\"7,25\"\r\n"},
      {"sep=\"sem\"", L"new", L"file", "\"A\";\"B\"\r\n\"new\";\"file\"\r\n"},
      {"sep=\"sem\" charsetUTF=\"true\"", L"no", L"mark", "\"A\";\"B\"\r\n\"no\";\"mark\"\r\n"},
  };
  for (const Row& row : rows) {
    os::files().remove(os::mounts().system(world_.temp() + "/audit.csv"));
    os::files().remove(os::mounts().system(world_.temp() + "/audit.csvheader"));
    fill(open(row.attributes), row.a, row.b);
    closeAll();
    EXPECT_EQ(bytes(), row.expected) << row.attributes;
    EXPECT_EQ(bytes("header"), "B0a|||||A\r\nB1b|||||B\r\n");
  }
}

TEST_F(CsvReportTest, AReportWithoutColumnsIsAnEmptyLine) {
  open("overwrite=\"true\"");
  closeAll();
  EXPECT_EQ(bytes(), "\r\n");
  open("overwrite=\"true\" charsetUTF=\"true\"");
  closeAll();
  EXPECT_EQ(bytes(), "\xEF\xBB\xBF\r\n");
}

TEST_F(CsvReportTest, AppendingKeepsTheColumnsOfEarlierRuns) {
  fill(open(""), L"1", L"2");
  closeAll();
  CsvReport& report = open("");
  EXPECT_EQ(report.columnTitles, (std::vector<std::wstring>{L"A", L"B"}));
  reportSetValue(report, L"B1b", L"4");
  reportAddColumn(report, L"B2c", L"C \"x\"");
  reportSetValue(report, L"B2c", L"5");
  closeAll();
  EXPECT_EQ(bytes(), "\"A\",\"B\",\"C \"x\"\"\r\n\"1\",\"2\"\r\n\"\",\"4\",\"5\"\r\n");
  EXPECT_EQ(bytes("header"), "B0a|||||A\r\nB1b|||||B\r\nB2c|||||C \"x\"\r\n");
  EXPECT_EQ(bytes("t"), bytes());
  EXPECT_TRUE(world_.logHas(L"Replace Header Line: audit"));
}

TEST_F(CsvReportTest, WithoutItsSideFileAnAppendedReportWritesAHeaderBehindTheOldContent) {
  existing("\xEF\xBB\xBF\"old\"\r\n\"1\"\r\n");
  fill(open("charsetUTF=\"true\""), L"2", L"3");
  closeAll();
  // The test at opening replaced the first line, and with it the mark, by that of a report without columns.
  EXPECT_EQ(bytes(), "\r\n\"1\"\r\n\"A\",\"B\"\r\n\"2\",\"3\"\r\n");
}

// The file is taken away between two runs, or was written by another program.
TEST_F(CsvReportTest, AppendingMindsWhatTheFileHolds) {
  const std::string mark = "\xEF\xBB\xBF", side = "B0a|||||A\r\nB1b|||||B\r\n";
  const std::string header = "\"A\",\"B\"\r\n", old = "\"1\",\"2\"", added = "\"3\",\"4\"\r\n";
  const struct {
    const char* name;
    std::optional<std::string> file, side;
    std::string expected;
    const char* attributes = "";
  } cases[] = {
      {"gone", std::nullopt, side, header + added},
      {"emptied", "", side, header + added},
      {"a mark alone", mark, side, mark + header + added, "charsetUTF=\"true\""},
      {"an open line", header + old, side, header + old + "\r\n" + added},
      {"an open header line", "\"A\",\"B\"", side, header + added},
      {"an open line without a side file", header + old, std::nullopt, "\r\n" + old + "\r\n" + header + added},
      {"as it was left", header + old + "\r\n", side, header + old + "\r\n" + added},
      {"a mark and a header", mark + header, side, mark + header + added, "charsetUTF=\"true\""},
  };
  for (const auto& entry : cases) {
    for (const char* ending : {"", "header", "t"}) std::filesystem::remove(world_.temp() + "/audit.csv" + ending);
    if (entry.file) existing(*entry.file);
    if (entry.side) existing(*entry.side, "header");
    fill(open(entry.attributes), L"3", L"4");
    closeAll();
    EXPECT_EQ(entry.expected, bytes()) << entry.name;
    EXPECT_EQ(!entry.side, std::filesystem::exists(world_.temp() + "/audit.csvt")) << entry.name;
  }
}

TEST_F(CsvReportTest, TwoReportsIntoANewFileWriteOneHeader) {
  existing("B0a|||||A\r\nB1b|||||B\r\n", "header");
  fill(open(""), L"1", L"2");
  fill(open(""), L"3", L"4");
  closeAll();
  EXPECT_EQ("\"A\",\"B\"\r\n\"1\",\"2\"\r\n\"3\",\"4\"\r\n", bytes());
}

// A run that breaks off behind the opening has taken nothing away.
TEST_F(CsvReportTest, OpeningLeavesTheFileAsItWas) {
  const std::string before = "\"A\"\r\n\"1\"\r\n";
  existing(before);
  existing("a|||||A\r\n", "header");
  CsvReport& report = open("");
  EXPECT_EQ(before, bytes());
  EXPECT_TRUE(world_.logHas(L"Replace Header Line: audit"));
  reportAddColumn(report, L"b", L"B");
  closeAll();
  EXPECT_EQ("\"A\",\"B\"\r\n\"1\"\r\n", bytes());
}

TEST_F(CsvReportTest, AWriteProtectedReportStaysAndALinkLeadsToItsFile) {
  const std::string file = world_.temp() + "/audit.csv", elsewhere = world_.temp() + "/shared.csv";
  for (const char* mode : {"", "overwrite=\"true\""}) {
    existing("\"A\",\"B\"\r\n\"old\",\"\"\r\n");
    std::filesystem::permissions(file, std::filesystem::perms::owner_read);
    const std::string before = bytes();
    fill(open(mode), L"1", L"2");
    closeAll();
    EXPECT_EQ(before, bytes()) << mode;
    EXPECT_TRUE(world_.logHas(L"Failure while open report."));
    EXPECT_EQ(*mode != 0, world_.logHas(L"Access denied, can't override file"));

    std::filesystem::rename(file, elsewhere);
    std::filesystem::permissions(elsewhere, std::filesystem::perms::owner_all);
    std::filesystem::create_symlink(elsewhere, file);
    fill(open(mode), L"1", L"2");
    closeAll();
    EXPECT_TRUE(std::filesystem::is_symlink(file)) << mode;
    const std::string rows = *mode ? "" : "\"old\",\"\"\r\n";
    EXPECT_EQ("\"A\",\"B\"\r\n" + rows + "\"1\",\"2\"\r\n", readBytes(elsewhere)) << mode;
    std::filesystem::remove(file);
  }
}

// Two letters that are written alike are two columns, this month and the next.
TEST_F(CsvReportTest, KeysWithLettersThatLatin1LacksFindTheirColumnsAgain) {
  for (const wchar_t* value : {L"1", L"2"}) {
    CsvReport& report = open("");
    for (const wchar_t* key : {L"B0\u0416", L"B0\u2126", L"B0?", L"B0b"}) {
      reportAddColumn(report, key, key);
      reportSetValue(report, key, value + std::wstring(key).substr(2, 1));
    }
    closeAll();
  }
  EXPECT_EQ(bytes("header"), "B0?|||||B0?\r\nB0?|||||B0?\r\nB0?|||||B0?\r\nB0b|||||B0b\r\n");
  EXPECT_EQ(bytes(),
            "\"B0?\",\"B0?\",\"B0?\",\"B0b\"\r\n\"1?\",\"1?\",\"1?\",\"1b\"\r\n\"2?\",\"2?\",\"2?\",\"2b\"\r\n");
}

TEST_F(CsvReportTest, ASideFileLineWithoutASeparatorIsPassedOver) {
  existing("\"T\"\r\n");
  existing("broken\r\nK|||||T|||||U\r\n", "header");
  EXPECT_EQ(open("").columnTitles, std::vector<std::wstring>{L"T|||||U"});
  EXPECT_TRUE(world_.logHas(L"A line of the column file has no separator: broken"));
}

TEST_F(CsvReportTest, FileNamesLeadEveryLine) {
  world_.part(L"bolt").column(L"LENGTH").with(L"LENGTH", 1.0).instance(L"BOLT_A", {"2.0"});
  const creo::ProMdl generic = creo::ProMdlRetrieve(L"BOLT", creo::ProMdlType::part).value;
  const creo::ProMdl instance = creo::ProMdlRetrieve(L"BOLT_A", creo::ProMdlType::part).value;
  open("overwrite=\"true\" fnfirst=\"true\" newRowAtNewModel=\"true\" sep=\"sem\"");
  for (const creo::ProMdl model : {generic, generic, instance}) {
    CsvReport* report = reportForModel(L"audit", model);
    ASSERT_TRUE(report);
    reportAddColumn(*report, L"c", L"Title 3");
    reportSetValue(*report, L"c", L"v");
  }
  EXPECT_EQ(reportForModel(L"nobody", generic), nullptr);
  EXPECT_TRUE(world_.logHas(L"Report can't be found"));
  closeAll();
  EXPECT_EQ(bytes(),
            "\"File name\";\"File name\";\"Title 3\"\r\n"
            "\"BOLT.PRT\";\"BOLT.PRT\";\"v\"\r\n"
            "\"BOLT_A<BOLT>.PRT\";\"BOLT_A<BOLT>.PRT\";\"v\"\r\n");
}

TEST_F(CsvReportTest, FlushingWritesTheFileNameOnceAndTheHeaderOnce) {
  CsvReport& report = open("overwrite=\"true\" fnfirst=\"true\"");
  reportSetValue(report, kFileNameColumn, L"A.PRT");
  reportFlush(report);
  reportSetValue(report, kFileNameColumn, L"B.PRT");
  reportFlush(report);
  EXPECT_EQ(bytes(), "\"File name\"\r\n\"A.PRT\"\r\n\"B.PRT\"\r\n");
}

TEST_F(CsvReportTest, RowsMoveOnceAndEmptyOnesAreLeftOut) {
  CsvReport& report = open("overwrite=\"true\"");
  for (const wchar_t* value : {L"1", L"2", L"3"}) {
    reportNextRow(report);
    reportNextRow(report);
    reportAddColumn(report, L"k", L"K");
    reportSetValue(report, L"k", L"earlier");
    reportSetValue(report, L"k", value);
  }
  reportNextRow(report);
  reportSetValue(report, L"no column", L"x");
  closeAll();
  EXPECT_EQ(bytes(), "\"K\"\r\n\"1\"\r\n\"2\"\r\n\"3\"\r\n\"\"\r\n");
}

TEST_F(CsvReportTest, OfTwoReportsOfOneNameTheLaterGetsTheValues) {
  CsvReport& first = open("overwrite=\"true\"");
  reportAddColumn(first, L"k", L"K");
  reportSetValue(first, L"k", L"first");
  open("");
  reportSetValue(*reportForModel(L"audit", {}), L"k", L"second");
  closeAll();
  EXPECT_EQ(bytes(), "\"K\"\r\n\"first\"\r\n\"second\"\r\n");
}

TEST_F(CsvReportTest, APlaceThatCantBeWrittenLosesTheReportAndNothingElse) {
  existing("old");
  world_.disk().denyWrites(os::mounts().system(world_.temp() + "/audit.csv"));
  fill(open("overwrite=\"true\""), L"1", L"2");
  EXPECT_TRUE(world_.logHas(L"Failure while open report."));
  EXPECT_TRUE(world_.logHas(L"Access denied, can't override file"));
  world_.disk().heal();
  closeAll();  // the rows were kept
  EXPECT_EQ(bytes(), "old\r\n\"A\",\"B\"\r\n\"1\",\"2\"\r\n");
}

TEST_F(CsvReportTest, AHeaderThatCantBeReplacedLeavesTheReportWhole) {
  existing("\"A\"\r\n\"1\"\r\n");
  existing("a|||||A\r\n", "header");
  CsvReport& report = open("");
  const std::string opened = bytes();
  reportAddColumn(report, L"b", L"B");
  world_.disk().fillAfter(3);
  closeAll();
  EXPECT_EQ(bytes(), opened);
}

TEST(OpenCsvReport, OfAnotherVersionOpensNothing) {
  World world;
  world.list("open.xml", "", "<task type='openCSVReport' version='2' name='x' file='@project_dir@/x.csv'/>");
  world.part(L"bracket");
  world.runOn(L"BRACKET", creo::ProMdlType::part, "open.xml");
  EXPECT_TRUE(world.logHas(L"false version code")) << text::toUtf8(world.log());
  EXPECT_FALSE(world.logHas(L"Mode:"));
}

TEST(ReportsOfARun, BelongToItAndAreClosedBehindFoot) {
  World world;
  world.list("open.xml", "",
             "<task type='openCSVReport' version='3' name='x' overwrite='true' file='@project_dir@/x.csv'/>");
  world.part(L"bracket");
  world.runOn(L"BRACKET", creo::ProMdlType::part, "open.xml");
  EXPECT_TRUE(world.logHas(L"reports\\x.csv"));
  EXPECT_TRUE(world.logHas(L"Mode: override"));
}

// The rows are written behind the last model, whose name the lines had.
TEST(ReportsOfARun, NameThemselvesAndTheirRowsInLinesOfTheirClosing) {
  World world;
  world.part(L"bolt").with(L"A", L"gr\x2013n");
  world.part(L"nut").with(L"A", L"plain");
  world.part(L"pin").with(L"A", L"a\tb");
  world.assembly(L"top")
      .uses(L"bolt", creo::ProMdlType::part)
      .uses(L"nut", creo::ProMdlType::part)
      .uses(L"pin", creo::ProMdlType::part);
  const std::string open = "<task type='openCSVReport' version='3' overwrite='true' name='";
  world.list("rows.xml",
             "<task type='writeParameters' version='3' forPRT='true' forEF='false' reporter='audit' paramName_0='A' "
             "value='true'/>",
             open + "audit' file='t:/audit.csv'/>" + open + "lost' file='t:/lost.csv'/>",
             "<task type='writeToCreoLog' version='3' value='done'/>");
  world.start();
  world.open(L"TOP", creo::ProMdlType::assembly);
  world.run("rows.xml");
  EXPECT_TRUE(world.logHas(L"Close report audit - row 1 (work now on BOLT.PRT) - A character in 'gr\x2013n'"))
      << text::toUtf8(world.log());
  EXPECT_TRUE(world.logHas(L"Close report audit - row 3 (work now on PIN.PRT) - A character in 'a"));
}

}  // namespace
}  // namespace test
