// Values, types and names of parameters changed; parameters deleted. What is on disk afterwards decides.
#include "actions/action_fixture.h"
#include "text/encoding.h"

namespace test {
namespace {

class EditParameters : public ActionTest {
 protected:
  struct Case {
    std::string tasks;
    std::wstring saved;  // all parameters afterwards
    std::wstring said;   // a piece of the log; empty: any
  };
  static void fill(World& world) {
    world.part(L"BRACKET").with(L"COLOR", L"red").with(L"MASS", 2.5).with(L"COUNT", 7).with(L"CHECKED", true);
  }
  static void expectEach(const std::vector<Case>& cases) {
    for (const Case& entry : cases) {
      World own;
      fill(own);
      own.list("list.xml", entry.tasks + task("saveModel"));
      own.runOn(L"BRACKET", creo::ProMdlType::part, "list.xml");
      EXPECT_EQ(entry.saved, own.savedParameters("BRACKET.prt")) << entry.tasks;
      EXPECT_NE(std::wstring::npos, told(own.log()).find(entry.said)) << entry.tasks << "\n" << text::toUtf8(own.log());
    }
  }
  static std::string edit(const std::string& attributes) { return task("editModelParameter", attributes); }
  static std::string rename(const std::string& attributes) { return task("editModelParameterName", attributes); }
  static std::string remove(const std::string& attributes) { return task("deleteModelParameter", attributes); }
};

TEST_F(EditParameters, SetsValuesByNameAndByValue) {
  const std::wstring same = L"COLOR=red MASS=2.5 COUNT=7 CHECKED=true";
  const std::string longest(80, 'x');
  expectEach({
      {edit("searchin='1' name='col*' totype='0' value='dark @para@'"), L"COLOR=dark red MASS=2.5 COUNT=7 CHECKED=true",
       L"set 'COLOR' value to 'dark red'"},
      {edit("searchin='1' name='MASS' totype='2' value='@line@1'"), L"COLOR=red MASS=2.5000001 COUNT=7 CHECKED=true",
       L"set 'MASS' value to '2.500000'"},
      {edit("searchin='2' name='7' totype='1' value='8'"), L"COLOR=red MASS=2.5 COUNT=8 CHECKED=true", L""},
      {edit("searchin='2' name='yes' totype='3' value='no'"), L"COLOR=red MASS=2.5 COUNT=7 CHECKED=false", L""},
      {edit("searchin='2' name='/^r.d$/' totype='0' value='blue'"), L"COLOR=blue MASS=2.5 COUNT=7 CHECKED=true",
       L"W:/^r.d$/ - Integer can't compared with not a number"},
      {edit("searchin='1' name='MASS' totype='2' value='abc'"), same,
       L"E:Failure at parameter 'MASS' while cast value 'abc' to double"},
      {edit("searchin='1' name='MASS' totype='2' value='12,5'"), L"COLOR=red MASS=12.0 COUNT=7 CHECKED=true",
       L"W:'12,5' is read as 12: the decimal sign is a point"},
      {edit("searchin='1' name='MASS' totype='2' value='3.5 mm'"), L"COLOR=red MASS=3.5 COUNT=7 CHECKED=true",
       L"MASS|W:'3.5 mm' is read as 3.5|set 'MASS' value to '3.500000'"},
      {edit("searchin='1' name='COUNT' totype='1' value='8.9'"), L"COLOR=red MASS=2.5 COUNT=8 CHECKED=true",
       L"COUNT|W:'8.9' is read as 8|set 'COUNT' value to '8'"},
      {edit("searchin='1' name='COUNT' totype='1' value=' 8.0 '"), L"COLOR=red MASS=2.5 COUNT=8 CHECKED=true",
       L"COUNT|set 'COUNT' value to '8'"},
      {edit("searchin='1' name='MASS' totype='2' value='Information sheet'"), same,
       L"E:Failure at parameter 'MASS' while cast value 'Information sheet' to double"},
      {edit("searchin='1' name='MASS' totype='2' value='-nan'"), same,
       L"E:Failure at parameter 'MASS' while cast value '-nan' to double"},
      {edit("searchin='1' name='MASS' totype='2' value='1e999'"), same,
       L"E:Failure at parameter 'MASS' while cast value '1e999' to double"},
      {edit("searchin='2' name='2.5,' totype='2' value='9'"), same,
       L"W:2.5, - Double can't compared with not a number"},
      {edit("searchin='1' name='COUNT' totype='1' value='99999999999'"), same,
       L"E:Failure at parameter 'COUNT' while cast value '99999999999' to integer"},
      {edit("searchin='1' name='COLOR' totype='0' value='%NONE%'"), same,
       L"E:The parameter 'COLOR' is not set because errors in the replacement"},
      {edit("searchin='1' name='COLOR' totype='0' value='" + longest + "'"),
       L"COLOR=" + std::wstring(80, L'x') + L" MASS=2.5 COUNT=7 CHECKED=true", L""},
      {edit("searchin='1' name='COLOR' totype='0' value='" + longest + "x'"), same,
       L"E:The parameter 'COLOR' is not set because errors in the replacement"},
      {edit("searchin='3' name='COLOR' totype='0' value='x'"), same, L"E:Error in xml"},
      {edit("searchin='1' name='NOBODY' totype='0' value='x'"), same, L"Could be alternative one, check that"},
  });
}

TEST_F(EditParameters, RetypesAndRenames) {
  const std::wstring same = L"COLOR=red MASS=2.5 COUNT=7 CHECKED=true";
  expectEach({
      {edit("searchin='1' name='MASS' totype='0' value='@para@ kg'"),
       L"COLOR=red COUNT=7 CHECKED=true MASS=2.500000 kg", L"typechange from Double to String"},
      {edit("searchin='1' name='*' totype='1' value='@para@'"), L"COUNT=7 COLOR=0 MASS=2 CHECKED=0", L""},
      {edit("searchin='1' name='COUNT' totype='9' value='1'"), same, L"E:The type '9' isn't one of 0, 1, 2, 3"},
      {rename("searchin='1' name='COLOR' value='COLOUR'"), L"MASS=2.5 COUNT=7 CHECKED=true COLOUR=red",
       L"typechange from String to new Name"},
      {rename("searchin='2' name='2.5' value='WEIGHT'"), L"COLOR=red COUNT=7 CHECKED=true WEIGHT=2.5", L""},
      {rename("searchin='2' name='2.5kg' value='WEIGHT'"), same, L"E:Failure can't cast double value"},
      {rename("searchin='2' name='7x' value='NUMBER'"), same, L"E:Failure can't cast integer value"},
      {rename("searchin='1' name='COLOR' value='mass'"), same,
       L"E:A parameter 'mass' exists already, nothing is renamed"},
      {rename("searchin='1' name='COLOR' value='1st'"), same,
       L"E:'1st' can't be the name of a parameter, 'COLOR' isn't renamed"},
      {rename("searchin='1' name='COLOR' value='A'") + rename("searchin='1' name='A' value='MY COLOR'"),
       L"MASS=2.5 COUNT=7 CHECKED=true A=red", L"E:'MY COLOR' can't be the name of a parameter, 'A' isn't renamed"},
  });
}

TEST_F(EditParameters, DeletesWhatTheEntriesName) {
  expectEach({
      {remove("searchin='1' name_0='C*' name_7='MASS'"), L"", L"COLOR|deleted"},
      {remove("searchin='2' name_0='red' name_1='7' name_2='true' name_3='2.50'"), L"", L""},
      {remove("searchin='2' name_0='re*' name_1='8' name_2='2.*' name_3='false'"),
       L"COLOR=red MASS=2.5 COUNT=7 CHECKED=true", L"Search in value"},
      {remove("searchin='1' name_100='*'"), L"COLOR=red MASS=2.5 COUNT=7 CHECKED=true", L""},
      {remove("searchin='1' name_0='MASS' oiFamtab='true'"), L"COLOR=red MASS=2.5 COUNT=7 CHECKED=true",
       L"W:Parameter is not in Family Table"},
  });
}

// "M8" has a digit, and so is compared as a number; it isn't 0.
TEST_F(EditParameters, AnEntryThatIsntWhollyANumberDeletesNone) {
  for (const char* entry : {"M8", "0,5", "0 mm", "0x", "1e999", "nan0", "2147483648"}) {
    World own;
    own.part(L"BRACKET").with(L"EMPTY", 0.0).with(L"MOST", 2147483647);
    own.list("list.xml", remove("searchin='2' name_0='" + std::string(entry) + "'") + task("saveModel"));
    own.runOn(L"BRACKET", creo::ProMdlType::part, "list.xml");
    EXPECT_EQ(L"EMPTY=0.0 MOST=2147483647", own.savedParameters("BRACKET.prt")) << entry;
  }
}

TEST_F(EditParameters, ARetypeSaysWhatItCutsAndRefusesWhatIsNoNumber) {
  const auto retype = [](const char* to) {
    return edit("searchin='1' name='X' totype='" + std::string(to) + "' value='@para@'");
  };
  const struct {
    const wchar_t* value;
    std::string tasks;
    std::wstring saved, said;
  } texts[] = {
      {L"50abc", retype("2"), L"X=50.0", L"W:'50abc' is read as 50"},
      {L"7.9", retype("1"), L"X=7", L"W:'7.9' is read as 7"},
      {L"bolt", retype("2"), L"X=0.0", L"W:'bolt' is read as 0"},
      {L"", retype("2"), L"X=0.0", L"typechange from String to Double|X"},
      {L"Nanocoat", retype("2"), L"X=Nanocoat", L"E:Failure at parameter 'X' while cast value 'Nanocoat' to double"},
      {L"1e999", retype("2"), L"X=1e999", L"E:Failure at parameter 'X' while cast value '1e999' to double"},
      {L"3000000000", retype("1"), L"X=3000000000",
       L"E:Failure at parameter 'X' while cast value '3000000000' to integer"},
  };
  for (const auto& [value, tasks, saved, said] : texts) {
    World own;
    own.part(L"BRACKET").with(L"X", value);
    own.list("list.xml", tasks + task("saveModel"));
    own.runOn(L"BRACKET", creo::ProMdlType::part, "list.xml");
    EXPECT_EQ(saved, own.savedParameters("BRACKET.prt")) << text::toUtf8(value);
    EXPECT_NE(std::wstring::npos, told(own.log()).find(said)) << text::toUtf8(own.log());
  }
}

// A pass visits the parameters again for each one that it converted.
TEST_F(EditParameters, WhatIsRefusedIsToldOnce) {
  world.part(L"SPRING").with(L"A", L"99999999999").with(L"B", L"2,5").with(L"C", 1.23456789).with(L"D", 7.85e-6);
  const std::wstring log = run(edit("searchin='1' name='*' totype='1' value='@para@'") + task("saveModel"), L"SPRING");
  EXPECT_EQ(L"A=99999999999 B=2 C=1 D=0", world.savedParameters("SPRING.prt"));
  for (const wchar_t* line : {L"E:Failure at parameter 'A' while cast value '99999999999' to integer",
                              L"W:'2,5' is read as 2: the decimal sign is a point", L"W:'1.23456789' is read as 1",
                              L"W:'7.85e-06' is read as 0"}) {
    const std::size_t at = log.find(line);
    ASSERT_NE(log.npos, at) << text::toUtf8(line) << text::toUtf8(log);
    EXPECT_EQ(log.npos, log.find(line, at + 1)) << text::toUtf8(log);
  }
}

TEST_F(EditParameters, SmallNumbersComeBackWhole) {
  const std::pair<std::string, std::wstring> cases[] = {
      {edit("searchin='1' name='*' totype='2' value='@para@'"), L"RHO=7.85e-09 LEN=1.234567891 HALF=0.5"},
      {edit("searchin='1' name='*' totype='0' value='@para@'"), L"RHO=7.85e-09 LEN=1.234567891 HALF=0.500000"},
      {edit("searchin='1' name='*' totype='1' value='@para@'"), L"RHO=0 LEN=1 HALF=0"},
      {edit("searchin='1' name='HALF' totype='2' value='%RHO%'"), L"RHO=7.85e-09 LEN=1.234567891 HALF=0.0"},
  };
  for (const auto& [tasks, saved] : cases) {
    World own;
    own.part(L"BRACKET").with(L"RHO", 7.85e-9).with(L"LEN", 1.234567891).with(L"HALF", 0.5);
    own.list("list.xml", tasks + task("saveModel"));
    own.runOn(L"BRACKET", creo::ProMdlType::part, "list.xml");
    EXPECT_EQ(saved, own.savedParameters("BRACKET.prt")) << tasks;
  }
}

TEST_F(EditParameters, KeepDrivenOnes) {
  world.member("dummy.txt", "");
  writeBytes(world.models() + "/bracket.prt.1",
             R"({"format": 1, "relations": ["MASS = LENGTH * 2", "FOO = COUNT"], "parameters": [
  {"name": "MASS", "type": "double", "value": 4.0}, {"name": "LENGTH", "type": "double", "value": 2.0},
  {"name": "OTHER", "type": "string", "value": "x", "driver": "function"}]})");
  const std::wstring log =
      run(edit("searchin='1' name='*' totype='0' value='y'") + remove("searchin='1' name_0='*'") + task("saveModel"));
  for (const wchar_t* line : {L"E:Parameter 'MASS' can't be edit, because it is relation driven",
                              L"E:Parameter 'OTHER' can't be edit, because it is function driven",
                              L"E:Parameter 'LENGTH' can't be deleted, it stays as it is",
                              L"E:Failure Parameter MASS can not be deleted, because a relation needs it",
                              L"E:Failure Parameter OTHER can not be deleted, because a function points on it",
                              L"E:Failure Parameter LENGTH can not be deleted"})
    EXPECT_NE(std::wstring::npos, log.find(line)) << text::toUtf8(line);
  EXPECT_EQ(L"MASS=4.0 LENGTH=2.0 OTHER=x", world.savedParameters("BRACKET.prt"));
}

