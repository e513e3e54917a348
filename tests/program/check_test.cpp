// What `kelvane check` finds in a package.
#include "program/program_fixture.h"

namespace test {
namespace {

class Check : public ProgramTest {
 protected:
  void SetUp() override {
    for (const char* folder : {"models", "reports", "checklist"}) {
      file(std::string("standards/") + folder + "/readme.txt", "x");
    }
  }
};

TEST_F(Check, ExamplePackageIsClean) {
  const Ended ended = kelvane({"check", example("packages/standards")});
  EXPECT_EQ("", ended.out);
  EXPECT_EQ(0, ended.code);
}

TEST_F(Check, EachFaultIsPlacedInItsLine) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"<task type='delModelParameter' version='3'/>",
       ":4: unknown action 'delModelParameter'; did you mean 'deleteModelParameter'?"},
      {"<task type='hammer' version='3'/>", ":4: unknown action 'hammer'"},
      {"\n<task version='3'/>", ":5: an action without 'type'"},
      {"<task type='writeToCreoLog' version='2'/>",
       ":4: action 'writeToCreoLog' has version '2'; this version carries out '3'"},
      {"<task type='saveModel' version='3' forPRT='false'/>",
       ":4: action 'saveModel' is for no model: forPRT, forASM and forDRW are all missing or 'false'"},
      {"<task type='exportStep' version='4' forPRT='true'/>",
       ":4: action 'exportStep' isn't carried out by this version"},
      {"<task type='getRegExpCheck' version='3'/>", ":4: action 'getRegExpCheck' does nothing"},
      {"<task type='openXLSReport' version='3'/>",
       ":4: action 'openXLSReport' was removed; 'openCSVReport' takes its place"},
      {"<task type='saveModel' version='3' forPRT='true' forEF='true'><filter>\n<f type='isInstanze'/></filter></task>",
       ":5: unknown filter 'isInstanze'; did you mean 'isInstance'?"},
      {"<task type='saveModel' version='3' forPRT='true' forEF='true'><root><f/></root></task>",
       ":4: a filter item without 'type'"},
      {"<task type='groupActions' version='3'><subtasks>\n<task type='savModel' version='3'/></subtasks></task>",
       ":5: unknown action 'savModel'; did you mean 'saveModel'?"},
      {"<task type='groupActions' version='3'/>", ":4: a group without 'subtasks'"},
      // Nothing is said about what its author switched off, nor about a filter in an action's place.
      {"<task type='hammer' deak='true'/>", ""},
      {"<task type='isInstance'/>", ""},
  };
  for (const auto& [body, line] : cases) {
    list("clean.xml", body);
    const Ended ended = kelvane({"check", path("standards")});
    EXPECT_EQ(line.empty() ? "" : "actionlists/clean.xml" + line + "\n", ended.out) << body;
    EXPECT_EQ(line.empty() ? 0 : 1, ended.code) << body;
  }
}

TEST_F(Check, MembersAndFilterFilesAreChecked) {
  list("empty.xml", "");
  file("standards/actionlists/empty.xml", "");
  file("standards/filters/parts.xml", "<parts>\n<root/></parts>");
  std::filesystem::remove(path("standards/reports/readme.txt"));
  std::filesystem::remove(path("standards/system/index.kvane"));
  EXPECT_EQ(
      "actionlists/empty.xml: it holds no element\n"
      "filters/parts.xml:1: element 'parts' is never read; a filter's element is 'root' or 'filter'\n"
      "reports/readme.txt: it is missing; 'kelvane pack' adds it\n"
      "system/index.kvane: it is missing; it holds the description\n",
      kelvane({"check", path("standards")}).out);
}

}  // namespace
}  // namespace test
