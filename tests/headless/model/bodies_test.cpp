// Bodies of parts and assemblies against figures that were worked out by hand.
#include <cmath>
#include <numbers>

#include "creo/ProDatum.h"
#include "creo/ProMaterial.h"
#include "creo/ProPart.h"
#include "creo/ProSolid.h"
#include "headless/session_fixture.h"
#include "support/step_file.h"
#include "text/format.h"

namespace headless {
namespace {

using namespace creo;

constexpr double kPi = std::numbers::pi;
constexpr const char* kPlate = R"({"type": "box", "size": [80, 40, 5]})";

class BodyTest : public test::HeadlessSession {
 protected:
  static std::string numbers(const ProVector& v) { return text::toUtf8(text::format(L"%f %f %f", v.x, v.y, v.z)); }
  // "0 0 0 to 80 40 5" with six decimals.
  static std::string outline(ProMdl solid, const ProTransform* into = nullptr) {
    const auto box = ProSolidOutlineGet(solid, into);
    EXPECT_TRUE(box);
    return numbers(box.value.min) + " to " + numbers(box.value.max);
  }
  static std::string outlineOf(const ProVector& min, const ProVector& max) {
    return numbers(min) + " to " + numbers(max);
  }
  static double volume(ProMdl solid) { return ProSolidMassPropertyGet(solid).value.volume; }
};

TEST_F(BodyTest, PrimitivesHaveTheirVolumeAreaCentreAndOutline) {
  const struct {
    const char* primitives;
    double volume, area;
    ProVector centre, min, max;
  } cases[] = {
      {kPlate, 16000, 7600, {40, 20, 2.5}, {}, {80, 40, 5}},
      {R"({"type": "box", "size": [80, 40, 5], "placement": {"position": [10, -60, -5]}})",
       16000,
       7600,
       {50, -40, -2.5},
       {10, -60, -5},
       {90, -20, 0}},
      {R"({"type": "cylinder", "diameter": 20, "length": 100, "placement": {"zAxis": [-2, 0, 0]}})",
       10000 * kPi,
       2200 * kPi,
       {-50, 0, 0},
       {-100, -10, -10},
       {0, 10, 10}},
      {R"({"type": "cone", "diameter": 20, "topDiameter": 10, "length": 12})",
       700 * kPi,
       (100 + 25 + 15 * 13) * kPi,
       {0, 0, 11.0 * 3 / 7},
       {-10, -10, 0},
       {10, 10, 12}},
      {R"({"type": "cone", "diameter": 6, "topDiameter": 6, "length": 4})",
       36 * kPi,
       42 * kPi,
       {0, 0, 2},
       {-3, -3, 0},
       {3, 3, 4}},
      {R"({"type": "sphere", "diameter": 6, "placement": {"position": [1, 2, 3]}})",
       36 * kPi,
       36 * kPi,
       {1, 2, 3},
       {-2, -1, 0},
       {4, 5, 6}},
      {R"({"type": "extrusion", "profile": [[0, 0], [0, 30], [40, 0]], "length": 10})",  // clockwise
       6000,
       2400,
       {40.0 / 3, 10, 5},
       {},
       {40, 30, 10}},
      {R"({"type": "revolution", "profile": [[0, 0], [10, 0], [10, 20], [5, 20], [5, 50], [0, 50]]})",
       2750 * kPi,
       900 * kPi,
       {0, 0, 46250.0 / 2750},
       {-10, -10, 0},
       {10, 10, 50}},
      {R"({"type": "revolution", "profile": [[0, 0], [10, 0], [10, 10], [0, 10]], "angle": 180})",
       500 * kPi,
       200 * kPi + 200,
       {0, 40 / (3 * kPi), 5},
       {-10, 0, 0},
       {10, 10, 10}},
      {R"({"type": "box", "size": [10, 10, 10]},
          {"type": "box", "size": [10, 10, 10], "placement": {"position": [5, 0, 0]}})",
       1500,
       800,
       {7.5, 5, 5},
       {},
       {15, 10, 10}},
      {R"({"type": "box", "size": [10, 10, 10]},
          {"type": "box", "size": [10, 10, 10], "placement": {"position": [20, 0, 0]}})",
       2000,
       1200,
       {15, 5, 5},
       {},
       {30, 10, 10}},
  };
  for (const auto& c : cases) {
    const ProMdl solid = part(c.primitives);
    const auto mass = ProSolidMassPropertyGet(solid);
    ASSERT_TRUE(mass) << c.primitives << messages();
    EXPECT_NEAR(c.volume, mass.value.volume, 1e-7 * c.volume) << c.primitives;
    EXPECT_NEAR(c.area, mass.value.surfaceArea, 1e-7 * c.area) << c.primitives;
    EXPECT_NEAR(c.centre.x, mass.value.gravityCenter.x, 1e-6) << c.primitives;
    EXPECT_NEAR(c.centre.y, mass.value.gravityCenter.y, 1e-6) << c.primitives;
    EXPECT_NEAR(c.centre.z, mass.value.gravityCenter.z, 1e-6) << c.primitives;
    EXPECT_EQ(outlineOf(c.min, c.max), outline(solid)) << c.primitives;
  }
}