TEST_F(EditParameters, OfOneNameTheFirstStays) {
  writeBytes(world.models() + "/bracket.prt.1", R"({"format": 1, "parameters": [
  {"name": "A", "type": "integer", "value": 1}, {"name": "B", "type": "integer", "value": 2},
  {"name": "A", "type": "integer", "value": 3}, {"name": "B", "type": "integer", "value": 4},
  {"name": "A", "type": "integer", "value": 5}]})");
  EXPECT_EQ(L"B0 delete double defined parameters|delete A|delete B|delete A|B1 Save model",
            run(task("deleteDoubleDefinedParameters") + task("saveModel")));
  EXPECT_EQ(L"A=1 B=2", world.savedParameters("BRACKET.prt"));
}

// What a conversion leaves of the document's parameters and family table: all that belongs to one goes with it, or
// nothing is touched.
TEST_F(EditParameters, AConversionCarriesAllOrTouchesNothing) {
  const std::string restricted =
      R"({"name":"LEN","type":"double","value":5.0,"units":"in","restriction":{"minimum":1.5,"step":0.5},"origin":{"by":"x"}})";
  const std::string grade = R"({"name":"GRADE","type":"string","value":"A","restriction":{"values":["A","B"]}})";
  const std::string table =
      R"("familyTable":{"items":[{"type":"parameter","name":"LEN","hint":1},{"type":"parameter","name":"GRADE"}],)"
      R"("instances":[{"name":"L7","values":{"LEN":7.1},)";
  const std::string locked = R"("locked":true}]})", unlocked = R"("remark":2}]})";
  const std::string twice = R"({"name":"X","type":"integer","value":1},{"name":"X","type":"integer","value":3})";
  struct Row {
    std::string parameters, table, tasks, parametersAfter, tableAfter;
    std::wstring said;
  };
  const auto with = [](std::string text, const std::string& from, const std::string& to) {
    return text.replace(text.find(from), from.size(), to);
  };
  const auto toInteger = edit("searchin='1' name='LEN' totype='1' value='@para@'");
  const Row rows[] = {
      {restricted + "," + grade, table + unlocked, rename("searchin='1' name='LEN' value='REACH'"),
       grade + "," + with(restricted, "LEN", "REACH"),
       with(with(table, "LEN", "REACH"), "{\"LEN", "{\"REACH") + unlocked, L"typechange from Double to new Name"},
      {restricted, table + unlocked, toInteger, with(with(restricted, "double", "integer"), "5.0", "5"),
       with(table, "7.1", "7") + unlocked, L"typechange from Double to Integer"},
      {with(restricted, "5.0", "1.6"), table + unlocked, toInteger, "", "",
       L"E:The restriction of 'LEN' doesn't allow '1'|E:Parameter 'LEN' is put back as it was"},
      {restricted, with(table, "7.1", "1.7") + unlocked, toInteger, "", "",
       L"E:The value '1' of 'LEN' can't be set in the instance 'L7'|E:Not all instances can have their values of "
       L"'LEN'|E:Parameter 'LEN' is put back as it was"},
      {restricted + "," + grade, table + locked, toInteger + rename("searchin='1' name='LEN' value='REACH'"), "", "",
       L"E:Parameter 'LEN' has a value of its own in the locked instance 'L7', it stays as it is"},
      // A relation that has the new name already doesn't keep the old parameter from coming back.
      {restricted, R"("relations":["W=REACH"],)" + with(table, "7.1", "1.1") + unlocked,
       rename("searchin='1' name='LEN' value='REACH'"), "", "",
       L"E:The value '1.100000' of 'REACH' can't be set in the instance 'L7'|E:Not all instances can have their "
       L"values of 'REACH'|E:Parameter 'LEN' is put back as it was"},
      {restricted + "," + grade, table + unlocked, edit("searchin='1' name='*' totype='3' value='true'"), "", "",
       L"E:The restriction of 'LEN' is for its own type, it stays as it is"},
      {restricted + "," + grade, table + unlocked, rename("searchin='1' name='LEN' value='2LEN'"), "", "",
       L"E:'2LEN' can't be the name of a parameter"},
      {grade, table + unlocked, edit("searchin='1' name='GRADE' totype='0' value='C'"), "", "",
       L"E:The restriction of 'GRADE' doesn't allow 'C'"},
      {twice, "\"q\":1", edit("searchin='1' name='X' totype='0' value='y'"), "", "",
       L"E:There is more than one parameter 'X', they stay as they are"},
      {twice, "\"q\":1", rename("searchin='1' name='X' value='Y'"),
       R"({"name":"X","type":"integer","value":3},{"name":"Y","type":"integer","value":1})", "\"q\":1",
       L"E:A parameter 'Y' exists already, nothing is renamed"},
  };
  for (const Row& row : rows) {
    World own;
    const auto document = [](const std::string& parameters, const std::string& rest) {
      return R"({"format":1,"parameters":[)" + parameters + "]," + rest + "}";
    };
    const std::string before = document(row.parameters, row.table);
    writeBytes(own.models() + "/bracket.prt.1", before);
    own.list("list.xml", row.tasks + task("saveModel"));
    own.runOn(L"BRACKET", creo::ProMdlType::part, "list.xml");
    std::string after = own.document("BRACKET.prt");
    std::erase_if(after, [](char c) { return c == ' ' || c == '\n'; });
    // The record of the run comes last.
    if (const auto history = after.find(",\"externalData\""); history != after.npos) after.erase(history).append("}");
    EXPECT_EQ(row.parametersAfter.empty() ? before : document(row.parametersAfter, row.tableAfter), after) << row.tasks;
    EXPECT_NE(std::wstring::npos, told(own.log()).find(row.said)) << text::toUtf8(told(own.log()));
  }
}

