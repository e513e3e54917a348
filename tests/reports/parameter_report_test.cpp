// The report on parameters: by name, by pattern, of another model.
#include "creo/ProMdl.h"
#include "reports/report_fixture.h"

namespace test {
namespace {

using namespace creo;

class ParameterReport : public ReportTest {
 protected:
  ParameterReport() {
    model("gear.prt", R"("units": "mmKs", "parameters": [
        {"name": "MASS", "type": "double", "value": 2.5, "units": "g", "designated": true, "description": "net",
          "restriction": {"minimum": 0.0, "maximum": 5.0}},
        {"name": "COLOR", "type": "string", "value": "red", "restriction": {"values": ["red", "blue"]}},
        {"name": "TEETH", "type": "integer", "value": 20}, {"name": "COATED", "type": "boolean", "value": true},
        {"name": "REMARK", "type": "note", "value": 3}, {"name": "FROM_FUNCTION", "type": "integer", "value": 1,
          "driver": "function"}, {"name": "FROM_PARAMETER", "type": "integer", "value": 1, "driver": "parameter"},
        {"name": "LONG", "type": "string", "value": ")" +
                          std::string(300, 'x') + R"("}], "relations": ["TEETH = 20"],
      "materials": [{"name": "STEEL", "parameters": [{"name": "GRADE", "type": "integer", "value": 235}]}],
      "material": "STEEL")");
  }
  static std::string parameters(const std::string& attributes) { return task("writeParameters", attributes); }
};

const std::vector<std::string> kAll = {"value",     "art",     "designated", "paraDescription",
                                       "isRelated", "restric", "units"};

TEST_F(ParameterReport, AllColumnsOfOneParameter) {
  EXPECT_EQ(report(parameters(on(kAll) + "paramName_7='mass'"), L"GEAR"),
            line({"mass Value", "mass Type", "mass Designated", "mass Description", "mass Relation driven",
                  "mass Restriction type", "mass Unit"}) +
                line({"2.500000", "Double", "true", "net", "", "Range", "g"}));
  EXPECT_EQ(readBytes(path() + "header"),
            "B0paramName_mass_V|||||mass Value\r\nB0paramName_mass_T|||||mass Type\r\n"
            "B0paramName_mass_Desig|||||mass Designated\r\nB0paramName_mass_Descr|||||mass Description\r\n"
            "B0paramName_mass_Rel|||||mass Relation driven\r\nB0paramName_mass_Res|||||mass Restriction type\r\n"
            "B0paramName_mass_U|||||mass Unit\r\n");
}

TEST_F(ParameterReport, TypesDriversAndRestrictionsInWords) {
  const auto entry = [this](const std::string& name) {
    return parameters(on({"art", "isRelated", "restric"}) + "paramName_0='" + name + "'");
  };
  std::string tasks;
  for (const char* name : {"COLOR", "TEETH", "COATED", "REMARK", "FROM_FUNCTION", "FROM_PARAMETER"})
    tasks += entry(name);
  prepare(tasks, L"GEAR");
  EXPECT_EQ(rows(), line({"String", "", "Enumeration", "Integer", "Relation", "", "Boolean", "", "", "Note ID", "", "",
                          "Integer", "Function", "", "Integer", "Parameter", ""}));
}

TEST_F(ParameterReport, NamesPatternsAndOtherPlaces) {
  const std::string names =
      "paramName_0='' paramName_1='GONE' paramName_3='co*' paramName_40='/^FROM.*N$/' paramName_99='curmat:GRADE' "
      "paramName_100='MASS' paramName_5='LONG'";
  EXPECT_EQ(
      report(parameters(on({"value", "art"}) + names), L"GEAR"),
      line({"GONE Value", "GONE Type", "COLOR Value", "COLOR Type", "COATED Value", "COATED Type", "LONG Value",
            "LONG Type", "FROM_FUNCTION Value", "FROM_FUNCTION Type", "curmat:GRADE Value", "curmat:GRADE Type"}) +
          line({"", "", "red", "String", "true", "Boolean", std::string(259, 'x'), "String", "1", "Integer", "235",
                ""}));
}

// A note has no value. Who asks for all parameters isn't told so, who names it is.
TEST_F(ParameterReport, ANoteAmongOthersIsSilent) {
  EXPECT_EQ(report(parameters(on({"value", "art"}) + "paramName_0='REM*'"), L"GEAR"),
            line({"REMARK Value", "REMARK Type"}) + line({"", "Note ID"}));
  EXPECT_FALSE(world.logHas(L"is a note")) << text::toUtf8(world.log());
}
TEST_F(ParameterReport, ANamedNoteIsAWarning) {
  EXPECT_EQ(report(parameters(on({"value", "art"}) + "paramName_0='REMARK'"), L"GEAR"),
            line({"REMARK Value", "REMARK Type"}) + line({"", "Note ID"}));
  EXPECT_TRUE(world.logHas(L"The parameter REMARK is a note, %REMARK% stays as it is"));
  EXPECT_FALSE(world.logHas(L"(ERR)"));
}

TEST_F(ParameterReport, OnlyTheFirst32CharactersOfANameCount) {
  const std::string name = "A234567890123456789012345678901234567";
  prepare(parameters("value='true' paramName_0='" + name + "'"), L"GEAR");
  EXPECT_EQ(run(), line({name.substr(0, 32) + " Value"}));
}

TEST_F(ParameterReport, AFailingOperationCostsItsFieldOnly) {
  const std::vector<std::string> whole = {"2.500000", "Double", "true", "net", "", "Range", "g"};
  const std::pair<const char*, std::size_t> cases[] = {
      {"ProParameterScaledvalueGet", 0}, {"ProParameterValueGet", 1},  {"ProParameterDesignationVerify", 2},
      {"ProParameterDescriptionGet", 3}, {"ProParameterDriverGet", 4}, {"ProParameterRangeGet", 5}};
  prepare(parameters(on(kAll) + "paramName_0='MASS'"), L"GEAR");
  for (const auto& [operation, column] : cases) {
    world.session().failNext(operation, ProGeneralError);
    std::vector<std::string> expected = whole;
    expected[column] = "";
    EXPECT_EQ(rows(), line(expected)) << operation;
  }
  world.session().failNext("ProMdlToModelitem", ProGeneralError);
  EXPECT_EQ(run(), "\r\n");
  EXPECT_NE(log().find(L"E:Can't convert mdl to mi"), std::wstring::npos) << log();
}

}  // namespace
}  // namespace test
