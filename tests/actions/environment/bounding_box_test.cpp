// The bounding box as user variables: lists run on parts and assemblies with real bodies.
#include "actions/environment/bounding_box.h"

#include <array>

#include "actions/action_fixture.h"
#include "creo/ProFeature.h"
#include "creo/ProMdl.h"
#include "headless/model/models.h"
#include "language/user_variables.h"
#include "language/variables.h"
#include "support/step_file.h"
#include "text/format.h"
#include "text/numbers.h"

namespace test {
namespace {

using actions::BoxSides;
using creo::ProMdlType;

constexpr const wchar_t* kTitle = L"B0 Set user variable from bounding box|";
constexpr const wchar_t* kAllSet = L"Bounding Box calculated|Set width|Set legth|Set height|Set diameter";
constexpr const char* kSearch = "rotate='true' sort='true'";
constexpr const char* kBox = R"({"type": "box", "size": [10, 20, 30]})";
// A primitive placed along no axis of the model.
std::string tilted(std::string primitive) {
  primitive.pop_back();
  return primitive + R"(, "placement": {"position": [5, -7, 11], "zAxis": [1, 2, 2], "xAxis": [2, 1, -2]}})";
}
// What the body is without: a far block of a feature of type 933.
constexpr const char* kDistorted = R"({"type": "box", "size": [10, 20, 30]},
    {"type": "box", "size": [1, 1, 1], "feature": 8, "placement": {"position": [500, 0, 0]}})";

class BoundingBox : public ActionTest {
 protected:
  // A document of that file name with these members.
  void model(const std::string& file, const std::string& members) {
    writeBytes(world.models() + "/" + file, "{\"format\": 1, " + members + "}");
  }
  void body(const std::string& primitives, const std::string& members = "") {
    model("bracket.prt.1",
          (members.empty() ? "" : members + ", ") + "\"solid\": {\"primitives\": [" + primitives + "]}");
  }
  static std::string measure(const std::string& attributes, const std::string& format = "%g") {
    return task("setUserVariableFromBoundingBox", "w='W' l='L' h='H' d='D' format='" + format + "' " + attributes);
  }
  static std::wstring variable(std::wstring_view name) {
    const std::wstring* value = language::userVariables().find(name);
    return value ? *value : L"(none)";
  }
  // "width length height diameter", or the error line.
  std::wstring measured(const std::string& attributes, const std::wstring& name = L"BRACKET",
                        ProMdlType type = ProMdlType::part) {
    language::userVariables().clear();
    const std::wstring log = run(measure(attributes), name, type);
    const std::size_t error = log.find(L"E:");
    if (error != log.npos) return log.substr(error);
    return variable(L"W") + L' ' + variable(L"L") + L' ' + variable(L"H") + L' ' + variable(L"D");
  }
};

// What each kind of body is found to be, in a world of its own.
struct Shape {
  const char* name;
  std::string primitives;
  const char* attributes;
  const wchar_t* measured;
};
class BoundingBoxOf : public BoundingBox, public testing::WithParamInterface<Shape> {};

TEST_P(BoundingBoxOf, IsThatOfTheShape) {
  body(GetParam().primitives);
  EXPECT_EQ(GetParam().measured, measured(GetParam().attributes)) << text::toUtf8(world.log());
}

const Shape kShapes[] = {
    {"Box", kBox, kSearch, L"20 30 10 -1"},
    {"BoxInItsOwnAxes", kBox, "sort='true'", L"10 30 20 -1"},
    {"TiltedBox", tilted(kBox), kSearch, L"20 30 10 -1"},
    {"TiltedBoxInTheModelsAxes", tilted(kBox), "rotate='false'", L"30 33.3333 36.6667 -1"},
    // A plane's x lies along its longest edge: that of an upright side lies flat.
    {"UnsortedPlate", R"({"type": "box", "size": [80, 40, 5]})", "rotate='true'", L"40 5 80 -1"},
    {"Cylinder", R"({"type": "cylinder", "diameter": 20, "length": 100})", kSearch, L"20 20 100 20"},
    {"TiltedCylinder", tilted(R"({"type": "cylinder", "diameter": 20, "length": 100})"), kSearch, L"20 20 100 20"},
    {"Disc", R"({"type": "cylinder", "diameter": 100, "length": 3, "placement": {"zAxis": [1, 0, 0]}})",
     "rotate='true'", L"100 100 3 100"},
    {"RoundInItsOwnAxes", R"({"type": "cylinder", "diameter": 20, "length": 100})", "sort='true'", L"20 100 20 -1"},
    {"SquareBar", R"({"type": "box", "size": [20, 20, 100]})", kSearch, L"20 100 20 -1"},
    // The bore's diameter isn't that of two sides.
    {"BoredSquareBar", R"({"type": "box", "size": [20, 20, 100]},
        {"type": "hole", "diameter": 8, "placement": {"position": [10, 10, 0]}})",
     kSearch, L"20 100 20 -1"},
    {"PlateWithHoles", R"({"type": "box", "size": [100, 60, 10]},
        {"type": "hole", "diameter": 20, "placement": {"position": [30, 30, 0]}},
        {"type": "hole", "diameter": 8, "placement": {"position": [80, 15, 0]}})",
     kSearch, L"60 100 10 -1"},
    {"HexagonBar", tilted(R"({"type": "extrusion", "length": 100, "profile": [[11.547005, 0], [5.773503, 10],
        [-5.773503, 10], [-11.547005, 0], [-5.773503, -10], [5.773503, -10]]})"),
     kSearch, L"23.094 100 20 -1"},
    // Of the two diameters the one that fits two sides counts.
    {"TurnedPart", tilted(R"({"type": "revolution",
        "profile": [[0, 0], [5, 0], [5, 20], [10, 20], [10, 50], [0, 50]]})"),
     kSearch, L"20 20 50 20"},
    {"Cone", R"({"type": "cone", "diameter": 20, "topDiameter": 10, "length": 50})", kSearch, L"20 50 20 -1"},
    {"BarWithAFlat", R"({"type": "cylinder", "diameter": 20, "length": 100},
        {"type": "box", "use": "cut", "size": [1, 20, 100], "placement": {"position": [9, -10, 0]}})",
     kSearch, L"20 100 19 -1"},
    {"SphereWithoutPlanes", R"({"type": "sphere", "diameter": 20})", kSearch,
     L"E:Error while calculating the bounding box"},
    {"BodyThatCantBeBuilt", R"({"type": "sphere", "diameter": 0})", kSearch,
     L"E:Error while calculating the bounding box"},
    {"NoBody", "", kSearch, L"E:Error while calculating the bounding box"},
    {"NoBodyInItsOwnAxes", "", "", L"E:Error while calculating the bounding box"},
};
INSTANTIATE_TEST_SUITE_P(Shapes, BoundingBoxOf, testing::ValuesIn(kShapes),
                         [](const auto& shown) { return std::string(shown.param.name); });