class EditFamily : public EditParameters {
 protected:
  static std::string path(const World& world) { return world.models() + "/bolt.prt.1"; }
  static void bolts(const World& world) {
    writeBytes(path(world), R"({"format": 1, "parameters": [
  {"name": "SIZE", "type": "double", "value": 3.0, "units": "mm", "description": "thread", "designated": true},
  {"name": "GRADE", "type": "string", "value": "8.8"}],
  "familyTable": {"items": [{"type": "parameter", "name": "SIZE"}], "instances": [
    {"name": "M4", "values": {"SIZE": 4.0}, "familyTable": {"items": [{"type": "parameter", "name": "SIZE"}],
      "instances": [{"name": "M4_LONG", "values": {"SIZE": 4.25}}, {"name": "M4_SHORT"}]}},
    {"name": "M5"}]}})");
  }
  // The document without blanks, from "familyTable" on.
  static std::string table(const World& world) {
    std::string all = world.document("BOLT.prt");
    std::erase_if(all, [](char c) { return c == ' ' || c == '\n'; });
    const auto at = all.find("\"familyTable\"");
    return at == std::string::npos ? all : all.substr(at, all.find("\"externalData\"") - at);
  }
};

TEST_F(EditFamily, ARetypeCarriesColumnsAndEachOwnValue) {
  bolts(world);
  run(edit("searchin='1' name='SIZE' totype='0' value='@para@'") + task("saveModel"), L"BOLT");
  EXPECT_EQ(L"GRADE=8.8 SIZE=3.000000", world.savedParameters("BOLT.prt"));
  EXPECT_EQ(
      R"("familyTable":{"items":[{"type":"parameter","name":"SIZE"}],"instances":[{"name":"M4","values":{"SIZE":"4.000000"},"familyTable":{"items":[{"type":"parameter","name":"SIZE"}],"instances":[{"name":"M4_LONG","values":{"SIZE":"4.250000"}},{"name":"M4_SHORT"}]}},{"name":"M5"}]},)",
      table(world));
  EXPECT_NE(std::string::npos, world.document("BOLT.prt").find("\"thread\""));
  EXPECT_NE(std::string::npos, world.document("BOLT.prt").find("\"designated\": true"));
}

