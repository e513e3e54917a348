// Looking closely: what a text or a filter gives on a model, and why a model is or isn't worked.
#include "kelvane/program_fixture.h"

namespace test {
namespace {

class Eval : public ProgramTest {
 protected:
  void SetUp() override { part(L"SHAFT").with(L"MATERIAL", L"42CrMo4").with(L"MASS", 2.5).with(L"BAD", L"%NONE%"); }
  Ended eval(std::vector<std::string> more) {
    more.insert(more.begin(), {"eval", models(), "shaft.prt"});
    return kelvane(more);
  }
};

TEST_F(Eval, ATextGivesItsValueOrItsErrors) {
  struct Case {
    std::vector<std::string> words;
    int code;
    std::string out, err;
  };
  const std::vector<Case> cases = {
      {{"@mdln@.@mdltype@ of %MATERIAL%, %MASS%"}, 0, "SHAFT.prt of 42CrMo4, 2.500000\n", ""},
      {{""}, 0, "\n", ""},
      {{"%NONE%"}, 1, "", "error: Can't find parameter: NONE\n"},
      {{"$$repl$/[/$x$a[b$$"},
       0,
       "a[b\n",
       "warning: the expression '/[/' doesn't compile (missing terminating ] for character class), so that it matches "
       "nothing\n"},
      {{"$$repl$/(*LIMIT_MATCH=5)(?:.?){9}[#~]/$x$SHAFT.PRT$$"},
       1,
       "SHAFT.PRT\n",
       "error: The pattern '/(*LIMIT_MATCH=5)(?:.?){9}[#~]/' was given up on the text 'SHAFT.PRT': it takes too many "
       "steps\n"},
      {{"a - %BAD% - b"}, 1, "", "error: Can't find parameter: NONE\n"},
      {{"%user:x%", "--user", "X=7=8"}, 0, "7=8\n", ""},
      {{"%user:x%"},
       1,
       "",
       "error: The user variable isn't declared with a 'set user variable' action from the environment group.\n"},
      {{"@pro_material_dir@", "--creo-option", "pro_material_dir=k:\\mat"}, 0, "k:\\mat\\\n", ""},
      {{"%MATRIAL% @mdlm@"},
       1,
       "",
       "error: Can't find parameter: MATRIAL\n"
       "warning: unknown token '@mdlm@'; did you mean '@mdln@'?\n"
       "warning: there is no parameter 'MATRIAL'; did you mean 'MATERIAL'?\n"},
      {{"%user:colr%", "--user", "COLOR=red"},
       1,
       "",
       "error: The user variable isn't declared with a 'set user variable' action from the environment group.\n"
       "warning: there is no user variable 'colr'; did you mean 'COLOR'?\n"},
      {{"a", "--set", "kvd_log_levl=8"},
       2,
       "",
       "kelvane: --set: there is no key 'kvd_log_levl'; did you mean 'kvd_log_level'?\n"},
      {{std::string(260, 'x')}, 1, "", "error: The replaced output is to large for this task\n"},
      {{}, 2, "", "kelvane: eval: one text is needed, or --filter\n"},
      {{"a", "b"}, 2, "", "kelvane: eval: The following argument was not expected: b ('kelvane eval -h' tells more)\n"},
      {{"a", "--filter", "b"}, 2, "", "kelvane: eval: a text and --filter don't go together\n"},
      {{"a", "--user", "=1"}, 2, "", "kelvane: --user: '=1' is no NAME=VALUE\n"},
      {{"--filter", "nowhere/x.xml"}, 2, "", "kelvane: there is no filter nowhere/x.xml\n"},
  };
  for (const Case& entry : cases) {
    const Ended ended = eval(entry.words);
    EXPECT_EQ(entry.out, ended.out);
    EXPECT_EQ(entry.err, ended.err);
    EXPECT_EQ(entry.code, ended.code) << entry.out << entry.err;
  }
}

TEST_F(Eval, AFilterTellsItemByItemHowItDecides) {
  struct Case {
    std::string items;
    int code;
    std::string out;
  };
  const std::string steel = R"(<i type="parameter" filtertype="true" opand="true" param="MATERIAL" value="/^42/"/>)";
  const std::string heavy = R"(<i type="parameter" filtertype="true" opand="%" param="MASS" value="3" ncomp="5"/>)";
  const std::string bolts = R"(<i type="filename" filtertype="false" opand="true" filename="BOLT*"/>)";
  const std::string steelTold =
      "parameter param=\"MATERIAL\" value=\"/^42/\"\n    \"MATERIAL\" against \"MATERIAL\": match\n"
      "    \"/^42/\" against \"42CrMo4\": match\n    true: the item holds\n";
  const std::string heavyTold =
      "    \"MASS\" against \"MATERIAL\": no match\n    \"MASS\" against \"MASS\": match\n"
      "    \"> 3\" against \"2.500000\": no match\n"
      "    \"MASS\" against \"BAD\": no match\n    false: the item fails\n";
  const std::string boltsTold =
      "not filename filename=\"BOLT*\"\n    \"BOLT*\" against \"SHAFT.PRT\": no match\n"
      "    false, negated: the item holds\n";
  const std::string heavyAsked = "parameter param=\"MASS\" value=\"3\" ncomp=\"5\"\n";
  const std::vector<Case> cases = {
      {steel + bolts, 0, "1  " + steelTold + "AND\n2  " + boltsTold + "holds: items 1 and 2 hold\n"},
      {heavy + bolts, 0, "1  " + heavyAsked + heavyTold + "OR\n2  " + boltsTold + "holds: item 2 holds\n"},
      {bolts + heavy, 1, "1  " + boltsTold + "AND\n2  " + heavyAsked + heavyTold + "refuses: item 2 fails\n"},
      {R"(<i type="hammer" filtertype="true" opand="false"/>)" + steel, 0,
       "1  hammer\n    error: Filter not found: hammer\n    no such filter, which counts as true: the item holds\n"
       "OR  (it holds already: what follows in this group isn't asked)\nholds: item 1 holds\n"},
      {R"(<i type="filename" filtertype="false" filename="/[/"/>)", 0,
       "1  not filename filename=\"/[/\"\n    \"/[/\" against \"SHAFT.PRT\": no match\n"
       "    the expression '/[/' doesn't compile (missing terminating ] for character class), so that it matches "
       "nothing\n"
       "    false, negated: the item holds\nholds: item 1 holds\n"},
      {R"(<i type="filename" filtertype="false" filename="/(*LIMIT_MATCH=5)(?:.?){9}[#~]/"/>)", 1,
       "1  not filename filename=\"/(*LIMIT_MATCH=5)(?:.?){9}[#~]/\"\n"
       "    \"/(*LIMIT_MATCH=5)(?:.?){9}[#~]/\" against \"SHAFT.PRT\": given up, it takes too many steps\n"
       "    error: The pattern '/(*LIMIT_MATCH=5)(?:.?){9}[#~]/' was given up on the text 'SHAFT.PRT': it takes too "
       "many "
       "steps\n    a comparison was given up: the item fails\nrefuses: item 1 fails\n"},
      {R"(<i type="creoVersion" filtertype="true" creo8="true"/>)", 0,
       "1  creoVersion creo8=\"true\"\n    true: the item holds\nholds: item 1 holds\n"},
      {"", 0, "holds: it has no items\n"},
  };
  for (const Case& entry : cases) {
    file("standards/filters/x.xml", "<root>" + entry.items + "</root>");
    for (const char* name : {"standards/filters/x.xml", "standards/x", "standards/filters/x"}) {
      const Ended ended = eval({"--filter", path(name)});
      EXPECT_EQ(entry.out, ended.out);
      EXPECT_EQ(entry.code, ended.code);
    }
  }
}

TEST_F(Eval, NumbersAreShownWithTheSignTheyMustHave) {
  const auto reported = [this](const std::string& model, const std::string& item) {
    file("standards/filters/x.xml", "<root><i filtertype=\"true\" opand=\"true\" " + item + "/></root>");
    return kelvane({"eval", example("workspace"), model, "--filter", path("standards/x")}).out;
  };
  EXPECT_EQ(
      "1  accuracy valtype=\"rel\" eq=\"0\" value=\"0.002\"\n    \"< 0.002\" against \"0.0012\": match\n"
      "    true: the item holds\nholds: item 1 holds\n",
      reported("GASKET.PRT", R"(type="accuracy" valtype="rel" eq="0" value="0.002")"));
  EXPECT_EQ(
      "1  sheetsize he=\"297\" ws=\"420\"\n    \"= 297\" against \"297\": match\n"
      "    \"> 420\" against \"420\": no match\n    false: the item fails\nrefuses: item 1 fails\n",
      reported("GEAR.DRW", R"(type="sheetsize" he="297" ws="420")"));
}

class Why : public ProgramTest {
 protected:
  void SetUp() override { part(L"SHAFT").with(L"MATERIAL", L"steel"); }
  std::string why(const std::string& model, std::vector<std::string> more = {}, int code = 0) {
    more.insert(more.begin(), {"why", path("standards"), "clean", models(), model});
    const Ended ended = kelvane(more);
    EXPECT_EQ(code, ended.code) << ended.err;
    return ended.out.substr(ended.out.find('\n') + 1);
  }
};

TEST_F(Why, EachActionSaysItsFirstReason) {
  const std::string steel =
      "<filter><i type='parameter' filtertype='true' param='MATERIAL' value='iron'/></filter></task>";
  list("clean.xml",
       "<task type='saveModel' version='3' forPRT='true'/><task type='saveModel' version='3' deak='true'/>"
       "<task type='saveModel' version='2'/><task type='saveModel' version='3'/>"
       "<task type='saveModel' version='3' forPRT='false'/><task type='hammer'/><task type='isInstance'/>"
       "<task type='exportStep' version='4'/><task type='saveModel' version='3' forPRT='true' forEF='true'>" +
           steel +
           "<task type='groupActions' version='3'><subtasks><task type='saveModel' version='3' forPRT='true'/>"
           "</subtasks></task>"
           "<task type='groupActions' version='3' reworkMode='3'><subtasks><task type='saveModel'/></subtasks></task>"
           "<task type='groupActions' version='3' forASM='false'><subtasks><task type='saveModel'/></subtasks></task>"
           "<task type='writeListReport' version='3' sel='8'/>"
           "<task type='deleteLayer' version='3' forPRT='true' name_0='/(/'/>");
  EXPECT_EQ(
      "yes  table: a row, selected\n"
      "yes  B0 saveModel\n"
      "no   B1 saveModel: it is switched off\n"
      "no   B2 saveModel: its version is '2', this version carries out '3'\n"
      "no   B3 saveModel: forPRT is missing\n"
      "no   B4 saveModel: forPRT is 'false'\n"
      "no   B5 hammer: there is no such action\n"
      "no   B6 isInstance: it is a filter: its answer is dropped\n"
      "no   B7 exportStep: forPRT is missing\n"
      "no   B8 saveModel: its filter refuses: item 1 fails\n"
      "       1  parameter param=\"MATERIAL\" value=\"iron\"\n"
      "           \"MATERIAL\" against \"MATERIAL\": match\n"
      "           \"iron\" against \"steel\": no match\n"
      "           false: the item fails\n"
      "yes  B9 groupActions\n"
      "yes  B9 - G0 saveModel\n"
      "yes  B10 groupActions\n"
      "no   B10 - G0 saveModel: its group runs it on other models\n"
      "no   B11 groupActions: forPRT is missing\n"
      "no   B11 - G0 saveModel: its group doesn't run\n"
      "yes  B12 writeListReport\n"
      "yes  B13 deleteLayer\n"
      "       'name_0': an expression that doesn't compile (missing closing parenthesis): '/(/'\n",
      why("SHAFT.PRT"));
}

TEST_F(Why, TheTableSaysWhyAModelHasNoRow) {
  part(L"BOLT").with(L"L", 1.0).column(L"L").instance(L"BOLT_20", {"20.0"});
  part(L"FIXED").readOnly();
  list("clean.xml", "");
  file("standards/filters/none.xml", "<root><i type=\"isSkeleton\" filtertype=\"true\"/></root>");
  file("standards/filters/broken.xml", "<root " + std::string(400, 'x') + "/>");
  struct Case {
    std::string model;
    std::vector<std::string> more;
    std::string line;
  };
  const std::vector<Case> cases = {
      {"SHAFT.PRT", {"--set", "kvd_filter_prt=0"}, "no   table: no row: the button of its type is off\n"},
      {"bolt_20.prt", {}, "no   table: no row: it is an instance, and the button of instances is off\n"},
      {"FIXED.PRT", {}, "no   table: a row, selected, but passed over: the model can't be modified\n"},
      {"SHAFT.PRT",
       {"--filter", "none"},
       "no   table: no row: the filter file refuses it\n       1  isSkeleton\n           false: the item fails\n"},
      {"SHAFT.PRT", {"--set", "kvd_ext_filter_file=broken.xml"}, "no   table: no row: the filter file can't be read\n"},
  };
  for (const Case& entry : cases) EXPECT_EQ(entry.line, why(entry.model, entry.more, 1));
  const Ended ran = kelvane({"run", path("standards"), "clean", models(), "--save", "all"});
  EXPECT_EQ(0, ran.code) << ran.out << ran.err;
  EXPECT_EQ("no   table: a row, not selected: its history says that this list has worked it\n",
            why("SHAFT.PRT", {}, 1));
  const Ended missing = kelvane({"why", path("standards"), "clean", models(), "SHAF.PRT"});
  EXPECT_EQ("kelvane: there is no model SHAF.PRT; did you mean 'SHAFT.PRT'?\n", missing.err);
}

}  // namespace
}  // namespace test