// The values are those of formulas: a cylinder and a cone cut aslant, a ball with a hole through its middle, a bar that
// is drilled across.
TEST_F(BodyTest, RoundFacesThatCutEachOtherAreMeasuredAlongTheirEdges) {
  const double shadow = 100 * kPi / std::pow(1 - 0.375 * 0.375, 1.5), cut = -0.375 * 10 / (1 - 0.375 * 0.375);
  double across = 0;  // 4 dx of the chords of both cylinders, x = 5 cos t
  constexpr int kSteps = 64;
  for (int i = 0; i < kSteps; ++i) {
    const double t = kPi / kSteps * (i + 0.5), x = 5 * std::cos(t);
    across += 4 * std::sqrt(100 - x * x) * 25 * std::sin(t) * std::sin(t) * kPi / kSteps;
  }
  const struct {
    const char* primitives;
    double volume, area;  // area 0: not told by a formula
    ProVector centre;
  } cases[] = {
      {R"({"type": "cylinder", "diameter": 20, "length": 80},
          {"type": "box", "use": "cut", "size": [100, 100, 100],
           "placement": {"position": [-40, -50, -5], "xAxis": [4, 0, 3], "zAxis": [-3, 0, 4]}})",
       2500 * kPi,
       725 * kPi,
       {0.75, 0, 12.78125}},
      {R"({"type": "cone", "diameter": 40, "topDiameter": 0, "length": 40},
          {"type": "box", "use": "cut", "size": [100, 100, 100],
           "placement": {"position": [-40, 50, -10], "xAxis": [4, 0, 3], "zAxis": [3, 0, -4]}})",
       shadow * 20 / 3,
       shadow * (1.25 + std::sqrt(5)),
       {0.75 * cut, 0, 25 + 0.5625 * cut}},
      {R"({"type": "sphere", "diameter": 20, "placement": {"position": [1000, 2000, 3000]}},
          {"type": "hole", "diameter": 12, "placement": {"position": [1000, 2000, 3000], "zAxis": [1, 2, 2]}})",
       kPi * 16 * 16 * 16 / 6,
       512 * kPi,
       {1000, 2000, 3000}},
      {R"({"type": "cylinder", "diameter": 20, "length": 50},
          {"type": "hole", "diameter": 10, "placement": {"position": [0, 0, 25], "zAxis": [3, 4, 0]}})",
       5000 * kPi - across,
       0,
       {0, 0, 25}},
  };
  for (const auto& c : cases) {
    const auto mass = ProSolidMassPropertyGet(part(c.primitives)).value;
    EXPECT_NEAR(c.volume, mass.volume, 1e-7 * c.volume) << c.primitives << messages();
    if (c.area != 0) EXPECT_NEAR(c.area, mass.surfaceArea, 1e-7 * c.area) << c.primitives;
    EXPECT_NEAR(c.centre.x, mass.gravityCenter.x, 1e-6) << c.primitives;
    EXPECT_NEAR(c.centre.y, mass.gravityCenter.y, 1e-6) << c.primitives;
    EXPECT_NEAR(c.centre.z, mass.gravityCenter.z, 1e-6) << c.primitives;
  }
}

