// The reports of geometry: a list run on models, the bytes of the report.
#include <gtest/gtest.h>

#include "os/surroundings.h"
#include "support/world.h"
#include "text/encoding.h"

namespace test {
namespace {

using creo::ProMdlType;

class GeometryReport : public testing::Test {
 protected:
  // A document of that file name; what stands between the braces behind the format.
  void model(const std::string& file, const std::string& members) {
    writeBytes(world_.models() + "/" + file, "{\"format\": 1, " + members + "}");
  }
  // The report of a run on the model; single quotes stand for double ones.
  std::string report(const std::wstring& name, ProMdlType type, const std::string& tasks) {
    world_.config("kvd_write_history_in_models=0");
    world_.list("report.xml", tasks,
                "<task type='openCSVReport' version='3' name='audit' file='t:\\audit.csv' "
                "overwrite='true'/>");
    world_.start();
    for (const char* operation : failing_) world_.session().failNext(operation, creo::ProGeneralError);
    world_.open(name, type);
    world_.run("report.xml");
    return readBytes(world_.temp() + "/audit.csv");
  }
  static std::string geometry(const std::string& columns) {
    std::string attributes;
    for (const char* entry : {"mass", "volume", "gravity", "boundingbox", "surfacearea"})
      attributes += std::string(entry) + "='" + (columns.find(entry) == columns.npos ? "false" : "true") + "' ";
    return "<task type='reportGeometryProperties' version='3' forPRT='true' forASM='true' forEF='false' "
           "reporter='audit' " +
           attributes + "/>";
  }
  // items: of a filter.
  static std::string positions(const std::string& attributes, const std::string& items = "") {
    return std::string("<task type='reportFeaturePositions' version='3' forPRT='true' forASM='true' forEF='") +
           (items.empty() ? "false" : "true") + "' reporter='audit' " + attributes + "><filter>" + items +
           "</filter></task>";
  }

  World world_;
  std::vector<const char*> failing_;
};

constexpr const char* kSteelBox = R"("material": "STEEL", "materials": [{"name": "STEEL", "parameters": [
    {"name": "PTC_MASS_DENSITY", "type": "double", "value": 7.85e-06, "units": "kg/mm^3"}]}],
    "solid": {"primitives": [{"type": "box", "size": [80, 40, 5], "placement": {"position": [10, -60, -5]}}]})";

// The box lies on one side of the origin in x: 10 and 90 give 100, not 80; in y 60 and 20 give 80.
TEST_F(GeometryReport, ColumnsAreThoseThatAreSwitchedOn) {
  model("box.prt.1", kSteelBox);
  EXPECT_EQ(
      "\"Mass\",\"Volume\",\"Gravity center\",\"Bounding box\",\"Surface area\",\"Volume\"\r\n"
      "\"0.125600\",\"16000.000000\",\"50.000000:-40.000000:-2.500000\",\"100.000000:80.000000:5.000000\","
      "\"7600.000000\",\"16000.000000\"\r\n",
      report(L"BOX", ProMdlType::part, geometry("mass volume gravity boundingbox surfacearea") + geometry("volume")));
}

TEST_F(GeometryReport, AModelWithoutGeometryHasNoColumns) {
  model("bare.prt.1", R"("parameters": [])");
  EXPECT_EQ("\r\n", report(L"BARE", ProMdlType::part, geometry("mass volume boundingbox")));
  EXPECT_FALSE(world_.logHas(L"(ERR)"));
}

TEST_F(GeometryReport, AnOutlineThatFailsLeavesItsFieldEmpty) {
  model("box.prt.1", kSteelBox);
  failing_ = {"ProSolidOutlineGet"};
  EXPECT_EQ("\"Volume\",\"Bounding box\"\r\n\"16000.000000\",\"\"\r\n",
            report(L"BOX", ProMdlType::part, geometry("volume boundingbox")));
}