TEST_F(BoundingBox, AnImportedBodyIsTurnedToItsPlanes) {
  writeBytes(world.models() + "/t.stp", stepTetrahedron());
  body(tilted(R"({"type": "import", "file": "t.stp"})"));
  ASSERT_EQ(std::wstring(kTitle) + kAllSet, run(measure(kSearch, "%.9f")));
  // However it stands on a side, the box is six times the tetrahedron.
  EXPECT_NEAR(60000,
              text::parseDouble(variable(L"W")) * text::parseDouble(variable(L"L")) * text::parseDouble(variable(L"H")),
              0.01);
  EXPECT_EQ(L"-1.000000000", variable(L"D"));
}

TEST_F(BoundingBox, WithoutPlanesTheFirstCoordinateSystemServes) {
  model("bracket.prt.1", R"("solid": {"primitives": [{"type": "sphere", "diameter": 20}],
      "coordinateSystems": [{"placement": {"position": [1, 2, 3], "xAxis": [1, 1, 0]}}, {}]})");
  EXPECT_EQ(L"20 20 20 20", measured(kSearch));
}

TEST_F(BoundingBox, AnAssemblyIsMeasuredAlongItsFirstCoordinateSystem) {
  body(kBox);
  const std::string components =
      R"("components": [{"name": "BRACKET", "type": "prt", "placement": {"xAxis": [1, 1, 0]}},
      {"name": "BRACKET", "type": "prt", "placement": {"xAxis": [1, 1, 0], "position": [30, 30, 0]}}])";
  model("top.asm.1", components + R"(, "solid": {"coordinateSystems": [{"placement": {"xAxis": [1, 1, 0]}}]})");
  // 30 and 30 along the axes are 42.4264 along the system's x.
  EXPECT_EQ(L"52.4264 20 30 -1", measured("rotate='true'", L"TOP", ProMdlType::assembly));
}