TEST_F(BodyTest, CutsAndHolesTakeAway) {
  const struct {
    const char* second;
    double volume, area;
  } cases[] = {
      // Through all, from wherever it stands.
      {R"({"type": "hole", "diameter": 10, "placement": {"position": [40, 20, 2]}})", 16000 - 125 * kPi, 7600},
      {R"({"type": "hole", "diameter": 10, "placement": {"position": [40, 20, 900]}})", 16000 - 125 * kPi, 7600},
      {R"({"type": "hole", "diameter": 10, "length": 2, "placement": {"position": [40, 20, 5], "zAxis": [0, 0, -1]}})",
       16000 - 50 * kPi, 7600 + 20 * kPi},
      {R"({"type": "box", "use": "cut", "size": [20, 40, 5]})", 12000, 5800},
      {R"({"type": "hole", "diameter": 2, "placement": {"position": [10, 10, 0]}},
          {"type": "hole", "diameter": 2, "placement": {"position": [20, 10, 0]}},
          {"type": "cylinder", "diameter": 2, "length": 15, "placement": {"position": [10, 10, 0]}})",
       16000 + 5 * kPi, 7600 + 28 * kPi},
  };
  for (const auto& c : cases) {
    const auto mass = ProSolidMassPropertyGet(part(std::string(kPlate) + ", " + c.second));
    EXPECT_NEAR(c.volume, mass.value.volume, 1e-3) << c.second << messages();
    EXPECT_NEAR(c.area, mass.value.surfaceArea, 1e-3) << c.second;
  }
}

TEST_F(BodyTest, AnOutlineIsExactInTurnedAxes) {
  const double half = std::sqrt(0.5);
  ProTransform into;  // turned about x by 45 degrees, then shifted
  into.yAxis = {0, half, half};
  into.zAxis = {0, -half, half};
  into.origin = {1, 2, 3};
  const ProMdl bar = part(R"({"type": "cylinder", "diameter": 20, "length": 100})");
  EXPECT_EQ(outlineOf({-9, 2 - 110 * half, 3 - 10 * half}, {11, 2 + 10 * half, 3 + 110 * half}), outline(bar, &into));
  EXPECT_EQ(outlineOf({1, 2 - 5 * half, 3}, {81, 2 + 40 * half, 3 + 45 * half}), outline(part(kPlate), &into));
}

TEST_F(BodyTest, DimensionsParametersAndFeaturesShapeThePart) {
  const ProMdl plate = part(R"({"type": "box", "size": ["WIDTH", "WIDTH / 2", "thickness"]},
        {"type": "hole", "diameter": 10, "feature": 7, "placement": {"position": ["WIDTH / 2", 20, 0]}})",
                            R"("dimensions": [{"id": 1, "symbol": "WIDTH", "value": 80}],
        "parameters": [{"name": "THICKNESS", "type": "double", "value": 5}],
        "features": [{"id": 7, "name": "BORE", "type": 911}],
        "relations": ["WIDTH = THICKNESS * 16"],
        "familyTable": {"items": [{"type": "dimension", "name": "WIDTH"}, {"type": "feature", "name": "BORE"}],
          "instances": [{"name": "SHORT", "values": {"WIDTH": 40, "BORE": "N"}}]})");
  EXPECT_NEAR(16000 - 125 * kPi, volume(plate), 1e-6);
  EXPECT_NEAR(16000, volume(retrieve(L"SHORT")), 1e-6) << "without its bore; the relation comes before the row";
  set(plate, L"THICKNESS", real(10));
  EXPECT_NEAR(32000 - 250 * kPi, volume(plate), 1e-6) << "the parameter at once";
  EXPECT_EQ(ProNoError, ProSolidRegenerate(plate, 0));
  EXPECT_NEAR(160 * 80 * 10 - 250 * kPi, volume(plate), 1e-6) << "the dimension once its relation has run";
}

TEST_F(BodyTest, MassFollowsTheMaterialInTheUnitsOfThePart) {
  const auto material = [](const std::string& density) {
    return R"("material": "steel", "materials": [{"name": "BRASS"}, {"name": "STEEL", "parameters": [
        {"name": "PTC_MASS_DENSITY", "type": "double", "value": )" +
           density + "}]}]";
  };
  const struct {
    std::string members;
    double mass;
  } cases[] = {
      {"", 16000},  // without a density it is 1
      {R"("material": "BRASS", "materials": [{"name": "BRASS"}])", 16000},
      {material(R"(7.85e-06, "units": "kg/mm^3")"), 0.1256},
      {material(R"(7850, "units": "kg/m^3")"), 0.1256},
      {material("7.85e-06"), 0.1256},
      {R"("density": 2, "materials": [{"name": "TIN"}], "material": "TIN")", 32000},
      {R"("density": 2, )" + material("7.85e-06"), 0.1256},  // the material's comes first
      {R"("density": 2, )" + material("0"), 32000},
      {R"("units": "mmNs", )" + material(R"(7850, "units": "kg/m^3")"), 0.0001256},
      {R"("units": "mks", )" + material(R"(7850, "units": "kg/m^3")"), 125600000},
  };
  for (const auto& c : cases) {
    const auto mass = ProSolidMassPropertyGet(part(kPlate, c.members)).value;
    EXPECT_NEAR(c.mass, mass.mass, 1e-9 * c.mass) << c.members;
    EXPECT_NEAR(mass.mass / mass.volume, mass.density, 1e-12) << c.members;
  }
}

