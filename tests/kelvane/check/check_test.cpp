// What `kelvane check` finds in a package.
#include <nlohmann/json.hpp>

#include "kelvane/check/finding.h"
#include "kelvane/program_fixture.h"

namespace test {
namespace {

class Check : public ProgramTest {
 protected:
  void SetUp() override {
    for (const char* folder : {"models", "reports", "checklist"}) {
      file(std::string("standards/") + folder + "/readme.txt", "x");
    }
  }
  // Of a package whose actions have only the attributes that a case is about.
  [[nodiscard]] Ended looked() const {
    return kelvane({"check", path("standards"), "--ignore", "attribute-missing", "--ignore", "user-variable-unset"});
  }
  // The rules that find something, in the order of the lines: "attribute-unknown attribute-missing".
  [[nodiscard]] std::string rulesFound(const std::vector<std::string>& more = {}) const {
    std::vector<std::string> words = {"check", path("standards"), "--json"};
    words.insert(words.end(), more.begin(), more.end());
    std::string found;
    const auto findings = nlohmann::json::parse(kelvane(words).out);
    for (const auto& finding : findings) found += (found.empty() ? "" : " ") + finding["rule"].get<std::string>();
    return found;
  }
};

TEST_F(Check, ExamplePackageIsClean) {
  const Ended ended = kelvane({"check", example("packages/standards")});
  EXPECT_EQ("actionlists/raw_stock.xml:24: B1: it asks the address '%user:PRICES%/%MATERIAL%.txt'\n", ended.out);
  EXPECT_EQ(0, ended.code);
}

// What Windows takes for a device, a stream or another name, and what a terminal would show otherwise than it is.
TEST_F(Check, NamesThatAreNoneElsewhereAreTold) {
  const std::string longName = "models/" + std::string(160, 'x');
  std::map<std::string, std::string> members = {{"system/index.kvane", "<x/>"}, {"actionlists/a.xml", "<"}};
  for (const std::string& name :
       {std::string("models/NUL.csv"), std::string("models/com1/a.prt"), std::string("models/com1/b.prt"),
        std::string("models/aux .b.txt"), std::string("models/a."), std::string("models/b /c"),
        std::string("models/q?"), std::string("models/com10.txt"), std::string("models/..b"),
        std::string("models/console"), std::string("models/gear\u202egpj.exe"), std::string("models/\u009b31m"),
        longName})
    members[name] = "";
  writeZip(path("names.kvz"), members);
  const Ended ended = kelvane({"check", path("names.kvz")});
  EXPECT_EQ(1, ended.code);
  const std::string windows = "Windows has no such file: ",
                    unseen = "its name holds what a terminal obeys or doesn't show";
  for (const std::string& line :
       {"models/NUL.csv: " + windows + "'NUL.csv' is a device", "models/com1/a.prt: " + windows + "'com1' is a device",
        "models/aux .b.txt: " + windows + "'aux .b.txt' is a device",
        "models/a.: " + windows + "'a.' ends in a dot or a blank, which is dropped",
        "models/b /c: " + windows + "'b ' ends in a dot or a blank, which is dropped",
        "models/q?: " + windows + "'q?' holds one of <>\"|?*", "models/gear\\u202egpj.exe: " + unseen,
        "models/\\x9b31m: " + unseen, longName + ": warning: its name has more than 160 characters"})
    EXPECT_THAT(ended.out, testing::HasSubstr(line + "\n"));
  for (const char* clean : {"models/com1/b.prt", "com10", "..b", "console", "\u202e", "\u009b"})
    EXPECT_THAT(ended.out, testing::Not(testing::HasSubstr(clean)));
}

TEST_F(Check, PathsOfTasksThatLeadToNoFileAreTold) {
  const std::pair<const char*, const char*> cases[] = {
      {"@project_dir@/nul.csv", "'nul.csv' is a device"},
      {"c:/parts/list.csv:hidden", "'list.csv:hidden' names a stream inside a file"},
      {"@project_dir@/%NAME%:x/COM2", "'COM2' is a device"},
      {"c:/parts /a.csv", "'parts ' ends in a dot or a blank, which is dropped"},
      {"c:/parts/../a.csv", nullptr},
      {"c:/%NUL%/@mdln@.csv", nullptr},
      {"c:/%b64:d:/nul%/com1/a.csv", "'com1' is a device"},
      {"c:/%b64:d:/nul%.csv", nullptr},
      {"c:/$$left$$a:/b:c$$.csv", nullptr},
      {R"(\\?\C:\parts\a.csv)", nullptr},
      {R"(\\?\C:\aux\a.csv)", "'aux' is a device"},
      {R"(\\.\C:\a.csv)", nullptr},
  };
  for (const auto& [value, fault] : cases) {
    list("paths.xml", "<task type='reportFeatureParameter' version='3' csvFileName='" + std::string(value) + "'/>");
    const std::string out = kelvane({"check", path("standards")}).out;
    EXPECT_EQ(fault != nullptr, out.find("Windows") != out.npos) << value << "\n" << out;
    if (fault) EXPECT_THAT(out, testing::HasSubstr(std::string("': Windows has no such file: ") + fault)) << value;
  }
}

TEST_F(Check, EachFaultIsPlacedInItsLine) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"<task type='delModelParameter' version='3'/>",
       ":4: B0: unknown action 'delModelParameter'; did you mean 'deleteModelParameter'?"},
      {"<task type='hammer' version='3'/>", ":4: B0: unknown action 'hammer'"},
      {"\n<task version='3'/>", ":5: B0: an action without 'type'"},
      {"<task type='writeToCreoLog' version='2'/>",
       ":4: B0: action 'writeToCreoLog' has version '2'; this version carries out '3'"},
      {"<task type='saveModel' version='3' forPRT='false'/>",
       ":4: B0: action 'saveModel' is for no model: forPRT, forASM and forDRW are all missing or 'false'"},
      {"<task type='setAccuracy' version='3' forPRT='false' forDRW='true' value='0.1'/>",
       ":4: B0: action 'setAccuracy' is for no model: of those that it works on, forPRT or forASM lets none through"},
      {"<task type='getRegExpCheck' version='3'/>", ":4: B0: action 'getRegExpCheck' does nothing"},
      {"<task type='openXLSReport' version='3'/>",
       ":4: B0: action 'openXLSReport' was removed; 'openCSVReport' takes its place"},
      {"<task type='saveModel' version='3' forPRT='true' forEF='true'><filter>\n<f type='isInstanze' "
       "filtertype='true'/></filter></task>",
       ":5: B0: unknown filter 'isInstanze'; did you mean 'isInstance'?"},
      {"<task type='saveModel' version='3' forPRT='true' forEF='true'><root><f/></root></task>",
       ":4: B0: a filter item without 'type'"},
      {"<task type='groupActions' version='3'><subtasks>\n<task type='savModel' version='3'/></subtasks></task>",
       ":5: B0 - G0: unknown action 'savModel'; did you mean 'saveModel'?"},
      {"<task type='groupActions' version='3'/>", ":4: B0: a group without 'subtasks'"},
      {"<task type='reportUniversal' version='4' forPRT='true'/>",
       ":4: B0: reportUniversal without 'reportFilter': its field stays empty"},
      {"<task type='reportUniversal' version='4' forPRT='true'><reportFilter forEF='true'><filter>\n"
       "<f type='isInstanze' filtertype='true'/></filter></reportFilter></task>",
       ":5: B0: unknown filter 'isInstanze'; did you mean 'isInstance'?"},
      {"<task type='writeListReport' version='3' sel='14'/>",
       ":4: B0: 'sel': none of 7, 8, 9, 10, 11, 15, 16, 17, 18: '14'"},
      {"<task type='writeListReport' version='3' sel='%LIST%'/>", ""},
      {"<task type='setUserVariableFromBoundingBox' version='3' forPRT='true' format='%d mm'/>",
       ":4: B0: 'format': not one of a single floating number: '%d mm'"},
      {"<task type='setUserVariableFromBoundingBox' version='3' forPRT='true' format='%.2f mm'/>", ""},
      {"<task tpye='saveModel' version='3'/>", ":4: B0: an action without 'type'; 'tpye' isn't it"},
      // Nothing is said about what its author switched off.
      {"<task type='hammer' deak='true'/>", ""},
  };
  for (const auto& [body, line] : cases) {
    list("clean.xml", body);
    const Ended ended = looked();
    EXPECT_EQ(line.empty() ? "" : "actionlists/clean.xml" + line + "\n", ended.out) << body;
    EXPECT_EQ(line.empty() ? 0 : 1, ended.code) << body;
  }
}

