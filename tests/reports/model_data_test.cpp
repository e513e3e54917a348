// The report on a model: its file, what a solid is as a whole, features, patterns, regeneration.
#include <ctime>
#include <filesystem>

#include "creo/ProMdl.h"
#include "creo/ProParameter.h"
#include "creo/ProSolid.h"
#include "os/local_time.h"
#include "reports/report_fixture.h"

namespace test {
namespace {

using namespace creo;

class ModelDataReport : public ReportTest {
 protected:
  static std::string data(const std::string& attributes) { return task("reportModeldata", attributes); }
};

const std::vector<std::string> kFileColumns = {"mdlname", "mdlnameGen", "fileversion", "commonname", "filename",
                                               "path",    "filesize",   "filedatum",   "modified"};

TEST_F(ModelDataReport, FileColumnsOfAPart) {
  model("gear.prt", R"("commonName": "Gear wheel", "description": ")" + std::string(3000, 'x') + R"(")");
  const std::string file = world.models() + "/gear.prt.1";
  // 2017-03-07 08:05 UTC: day, month and minute have one digit in every zone of whole hours.
  constexpr std::time_t kWritten = 1488873900;
  std::filesystem::last_write_time(
      file, std::chrono::file_clock::from_sys(std::chrono::sys_seconds(std::chrono::seconds(kWritten))));
  const std::tm at = *os::localFields(kWritten);
  const std::string date = "7.3.2017 " + std::to_string(at.tm_hour) + ":5";
  EXPECT_EQ(report(data(on(kFileColumns)), L"GEAR"),
            line({"Model name", "Model name without generic", "File version", "Common name", "File name", "Path",
                  "File size", "File datum", "Is modified"}) +
                line({"GEAR", "GEAR.PRT", "1", "Gear wheel", "GEAR.PRT", folder(), "2 kB", date, "false"}));
  EXPECT_TRUE(readBytes(path() + "header").starts_with("B0mdlname|||||Model name\r\nB0mdlnameGen|||||Model name "));
}

TEST_F(ModelDataReport, AFileWithoutANumberHasItsSize) {
  writeBytes(world.models() + "/gear.prt", R"({"format": 1, "description": ")" + std::string(3000, 'x') + R"("})");
  EXPECT_EQ(line({"File version", "File size"}) + line({"0", "2 kB"}),
            report(data(on({"filesize", "fileversion"})), L"GEAR"));
}

TEST_F(ModelDataReport, AnInstanceBearsItsGenericAndHasNoFileOfItsOwn) {
  model("bolt.prt", R"("familyTable": {"items": [], "instances": [{"name": "BOLT_A"}]})");
  prepare(
      task("groupActions", "reworkMode='1'", "<subtasks>" + data(on(kFileColumns) + on({"generic"})) + "</subtasks>"),
      L"BOLT");
  // A change of the session that isn't saved.
  ProParamvalue value;
  value.type = ProParamvalueType::integer;
  ProParameterCreate(ProMdlToModelitem(ProMdlRetrieve(L"BOLT_A", ProMdlType::part).value).value, L"NEW", value);
  EXPECT_EQ(rows(),
            line({"BOLT_A<BOLT>", "BOLT_A.PRT", "1", "", "BOLT_A<BOLT>.PRT", folder(), "", "", "true", "BOLT.PRT"}));
}

TEST_F(ModelDataReport, ADrawingHasTheFileColumnsOnly) {
  model("gear.drw");
  EXPECT_EQ(report(data(on({"mdlname", "accuracy", "noOfFeats", "mass"})), L"GEAR", ProMdlType::drawing),
            line({"Model name"}) + line({"GEAR"}));
}

constexpr const char* kGear = R"("units": "mks", "accuracy": {"kind": "absolute", "value": 0.01},
  "toleranceClass": "veryCoarse", "material": "steel",
  "materials": [{"name": "STEEL", "parameters": [{"name": "PTC_MASS_DENSITY", "type": "double", "value": 7.85,
    "units": "g/cm^3"}]}],
  "crossSections": [{"id": 1, "name": "A"}, {"id": 2, "name": "B", "type": "offset", "objects": "quilts"},
    {"id": 3, "name": "C", "type": "planar", "objects": "modelAndQuilts"}],
  "simplifiedReps": [{"id": 1, "name": "LIGHT"}, {"id": 2, "name": "SHELL"}],
  "features": [{"id": 1, "name": "BODY", "type": 917, "typeName": "PROTRUSION"},
    {"id": 2, "type": 979, "typeName": "COORDINATE SYSTEM", "hidden": true},
    {"id": 7, "name": "TEETH", "type": 1232, "typeName": "PATTERN", "pattern": {"regeneration": 8}},
    {"id": 8, "type": 1232, "pattern": {"group": true, "regeneration": 32}},
    {"id": 9, "name": "P4", "type": 1232, "pattern": {"regeneration": 4}},
    {"id": 10, "name": "P5", "type": 1232, "pattern": {"regeneration": 5}},
    {"id": 11, "name": "TEXT", "type": 1232, "pattern": {"regeneration": "varying"}},
    {"id": 12, "name": "NONE", "type": 1232}])";

const std::vector<std::string> kSolidColumns = {"accuracy", "tol",     "unitsystem", "fnt",       "noOfFeats", "xsec",
                                                "pattern",  "generic", "simprep",    "featregen", "mass"};
const std::vector<std::string> kGearRow = {
    "abs: 0.010000",
    "DIN/ISO - VERY_COARSE",
    "meter Kilogram Second (MKS)",
    "BODY - PROTRUSION\n - COORDINATE SYSTEM\nTEETH - PATTERN",
    "7",
    "A - planarmodel\nB - offsetquilts\nC - planarmodel and quilts",
    "TEETH - Feature - Varying\n8 - Group - Identical\nP4 - Feature - General\nP5 - Feature - else\n"
    "Invalid typeTEXT - Feature - Failure\nNONE - Feature - Failure",
    "",
    "LIGHT\nSHELL",
    "OK",
    "7850.000000"};

TEST_F(ModelDataReport, SolidColumnsOfAPart) {
  model("gear.prt", kGear);
  EXPECT_EQ(report(data(on(kSolidColumns) + "xFeats='3'"), L"GEAR"),
            line({"Accuracy", "Tolerance", "Unit system", "Feature-name/type", "Number of features",
                  "Cross Sections - intersection type - cutted objects", "Pattern", "Generic name",
                  "Simplified representations", "Regeneration feedback", "Density"}) +
                line(kGearRow));
}

TEST_F(ModelDataReport, ABarePartHasWhatIsThereWithoutBeingSet) {
  model("blank.prt", R"("units": "shop units")");
  EXPECT_EQ(report(data(on(kSolidColumns) + "xFeats='3'"), L"BLANK").substr(0, 10), "\"Accuracy\"");
  EXPECT_EQ(rows(), line({"rel: 0.001200", "ANSI", "shop units (mm-kg-sec-C)", "", "0", "", "", "", "", "OK", ""}));
}

// What fails once leaves its field empty, or short of the piece that it tells; all others are as before.
TEST_F(ModelDataReport, AFailingOperationCostsItsOwnFieldOnly) {
  struct Row {
    const char* operation;
    ProError code;
    std::size_t column;
    const char* left;
  };
  const std::string patternsBehindTheFirst = kGearRow[6].substr(kGearRow[6].find('\n'));
  const std::string invalid = "Invalid typeTEETH - Feature - Failure" + patternsBehindTheFirst;
  const std::string bad = "Bad InputsTEETH - Feature - Failure" + patternsBehindTheFirst;
  const std::string unread = "TEETH - Feature - Failure" + patternsBehindTheFirst;
  const Row cases[] = {
      {"ProSolidAccuracyGet", ProGeneralError, 0, ""},
      {"ProSolidModelclassGet", ProGeneralError, 1, ""},
      {"ProMdlPrincipalunitsystemGet", ProGeneralError, 2, ""},
      {"ProUnitsystemIsStandard", ProGeneralError, 2, kGearRow[2].c_str()},
      {"ProSolidFeatVisit", ProGeneralError, 3, ""},
      {"ProFeatureNameGet", ProGeneralError, 3, " - PROTRUSION\n - COORDINATE SYSTEM\nTEETH - PATTERN"},
      {"ProFeatureVisibilityGet", ProGeneralError, 4, ""},
      {"ProXsecDataGet", ProGeneralError, 5, "B - offsetquilts\nC - planarmodel and quilts"},
      {"ProPatternElemtreeCreate", ProGeneralError, 6, unread.c_str()},
      {"ProElementIntegerGet", static_cast<ProError>(-18), 6, invalid.c_str()},
      {"ProElementIntegerGet", ProBadInputs, 6, bad.c_str()},
      {"ProSimprepdataGet", ProGeneralError, 8, kGearRow[8].c_str()},
      {"ProSolidRegenerate", ProUnattachedFeats, 9, "Unnatached feats"},
      {"ProSolidRegenerate", ProRegenAgain, 9, "regenerate again - loop ?"},
      {"ProSolidRegenerate", ProGeneralError, 9, "failure while regenerate"},
      {"ProSolidRegenerate", ProUserAbort, 9, "failure in function"},
      {"ProPartDensityGet", ProGeneralError, 10, ""},
  };
  model("gear.prt", kGear);
  prepare(data(on(kSolidColumns) + "xFeats='3'"), L"GEAR");
  run();
  for (const Row& row : cases) {
    world.session().failNext(row.operation, row.code);
    std::vector<std::string> expected = kGearRow;
    expected[row.column] = row.left;
    EXPECT_EQ(rows(), line(expected)) << row.operation;
  }
}

TEST_F(ModelDataReport, FlexibleComponentsTellWhatVaries) {
  model("spring.prt", R"("parameters": [{"name": "LENGTH", "type": "double", "value": 40}],
      "dimensions": [{"id": 3, "symbol": "d3", "value": 4.0}])");
  model("rack.asm", R"("features": [{"id": 40, "variantItems": [{"type": "dimension", "id": 3},
        {"type": "parameter", "name": "length"}, {"type": "feature", "id": 99}, {"type": "parameter", "name": "GONE"}]}],
      "components": [{"name": "SPRING", "type": "prt", "feature": 40, "flexible": true},
        {"name": "SPRING", "type": "prt", "feature": 41, "flexible": true}, {"name": "SPRING", "type": "prt"},
        {"name": "AWAY", "type": "prt", "feature": 43, "flexible": true}])");
  EXPECT_EQ(report(notParts(data(on({"flexFeats"}))), L"RACK", ProMdlType::assembly),
            line({"Flexible Features"}) +
                line({"40 - SPRING - DIMENSION d3, 3, PARAMETER LENGTH 40.000000, PARAMETER\n41 - SPRING - \n"
                      "43 - AWAY - "}));
}