TEST_F(BodyTest, AStatedDensityIsTheCurrentMaterials) {
  const std::string bare = R"("material": "A", "materials": [{"name": "A", "parameters": []}])";
  const struct {
    std::string members;
    const char* held;  // in the document behind
    bool ofPart;
  } cases[] = {
      {"", R"("density":4.0)", true},
      {R"("density": 3, "densityEstimated": true)", R"("density":4.0)", true},
      {R"("density": 4, "densityEstimated": true, )" + bare, R"("density":4.0)", true},  // it holds already
      {bare, R"("units":"kg/mm^3")", false},
      {R"("units": "mmNs", "material": "A", "materials": [{"name": "A", "parameters": [
           {"name": "PTC_MASS_DENSITY", "type": "double", "value": 1, "units": "kg/m^3"}]}])",
       R"("units":"kg/m^3")", false},
  };
  for (const auto& c : cases) {
    const ProMdl model = part(kPlate, c.members);
    EXPECT_EQ(ProNoError, ProPartDensitySet(model, 4)) << c.members;
    EXPECT_DOUBLE_EQ(4, ProPartDensityGet(model).value) << c.members;
    EXPECT_DOUBLE_EQ(4, ProSolidMassPropertyGet(model).value.density) << c.members;
    std::string document = session().models().documentText(model).value;
    std::erase_if(document, [](char letter) { return letter == ' ' || letter == '\n'; });
    EXPECT_NE(std::string::npos, document.find(c.held)) << document;
    EXPECT_EQ(c.ofPart, document.find("\"density\":") != std::string::npos) << document;
    EXPECT_EQ(std::string::npos, document.find("\"densityEstimated\":true")) << document;
  }
}

TEST_F(BodyTest, AnAssemblyIsItsComponentsWhereTheyStand) {
  model("block.prt.1", R"("solid": {"primitives": [{"type": "box", "size": [10, 20, 30]}]})");
  model("inch.prt.1", R"("units": "inlbs", "solid": {"primitives": [{"type": "box", "size": [1, 1, 1]}]})");
  model("skel.prt.1", R"("skeleton": true, "solid": {"primitives": [{"type": "box", "size": [500, 1, 1]}]})");
  model("bare.prt.1");
  model("sub.asm.1", R"("features": [{"id": 9, "status": "suppressed"}], "components": [
      {"name": "BLOCK", "type": "prt", "feature": 3, "placement": {"position": [100, 0, 0], "zAxis": [1, 0, 0], "xAxis": [0, 1, 0]}},
      {"name": "BLOCK", "type": "prt", "feature": 5}, {"name": "BARE", "type": "prt"}, {"name": "SKEL", "type": "prt"},
      {"name": "BLOCK", "type": "prt", "feature": 9, "placement": {"position": [999, 0, 0]}}])");
  model("top.asm.1", R"("parameters": [{"name": "GAP", "type": "double", "value": 7}], "components": [
      {"name": "SUB", "type": "asm", "feature": 4, "placement": {"position": [0, 0, "GAP"], "xAxis": [0, 1, 0]}},
      {"name": "INCH", "type": "prt"}])");
  const ProMdl sub = retrieve(L"SUB", ProMdlType::assembly), top = retrieve(L"TOP", ProMdlType::assembly);
  const auto mass = ProSolidMassPropertyGet(sub).value;
  EXPECT_NEAR(12000, mass.mass, 1e-6);
  EXPECT_NEAR(4400, mass.surfaceArea, 1e-6);
  EXPECT_EQ(numbers({60, 7.5, 12.5}), numbers(mass.gravityCenter));
  EXPECT_EQ(outlineOf({}, {130, 20, 30}), outline(sub));

  // x goes to y, y to -x.
  EXPECT_EQ(outlineOf({-20, 0, 0}, {25.4, 130, 37}), outline(top));
  EXPECT_NEAR(12000 + 25.4 * 25.4 * 25.4, volume(top), 1e-6);
  EXPECT_NEAR(12000.45359237, ProSolidMassPropertyGet(top).value.mass, 1e-6);

  const auto place = ProAsmcomppathTrfGet(top, {4, 3}).value;
  EXPECT_EQ(numbers({0, 100, 7}), numbers(place.origin));
  EXPECT_EQ(numbers({0, 1, 0}), numbers(place.zAxis));
  EXPECT_EQ(numbers({-1, 0, 0}), numbers(place.xAxis));
  EXPECT_TRUE(ProAsmcomppathTrfGet(top, {}));
  for (const std::vector<int>& path : {std::vector<int>{3}, {4, 9}, {4, 4}, {4, 3, 1}})
    EXPECT_EQ(ProNotFound, ProAsmcomppathTrfGet(top, path).error);
}