// What one instance can't become is told before anything is deleted; a number with all its digits comes back.
TEST_F(EditFamily, ARetypeIsRefusedWholeForAnInstancesValue) {
  const auto family = [](const char* type, const std::string& own, const std::string& of) {
    World fresh;
    writeBytes(path(fresh), R"({"format": 1, "parameters": [{"name": "SIZE", "type": ")" + std::string(type) +
                                R"(", "value": )" + own + R"(}], "familyTable": {"items": [{"type": "parameter",
      "name": "SIZE"}], "instances": [{"name": "M4", "values": {"SIZE": )" +
                                of + "}}]}}");
    const std::string target = std::string(type) == "string" ? "2" : "0";
    fresh.list("list.xml", edit("searchin='1' name='SIZE' totype='" + target + "' value='@para@'") + task("saveModel"));
    fresh.runOn(L"BOLT", creo::ProMdlType::part, "list.xml");
    const std::wstring log = told(fresh.log());
    const std::size_t error = log.find(L"E:");
    return fresh.savedParameters("BOLT.prt") + L" " + text::fromUtf8(table(fresh).substr(13)) +
           (error == log.npos ? L"" : log.substr(error, log.find(L'|', error) - error));
  };
  const std::wstring refused = family("string", "\"3\"", "\"inf\"");
  for (const wchar_t* piece : {L"SIZE=3 ", LR"("name":"M4","values":{"SIZE":"inf"})",
                               L"E:Failure at parameter 'SIZE' while cast value 'inf' to double"})
    EXPECT_NE(std::wstring::npos, refused.find(piece)) << text::toUtf8(refused);
  EXPECT_NE(std::wstring::npos, family("double", "3.0", "7.85e-9").find(LR"("values":{"SIZE":"7.85e-09"})"));
}

