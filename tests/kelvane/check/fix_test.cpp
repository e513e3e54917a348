// What `kelvane check --fix` mends in a package's folder, and what it leaves.
#include "kelvane/program_fixture.h"

namespace test {
namespace {

using testing::HasSubstr;

class Fix : public ProgramTest {
 protected:
  static constexpr const char* kName = "standards/actionlists/clean.xml";

  static std::string listOf(const std::string& body, const std::string& end = "\n") {
    return "<list>" + end + "<head/>" + end + "<body>" + end + body + end + "</body>" + end + "<filter/>" + end +
           "<foot/>" + end + "</list>" + end;
  }
  void write(const std::string& bytes) const {
    file("standards/system/index.kvane", "Package\nFor a test\n");
    file(kName, bytes);
  }
  [[nodiscard]] std::string bytes() const { return readBytes(path(kName)); }
  [[nodiscard]] Ended fix(const std::vector<std::string>& more = {}) const {
    std::vector<std::string> words = {"check", path("standards"), "--fix"};
    words.insert(words.end(), more.begin(), more.end());
    return kelvane(words);
  }
};

constexpr const char* kParameter = R"(<task type="editModelParameter" version="3" forPRT="true" searchin="1" )";
constexpr const char* kLog = R"(<task type="writeToCreoLog" version="3" forPRT="true" )";

TEST_F(Fix, WhatIsSureIsMended) {
  const std::string parameter = kParameter, log = kLog;
  const std::string filtered = log + R"(message="x" forEF="true"><filter><f type="filename" )";
  const std::vector<std::pair<std::string, std::string>> cases = {
      {parameter + R"(name="A" totype="0" valeu="1"/>)", parameter + R"(name="A" totype="0" value="1"/>)"},
      {R"(<task type="addModelParameter" version="3" forPRT="true" nmae_7="A" type_7="Strnig"/>)",
       R"(<task type="addModelParameter" version="3" forPRT="true" name_7="A" type_7="String"/>)"},
      {R"(<task type="saveModel" vesrion="3" forPRT="True" forASM="FALSE"/>)",
       R"(<task type="saveModel" version="3" forPRT="true" forASM="false"/>)"},
      {R"(<task type="saveModel" version="3" forPRT="True"/><task type="saveModel" version="3" forASM="True"/>)",
       R"(<task type="saveModel" version="3" forPRT="true"/><task type="saveModel" version="3" forASM="true"/>)"},
      {R"(<task type="saveModel" version=  "3" forPRT= 'True'/>)",
       R"(<task type="saveModel" version="3" forPRT="true"/>)"},
      {R"(<task type="saveModel" version="3" forPRT="true" / >)",
       R"(<task type="saveModel" version="3" forPRT="true" />)"},
      {log + R"(message='say "nuts & bolts" &amp; go'/>)",
       log + R"(message="say &quot;nuts &amp; bolts&quot; &amp; go"/>)"},
      {filtered + R"(filtertype="True" filenmae="A*"/></filter></task>)",
       filtered + R"(filtertype="true" filename="A*"/></filter></task>)"},
  };
  for (const auto& [before, after] : cases) {
    write(listOf(before));
    const Ended ended = fix();
    EXPECT_EQ(listOf(after), bytes());
    EXPECT_EQ(
        "--- a/actionlists/clean.xml\n+++ b/actionlists/clean.xml\n@@ -1,7 +1,7 @@\n <list>\n <head/>\n <body>\n-" +
            before + "\n+" + after + "\n </body>\n <filter/>\n <foot/>\n",
        ended.out);
    EXPECT_EQ("nothing is left\n", ended.err) << before;
    EXPECT_EQ(0, ended.code) << before;
  }
}

TEST_F(Fix, WhatIsOnlyLikelyIsOffered) {
  const std::string parameter = kParameter, log = kLog;
  const std::vector<std::pair<std::string, std::string>> cases = {
      {R"(<task type="savModel" version="3" forPRT="true"/>)", "; did you mean 'saveModel'?\n"},
      // Two things are missing, two names are for one, two are as near; one is a number.
      {parameter + R"(nmae="A" totype="0" valeu="1"/>)", "; did you mean 'value'?\n"},
      {parameter + R"(name="A" totype="0" valeu="1" vlaue="2"/>)", "; did you mean 'value'?\n"},
      {R"(<task type="renameLayer" version="3" forPRT="true" name_0="A" namet_0="B"/>)", "'name_0'; did you mean"},
      {R"(<task type="editModelParameter" version="3" forPRT="true" searchin="3" name="A" totype="0" value="1"/>)",
       "'searchin': none of 1, 2: '3'"},
      // Nothing lacks it, and an author's program may have put it there.
      {log + R"(message="x" mesage="y"/>)", "; did you mean 'message'?\n"},
      {log + "message='x deak=\"false\"/>\n<task type='y'/>", "single quotes"},
      {log + "message=\n\"x\"/>", "a blank behind '='"},
  };
  for (const auto& [body, told] : cases) {
    write(listOf(body));
    const Ended ended = fix();
    EXPECT_EQ(listOf(body), bytes());
    EXPECT_EQ("", ended.out) << body;
    EXPECT_THAT(ended.err, HasSubstr(told));
  }
}

// It isn't read as long as its quotes are single ones; then it would be, and is wrong.
TEST_F(Fix, MendThatWouldLeaveNewFindingsIsntMade) {
  const std::string wrong = std::string(kLog) + "message='@mdlm@'/>";
  write(listOf(wrong + "\n" + kLog + "message='@mdln@'/>"));
  const Ended ended = fix();
  EXPECT_EQ(listOf(wrong + "\n" + kLog + "message=\"@mdln@\"/>"), bytes());
  EXPECT_THAT(ended.err,
              HasSubstr("actionlists/clean.xml:4: the attribute 'message' stands in single quotes: neither it "
                        "nor the one behind it is read; not mended, as then this would be found: 'message': "
                        "unknown token '@mdlm@'; did you mean '@mdln@'?\n"));
  EXPECT_EQ(1, ended.code);
}

TEST_F(Fix, AllOtherBytesStay) {
  const std::string body = std::string(kLog) + "\tmessage=\"gr\xFC\xDF &";
  write(listOf(body + " x\"/>", "\r\n"));
  EXPECT_THAT(fix().out, HasSubstr("\n+" + std::string(kLog) + "\tmessage=\"gr\xC3\xBC\xC3\x9F &amp; x\"/>\n"));
  EXPECT_EQ(listOf(body + "amp; x\"/>", "\r\n"), bytes());

  const std::string mark = "\xEF\xBB\xBF";
  write(mark + listOf(std::string(kLog) + "message=\"\xC3\xBC &\"/>"));
  (void)fix();
  EXPECT_EQ(mark + listOf(std::string(kLog) + "message=\"\xC3\xBC &amp;\"/>"), bytes());
  EXPECT_EQ(std::vector<std::string>{"clean.xml"}, filesIn("standards/actionlists"));
}

TEST_F(Fix, DryRunShowsTheSameAndWritesNothing) {
  const std::string before = listOf(R"(<task type="saveModel" version="3" forPRT="True"/>)");
  write(before);
  const Ended dry = fix({"-n"});
  EXPECT_EQ(before, bytes());
  EXPECT_EQ("", fix({"-n", "--ignore", "switch-letters"}).out);
  const Ended real = fix();
  EXPECT_THAT(dry.out, HasSubstr("-<task type=\"saveModel\" version=\"3\" forPRT=\"True\"/>\n+<task"));
  EXPECT_EQ(std::tie(real.out, real.err, real.code), std::tie(dry.out, dry.err, dry.code));
}

TEST_F(Fix, WhatItCantDoIsRefused) {
  write(listOf(""));
  kelvane({"pack", path("standards"), path("packed.kvz")});
  const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
      {{"check", path("packed.kvz"), "--fix"},
       "--fix mends the folder of a package, and " + path("packed.kvz") + " is a file; unpack it first"},
      {{"check", path("standards"), "-n"}, "--dry-run goes with --fix; without it check writes nothing anyway"},
      {{"check", path("standards"), "--fix", "--json"},
       "--fix shows changed lines and --json findings; give one of them"},
  };
  for (const auto& [words, line] : cases) {
    const Ended ended = kelvane(words);
    EXPECT_EQ(2, ended.code);
    EXPECT_EQ("kelvane: " + line + "\n", ended.err);
  }
}

}  // namespace
}  // namespace test