// Every level holds the one below it twice: there are a million blocks, and forty looks at components.
TEST_F(BodyTest, ACostlessTreeOfManyComponentsIsMeasuredOnce) {
  model("l0.asm.1", R"("components": [{"name": "BLOCK", "type": "prt"}])");
  model("block.prt.1", R"("solid": {"primitives": [{"type": "box", "size": [1, 1, 1]}]})");
  for (int level = 1; level <= 20; ++level) {
    const std::string below = R"({"name": "L)" + std::to_string(level - 1) + R"(", "type": "asm")";
    model("l" + std::to_string(level) + ".asm.1", "\"components\": [" + below + "}, " + below +
                                                      R"(, "placement": {"position": [)" +
                                                      std::to_string(1 << (level - 1)) + ", 0, 0]}}]");
  }
  const ProMdl top = retrieve(L"L20", ProMdlType::assembly);
  EXPECT_NEAR(1 << 20, volume(top), 1);
  EXPECT_EQ(outlineOf({}, {1 << 20, 1, 1}), outline(top));
}

TEST_F(BodyTest, WhatCantBeBuiltSaysWhy) {
  const struct {
    std::string primitives;
    const char* reason;
  } cases[] = {
      {R"({"type": "box", "size": [1, 0, 1]})", "primitive 1: each side must be over 0"},
      {R"({"type": "cylinder", "diameter": "D9", "length": 1})",
       "primitive 1: diameter: 'D9' is neither a parameter nor a dimension"},
      {R"({"type": "cylinder", "diameter": true, "length": 1})",
       "primitive 1: diameter: it must be a number or an expression"},
      {R"({"type": "cylinder", "diameter": "'wide'", "length": 1})", "primitive 1: diameter: ''wide'' gives no number"},
      {R"({"type": "sphere", "diameter": 1e300})", "primitive 1: diameter: it is too large"},
      {R"({"type": "hole", "diameter": 5})", "primitive 1: there is nothing to cut yet"},
      {std::string(kPlate) + R"(, {"type": "box", "use": "cut", "size": [80, 40, 5]})",
       "primitive 2: nothing is left of the body"},
      {std::string(kPlate) +
           R"(, {"type": "box", "use": "cut", "size": [80, 40, 5]}, {"type": "box", "size": [1, 1, 1]})",
       "primitive 2: nothing is left of the body"},
      // They are cut in one operation.
      {std::string(kPlate) + R"(, {"type": "box", "use": "cut", "size": [80, 40, 5]},
          {"type": "box", "use": "cut", "size": [1, 1, 1], "placement": {"position": [500, 0, 0]}})",
       "primitive 3 or one before it: nothing is left of the body"},
      {R"({"type": "extrusion", "profile": [[0, 0], [10, 10], [10, 0], [0, 10]], "length": 1})",
       "primitive 1: the profile has no area"},
      {R"({"type": "extrusion", "profile": [[0, 0], [10, 10], [10, 0], [0, 20]], "length": 1})",
       "primitive 1: the profile crosses itself"},
      {R"({"type": "revolution", "profile": [[-1, 0], [10, 0], [10, 10]]})",
       "primitive 1: the profile must lie on one side of the axis"},
      {R"({"type": "box", "size": [1, 1, 1], "placement": {"zAxis": [0, 0, 2], "xAxis": [0, 0, 1]}})",
       "primitive 1: the axes of a placement give no directions"},
      {R"({"type": "import", "file": "gone.stp"})", "primitive 1: the file can't be read: No such file or directory"},
  };
  int number = 0;
  for (const auto& c : cases) {
    const ProMdl solid = part(c.primitives);
    EXPECT_EQ(ProGeneralError, ProSolidMassPropertyGet(solid).error) << c.primitives;
    EXPECT_EQ("M" + std::to_string(++number) + ".PRT: " + c.reason, text::toUtf8(session().messages().back()));
    EXPECT_EQ(ProGeneralError, ProSolidOutlineGet(solid).error) << c.primitives;
  }
  model("top.asm.1", R"("components": [{"name": "M1", "type": "prt"}])");
  EXPECT_EQ(ProGeneralError, ProSolidMassPropertyGet(retrieve(L"TOP", ProMdlType::assembly)).error);
}