TEST_F(Check, TextsAndFiltersAreCheckedWithoutAModel) {
  const std::string task = "<task type='writeToCreoLog' version='3' forPRT='true' ";
  const auto message = [&](const std::string& text) { return task + "message='" + text + "'/>"; };
  const auto filtered = [&](const std::string& item) {
    return task + "forEF='true'><filter>\n<item filtertype='true' " + item + "/></filter></task>";
  };
  const std::string folder = "<task type='setWorkingDirectory' version='3' path='@project_dir@";
  const std::string group = "<task type='groupActions' version='3' ";
  const std::string drawing = group + "reworkMode='2' drwName='A' tmpPath='@project_dir@/forms' tmpName='";
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"<task type='editModelParameterFromFile' version='3' forPRT='true' path='@project_dir@/none.csv'/>",
       ":4: B0: 'path': the package has no file 'reports/none.csv'"},
      {"<task type='editModelParameterFromFile' version='3' forPRT='true' path='@project_dir@/%A%.csv'/>", ""},
      {"<task type='addMaterial' version='3' forPRT='true' material='@project_dir@/none'/>",
       ":4: B0: 'material': the package has no file 'materials/none'"},
      {"<task type='addNote' version='3' forDRW='true' notepath='@project_dir@/none.txt'/>",
       ":4: B0: 'notepath': the package has no file 'models/none.txt'"},
      {"<task type='addLayerFromTemplate' version='3' forPRT='true' view='@project_dir@/forms/A3.drw'/>", ""},
      {"<task type='addLayerFromTemplate' version='3' forPRT='true' view='@project_dir@/none.prt'/>",
       ":4: B0: 'view': the package has no file 'models/none.prt'"},
      {message("@mdlm@"), ":4: B0: 'message': unknown token '@mdlm@'; did you mean '@mdln@'?"},
      {message("mail ann@mill.com @ 5, @mdln@ @date@ %A@x% 50 % @workerdir:C@"), ""},
      {message("$$prex$3$abc$$"), ":4: B0: 'message': unknown text function '$$prex$'; did you mean 'pre'?"},
      {message("$$pre$3$abc$$def$ and $$$sub$1$2$x$$"), ""},
      {message("/^a$$b$/"), ""},
      {message("%A\nB%"),
       ":4: B0: 'message': a line break stands inside a name between two '%', behind 'A'; only a blank ends such a "
       "name"},
      {message("50 %\n and 20 %, %A%\n%B%"), ""},
      {folder + "/forms'/>", ""},
      {folder + "\\FORMS\\'/>", ""},
      {folder + "/@mdln@'/>", ""},
      {folder + "/nowhere'/>", ":4: B0: 'path': the package has no folder 'models/nowhere'"},
      {drawing + "A3'><subtasks/></task>", ""},
      {drawing + "%FORM%'><subtasks/></task>", ""},
      {drawing + "A4'><subtasks/></task>", ":4: B0: 'tmpName': the package has no 'models/forms/A4.drw'"},
      {group + "reworkMode='9'><subtasks/></task>", ":4: B0: 'reworkMode': none of 0, 1, 2, 3, 4, 5, 6, 7: '9'"},
      {"<task type='openCSVReport' version='3' name='Masses' file='@project_dir@/a.csv'/>"
       "<task type='reportModeldata' version='3' forPRT='true' reporter='masses' mass='true'/>",
       ":4: B1: 'reporter': no action up to this section opens a report 'masses'; did you mean 'Masses'?"},
      {group + "reworkMode='5' mdlname='@project_dir@/plate.stp'><subtasks/></task>",
       ":4: B0: 'mdlname': '@project_dir@' stays as it is in the name of another model; no file is found there"},
      {group + "reworkMode='5' mdlname='%DIR%/plate.stp'><subtasks/></task>", ""},
      {group + "reworkMode='7' mdlname='@project_dir@/plate.stp'><subtasks/></task>", ""},
      {task + "forEF='true'><filter>\n<f type='isInstance'/></filter></task>",
       ":5: B0: filter 'isInstance' has no 'filtertype': its item holds where the test fails"},
      {filtered("type='filename'"), ":5: B0: filter 'filename' has no 'filename'"},
      {filtered("type='filename' filename='/(/'"),
       ":5: B0: filter 'filename', 'filename': an expression that doesn't compile (missing closing parenthesis): "
       "'/(/'"},
      {"<task type='deleteLayer' version='3' forPRT='true' name_0='/(/' name_1='/%A%(/' name_2='//'/>",
       ":4: B0: 'name_0': an expression that doesn't compile (missing closing parenthesis): '/(/'"},
      {"<task type='deleteModelProProgramLines' version='3' forPRT='true' delline='/A/&amp;#10;/(/'/>",
       ":4: B0: 'delline': an expression that doesn't compile (missing closing parenthesis): '/(/'"},
      {"<task type='addModelRelationLines' version='3' forPRT='true' relationline0='/* ---- (masses ---- */'/>", ""},
      {"<task type='deleteModelRelationLines' version='3' forPRT='true' delline0='/* old */'/>",
       ":4: B0: 'delline0': an expression that doesn't compile (quantifier does not follow a repeatable item): '/* old "
       "*/'"},
      {message("$$repl$/a($!/$b$%A%$$"),
       ":4: B0: 'message': an expression that doesn't compile (missing closing parenthesis): '/a($/'"},
      {message("$$repl$/a$!/$b$%A%$$"), ""},
      {filtered("type='filename' filename='//'"),
       ":5: B0: filter 'filename', 'filename': an expression that holds nothing: '//'"},
      {filtered("type='parameter' param='A' value='/%B%(/'"), ""},
      {filtered("type='parameter' param='@mdl@' value='1' epsilon='1,5' ncomp=''"),
       ":5: B0: 'param': unknown token '@mdl@'; did you mean '@mdln@'?\n"
       "actionlists/clean.xml:5: B0: filter 'parameter', 'epsilon': no number: '1,5'"},
      {filtered("type='parameter' param='A' value='1' epsilon='-1.5e-3' ncomp='x'"),
       ":5: B0: filter 'parameter', 'ncomp': none of 1, 2, 3, 4, 5: 'x'"},
      {filtered("type='parameter' param='A' value='1' ncomp='6'"),
       ":5: B0: filter 'parameter', 'ncomp': none of 1, 2, 3, 4, 5: '6'"},
      {filtered("type='parameter' param='A' value='0,5' ncomp='2'"),
       ":5: B0: filter 'parameter', 'value': a number ends at its comma: '0,5'"},
      {filtered("type='parameter' param='A' value='0,5' ncomp='3'"), ""},
      {filtered("type='keFromType' version='4' feattypesel='true' feattype='247'"),
       ":5: B0: filter 'keFromType', 'feattype': no code of a feature type: '247'"},
      {filtered("type='keFromType' version='3' feattypesel='true' feattype='246'"),
       ":5: B0: filter 'keFromType', 'version': none of 4: '3'"},
      {filtered("type='sheetsize' hs='.5' he='' hb='1e2'"),
       ":5: B0: filter 'sheetsize', 'hs': no number such as '297' or '-1.5e2': '.5'"},
      {filtered("type='isInstance' opand='True'"), ":5: B0: 'opand': 'True' isn't 'true': only small letters count"},
      {"<task type='saveModel' version='3' forPRT='False' forASM='true' forEF='TRUE'/>",
       ":4: B0: 'forPRT': 'False' isn't 'false': only small letters count\n"
       "actionlists/clean.xml:4: B0: 'forEF': 'TRUE' isn't 'true': only small letters count"},
      {task + "forEF='true'><filtre><f type='isInstance' filtertype='true'/></filtre></task>",
       ":4: B0: the filter holds no items, so that every model passes it; items stand in an element 'root' or "
       "'filter'; 'filtre' in line 4 isn't it"},
      {group + "reworkMode='0'>\n<subtaks/></task>",
       ":4: B0: a group without 'subtasks'; 'subtaks' in line 5 isn't it"},
      {"<task type='saveModel' version='3' forPRT='true' deak='no'/>",
       ":4: B0: 'deak': neither 'true' nor 'false': 'no'; it switches the action off"},
      {"<task type='saveModel' version='3' forPRT='true' deak='False'/>",
       ":4: B0: 'deak': 'False' isn't 'false': only small letters count"},
      {"</body>\n<filter active='True'><f type='isInstance' filtertype='true'/></filter><foot/></list>",
       ":5: list filter: 'active': 'True' isn't 'true': only small letters count\n"
       "actionlists/clean.xml:5: list filter: the filter holds no items, so that every model passes it; items stand in "
       "an element 'root' or 'filter'"},
      {"</body>\n<filter active='true'><root/></filter><foot/></list>", ""},
      {"</body>\n<foot/></list>",
       ":1: a list has four sections, head, body, filter and foot; this one has fewer; not there: 'filter'\n"
       "actionlists/clean.xml:5: warning: 'foot' stands in another section's place and isn't read as what it is "
       "called: head, "
       "body and filter are "
       "the "
       "first three elements of a list, the foot is the fourth, or of five the fifth"},
      {"<task type='editSimpRep' version='4' forASM='true'><insideFilter forPRT='true' forEF='true'><filter>\n"
       "<f type='isInstanze' filtertype='true'/></filter></insideFilter></task>",
       ":5: B0: unknown filter 'isInstanze'; did you mean 'isInstance'?"},
      {"<task type='editModelParameterFromFile' version='3' forPRT='true' sep='com' path='@project_dir@/values.csv'/>",
       ":4: B0: 'reports/values.csv': 'model name': an expression that doesn't compile (missing terminating ] for "
       "character class): '/GEAR[/'"},
      {"<task type='addModelParameter' version='3' forPRT='true' name_0='A' type_0='String' unit_0='mm'/>",
       ":4: B0: 'unit_0': a String has no unit, so the parameter isn't created"},
      {"<task type='addModelParameter' version='3' forPRT='true' name_0='A' type_0='Integer' value_0='12,5'/>",
       ":4: B0: 'value_0': no whole number: '12,5'"},
      {"<task type='addModelParameter' version='3' forPRT='true' name_0='A' type_0='Boolean' value_0='yes'/>",
       ":4: B0: 'value_0': neither 'true' nor 'false', so that it is false: 'yes'"},
      {"<task type='editModelNotesFromFile' version='3' forDRW='true' path='@project_dir@/Notes.csv'/>",
       ":4: B0: 'reports/Notes.csv': A quote is never closed: the record of line 2 takes in the rest of the file and "
       "isn't used"},
  };
  file("standards/reports/values.csv", "parameter name,model name,value\nA,/GEAR[/,1\nA,/GEAR/,1\n/[/,GEAR,/[/\n");
  file("standards/reports/notes.csv", "ID;Item value\n3;\"open\n");
  file("standards/models/forms/a3.drw.7", "{}");
  for (const auto& [body, line] : cases) {
    list("clean.xml", body);
    const Ended ended = looked();
    EXPECT_EQ(line.empty() ? "" : "actionlists/clean.xml" + line + "\n", ended.out) << body;
  }
}