TEST_F(BoundingBox, AnAssemblyWithoutACoordinateSystemHasNone) {
  body(kBox);
  model("bare.asm.1", R"("components": [{"name": "BRACKET", "type": "prt"}])");
  EXPECT_EQ(L"E:Error while calculating the bounding box", measured(kSearch, L"BARE", ProMdlType::assembly));
  EXPECT_EQ(L"(none)", variable(L"W")) << "the part, which was worked before, left its own";
}

TEST_F(BoundingBox, ADrawingHasNoBox) {
  body(kBox);
  world.drawing(L"SHEET").uses(L"BRACKET", ProMdlType::part);
  EXPECT_EQ(L"-1 -1 -1 -1", measured(kSearch, L"SHEET", ProMdlType::drawing));
}

TEST_F(BoundingBox, OnlyNamedVariablesAreSet) {
  body(kBox);
  run(task("setUserVariableFromBoundingBox", "w='' l='LONG' format='%.1f mm'"));
  EXPECT_EQ(1U, language::userVariables().count());
  EXPECT_EQ(L"30.0 mm", variable(L"LONG"));
  EXPECT_FALSE(world.logHas(L"Set width"));
}

TEST_F(BoundingBox, AFormatIsOneFloatingNumber) {
  body(R"({"type": "box", "size": [1234.5, 1, 1]})");
  const std::pair<const char*, const wchar_t*> good[] = {
      {"%f", L"1234.500000"}, {"%-+8.1lfmm", L"+1234.5 mm"}, {"100%% %08.2f%%", L"100% 01234.50%"},
      {"%.3E", L"1.234E+03"}, {"%#G", L"1234.50"},           {"% .0e", L" 1e+03"},
  };
  std::string tasks;
  int number = 0;
  for (const auto& [format, value] : good)
    tasks += task("setUserVariableFromBoundingBox", "w='V" + std::to_string(number++) + "' format='" + format + "'");
  const char* bad[] = {"",       "mm",
                       "%",      "%d",
                       "%s",     "%n",
                       "%f %f",  "%*f",
                       "%.*f",   "%Lf",
                       "%llf",   "%1$f",
                       "%5000f", "%.99999999999f",
                       "%f%",    "%hf",
                       "%s %f",  "%f %n",
                       "%a",     "%99999999999999999999f"};
  for (const char* format : bad)
    tasks += task("setUserVariableFromBoundingBox", "w='BAD' format='" + std::string(format) + "'");
  run(tasks);
  number = 0;
  for (const auto& [format, value] : good) EXPECT_EQ(value, variable(L"V" + std::to_wstring(number++))) << format;
  EXPECT_EQ(L"(none)", variable(L"BAD"));
  for (const char* format : bad)
    EXPECT_TRUE(world.logHas(L"The format isn't one of a single floating number: " + text::fromUtf8(format))) << format;
}

// ---- features that are put away

