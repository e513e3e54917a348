// Accuracy, tolerances, bounds of dimensions, units, regeneration and masses.
#include <gmock/gmock.h>

#include "actions/action_fixture.h"
#include "headless/model/models.h"

namespace test {
namespace {

using testing::HasSubstr;

// A plate of 100 x 50 x 10 mm, whose thickness is a dimension.
constexpr const char* kPlate =
    R"({"format": 1, "units": "mmNs", "parameters": [{"name": "A", "type": "double", "value": 1.0}],
  "dimensions": [{"id": 1, "symbol": "T", "value": 10.0, "tolerance": {"upper": 0.5, "lower": 0.25}},
                 {"id": 2, "symbol": "ANGLE", "value": 30.0, "angular": true}, {"id": 3, "symbol": "FREE", "value": 2.0}],
  "familyTable": {"items": [{"type": "dimension", "name": "T"}], "instances": [{"name": "THICK", "values": {"T": 20.0}}]},
  "crossSections": [{"id": 1, "name": "A", "distance": 5.0}], "accuracy": {"kind": "absolute", "value": 0.254},
  "solid": {"primitives": [{"type": "box", "size": [100, 50, "T"], "placement": {"position": [25.4, 0, 0]}}],
            "coordinateSystems": [{"name": "CS", "placement": {"position": [10, 0, 0]}}]}})";

class SolidSettings : public ActionTest {
 protected:
  void SetUp() override {
    writeBytes(world.models() + "/bracket.prt.1", kPlate);
    writeBytes(world.models() + "/good.txt", "! sizes\n\nFINE 0.05\nMEDIUM  0.1\n");
    writeBytes(world.models() + "/bad.txt", "FINE 0.05\nMEDIUM about 1\n");
  }
  const headless::ModelRecord& record() {
    const auto model = creo::ProMdlRetrieve(L"BRACKET", creo::ProMdlType::part);
    return world.session().models().find(model.value)->document->record;
  }
};

TEST_F(SolidSettings, AccuracyTolerancesAndBounds) {
  const std::wstring log =
      run(task("setAccuracy", "valtype='rel' value='0.0012'") + task("setAccuracy", "valtype='rel' value='5'") +
          task("setAccuracy", "valtype='abs' value='fine'") + task("setAccuracy", "valtype='absolute' value='1'") +
          task("setAccuracy") + task("setTolerance", "tol='3'") + task("setTolerance", "tol='5'") +
          task("loadToleranceTable", "path='d:/good.txt'") + task("loadToleranceTable", "path='d:/bad.txt'") +
          task("loadToleranceTable", "path='d:/none.txt'") + task("setAllDimensionBounds", "bound='upper'") +
          task("setAllDimensionBounds", "bound='Upper'"));
  EXPECT_EQ(
      L"B0 Set accuracy|New value is set|B1 Set accuracy|E:Failure while set the value|"
      L"B2 Set accuracy|E:Can't parse accuracy, haven't set it|B3 Set accuracy|E:'valtype' can't be 'absolute', but "
      L"rel or abs|"
      L"B4 Set accuracy|E:The attribute 'value' is missing|B5 Set tolerance|New value is set|"
      L"B6 Set tolerance|E:'tol' can't be '5', but 0 to 4|B7 Load tolerance table|d:\\good.txt|Tolerance table is "
      L"loaded|"
      L"B8 Load tolerance table|d:\\bad.txt|E:The tolerance table can't be read|"
      L"B9 Load tolerance table|d:\\none.txt|E:The tolerance table can't be found|"
      L"B10 Set all dimension bounds|1 dimensions stand at upper|"
      L"B11 Set all dimension bounds|E:'bound' can't be 'Upper', but nominal, upper, middle or lower",
      log);
  EXPECT_EQ(creo::ProAccuracyKind::relative, record().accuracy->kind);
  EXPECT_EQ(0.0012, record().accuracy->value);
  EXPECT_EQ(creo::ProToleranceClass::coarse, record().toleranceClass);
  ASSERT_EQ(2U, record().toleranceTable.size());
  EXPECT_EQ(0.1, record().toleranceTable[1].value);
  const auto model = creo::ProMdlInit(L"BRACKET", creo::ProMdlType::part).value;
  EXPECT_NEAR(100 * 50 * 10.5, creo::ProSolidMassPropertyGet(model).value.volume, 1e-6);
}

