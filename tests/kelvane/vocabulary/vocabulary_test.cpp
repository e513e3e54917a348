// The verbs that tell the words of lists and filters.
#include <nlohmann/json.hpp>

#include "actions/dispatch.h"
#include "documents/predicate_table.h"
#include "kelvane/program_fixture.h"
#include "kelvane/vocabulary/rules.h"
#include "plugin/action_table.h"

namespace test {
namespace {

// The rows are read without a plug-in.
[[maybe_unused]] const bool kRowsAreThere = (plugin::handDownActions(), true);

using nlohmann::json;
using testing::HasSubstr;

class Vocabulary : public ProgramTest {};

TEST_F(Vocabulary, EachKeyHasALineAndARow) {
  const struct {
    const char* verb;
    std::size_t count;
  } tables[] = {{"actions", actions::actionTable().size()}, {"predicates", documents::predicateTable().size()}};
  for (const auto& table : tables) {
    const std::string lines = kelvane({table.verb}).out;
    EXPECT_EQ(table.count, static_cast<std::size_t>(std::count(lines.begin(), lines.end(), '\n')));
    const json all = json::parse(kelvane({table.verb, "--json"}).out);
    EXPECT_EQ(table.count, all.size());
    for (const json& entry : all) {
      EXPECT_NE("", entry.at("about").get<std::string>()) << entry.at("key");
      for (const json& attribute : entry.value("attributes", json::array())) {
        EXPECT_NE("", attribute.at("about").get<std::string>()) << entry.at("key") << attribute;
        EXPECT_NE("", attribute.at("value").get<std::string>()) << entry.at("key") << attribute;
      }
    }
  }
}

TEST_F(Vocabulary, RowIsToldInWords) {
  struct Case {
    std::vector<std::string> words;
    std::vector<std::string> told;
  };
  const std::vector<Case> cases = {
      {{"actions", "addModelParameter"},
       {"addModelParameter\n  creates parameters in the model",
        "the model is no instance of a family table, or forInstances isn't false; else a line in the log",
        "name_0 ... as count says", "needed", "text, with variables", "one of String, Integer, Double, Boolean",
        "true or false; only true counts", "forEF=\"false\" count=\"1\" name_0=\"NAME\" type_0=\"String\"/>\n"}},
      {{"actions", "groupActions"}, {"subtasks: the tasks of the group", "<subtasks><task "}},
      {{"actions", "openXLSReport"}, {"removed"}},
      {{"actions", "setAccuracy"}, {"valtype=\"abs\" value=\"1\""}},
      {{"actions", "setDTL"},
       {"with variables; @project_dir@ is the package's folder models", "\"@project_dir@/name.txt\""}},
      {{"actions", "openCSVReport"}, {"file=\"@project_dir@/name.csv\""}},
      {{"actions", "changeAllDesignationFlags"}, {"false: instances are left alone\n"}},
      {{"predicates", "parameter"},
       {"applies to  all models", "pattern, with * and ?", "one of 1, 2, 3, 4, 5",
        "<item type=\"parameter\" filtertype=\"true\" opand=\"true\" param=\"NAME*\" value=\"NAME*\"/>\n"}},
      {{"help", "isInstance"}, {"isInstance\n  it is an instance of a family table"}},
      {{"help", "attribute-unknown"}, {"a finding of kelvane check, warning\n", "valeu=\"1\""}},
  };
  for (const Case& c : cases) {
    const Ended ended = kelvane(c.words);
    EXPECT_EQ(0, ended.code) << ended.err;
    for (const std::string& piece : c.told) EXPECT_THAT(ended.out, HasSubstr(piece));
  }
  EXPECT_EQ(kelvane({"run", "-h"}).out, kelvane({"help", "run"}).out);
  EXPECT_EQ(kelvane({"run", "-h"}).out, kelvane({"help", "run", "--json"}).out);
  EXPECT_EQ("saveModel", json::parse(kelvane({"help", "saveModel", "--json"}).out)["action"]["key"]);
  EXPECT_EQ("warning", json::parse(kelvane({"explain", "attribute-unknown", "--json"}).out)["severity"]);
  EXPECT_EQ(kelvane::rules().size(), json::parse(kelvane({"explain", "--json"}).out).size());
}

TEST_F(Vocabulary, UnknownWordNamesTheNearest) {
  const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
      {{"actions", "saveModl"}, "there is no action 'saveModl'; did you mean 'saveModel'?"},
      {{"predicates", "isInstanze"}, "there is no filter 'isInstanze'; did you mean 'isInstance'?"},
      {{"help", "attribute-unknwon"},
       "'attribute-unknwon' is no action, filter, rule or verb; did you mean 'attribute-unknown'?"},
  };
  for (const auto& [words, line] : cases) {
    const Ended ended = kelvane(words);
    EXPECT_EQ(2, ended.code);
    EXPECT_EQ("kelvane: " + line + "\n", ended.err);
  }
}

}  // namespace
}  // namespace test