class DistortedBox : public BoundingBox {
 protected:
  // 8 and 9 distort the box; 5 was suppressed all along, 10 failed, 7 is the body's own.
  static constexpr const char* kFeatures = R"("features": [{"id": 7, "type": 917}, {"id": 8, "type": 933},
      {"id": 5, "type": 933, "status": "suppressed"}, {"id": 9, "type": 1070}, {"id": 10, "type": 1070, "status": "unregenerated"}])";
  void distorted() {
    world.config("kvd_write_history_in_models=0");
    body(kDistorted, kFeatures);
  }
  // Runs the measure with that operation failing; the results as measured() gives them.
  std::wstring failing(const char* operation, int times = 1) {
    world.list("list.xml", measure(kSearch));
    world.start();
    world.open(L"BRACKET", ProMdlType::part);
    before_ = document();
    for (int i = 0; i < times; ++i) world.session().failNext(operation, creo::ProGeneralError);
    world.run("list.xml");
    return told(world.log()) + L'|' + variable(L"W") + L' ' + variable(L"L") + L' ' + variable(L"H");
  }
  // What it holds before its body: features and family table.
  std::string document() {
    const auto part = creo::ProMdlInit(L"BRACKET", ProMdlType::part).value;
    const std::string whole = world.session().models().documentText(part).value;
    return whole.substr(0, whole.find("\"solid\""));
  }
  std::string before_;
};

TEST_F(DistortedBox, IsMeasuredWithoutThemAndTheyComeBack) {
  distorted();
  EXPECT_EQ(std::wstring(kTitle) + kAllSet + L"|20 30 10", failing("", 0));
  EXPECT_EQ(before_, document());
  EXPECT_NE(before_.npos, before_.find("unregenerated"));
}

TEST_F(DistortedBox, TakesChildrenAlongAndBringsThemBack) {
  world.config("kvd_write_history_in_models=0");
  std::string features = kFeatures;
  features.insert(features.rfind(']'), R"(, {"id": 11, "type": 917, "parents": [8]}, {"id": 12, "type": 1104,
      "parents": [8]}, {"id": 13, "type": 917, "parents": [8], "status": "unregenerated"})");
  body(kDistorted, features);
  EXPECT_EQ(std::wstring(kTitle) + kAllSet + L"|20 30 10", failing("", 0));
  EXPECT_EQ(before_, document());
  EXPECT_EQ(4, world.session().calls("ProFeatureResume")) << "two features and the children that were active";
}

TEST_F(DistortedBox, OfAnInstanceTouchesNoOtherRow) {
  world.config("kvd_write_history_in_models=0");
  body(kDistorted, std::string(kFeatures) + R"(, "familyTable": {"items": [{"type": "feature", "name": "8"}],
      "instances": [{"name": "WITH", "values": {"8": "Y"}}, {"name": "WITHOUT", "values": {"8": false}}]})");
  world.list("list.xml", measure(kSearch));
  world.start();
  world.open(L"BRACKET", ProMdlType::part);
  const std::string before = document();
  for (const wchar_t* instance : {L"WITH", L"WITHOUT"}) {
    language::userVariables().clear();
    world.open(instance, ProMdlType::part);
    world.run("list.xml");
    EXPECT_EQ(L"20 30 10", variable(L"W") + L' ' + variable(L"L") + L' ' + variable(L"H")) << instance;
    world.closeTool();
  }
  EXPECT_EQ(before, document());
}

class FailingMeasure : public DistortedBox, public testing::WithParamInterface<std::pair<const char*, bool>> {};

// A surface that fails is left out, so that the others still give the box; all else ends the measure. In both cases the
// features are back.
TEST_P(FailingMeasure, LeavesTheFeaturesAsTheyWere) {
  const auto& [operation, skips] = GetParam();
  distorted();
  const std::wstring error = L"E:Error while calculating the bounding box|(none) (none) (none)";
  EXPECT_EQ(kTitle + (skips ? kAllSet + std::wstring(L"|20 30 10") : error), failing(operation));
  EXPECT_EQ(before_, document());
}

INSTANTIATE_TEST_SUITE_P(Operations, FailingMeasure,
                         testing::Values(std::pair{"ProSolidMassPropertyGet", false},
                                         std::pair{"ProSolidFeatVisit", false}, std::pair{"ProFeatureStatusGet", false},
                                         std::pair{"ProFeatureTypeGet", false},
                                         std::pair{"ProFeatureWithoptionsSuppress", false},
                                         std::pair{"ProSolidSurfaceVisit", false}, std::pair{"ProFeatureResume", false},
                                         std::pair{"ProSurfaceTypeGet", true}, std::pair{"ProSurfaceDataGet", true},
                                         std::pair{"ProMatrixInit", true}, std::pair{"ProSolidOutlineCompute", true}),
                         [](const auto& shown) { return std::string(shown.param.first); });