// What a package uses outside it is told, and is no fault.
TEST_F(Check, ProgramsAddressesAndOutsidePathsAreListed) {
  const std::string action = "<task version='3' forPRT='true' forDRW='true' type='";
  const std::vector<std::pair<std::string, std::string>> cases = {
      {action + "runMSDOScommand' cmd='c:\\tools\\mail.exe' args='-s @mdln@'/>",
       "it starts the program 'c:\\tools\\mail.exe -s @mdln@'"},
      {action + "runMSDOScommand' cmd='@project_dir@/a.cmd' args=''/>", "it starts the program '@project_dir@/a.cmd'"},
      {action + "setWorkingDirectory' path='%FOLDER%'/>", "'path' leaves the package: '%FOLDER%'"},
      {action + "openCSVReport' name='a' file='k:/audit.csv'/>", "'file' leaves the package: 'k:/audit.csv'"},
      {action + "openCSVReport' name='a' file='@project_dir@/../audit.csv'/>",
       "'file' leaves the package: '@project_dir@/../audit.csv'"},
      {action + "openCSVReport' name='a' file='@project_dir@/a..b.csv'/>", ""},
      {action + "addSymbol' sympath='@pro_symbol_dir@'/>", "'sympath' leaves the package: '@pro_symbol_dir@'"},
      {action + "setDTL' view='\\\\server\\iso.dtl'/>", "'view' leaves the package: '\\\\server\\iso.dtl'"},
      {action + "setEnvironmentVariable' name='A' value='d:\\x'/>", "'value' leaves the package: 'd:\\x'"},
      {action + "setEnvironmentVariable' name='A' value='d: x'/>", ""},
      {action + "editModelParameter' totype='2' value='%user:L% of 5 %'/>", ""},
      {action + "editModelParameter' totype='0' value='%LEN%'/>", ""},
      {action + "editMaterialParameter' totype='2' value='%curmat:RHO%'/>",
       "'value': of a parameter with units %curmat:RHO% is the number in these units; what is written counts in the "
       "model's"},
      {action + "addKEParameter' feat='3' name_1='A' type_1='Double' unit_1='mm' unit_2=''/>",
       "'unit_1': a parameter with a unit is created in the model, not in the feature"},
      {action + "addModelParameter' name_1='A' type_1='Double' unit_1='mm'/>", ""},
      {action + "setQRCode' valuec='2' value0='P-1' value1='%TEXT%'/>",
       "'value1' may have letters beyond ASCII, which readers guess; eci=\"true\" tells them"},
      {action + "createPDF417Barcode' eci='false' valuec='1' value0='\xc2\xb1 0,1'/>",
       "'value0' has letters beyond ASCII, which readers guess; eci=\"true\" tells them"},
      {action + "createQRdotmatrix' eci='true' valuec='1' value0='%TEXT%'/>", ""},
      {action + "setQRCode' valuec='1' value0='P-1' value1='%TEXT%'/>",
       "warning: 'valuec' is '1', so that 'value1' isn't read"},
      {action + "saveConfigOptions' savename='s'><o name_0='search_path'/></task>",
       "each model saves the options once more, and 'setConfigOption' puts all of that back; in the head they are "
       "saved "
       "once"},
      {action +
           "saveModel' forEF='true'><filter><f type='filename' filtertype='true' filename='d:\\x*'/></filter></task>",
       "'filename' leaves the package: 'd:\\x*'"},
  };
  for (const auto& [body, line] : cases) {
    list("clean.xml", body);
    const Ended ended = looked();
    EXPECT_EQ(line.empty() ? "" : "actionlists/clean.xml:4: B0: " + line + "\n", ended.out) << body;
    EXPECT_EQ(0, ended.code) << body;
  }
  list("clean.xml", action + "setUserVariableFromUrl' value='https://example.com/@mdln@'/>");
  EXPECT_THAT(looked().out, testing::HasSubstr(":4: B0: it asks the address 'https://example.com/@mdln@'\n"));
  list("clean.xml", action + "runTrailfile' tf='@project_dir@/none.txt'/>");
  EXPECT_EQ("actionlists/clean.xml:4: B0: 'tf': the package has no file 'models/none.txt'\n", looked().out);
  list("clean.xml", action + "runMSDOScommand' cmd='mail'/>");
  EXPECT_THAT(kelvane({"check", path("standards"), "--json"}).out, testing::HasSubstr("\"use\": \"program\""));
}