TEST_F(BodyTest, AFaultyDocumentIsRefusedByItsLine) {
  const std::pair<const char*, const char*> cases[] = {
      {R"({"primitives": [{"type": "bax"}]})",
       "unknown type 'bax'; known are box, cylinder, cone, sphere, extrusion, revolution, hole, import"},
      {R"({"primitives": [{"type": "cylinder", "diameter": 3}]})", "'length' is missing"},
      {R"({"primitives": [{"type": "box", "size": [1, 2]}]})", "'size' must be an array of 3 numbers"},
      {R"({"primitives": [{"type": "extrusion", "length": 1, "profile": [[0, 0], [1, 1]]}]})",
       "'profile' must be an array of three points or more"},
      {R"({"primitives": [{"type": "revolution", "profile": [[0, 0], [1], [1, 1]]}]})",
       "a point of 'profile' must be an array of 2 numbers"},
      {R"({"primitives": [{"type": "import", "file": "../a.stp"}]})",
       "'file' must be the name of a file beside the document"},
      {R"({"points": [{"placement": {"position": 3}}]})", "'position' must be an array"},
  };
  session();
  int number = 0;
  for (const auto& [solid, reason] : cases) {
    const std::string name = "f" + std::to_string(++number);
    model(name + ".prt.1", "\n\"solid\": " + std::string(solid));
    EXPECT_EQ(ProGeneralError, ProMdlRetrieve(text::fromUtf8(name), ProMdlType::part).error) << solid;
    EXPECT_EQ("d:\\models\\" + name + ".prt.1:2: " + reason, text::toUtf8(session().messages().back()));
  }
}

TEST_F(BodyTest, ASolidWithoutABodyHasNoMassAndADrawingIsNone) {
  model("a.prt.1", R"("solid": {"box": 1})");
  model("a.asm.1", R"("components": [{"name": "A", "type": "prt"}])");
  model("a.drw.1");
  const std::pair<ProMdl, ProError> cases[] = {{retrieve(L"A"), ProNotFound},
                                               {retrieve(L"A", ProMdlType::assembly), ProNotFound},
                                               {retrieve(L"A", ProMdlType::drawing), ProBadInputs},
                                               {{}, ProBadInputs}};
  for (const auto& [solid, error] : cases) {
    EXPECT_EQ(error, ProSolidMassPropertyGet(solid).error);
    EXPECT_EQ(error, ProSolidOutlineGet(solid).error);
    EXPECT_EQ(error, ProSolidCsysVisit(solid, [](const ProCsys&) { return ProNoError; }));
    EXPECT_EQ(error, ProSolidDatumPointVisit(solid, [](const ProDatumPoint&) { return ProNoError; }));
  }
}

TEST_F(BodyTest, AStepFileBesideTheDocumentIsABody) {
  write("models/t.stp", test::stepTetrahedron());
  write("models/broken.stp", "solid of another kind\n");
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  const ProMdl shifted = part(R"({"type": "import", "file": "t.stp", "placement": {"position": [1, 0, 0]}},
      {"type": "box", "size": [1, 1, 1], "placement": {"position": [-9, 0, 0]}})");
  EXPECT_NEAR(10001, volume(shifted), 1e-4) << messages();
  EXPECT_EQ(outlineOf({-9, 0, 0}, {31, 40, 50}), outline(shifted));
  const ProMdl inches = part(R"({"type": "import", "file": "T.STP"})", R"("units": "inlbs")");
  EXPECT_NEAR(10000 / (25.4 * 25.4 * 25.4), volume(inches), 1e-6);
  EXPECT_EQ(ProGeneralError, ProSolidMassPropertyGet(part(R"({"type": "import", "file": "broken.stp"})")).error);
  EXPECT_EQ("M3.PRT: primitive 1: the file is no STEP file\n", messages());
  EXPECT_EQ("", testing::internal::GetCapturedStdout());
  EXPECT_EQ("", testing::internal::GetCapturedStderr());
}

}  // namespace
}  // namespace headless