TEST_F(DistortedBox, AFeatureThatStaysAwayIsNamed) {
  distorted();
  // Both are tried twice.
  const std::wstring log = failing("ProFeatureResume", 4);
  EXPECT_NE(log.npos, log.find(L"E:Feature 8 can't be resumed after the measure"));
  EXPECT_NE(log.npos, log.find(L"E:Feature 9 can't be resumed after the measure"));
  EXPECT_NE(log.npos, log.find(L"E:Error while calculating the bounding box"));
}

// ---- the rules that need no model

TEST(RoundStock, IsRecognisedByTwoSidesAndADiameter) {
  const struct {
    BoxSides sides;
    double diameter;
    const wchar_t* named;  // width length height diameter
  } cases[] = {
      // Each pair, with its own names; the diameter is held against the pair's first side.
      {{20, 20.1, 100}, 20.1, L"20.1 20 100 20.1"},
      {{20, 100, 20.1}, 20.1, L"20.1 20 100 20.1"},
      {{100, 20, 20.1}, 20.1, L"20 20.1 100 20.1"},
      {{20, 20, 20}, 20, L"20 20 20 20"},
      // The first pair that fits, though the third does, too.
      {{100, 100, 100.5}, 100, L"100 100 100.5 100"},
      // 1% either way, the ends aside. y is the first side of its pair, so that the two orders differ.
      {{100, 101, 500}, 101, L"101 100 500 101"},
      {{101, 100, 500}, 100, L"101 100 500 -1"},
      {{100, 100, 500}, 101, L"100 100 500 -1"},
      {{100, 100, 500}, 100.9, L"100 100 500 100.9"},
      {{100, 100, 500}, 99, L"100 100 500 -1"},
      {{100, 100, 500}, 99.1, L"100 100 500 99.1"},
      {{100, 100, 500}, 500, L"100 100 500 -1"},
      {{100, 100, 500}, 0, L"100 100 500 -1"},
      // Nothing has no diameter.
      {{0, 0, 0}, 0, L"0 0 0 -1"},
  };
  for (const auto& c : cases) {
    const auto box = actions::namedSides(c.sides, c.diameter, false);
    EXPECT_EQ(c.named, text::format(L"%g %g %g %g", box.width, box.length, box.height, box.diameter));
    EXPECT_EQ(box.diameter != -1, actions::isRound(c.sides, c.diameter)) << text::toUtf8(c.named);
  }
}

TEST(RoundStock, IsLookedForWhereTwoSidesAreNear) {
  const std::pair<BoxSides, bool> cases[] = {
      {{100, 101.9, 500}, true}, {{100, 102.1, 500}, false}, {{102, 100, 500}, false}, {{101.9, 100, 500}, true},
      {{100, 500, 101.9}, true}, {{500, 100, 101.9}, true},  {{100, 500, 300}, false}, {{0, 0, 0}, false},
  };
  for (const auto& [sides, near] : cases) EXPECT_EQ(near, actions::mayBeRound(sides)) << sides.x << ' ' << sides.y;
}

TEST(RoundStock, SortedSidesDescend) {
  std::array all{10.0, 20.0, 30.0};
  do {
    const auto box = actions::namedSides({all[0], all[1], all[2]}, 0, true);
    EXPECT_EQ(std::tuple(30.0, 20.0, 10.0), std::tuple(box.length, box.width, box.height));
  } while (std::next_permutation(all.begin(), all.end()));
}

TEST(RoundStock, LengthsAreRoundedToSixDecimals) {
  for (const auto& [value, rounded] : {std::pair{1.2345674, 1.234567}, {1.23456751, 1.234568}, {2e9, 2e9}, {0.0, 0.0}})
    EXPECT_DOUBLE_EQ(rounded, actions::roundedLength(value));
}

}  // namespace
}  // namespace test
