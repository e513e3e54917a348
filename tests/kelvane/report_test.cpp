// `kelvane report`: a report as a table, and what a rerun's reports lack.
#include "kelvane/run/run_fixture.h"
#include "os/surroundings.h"

namespace test {
namespace {

class ReportVerb : public RunFixture {
 protected:
  Ended report(const std::string& content, const std::vector<std::string>& more = {}) {
    file("a.csv", content);
    std::vector<std::string> words = {"report", path("a.csv")};
    words.insert(words.end(), more.begin(), more.end());
    return kelvane(words);
  }
};

TEST_F(ReportVerb, DrawsAnAlignedTable) {
  struct Case {
    std::string content, out, note;
  };
  const std::vector<Case> cases = {
      {"\xEF\xBB\xBF\"Name\";\"Note\"\r\n\"A\";\"say \"\"hi\"\"\nto all\"\r\n\"LONG\";\"\"\r\n",
       "Name  Note\n----  --------\nA     say \"hi\"\n      to all\nLONG\n",
       "2 rows, 2 columns, UTF-8 with mark, separator \";\", no column file"},
      {"\"\xE4\",\"B\"\r\n\"1;2\",\"\xD6\"\r\n", "\xC3\xA4    B\n---  -\n1;2  \xC3\x96\n",
       "1 row, 2 columns, Latin-1, separator \",\", no column file"},
      // Wide characters take two columns, a combining mark none, and a control character does nothing.
      {"n\tv\n\xE8\xBB\xB8\xE5\x8F\x97\t1\ne\xCC\x81\t2\n\x1B[2J\t3\n",
       "n        v\n-------  -\n\xE8\xBB\xB8\xE5\x8F\x97     1\ne\xCC\x81        2\n\\x1b[2J  3\n",
       "3 rows, 2 columns, UTF-8, separator tab, no column file"},
      {"\"C \"x\"\",\"D\"\r\n\"1\"\r\n", "C \"x\"  D\n-----  -\n1\n",
       "1 row, 2 columns, UTF-8, separator \",\", no column file"},
      {"sep=;\r\n\"A\";\"B,C,D\"\r\n", "A  B,C,D\n-  -----\n",
       "0 rows, 2 columns, UTF-8, separator \";\", no column file"},
      {"A,B\r1,2\r", "A  B\n-  -\n1  2\n", "1 row, 2 columns, UTF-8, separator \",\", no column file"},
      {std::string("\xFF\xFE\xE4\0;\0B\0\n\0"
                   "1\0;\0"
                   "2\0",
                   16),
       "\xC3\xA4  B\n-  -\n1  2\n", "1 row, 2 columns, UTF-16, separator \";\", no column file"},
      {"A\x1b;B\r\n1;2\r\n", "A\\x1b  B\n-----  -\n1      2\n",
       "1 row, 2 columns, UTF-8, separator \";\", no column file"},
      {"", "", "0 rows, 0 columns, UTF-8, separator \",\", no column file"},
  };
  for (const Case& c : cases) {
    const Ended ended = report(c.content);
    EXPECT_EQ(c.out, ended.out);
    EXPECT_EQ(path("a.csv") + ": " + c.note + "\n", ended.err);
    EXPECT_EQ(0, ended.code) << c.content;
  }
  EXPECT_THAT(report("\"A\"\r\n", {"--color", "always"}).out, testing::StartsWith("\x1b[1mA\x1b[0m\n"));
  EXPECT_EQ(2, kelvane({"report", path("none.csv")}).code);
}

TEST_F(ReportVerb, TellsWhatTheColumnFileKnows) {
  file("a.csvheader", "File name|||||File name\r\nB0a|||||A\r\nbroken\r\nB1b|||||B|||||C\r\n");
  const Ended ended =
      report("\"File name\",\"File name\",\"A\",\"X\"\r\n\"1\",\"1\",\"2\",\"3\",\"4\"\r\n", {"--columns", "-q"});
  EXPECT_EQ(
      "1  -          File name\n2  File name  File name\n3  B0a        A\n4  -          X\n"
      "-  B1b        B|||||C    not in the header\n",
      ended.out);
  const std::string name = "warning: " + path("a.csv");
  EXPECT_EQ(name + ": rows with more fields than the header: 1\n" + name +
                "header:3: no '|||||' between key and title\n" + name +
                "header:4: column 'B|||||C' isn't in the header\n",
            ended.err);
  EXPECT_EQ(1, ended.code);
}

TEST_F(ReportVerb, GivesJson) {
  file("a.csvheader", "k|||||A\r\n");
  EXPECT_EQ("{\n  \"file\": \"" + path("a.csv") +
                "\",\n  \"encoding\": \"UTF-8\",\n  \"separator\": \",\",\n  \"columns\": [\n    {\n"
                "      \"title\": \"A\",\n      \"key\": \"k\"\n    }\n  ],\n  \"rows\": [\n    [\n      \"x\\ny\"\n"
                "    ]\n  ],\n  \"faults\": []\n}\n",
            report("\"A\"\n\"x\ny\"\n", {"--json"}).out);
  const Ended unclosed = report("\"A\"\n\"x\n", {"--json"});
  EXPECT_EQ("warning: " + path("a.csv") + ":2: a quote is never closed; it takes in the rest\n", unclosed.err);
  EXPECT_EQ(1, unclosed.code);
}

TEST_F(ReportVerb, ARerunSaysWhatItsReportsLack) {
  const auto opens = [](const std::string& mode, const std::string& name) {
    return "<task type='openCSVReport' version='3' name='" + name + "' file='@project_dir@/" + name +
           ".csv' overwrite='" + mode + "'/>";
  };
  list("begins.xml", opens("true", "masses") + kAddNorm + kSave);
  list("goes_on.xml", opens("false", "masses") + kAddNorm + kSave);
  part(L"A1");
  part(L"A2");
  for (const std::string name : {"begins", "goes_on"}) {
    EXPECT_THAT(run(name, {"--select", "A1*"}).err, testing::Not(testing::HasSubstr("begin anew"))) << name;
    const Ended rerun = run(name);
    EXPECT_THAT(recapOf(rerun), testing::ContainsRegex("models=2 .* skipped=1 ")) << name;
    const std::string line =
        "warning: 1 model is missing in reports that begin anew (masses.csv), as an earlier run of this list worked "
        "it\n";
    EXPECT_EQ(name == "begins", rerun.err.find(line) != std::string::npos) << rerun.err;
  }
}

}  // namespace
}  // namespace test