TEST_F(EditFamily, ARenameKeepsNumbersAndUnitsExact) {
  bolts(world);
  run(rename("searchin='1' name='SIZE' value='DIAMETER'") + task("saveModel"), L"BOLT");
  EXPECT_NE(std::string::npos, table(world).find(R"("name":"M4_LONG","values":{"DIAMETER":4.25})"));
  EXPECT_NE(std::string::npos, world.document("BOLT.prt").find("\"units\": \"mm\""));
}

TEST_F(EditFamily, EditsEachInstanceWhenAsked) {
  bolts(world);
  run(edit("searchin='1' name='SIZE' totype='2' value='9' genAllInst='true'") + task("saveModel"), L"BOLT");
  for (const char* value : {R"("name":"M4","values":{"SIZE":9.0})", R"("name":"M4_LONG","values":{"SIZE":9.0})"})
    EXPECT_NE(std::string::npos, table(world).find(value)) << table(world);
}

TEST_F(EditFamily, TakesAColumnAway) {
  bolts(world);
  EXPECT_EQ(L"B0 Delete Model Parameter|Search in name|SIZE|Deleted from Family Table|B1 Save model",
            run(remove("searchin='1' name_0='SIZE' oiFamtab='true'") + task("saveModel"), L"BOLT"));
  EXPECT_EQ(L"SIZE=3.0 GRADE=8.8", world.savedParameters("BOLT.prt"));
  EXPECT_NE(std::string::npos, table(world).find(R"({"name":"M4","familyTable")"));
}