TEST_F(Check, AFindingTellsItsPlaceInJsonToo) {
  const std::string inner = "<task type='savModel' version='3'/>";
  list("clean.xml", "<task type='hammer' deak='true'/>\n<task type='groupActions' version='3'><subtasks>\n" + inner +
                        "</subtasks></task>");
  EXPECT_EQ(R"([
  {
    "file": "actionlists/clean.xml",
    "line": 6,
    "rule": "action-unknown",
    "severity": "error",
    "text": "unknown action 'savModel'; did you mean 'saveModel'?",
    "section": "body",
    "action": 1,
    "place": "B1 - G0"
  }
]
)",
            kelvane({"check", path("standards"), "--json"}).out);
}

// Slips that a run would pass over in silence.
TEST_F(Check, AttributesAreHeldAgainstTheRows) {
  const auto task = [](const std::string& type, const std::string& rest) {
    return "<task version='3' forPRT='true' forEF='false' type='" + type + "' " + rest + "/>";
  };
  const auto item = [](const std::string& rest) {
    return "<task version='3' forPRT='true' forEF='true' type='saveModel'><filter><f " + rest + "/></filter></task>";
  };
  const std::string edit = "searchin='1' name='A' totype='0' ";
  const std::pair<std::string, std::string> cases[] = {
      {task("editModelParameter", edit + "value='1'"), ""},
      {task("editModelParameter", edit + "valeu='1'"), "attribute-unknown attribute-missing"},
      {task("deleteModelParameter", "searchin='1' nmae_0='A'"), "attribute-unknown attribute-missing"},
      {task("deleteModelParameter", "searchin='1' name_0='A' name_100='B'"), "attribute-number"},
      {task("addModelParameter", "name_0='A' type_0='Strnig'"), "word-unknown"},
      {task("addModelParameter", "count='1' name_0='A' type_0='String' name_1='B' type_1='String'"),
       "count-below-list"},
      {task("addModelParameter", "name_0='A' type_0='String' value_3='B'"), "attribute-missing attribute-missing"},
      {task("addModelParameter", "count='1' name_0='A' type_0='String' value_3='B'"), "count-below-list"},
      {task("addEditViews", "name_0='A' orient_0='top' orient_1='top'"), "attribute-missing"},
      {task("addModelRelationLines", "relationline0='A = 1'"), "attribute-missing"},
      {task("addModelRelationLines", "relationlinec='' relationline0='A = 1'"), "count-below-list"},
      {task("deleteModelParameter", "searchin='1' name_0='A' name_07='B'"), "attribute-number"},
      {task("deleteModelProProgramInputLines", "name_0='A' name_2='B'"), "attribute-number"},
      {task("addEditViews", "name_0='A' orient_0='above'"), "word-unknown"},
      {task("setTolerance", "tol='9'"), "word-unknown"},
      {task("setAccuracy", "valtype='rel' value='0,01'"), "number-broken"},
      {task("copyModel", "name='LOWER PLATE'"), "model-name"},
      {task("renameModel", "name='" + std::string(31, 'P') + "'") +
           task("renameModel", "name='" + std::string(32, 'P') + "'"),
       "model-name"},
      {task("copyModel", "name='%NUMBER% - copy'"), ""},
      {"<task version='3' forASM='true' type='rescaleASMPosition' left='2'/>", "attribute-missing"},
      {task("deleteLayer", "name_0='A' delallempty='%ALL%'"), "word-unknown"},
      {task("addKEParameter", "feat='1' feattype='900' name_0='A' type_0='String'"), "number-broken"},
      {task("renameLayer", "namef_0='/(/' namet_0='A'"), "pattern-broken"},
      {task("renameLayer", "namef_0='%A%(' namet_0='A'"), ""},
      {task("reportModeldata", "reporter='masses' mass='true'"), "reporter-unknown"},
      {task("openCSVReport", "name='masses' file='@project_dir@/a.csv'") +
           task("reportModeldata", "reporter='masses' mass='true'"),
       ""},
      {task("openCSVReport", "name='a' file='@project_dir@/a.csv'") +
           task("openCSVReport", "name='b' file='@project_dir@/A.csv'"),
       "report-path-twice"},
      {task("writeToCreoLog", "message='%user:N%'"), "user-variable-unset"},
      {task("setUserVariableDirect", "name='N' value='1'") + task("writeToCreoLog", "message='%user:tolower:n%'"), ""},
      {task("writeToCreoLog", "message='%user:N%'") + "</body><filter/><foot>" +
           task("setUserVariableDirect", "name='N' value='1'") + "</foot></list>",
       "user-variable-unset"},
      {"<task version='3' type='groupActions' reworkMode='2'><subtasks>" +
           task("setUserVariable", "varType='1' varName='N'") + "</subtasks></task>" +
           task("writeToCreoLog", "message='%user:N%'"),
       ""},
      {item("type='parameter' filtertype='true' param='%user:N%' value='1'"), "user-variable-unset"},
      {"<task version='3' type='setConfigOption'><o name_0='a' value_0='b'/><o nmae_1='a' value_1='b'/></task>",
       "attribute-missing attribute-unknown"},
      {"<task version='3' type='setConfigOption' name_0='a' value_0='b'/>", "attribute-unknown attribute-unknown"},
      {"<task version='3' forPRT='true' type='saveModel'><fliter><f type='isInstance' "
       "filtertype='true'/></fliter></task>",
       "element-unknown"},
      {"<task version='3' type='groupActions' reworkMode='2'><subtasks/><subtasks/></task>", "element-unknown"},
      {"<task version='4' forASM='true' type='editSimpRep' nameOne='A' jc='4'><insideFilter forPTR='true' "
       "forASM='yes'/></task>",
       "attribute-unknown word-unknown"},
      {"<task version='3' forPRT='true' forASM='false' type='setSimpRep' simprepc='0' simprep='A'/>", "action-refused"},
      {"<task version='3' forPRT='true' forASM='true' type='setSimpRep' simprepc='0' simprep='A'/>", ""},
      {"<task version='3' forPRT='yes' type='saveModel'/>", "word-unknown"},
      {"<task type='isInstance'/>", "filter-as-action"},
      {"</body><fliter actvie='true' exists='no'><root/></fliter><foot/></list>",
       "section-name attribute-unknown word-unknown"},
      {"</body><filter/><foot/></list><list></list>", "element-unknown"},
      {"<task version='3' forPRT='true' type='saveModel'><filter><f type='isInstance' "
       "filtertype='true'/></filter></task>",
       "filter-unasked"},
      {item("type='isInstance' filtertype='yes'"), "word-unknown"},
      {item("type='isInstance' filtertype='true' opand='AND'"), "word-unknown"},
      {item("type='filename' filtertype='true' filename='*'"), "predicate-constant"},
      {item("type='filename' filtertype='true' filename=''"), "predicate-constant"},
      {item("type='creoVersion' filtertype='true' creo7='false'"), "predicate-constant"},
      {item("type='keSuppressed' filtertype='true' ke='*'"), ""},
      {item("type='filename' filtertype='true' filename='A*' fielname='B'"), "attribute-unknown"},
  };
  for (const auto& [body, rules] : cases) {
    list("clean.xml", body);
    EXPECT_EQ(rules, rulesFound()) << body;
  }
}