TEST_F(ModelDataReport, RegenerationIsToldAndItsFeaturesAreLogged) {
  model("good.prt", R"("features": [{"id": 1, "name": "BODY"}, {"id": 4, "status": "suppressed"}, {"id": 5}])");
  model("bad.prt", R"("relations": ["A = B"])");
  model("loop.prt", R"("parameters": [{"name": "A", "type": "integer", "value": 1},
      {"name": "B", "type": "integer", "value": 1}], "relations": ["B = A"], "postRelations": ["A = 7"])");
  model("top.asm", R"("components": [{"name": "GOOD", "type": "prt"}, {"name": "BAD", "type": "prt"},
      {"name": "LOOP", "type": "prt"}])");
  EXPECT_EQ(report(data(on({"mdlname", "featregen"})), L"TOP", ProMdlType::assembly),
            line({"Model name", "Regeneration feedback"}) + line({"BAD", "failure while regenerate"}) +
                line({"GOOD", "OK"}) + line({"LOOP", "regenerate again - loop ?"}) +
                line({"TOP", "failure while regenerate"}));
  const std::wstring text = log();
  EXPECT_NE(text.find(L"|1 - BODY|5 -"), std::wstring::npos) << text;
  EXPECT_EQ(text.find(L"|4 - "), std::wstring::npos);
  ProSolidRegenerate(ProMdlInit(L"GOOD", ProMdlType::part).value, 0);
  EXPECT_EQ(text, log()) << "nobody listens behind the action";
}

TEST_F(ModelDataReport, WithoutItsReportTwoLinesSayThat) {
  model("gear.prt");
  EXPECT_EQ(report("<task type='reportModeldata' version='3' forPRT='true' forEF='false' reporter='none' "
                   "mdlname='true'/>",
                   L"GEAR"),
            "\r\n");
  EXPECT_NE(log().find(L"E:Report can't be found|E:Can't find the specified reporter"), std::wstring::npos) << log();
}

}  // namespace
}  // namespace test