TEST_F(SolidSettings, UnitsKeepSizesOrNumbers) {
  EXPECT_EQ(
      L"B0 Set units|Unitsystem is already set|B1 Set units|New unitsystem is set|B2 Set units|E:Can't set new "
      L"unitsystem",
      run(task("setUnits", "us='mmns' convert='true'") +
          task("setUnits", "us='Inch lbm Second (Creo Parametric Default)' convert='true'") +
          task("setUnits", "us='furlongs' convert='true'")));
  EXPECT_NEAR(10 / 25.4, std::get<double>(record().dimensions[0].value), 1e-12);
  EXPECT_NEAR(0.5 / 25.4, record().dimensions[0].tolerance->upper, 1e-12);
  EXPECT_EQ(30.0, std::get<double>(record().dimensions[1].value));
  EXPECT_NEAR(20 / 25.4, std::get<double>(record().familyTable->instances[0]->values[0].value), 1e-12);
  EXPECT_NEAR(0.01, record().accuracy->value, 1e-12);
  EXPECT_NEAR(5 / 25.4, record().crossSections[0].distance, 1e-12);
  const auto model = creo::ProMdlInit(L"BRACKET", creo::ProMdlType::part).value;
  EXPECT_NEAR(50000 / (25.4 * 25.4 * 25.4), creo::ProSolidMassPropertyGet(model).value.volume, 1e-9);
  EXPECT_NEAR(1, creo::ProSolidOutlineGet(model).value.min.x, 1e-9);
}

TEST_F(SolidSettings, ASystemOfTheModelsOwnIsMadeOnce) {
  const std::string own = "us='SITE' length='cm' mass='g' time='sec' temp='C'";
  EXPECT_EQ(
      L"B0 Set units|New unit system 'SITE' is created|New unitsystem is set|"
      L"B1 Set units|Unit system exists already|Unitsystem is already set|"
      L"B2 Set units|E:Can't set new unitsystem",
      run(task("setUnits", own) + task("setUnits", own) + task("setUnits", "us='ODD' length='kg'")));
  EXPECT_EQ("SITE", record().units);
  EXPECT_EQ(10.0, std::get<double>(record().dimensions[0].value));
}

TEST_F(SolidSettings, ANewSystemTakesTheUnitsItIsntToldFromCreosDefault) {
  EXPECT_EQ(L"B0 Set units|New unit system 'SITE' is created|New unitsystem is set",
            run(task("setUnits", "us='SITE' length='cm'")));
  const headless::UnitSystemRecord& own = record().unitSystems.at(0);
  EXPECT_EQ("cm lbm sec F", own.length + " " + own.mass + " " + own.time + " " + own.temperature);
}

TEST_F(SolidSettings, ANumberBeyondDoublesKeepsTheModelAsItIs) {
  writeBytes(world.models() + "/bracket.prt.1", R"({"format": 1, "units": "mks",
      "dimensions": [{"id": 1, "value": 3.0}, {"id": 2, "value": 1e308}]})");
  EXPECT_EQ(L"B0 Set units|E:Can't set new unitsystem", run(task("setUnits", "us='mmKs' convert='true'")));
  EXPECT_EQ("mks", record().units);
  EXPECT_EQ(3.0, std::get<double>(record().dimensions[0].value));
}

TEST_F(SolidSettings, RegenerationTellsItsResultsApart) {
  const struct {
    const char* members;
    creo::ProError arranged;
    const wchar_t* expected;
  } cases[] = {
      {"", creo::ProNoError, L"B0 Regenerate model|Model is regenerated"},
      {"", creo::ProUnattachedFeats, L"B0 Regenerate model|W:Unattached features detected, but no error occured"},
      {R"(, "relations": ["A = NONE"])", creo::ProNoError, L"B0 Regenerate model|E:Failure while regenerate model"},
      // The relations behind the regeneration change what those before it read, each time anew.
      {R"(, "relations": ["B = A"], "postRelations": ["A = A + 1"])", creo::ProNoError,
       L"B0 Regenerate model|E:Failure while regenerate model: it needs another regeneration after 4"},
  };
  for (const auto& c : cases) {
    World own;
    writeBytes(own.models() + "/bracket.prt.1",
               std::string(R"({"format": 1, "parameters": [{"name": "A", "type": "double", "value": 1.0},
                   {"name": "B", "type": "double", "value": 0.0}])") +
                   c.members + "}");
    own.list("list.xml", task("regenerateModel", "force='true'"));
    own.start();
    own.open(L"BRACKET", creo::ProMdlType::part);
    if (c.arranged) own.session().failNext("ProSolidRegenerate", c.arranged);
    own.run("list.xml");
    EXPECT_EQ(c.expected, told(own.log()));
  }
}

TEST_F(SolidSettings, MassesWarnWhereNoDensityIsStatedAndKnowTheirSystem) {
  EXPECT_EQ(
      L"B0 Compute mass|W:Density not found at BRACKET, set Density to 1.0|Mass compution solved|"
      L"mass 50000.000000, volume 50000.000000, centre of gravity 65.400000, 25.000000, 5.000000|"
      L"B1 Compute mass|W:Density not found at BRACKET, set Density to 1.0|Mass compution solved|"
      L"mass 50000.000000, volume 50000.000000, centre of gravity 75.400000, 25.000000, 5.000000|"
      L"B2 Compute mass|E:Coordinate system not found",
      run(task("regenerateMass", "csys='cs'") + task("regenerateMass") + task("regenerateMass", "csys='NO'")));
  EXPECT_EQ(0.0, record().density) << "a part that is given a material later would weigh as if it had none";
}

}  // namespace
}  // namespace test