// What the reader drops, each fault once.
TEST_F(Check, FaultsOfTheTextAreToldOnce) {
  const std::string task = R"(<task type="saveModel" version="3" forPRT="true")";
  const auto whole = [](const std::string& body) {
    return "<list>\n<head/>\n<body>\n" + body + "\n</body>\n<filter/>\n<foot/>\n</list>\n";
  };
  const std::pair<std::string, std::string> cases[] = {
      {whole(task + "/>"), ""},
      {whole(task + ">"), "4:tag-unclosed"},
      {whole(task + "/ >"), "4:tag-unclosed"},
      {whole(task + "/></task>"), "4:tag-extra"},
      {whole(task + "></tsak>"), "4:tag-crossed"},
      {"<list>\n<head/>\n<body>\n" + task + ">\n</body>\n</task>\n<filter/>\n<foot/>\n</list>\n", "4:tag-crossed"},
      {whole("<!-- " + task + "/> -->"), "4:comment"},
      {whole(task + " forASM='true' forEF=\"false\"/>"), "4:single-quotes"},
      {whole(task + " forASM= \"true\"/>"), "4:blank-after-equals"},
      {whole(task + " forASM=\"true forEF=\"false\"/>"), "4:quote-missing"},
      {whole(task + " forASM=true/>"), "4:quote-missing"},
      {whole(task + " forPRT=\"false\"/>"), "4:attribute-twice"},
      {whole(R"(<task type="writeToCreoLog" version="3" message="it&apos;s&#10;a&amp;b"/>)"), "4:entity-unknown"},
      {whole(R"(<task type="writeToCreoLog" version="3" message="a & b"/>)"), "4:ampersand"},
      {whole("stray " + task + "/>"), "4:text-dropped"},
  };
  for (const auto& [text, faults] : cases) {
    list("clean.xml", "");
    file("standards/actionlists/clean.xml", text);
    std::string found;
    const auto findings = nlohmann::json::parse(kelvane({"check", path("standards"), "--json"}).out);
    for (const auto& finding : findings) {
      const std::string rule = finding["rule"];
      const bool isOfText = rule.starts_with("tag-") || rule.starts_with("attribute-twice") || rule == "comment" ||
                            rule.find("quote") != rule.npos || rule == "blank-after-equals" || rule == "ampersand" ||
                            rule == "entity-unknown" || rule == "text-dropped" || rule == "section-missing" ||
                            rule == "action-without-type" || rule == "attribute-unknown";
      if (isOfText) found += (found.empty() ? "" : " ") + std::to_string(finding["line"].get<int>()) + ":" + rule;
    }
    EXPECT_EQ(faults, found) << text;
  }
}

TEST_F(Check, FindingsAreLeftOutByRuleOrByAnEarlierCheck) {
  list("clean.xml",
       "<task type='savModel' version='3'/>\n<task type='renameLayer' version='3' forPRT='true' namef_0='A'/>");
  EXPECT_EQ("action-unknown attribute-missing", rulesFound());
  EXPECT_EQ("attribute-missing", rulesFound({"--ignore", "action-unknown"}));
  EXPECT_EQ(0, kelvane({"check", path("standards"), "--ignore", "action-unknown"}).code) << "a warning is left";
  writeBytes(path("known.json"), kelvane({"check", path("standards"), "--json"}).out);
  EXPECT_EQ("", rulesFound({"--baseline", path("known.json")}));
  list("clean.xml", "<task type='savModel' version='3'/>\n\n<task type='renameLayer' version='3' forPRT='true'/>");
  EXPECT_EQ("attribute-missing", rulesFound({"--baseline", path("known.json")})) << "of another attribute";
  const Ended wrong = kelvane({"check", path("standards"), "--ignore", "action-unknwon"});
  EXPECT_EQ(2, wrong.code);
  EXPECT_THAT(wrong.err, testing::HasSubstr("there is no rule 'action-unknwon'"));
  EXPECT_EQ(2, kelvane({"check", path("standards"), "--baseline", path("standards/reports/readme.txt")}).code);
}

// Whoever writes the model writes the command, and whoever answers gets the password.
TEST_F(Check, ValuesInCommandsAndOpenCredentialsAreWarnedOf) {
  const auto command = [](const std::string& args) {
    return R"(<task version="3" forPRT="true" type="runMSDOScommand" cmd="echo" args=")" + args + "\"/>";
  };
  const auto request = [](const std::string& address, const std::string& more) {
    return R"(<task version="3" forPRT="true" type="setUserVariableFromUrl" name="A" value=")" + address + "\" " +
           more + "/>";
  };
  const std::vector<std::pair<std::string, std::string>> cases = {
      {command("-s %TITLE%"), "warning: 'args': %TITLE% is read by the command processor"},
      {command("&quot;%TITLE%&quot;"), "warning: 'args': %TITLE% is read"},
      {command("'x' %TITLE% '%A%'"), "warning: 'args': %TITLE% is read"},
      {command("&quot;it's %TITLE%&quot;"), "warning: 'args': %TITLE% is read"},
      {command("'%TITLE%' @mdln@"), "warning: 'args': a single quote in %TITLE% ends the argument"},
      {command("'$$repl$'$$%TITLE%$$' @mdln@"), ""},
      {command("$$repl$'$$%TITLE%$$"), "warning: 'args': %TITLE% is read"},
      {request("https://plm/", R"(usrcred="true" usrname="u" usrpass="p")"), "with kvd_url_verify=1 alone"},
      {request("http://plm/", R"(usrcred="true" usrname="u" usrpass="p")"), "through the net in the open"},
      {request("http://plm/", R"(usrcred="false")"), ""},
  };
  for (const auto& [body, found] : cases) {
    file("standards/actionlists/clean.xml",
         "<list>\n<head/>\n<body>\n" + body + "\n</body>\n<filter/>\n<foot/>\n</list>\n");
    const std::string out = looked().out;
    const bool isTold = out.find("command processor") != out.npos || out.find("password") != out.npos;
    EXPECT_EQ(!found.empty(), isTold) << body << out;
    EXPECT_THAT(out, testing::HasSubstr(found));
  }
}