// Whatever operation fails once in the middle of a conversion: every value is there afterwards, under one type or the
// other.
TEST_F(EditFamily, LosesNothingWhenAnOperationFailsOnce) {
  const char* operations[] = {"ProParameterDelete",
                              "ProParameterCreate",
                              "ProParameterUnitsGet",
                              "ProParameterDescriptionGet",
                              "ProParameterDescriptionSet",
                              "ProParameterDesignationAdd",
                              "ProParameterValueGet",
                              "ProFamtableInit",
                              "ProFamtableInstanceVisit",
                              "ProFaminstanceCreate",
                              "ProFaminstanceValueGet",
                              "ProFaminstanceValueSet",
                              "ProFaminstanceFamtableItemIsDefault",
                              "ProFamtableItemAdd",
                              "ProMdlTypeGet",
                              "ProMdlToModelitem",
                              "ProParameterVisit",
                              "ProParameterDriverGet",
                              "ProMdlErase"};
  for (const char* operation : operations) {
    World own;
    bolts(own);
    own.list("list.xml", edit("searchin='1' name='SIZE' totype='0' value='@para@'") + task("saveModel"));
    own.start();
    own.open(L"BOLT", creo::ProMdlType::part);
    own.openTool();
    own.choose("list.xml");
    own.session().failNext(operation, creo::ProGeneralError);
    own.pressStart();
    std::string values = table(own);
    EXPECT_NE(std::string::npos, values.find("4.25")) << operation << values;
    EXPECT_NE(std::string::npos, values.find("{\"name\":\"M5\"}")) << operation << values;
    const std::string document = own.document("BOLT.prt");
    EXPECT_NE(std::string::npos, document.find("\"thread\"")) << operation;
    EXPECT_NE(std::string::npos, document.find("\"designated\": true")) << operation;
  }
}