TEST_F(GeometryReport, PositionsAreFoundByNameAndKind) {
  model("a.prt.1", R"("features": [{"id": 3, "name": "PNT_A", "type": 931}, {"id": 4, "name": "PNT_OFF",
      "type": 931, "status": "suppressed"}], "dimensions": [{"id": 1, "symbol": "H", "value": 12.5}],
    "solid": {"coordinateSystems": [{"name": "CS_A", "placement": {"position": [1, 2, "H"], "xAxis": [0, 1, 0]}},
        {"name": "OTHER"}, {"name": "CS_BAD", "placement": {"position": ["NOTHING", 0, 0]}}],
      "points": [{"feature": 3, "placement": {"position": [4, 5, 6]}}, {"feature": 4}]})");
  const std::string points =
      "\"1.000000,0.000000,0.000000,0.000000\n0.000000,1.000000,0.000000,0.000000\n"
      "0.000000,0.000000,1.000000,0.000000\n4.000000,5.000000,6.000000,1.000000\"";
  EXPECT_EQ(
      "\"A-CS_A\",\"A-PNT_A\",\"A-PNT_A\"\r\n"
      "\"0.000000,1.000000,0.000000,0.000000\n-1.000000,0.000000,0.000000,0.000000\n"
      "0.000000,0.000000,1.000000,0.000000\n1.000000,2.000000,12.500000,1.000000\"," +
          points + "," + points + "\r\n",
      report(L"A", ProMdlType::part,
             positions("fname='cs_*' tcs='true'") + positions("fname='*' tdp='true'") +
                 positions("fname='PNT_A' tcs='true' tdp='true'") + positions("fname='PNT_A' tcs='true'")));
  EXPECT_NE(std::wstring::npos,
            world_.messages().find(L"A.PRT: position: 'NOTHING' is neither a parameter nor a dimension"));
}

TEST_F(GeometryReport, PositionsOfComponentsAreSeenFromTheTop) {
  model("pin.prt.1", R"("solid": {"coordinateSystems": [{"name": "CS"}], "points": [{"name": "TIP",
      "placement": {"position": [0, 0, 5]}}]})");
  model("sub.asm.1", R"("features": [{"id": 7, "status": "suppressed"}], "components": [{"name": "PIN", "type": "prt",
        "feature": 2, "placement": {"position": [10, 0, 0], "zAxis": [1, 0, 0], "xAxis": [0, 1, 0]}},
      {"name": "OFF", "type": "prt", "feature": 7}])");
  model("off.prt.1", R"("solid": {"coordinateSystems": [{"name": "CS"}]})");
  model("top.asm.1", R"("components": [{"name": "SUB", "type": "asm",
      "placement": {"position": [0, 100, 0], "xAxis": [0, 1, 0]}}], "solid": {"coordinateSystems": [{"name": "CS"}]},
      "explodedStates": [{"id": 1, "name": "OF_TOP"}])");
  const std::string topOnly = "<i type='explodestateexists' expldname='OF_TOP' filtertype='true'/>";
  // In SUB: x to y, y to z, z to x. In TOP: x to y, y to -x.
  const std::string axes =
      "-1.000000,0.000000,0.000000,0.000000\n0.000000,0.000000,1.000000,0.000000\n"
      "0.000000,1.000000,0.000000,0.000000\n";
  EXPECT_EQ(
      "\"TOP-CS\",\"PIN-CS\",\"PIN-TIP\",\"TOP-CS\"\r\n"
      "\"1.000000,0.000000,0.000000,0.000000\n0.000000,1.000000,0.000000,0.000000\n"
      "0.000000,0.000000,1.000000,0.000000\n0.000000,0.000000,0.000000,1.000000\",\"" +
          axes + "0.000000,110.000000,0.000000,1.000000\",\"" + axes + "0.000000,115.000000,0.000000,1.000000\"," +
          "\"1.000000,0.000000,0.000000,0.000000\n0.000000,1.000000,0.000000,0.000000\n"
          "0.000000,0.000000,1.000000,0.000000\n0.000000,0.000000,0.000000,1.000000\"\r\n",
      report(L"TOP", ProMdlType::assembly,
             positions("fname='*' tcs='true' tdp='true' recursive='true'", topOnly) +
                 positions("fname='*' tcs='true'", topOnly)));
}

TEST_F(GeometryReport, WithoutTheReportNothingIsAsked) {
  model("box.prt.1", kSteelBox);
  world_.list("report.xml", geometry("mass") + positions("fname='*' tcs='true'"));
  world_.start();
  world_.open(L"BOX", ProMdlType::part);
  world_.run("report.xml");
  EXPECT_TRUE(world_.logHas(L"Report can't be found"));
  EXPECT_EQ(0, world_.session().calls("ProSolidMassPropertyGet"));
  EXPECT_EQ(0, world_.session().calls("ProSolidCsysVisit"));
}

}  // namespace
}  // namespace test
