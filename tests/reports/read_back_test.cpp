// A finished report, read back by strangers: Python's csv module and LibreOffice's importer find the same cells.
#include <gtest/gtest.h>

#include <cstdlib>

#include "creo/ProMdl.h"
#include "os/surroundings.h"
#include "reports/csv_report.h"
#include "support/world.h"

namespace test {
namespace {

class ReadBack : public testing::Test {
 protected:
  ReadBack() { world_.start(); }

  // Runs a command in the temp folder; its output.
  std::string said(const std::string& command) const {
    const std::string out = world_.temp() + "/said";
    const std::string whole = "cd '" + world_.temp() + "' && " + command + " > said 2>/dev/null";
    EXPECT_EQ(0, std::system(whole.c_str())) << command;
    return readBytes(out);
  }
  // The rows of a file as Python's csv module reads them.
  std::string rowsByPython(const std::string& file, const std::string& delimiter) const {
    writeBytes(world_.temp() + "/rows.py",
               "import csv, json\n"
               "with open('" +
                   file +
                   "', encoding='utf-8-sig', newline='') as f:\n"
                   "    print(json.dumps(list(csv.reader(f, delimiter='" +
                   delimiter + "')), ensure_ascii=False))\n");
    return said("PYTHONIOENCODING=utf-8 python3 rows.py");
  }

  World world_;
};

TEST_F(ReadBack, StrangersFindTheSameCells) {
  reports::CsvReport report;
  report.path = L"t:\\audit.csv";
  report.overwrite = true;
  report.form = {.charsetUtf = true, .semicolon = true};
  const std::vector<std::vector<std::wstring>> rows = {
      {L"Geh\u00E4use \u20AC", L"say \"hi\"; twice", L"two\nlines"}, {L"", L"\"", L"x"}, {L"0012", L"'", L""}};
  for (const wchar_t* key : {L"A", L"B", L"C"}) reports::reportAddColumn(report, key, std::wstring(L"title ") + key);
  for (const auto& row : rows) {
    reports::reportNextRow(report);
    for (std::size_t i = 0; i < row.size(); ++i) reports::reportSetValue(report, std::wstring(1, L"ABC"[i]), row[i]);
  }
  reports::reportClose(report);

  const std::string expected =
      "[[\"title A\", \"title B\", \"title C\"], [\"Geh\xC3\xA4use \xE2\x82\xAC\", \"say \\\"hi\\\"; twice\", "
      "\"two\\nlines\"], [\"\", \"\\\"\", \"x\"], [\"0012\", \"'\", \"\"]]\n";
  EXPECT_EQ(expected, rowsByPython("audit.csv", ";"));
  // All columns as text, so that "0012" keeps its zeros; written again with commas.
  said(
      "soffice -env:UserInstallation=file://$PWD/profile --headless "
      "--infilter='CSV:59,34,76,1,1/2/2/2/3/2,0,false,false' --convert-to 'csv:Text - txt - csv "
      "(StarCalc):44,34,76,1,,0,true,false' --outdir read audit.csv");
  EXPECT_EQ(expected, rowsByPython("read/audit.csv", ","));
}

}  // namespace
}  // namespace test