// What a confined run would ask, from the rows, with the options that grant just that.
TEST_F(Check, TrustTellsWhatAListNeeds) {
  const std::string action = "<task version='3' forPRT='true' type='";
  os::setEnvironment(L"KVD_TEST_SITE", L"/srv/site");
  const std::vector<std::pair<std::string, std::string>> cases = {
      {action + "runMSDOScommand' cmd='python3' args='@project_dir@/a.py'/>", "--allow-run=python3"},
      {action + "runMSDOScommand' cmd='@project_dir@/tool.sh'/>", "--allow-run=tool.sh"},
      {action + "runMSDOScommand' cmd='/opt/tool x'/>", "--allow-run=/opt/tool"},
      {action + "runMSDOScommand' cmd='%TOOL%'/>", ""},
      {action + "runMapkey' kvpmode='true' rfe='0' mapkeyc='1' mapkey0='~ x'/>", "--allow-run=macros"},
      {action + "runTrailfile' tf='@project_dir@/t.txt'/>", "--allow-run=macros"},
      {action + "createQRdotmatrix' value0='x'/>", ""},
      {action + "setUserVariableFromUrl' name='A' value='https://PLM.example.com:8443/x?%A%'/>",
       "--allow-net=plm.example.com:8443"},
      {action + "setUserVariableFromUrl' name='A' value='%user:PLM%/x'/>", ""},
      {action + "setDTL' view='k:\\forms\\iso.dtl'/>", "--allow-read=/forms"},
      {action + "setDTL' view='/srv/forms/%SIZE%.dtl'/>", "--allow-read=/srv/forms"},
      {action + "setDTL' view='@project_dir@/iso.dtl'/>", ""},
      {action + "openCSVReport' name='a' file='\xC2\xA7KVD_TEST_SITE\xC2\xA7/out/a.csv'/>",
       "--allow-read=/srv/site/out --allow-write=/srv/site/out"},  // it goes on where it ended
      {action + "openCSVReport' name='a' overwrite='true' file='/srv/out/a.csv'/>", "--allow-write=/srv/out"},
      {action + "exportpdf2d' folder='/srv/out' file='a'/>", "--allow-write=/srv/out"},
      {action + "backupAction' path='/srv/out'/>", "--allow-write=/srv/out"},
      {action + "runMSDOScommand' cmd='d:\\tool.sh'/>", ""},
      {action + "setConfigOption'><option name_0='search_path' value_0='/srv/lib'/></task>", "--allow-read=/srv/lib"},
      {action + "openCSVReport' name='a' file='a.csv'/>", ""},
      {action + "openCSVReport' name='a' file='d:\\a.csv'/>", ""},
      {action + "openCSVReport' name='a' file='c:\\%NAME%.csv'/>", ""},  // never the root
      {action + "setEnvironmentVariable' name='LD_PRELOAD' value='x'/>", "--allow-env=LD_PRELOAD"},
      {action + "addNote' text0='@clipboard@'/>", "--allow-clipboard"},
      {action + "writeToCreoLog' message='%b64:/etc/passwd%'/>", "--allow-read=/etc"},
      {action + "writeToCreoLog' deak='true' message='%b64:/etc/passwd%'/>", ""},
      {action + "groupActions'><subtasks>" + action + "writeToCreoLog' message='@clipboard@'/></subtasks></task>",
       "--allow-clipboard"},
      {action + "writeToCreoLog' forEF='true'><filter><f type='fileexists' filename='/srv/x'/></filter></task>",
       "--allow-read=/srv"},
      {action + "writeToCreoLog' forEF='true'><filter><f type='materialParameter' param='A' value='/^42CrMo4/'/>" +
           "<f type='fileexists' filename='/srv/x/'/></filter></task>",
       "--allow-read=/srv/x"},  // an expression is no path
      {action + "deleteModelParameter' searchin='1' name_0='/srv/x'/>", ""},
      {action + "writeToCreoLog' message='/^42CrMo4/'/>", ""},
  };
  for (const auto& [body, option] : cases) {
    list("clean.xml", body);
    const Ended ended = kelvane({"check", path("standards"), "--trust"});
    EXPECT_EQ(0, ended.code);
    EXPECT_TRUE(ended.out.ends_with((option.empty() ? "--confine" : "--confine " + option) + "\n")) << body << "\n"
                                                                                                    << ended.out;
  }
  list("clean.xml", action + "runMSDOScommand' cmd='python3' args='a.py'/>" + action + "checkinModel'/>");
  EXPECT_EQ(
      "run     python3  actionlists/clean.xml:4: B0: it starts 'python3 a.py'\n"
      "server           actionlists/clean.xml:4: B1: it acts on the server\n"
      "--confine --allow-run=python3\n",
      kelvane({"check", path("standards"), "--trust"}).out);
  list("clean.xml", action + "setUserVariableFromUrl' name='A' value='%user:PLM%/x'/>");
  EXPECT_EQ(
      "net  ?  actionlists/clean.xml:4: B0: 'value': '%user:PLM%/x'\n"
      "--confine\n",
      kelvane({"check", path("standards"), "--trust"}).out);
  EXPECT_EQ(2, kelvane({"check", path("standards"), "--trust", "--fix"}).code);
}