TEST(ParameterVisits, ThatFailAreErrorLines) {
  const std::string attributes =
      " version='3' forPRT='true' forEF='false' searchin='1' name='SIZE' totype='2' value='A'/>";
  for (const char* type : {"editModelParameterName", "editModelParameter"}) {
    World world;
    world.part(L"BOLT").with(L"SIZE", 1.0);
    world.list("list.xml", "<task type='" + std::string(type) + "'" + attributes);
    world.start();
    world.open(L"BOLT", creo::ProMdlType::part);
    world.openTool();
    world.choose("list.xml");
    world.session().failNext("ProParameterVisit", creo::ProGeneralError);
    world.pressStart();
    EXPECT_TRUE(world.logHas(L"BOLT.PRT - Failure in ProParameterVisit()")) << type;
  }
}

TEST(AlternativeColumns, AreAddedByTheFamilyTablesDialog) {
  World world;
  world.part(L"BOLT").with(L"SIZE", 1.0).column(L"SIZE").instance(L"M4", {"4.0"});
  world.list("list.xml",
             "<task type='addModelParameterToFamilyTable' version='3' forPRT='true' mass='true' ixx='true'/>"
             "<task type='addModelParameterToFamilyTable' version='3' forPRT='true' mass='true'/>");
  world.runOn(L"BOLT", creo::ProMdlType::part, "list.xml");
  EXPECT_EQ(
      L"B0 Add alternative model parameter to family table|Parameter 'PRO_MP_ALT_MASS' added to family table|"
      L"Parameter 'PRO_MP_ALT_IXX' added to family table|B1 Add alternative model parameter to family table|"
      L"W:Parameter 'PRO_MP_ALT_MASS' is already in the family table",
      told(world.log()));
}

