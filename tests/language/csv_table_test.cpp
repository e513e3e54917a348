// Tables read from CSV text.
#include "language/csv_table.h"

#include <gtest/gtest.h>

#include "os/surroundings.h"
#include "support/world.h"

namespace test {
namespace {

using namespace language;

std::wstring shown(const CsvTable& table) {
  std::wstring out;
  const auto line = [&](auto cell) {
    for (std::size_t i = 0; i < table.columnCount(); ++i) out.append(i > 0 ? L"|" : L"").append(cell(i));
    out += L'\n';
  };
  line([&](std::size_t i) { return table.header(i); });
  for (std::size_t row = 0; row < table.rowCount(); ++row) line([&](std::size_t i) { return table.cell(row, i); });
  return out;
}

TEST(ParseCsv, ReadsCellsByTheirQuotes) {
  struct Row {
    const char* text;
    wchar_t separator;
    const wchar_t* encoding;
    const wchar_t* expected;
  };
  const Row rows[] = {
      {"a;\"b;c\";d\r\n1;2;3\r\n", L';', L"", L"a|b;c|d\n1|2|3\n"},
      {"h\n\"say \"\"hi\"\"\"\n", L';', L"", L"h\nsay \"hi\"\n"},
      {"h,k\n\"two\r\nlines\",x\n", L',', L"", L"h|k\ntwo\nlines|x\n"},
      {"h\n\"a\rb\r\n\"\n", L';', L"", L"h\na\rb\n\n"},
      {",,\nh,k\n , ;\n1,2\n,,,\n;,x\n", L',', L"", L"h|k\n1|2\n;|x\n"},
      {";; \n\na;b\n ;; ;\n1\n1;2;3\n", L';', L"", L"a|b\n1|\n1|2\n"},
      {"\xEF\xBB\xBF\xC3\xA4\n\xE2\x82\xAC\n", L';', L"", L"\u00E4\n\u20AC\n"},
      {"\xE4\n\x80\n", L';', L"", L"\u00E4\n\u20AC\n"},
      {"\xC3\xA4\n", L';', L",ccs=UTF-8", L"\u00E4\n"},
      {"\xC3\xA4\nGeh\xE4use\n\xF6\n", L';', L",ccs=UTF-8", L"\u00E4\nGeh\u00E4use\n\u00F6\n"},
      {"a;b\nz;0\n\"x;1\ny;2", L';', L"", L"a|b\nz|0\n"},
      {"a\n\"\"\n\"\n", L';', L"", L"a\n\n"},
      {"\"a;b\nx;1\n", L';', L"", L"\n"},
      {"", L';', L"", L"\n"},
  };
  World world;
  world.start();
  for (const Row& row : rows)
    EXPECT_EQ(shown(parseCsv(row.text, row.separator, row.encoding)), row.expected) << row.text;
  EXPECT_TRUE(
      world.logHas(L"A quote is never closed: the record of line 3 takes in the rest of the file and isn't used"));
  EXPECT_EQ(L"h\n\u00E4\n", shown(parseCsv({"\xFF\xFEh\0\n\0\xE4\0", 8}, L';', L"")));
  EXPECT_TRUE(world.logHas(L"Line 2 isn't UTF-8, it is read as Windows-1252\n"));
  EXPECT_FALSE(world.logHas(L"Line 3 isn't UTF-8"));
}

TEST(ParseCsv, CutsCellsAndTakesRecordsOfAnyLength) {
  const std::string wide(20000, 'x');
  World world;
  world.start();
  parseCsv("a;b\n" + std::string(259, 'x') + ";\"" + std::string(259, 'x') + "\"\n", L';', L"");
  EXPECT_EQ(L"", world.log());
  const CsvTable table = parseCsv(
      "a;b\n\"" + wide + "\";" + wide + "\n" + std::string(258, 'y') + "\xF0\x9F\x98\x80;z\n", L';', L",ccs=UTF-8");
  ASSERT_EQ(table.rowCount(), 2U);
  EXPECT_EQ(table.cell(0, 0), std::wstring(259, L'x'));
  EXPECT_EQ(table.cell(0, 1), std::wstring(259, L'x'));
  EXPECT_EQ(table.cell(1, 0), std::wstring(258, L'y'));  // half a character doesn't stay
  EXPECT_EQ(table.cell(1, 1), L"z");
  EXPECT_TRUE(world.logHas(L"Line 2 has a cell of more than 259 characters, the rest of it is left out\n"));
  EXPECT_FALSE(world.logHas(L"Line 3"));
  EXPECT_EQ(table.cell(5, 5), L"");
  EXPECT_EQ(table.column(L"B"), 1U);
  EXPECT_EQ(table.column(L"c"), table.columnCount());
}

TEST(ReadCsv, ReadsAFileOnceARun) {
  World world;
  world.start();
  freeCsvTables();
  const std::string file = world.temp() + "/t.csv";
  const std::wstring path = os::mounts().system(file);
  std::size_t first = 9, second = 9, missing = 9;
  EXPECT_EQ(readCSVtoTable(missing, path, L';', L""), 2);
  EXPECT_TRUE(world.logHas(L"Failure while read file"));
  const std::pair<std::string, const wchar_t*> others[] = {
      {"PK\x03\x04...", L"t:\\t.csv: it is a workbook; its name must end in '.xlsx' or '.ods'"},
      {"\xD0\xCF\x11\xE0...", L"t:\\t.csv: it is a workbook; its name must end in '.xls'"},
  };
  for (const auto& [bytes, line] : others) {
    writeBytes(file, bytes);
    EXPECT_EQ(readCSVtoTable(missing, path, L';', L""), 2);
    EXPECT_TRUE(world.logHas(L"Failure while read file " + std::wstring(line)));
  }
  writeBytes(file, "a\n1\n\n\xFF\n");
  EXPECT_EQ(readCSVtoTable(first, path, L';', L",ccs=UTF-8"), 0);
  EXPECT_TRUE(world.logHas(L" - t.csv: Line 4 isn't UTF-8, it is read as Windows-1252\n"));
  writeBytes(file, "b\n2\n");
  EXPECT_EQ(readCSVtoTable(second, path, L';', L""), 0);
  EXPECT_EQ(first, second);
  EXPECT_EQ(csvTable(second).header(0), L"a");
  freeCsvTables();
  EXPECT_EQ(readCSVtoTable(second, path, L';', L""), 0);
  EXPECT_EQ(csvTable(second).header(0), L"b");
  EXPECT_EQ(csvTable(7).rowCount(), 0U);
  freeCsvTables();
}

}  // namespace
}  // namespace test