TEST_F(Check, RulesAreExplained) {
  const std::string all = kelvane({"explain"}).out;
  std::string before;
  for (const kelvane::Rule& rule : kelvane::rules()) {
    EXPECT_LT(before, rule.name);
    before = rule.name;
    EXPECT_THAT(all, testing::HasSubstr(before + " ("));
    EXPECT_THAT(kelvane({"explain", before}).out, testing::HasSubstr(std::string(rule.about)));
  }
  EXPECT_THAT(kelvane({"explain", "atribute-unknown"}).err, testing::HasSubstr("did you mean 'attribute-unknown'?"));
}

TEST_F(Check, MembersAndFilterFilesAreChecked) {
  list("empty.xml", "");
  file("standards/actionlists/empty.xml", "");
  file("standards/filters/cut.xml", "");
  file("standards/filters/groups.xml", "<root>\n<filter><f type=\"path\" filtertype=\"true\"/></filter></root>");
  file("standards/filters/named.xml", "<parts>\n<filter><f type=\"path\" filtertype=\"true\"/></filter></parts>");
  file("standards/filters/parts.xml", "\n<parts><root/></parts>");
  file("standards/filters/steel.xml", "<root>\n<item type=\"parametr\" filtertype=\"true\"/></root>");
  std::filesystem::remove(path("standards/reports/readme.txt"));
  std::filesystem::remove(path("standards/system/index.kvane"));
  EXPECT_EQ(
      "actionlists/empty.xml: it holds no element\n"
      "filters/cut.xml: it holds no element\n"
      "filters/groups.xml:2: filter 'path' has no 'path'\n"
      "filters/named.xml:2: filter 'path' has no 'path'\n"
      "filters/parts.xml:2: the filter holds no items, so that every model passes it; items stand in an element 'root' "
      "or 'filter'\n"
      "filters/steel.xml:2: unknown filter 'parametr'; did you mean 'parameter'?\n"
      "system/index.kvane: it is missing; it holds the description\n",
      looked().out);
  // Packing adds it to the folder, but nobody to a package.
  writeZip(path("plain.kvz"), {{"system/index.kvane", "1\nabout\n"}, {"actionlists/a.xml", "<list/>"}});
  EXPECT_THAT(kelvane({"check", path("plain.kvz")}).out,
              testing::HasSubstr("reports/readme.txt: it is missing; 'kelvane pack' adds it\n"));
}

}  // namespace
}  // namespace test