TEST(DesignationFlags, AreSetForAllParameters) {
  World world;
  world.part(L"BRACKET").with(L"A", 1).with(L"B", L"x");
  world.list("list.xml",
             "<task type='changeAllDesignationFlags' version='3' forPRT='true' to='true'/>"
             "<task type='changeAllDesignationFlags' version='3' forPRT='true' to='false'/>");
  world.runOn(L"BRACKET", creo::ProMdlType::part, "list.xml");
  EXPECT_EQ(
      L"B0 Change all designation flags|Change all designations|set designated value from A to true|"
      L"set designated value from B to true|All parameter designations are set to true|"
      L"B1 Change all designation flags|Change all designations|set designated value from A to false|"
      L"set designated value from B to false|All parameter designations are set to false",
      told(world.log()));
}

TEST(FeatureAndMaterialParameters, GoToTheirOwners) {
  World world;
  writeBytes(world.models() + "/bracket.prt.1", R"({"format": 1, "material": "STEEL",
  "materials": [{"name": "STEEL", "parameters": []}],
  "features": [{"id": 5, "name": "HOLE_1", "type": 911}, {"id": 9, "name": "ROUND_1", "type": 913}]})");
  world.list("list.xml",
             "<task type='addKEParameter' version='3' forPRT='true' feat='4' featname='hole*' name_0='DEPTH' "
             "type_0='Double' value_0='3'/>"
             "<task type='addKEParameter' version='3' forPRT='true' feat='3' name_0='OK' type_0='Boolean'/>"
             "<task type='deleteKEParameter' version='3' forPRT='true' searchin='2' name_0='3'/>"
             "<task type='addMaterialParameter' version='3' forPRT='true' name_0='RHO' type_0='Double' value_0='7.8'/>"
             "<task type='editMaterialParameter' version='3' forPRT='true' searchin='1' name='RHO' totype='2' "
             "value='7.9'/><task type='saveModel' version='3' forPRT='true'/>");
  world.runOn(L"BRACKET", creo::ProMdlType::part, "list.xml");
  std::string document = world.document("BRACKET.prt");
  std::erase_if(document, [](char c) { return c == ' ' || c == '\n'; });
  EXPECT_EQ(std::string::npos, document.find("DEPTH")) << document;
  EXPECT_NE(std::string::npos, document.find(R"({"name":"RHO","type":"double","value":7.9})")) << document;
  EXPECT_TRUE(world.logHas(L"KE: 5 HOLE_1"));
  EXPECT_NE(std::string::npos, document.rfind("\"OK\""));
}

// A unit makes it one of the model's, and the model may have it already.
TEST(FeatureAndMaterialParameters, WithAUnitGoToTheModel) {
  World world;
  writeBytes(world.models() + "/bracket.prt.1", R"({"format": 1, "material": "STEEL",
  "materials": [{"name": "STEEL", "parameters": []}], "features": [{"id": 5, "name": "HOLE_1", "type": 911}]})");
  const std::string type = "<task version='3' forPRT='true' type_0='Double' type='",
                    feature = type + "addKEParameter' feat='3' name_0='DEPTH' ",
                    material = type + "addMaterialParameter' name_0='depth' ";
  world.list("list.xml", feature + "value_0='3' unit_0='mm'/>" + feature +
                             "value_0='4' unit_0='mm' descr='true' description_0='deep'/>" + material +
                             "value_0='5' unit_0='mm' desig='true' designated_0='true'/>" +
                             "<task type='saveModel' version='3' forPRT='true'/>");
  world.runOn(L"BRACKET", creo::ProMdlType::part, "list.xml");
  EXPECT_EQ(
      L"B0 Add feature parameter|KE: 5 HOLE_1|Try to create parameter:DEPTH|Parameter created|B1 Add feature parameter|"
      L"KE: 5 HOLE_1|Try to create parameter:DEPTH|Parameter exists already|B2 Add material parameter|"
      L"Try to create parameter:depth|Parameter exists already|B3 Save model",
      told(world.log()));
  EXPECT_EQ(L"DEPTH=3.0", world.savedParameters("BRACKET.prt"));
  EXPECT_NE(std::string::npos, world.document("BRACKET.prt").find("deep"));
  EXPECT_NE(std::string::npos, world.document("BRACKET.prt").find("designated"));
}

}  // namespace
}  // namespace test
