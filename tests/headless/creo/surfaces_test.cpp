// Surfaces of parts, boxes in turned axes, features that are put away.
#include "creo/ProSurface.h"

#include <cmath>

#include "creo/ProDimension.h"
#include "creo/ProFeatureCreate.h"
#include "creo/ProXsec.h"
#include "headless/session_fixture.h"
#include "text/format.h"

namespace headless {
namespace {

using namespace creo;

constexpr const char* kBlock = R"({"type": "box", "size": [10, 20, 30]})";

class SurfacesTest : public test::HeadlessSession {
 protected:
  static std::vector<ProSurface> surfaces(ProMdl solid) {
    std::vector<ProSurface> all;
    EXPECT_EQ(ProNoError, ProSolidSurfaceVisit(solid, [&](const ProSurface& surface) {
                all.push_back(surface);
                return ProNoError;
              }));
    return all;
  }
  static std::string numbers(const ProVector& v) {
    return text::toUtf8(text::format(L"%.4f %.4f %.4f", v.x + 0.0, v.y + 0.0, v.z + 0.0));
  }
  static std::string outline(ProMdl solid, const ProTransform& into) {
    const auto box = ProSolidOutlineCompute(solid, into, {});
    EXPECT_TRUE(box);
    return numbers(box.value.min) + " to " + numbers(box.value.max);
  }
  static ProFeatureStatus status(ProMdl solid, int feature) { return ProFeatureStatusGet({solid, feature}).value; }
};

TEST_F(SurfacesTest, PlanesLookOutOfTheBodyAlongTheirLongestEdge) {
  const auto turned = [](const ProVector& v) {  // as the second block is
    return ProVector{(2 * v.x - 2 * v.y + v.z) / 3, (v.x + 2 * v.y + 2 * v.z) / 3, (-2 * v.x - v.y + 2 * v.z) / 3};
  };
  const ProMdl straight = part(kBlock);
  const ProMdl tilted = part(R"({"type": "box", "size": [10, 20, 30],
      "placement": {"zAxis": [1, 2, 2], "xAxis": [2, 1, -2]}})");
  for (const ProMdl solid : {straight, tilted}) {
    const auto all = surfaces(solid);
    ASSERT_EQ(6U, all.size());
    ProVector normals;
    int wanted = 0;
    for (const ProSurface& entry : all) {
      EXPECT_EQ(ProSurfaceType::plane, ProSurfaceTypeGet(entry).value);
      EXPECT_EQ(ProNotFound, ProSurfaceDiameterEval(entry).error);
      const auto [x, y, z, origin] = ProSurfaceDataGet(entry).value;
      EXPECT_TRUE(ProMatrixInit(x, y, z, origin));
      normals = {normals.x + z.x, normals.y + z.y, normals.z + z.z};
      // The middle lies behind every plane, half the block away.
      const ProVector middle = solid == tilted ? turned({5, 10, 15}) : ProVector{5, 10, 15};
      const double behind = (origin.x - middle.x) * z.x + (origin.y - middle.y) * z.y + (origin.z - middle.z) * z.z;
      // x lies along z of the block, on its ends along y.
      const bool end = std::abs(behind - 15) < 1e-9;
      const ProVector edge = end ? ProVector{0, 1, 0} : ProVector{0, 0, 1};
      const ProVector along = solid == tilted ? turned(edge) : edge;
      EXPECT_NEAR(1, std::abs(x.x * along.x + x.y * along.y + x.z * along.z), 1e-9);
      wanted += static_cast<int>(std::lround(behind));
    }
    EXPECT_EQ(2 * (5 + 10 + 15), wanted);
    EXPECT_EQ("0.0000 0.0000 0.0000", numbers(normals));
  }
}

TEST_F(SurfacesTest, RoundOnesHaveADiameter) {
  const std::pair<const char*, const wchar_t*> cases[] = {
      {R"({"type": "cylinder", "diameter": 20, "length": 100})", L" 20"},
      {R"({"type": "sphere", "diameter": 6})", L" 6"},
      {R"({"type": "cone", "diameter": 20, "length": 5})", L""},
      {R"({"type": "revolution", "profile": [[5, 0], [10, 0], [10, 20], [5, 20]]})", L" 20 10"},
  };
  for (const auto& [primitive, diameters] : cases) {
    std::wstring found;
    for (const ProSurface& surface : surfaces(part(primitive))) {
      const auto diameter = ProSurfaceDiameterEval(surface);
      if (diameter) EXPECT_EQ(ProNotFound, ProSurfaceDataGet(surface).error);
      if (diameter) found += text::format(L" %g", diameter.value);
    }
    EXPECT_EQ(diameters, found) << primitive;
  }
}

TEST_F(SurfacesTest, ASurfaceGoesWithItsModel) {
  const ProMdl solid = part(kBlock);
  const auto all = surfaces(solid);
  EXPECT_EQ(ProBadInputs, ProSurfaceTypeGet({solid, 1, nullptr}).error);
  erase(solid);
  EXPECT_EQ(ProBadInputs, ProSurfaceTypeGet(all.front()).error);
  model("top.asm.1", R"("components": [{"name": "M1", "type": "prt"}])");
  const auto none = [](const ProSurface&) { return ProNoError; };
  EXPECT_EQ(ProBadInputs, ProSolidSurfaceVisit(retrieve(L"TOP", ProMdlType::assembly), none));
  EXPECT_EQ(ProNotFound, ProSolidSurfaceVisit(part(""), none));
  EXPECT_EQ(ProGeneralError, ProSolidSurfaceVisit(part(R"({"type": "sphere", "diameter": 0})"), none));
}

TEST_F(SurfacesTest, AMatrixNeedsRightHandedAxes) {
  session();
  const ProVector x{1, 0, 0}, y{0, 1, 0}, z{0, 0, 1};
  EXPECT_TRUE(ProMatrixInit(y, z, x, {4, 5, 6}));
  EXPECT_EQ(ProBadInputs, ProMatrixInit(y, x, z, {}).error);
  EXPECT_EQ(ProBadInputs, ProMatrixInit({2, 0, 0}, y, z, {}).error);
  EXPECT_EQ(ProBadInputs, ProMatrixInit(x, {0.6, 0.8, 0}, z, {}).error);
  EXPECT_EQ(ProBadInputs, ProMatrixInit({}, {}, {}, {}).error);
}

// Arcs, ellipses, curves of no simple kind, and faces that bulge beyond their edges.
TEST_F(SurfacesTest, OutlinesOfCurvedBodiesAreExactInTurnedAxes) {
  const double half = std::sqrt(0.5);
  ProTransform turned;  // x' = (x - y) / sqrt 2, y' = (x + y) / sqrt 2
  turned.xAxis = {half, half, 0};
  turned.yAxis = {-half, half, 0};
  turned.origin = {0, 0, 1};
  const struct {
    const char* primitives;
    ProVector min, max;
  } cases[] = {
      // Half a disc, above y = 0.
      {R"({"type": "revolution", "profile": [[0, 0], [10, 0], [10, 10], [0, 10]], "angle": 180})",
       {-10, -10 * half, 1},
       {10 * half, 10, 11}},
      // A bar that ends in the plane z = 50 + x: an ellipse, highest at x = 10.
      {R"({"type": "cylinder", "diameter": 20, "length": 100}, {"type": "box", "use": "cut", "size": [200, 200, 200],
          "placement": {"position": [-60, -100, -10], "xAxis": [1, 0, 1], "zAxis": [-1, 0, 1]}})",
       {-10, -10, 1},
       {10, 10, 61}},
      // Its cross bore meets it in a curve that is neither; the bar still reaches as far.
      {R"({"type": "cylinder", "diameter": 20, "length": 100}, {"type": "hole", "diameter": 10,
          "placement": {"position": [0, 0, 50], "zAxis": [1, 0, 0]}})",
       {-10, -10, 1},
       {10, 10, 101}},
      {R"({"type": "sphere", "diameter": 20})", {-10, -10, -9}, {10, 10, 11}},
      // A hemisphere, cut at z = 0, on a block that reaches farther in x' alone.
      {R"({"type": "sphere", "diameter": 20}, {"type": "box", "use": "cut", "size": [20, 20, 10],
          "placement": {"position": [-10, -10, -10]}},
          {"type": "box", "size": [12, 12, 2], "placement": {"position": [0, -12, 0]}})",
       {-10, -10, 1},
       {24 * half, 10, 11}},
  };
  for (const auto& c : cases)
    EXPECT_EQ(numbers(c.min) + " to " + numbers(c.max), outline(part(c.primitives), turned)) << c.primitives;
}

TEST_F(SurfacesTest, FeaturesArePutAwayAndComeBackAsTheyWere) {
  const ProMdl solid = part(std::string(kBlock) + R"(, {"type": "box", "size": [99, 1, 1], "feature": 8})",
                            R"("features": [{"id": 8}, {"id": 9, "status": "suppressed"}])");
  const std::string before = session().models().documentText(solid).value;
  EXPECT_EQ(ProNotFound, ProFeatureWithoptionsSuppress(solid, {8, 77}));
  EXPECT_EQ(ProFeatureStatus::active, status(solid, 8)) << "all or nothing";
  EXPECT_EQ(ProNoError, ProFeatureWithoptionsSuppress(solid, {8, 9}));
  EXPECT_EQ(ProFeatureStatus::suppressed, status(solid, 8));
  EXPECT_EQ("0.0000 0.0000 0.0000 to 10.0000 20.0000 30.0000", outline(solid, {}));
  EXPECT_NE(before, session().models().documentText(solid).value) << "it is saved like that";
  EXPECT_EQ(ProNoError, ProFeatureResume(solid, {8}));
  EXPECT_EQ(before, session().models().documentText(solid).value);
  EXPECT_EQ(ProGeneralError, ProFeatureResume(solid, {9, 8})) << "8 is there already";
  EXPECT_EQ("M1.PRT: the feature 8 can't be resumed: it isn't suppressed\n", messages());
  EXPECT_EQ(ProFeatureStatus::suppressed, status(solid, 9)) << "all or nothing";
  EXPECT_EQ(ProNoError, ProFeatureResume(solid, {9}));
  EXPECT_EQ(ProFeatureStatus::active, status(solid, 9));
  model("top.asm.1", R"("components": [{"name": "M1", "type": "prt"}])");
  const ProMdl top = retrieve(L"TOP", ProMdlType::assembly);
  ProSolidFeatVisit(top, [](const ProFeature& feature) {
    EXPECT_EQ(ProBadInputs, ProFeatureWithoptionsSuppress(feature.owner, {feature.id}));
    return ProNoError;
  });
}

constexpr const char* kFamily = R"("features": [{"id": 1, "name": "BASE"}, {"id": 2, "name": "RIB", "parents": [1]},
    {"id": 3, "name": "BORE", "parents": [2]}, {"id": 4, "name": "ALONE"}])";
constexpr const char* kFamilyBody = R"({"type": "box", "size": [10, 10, 10], "feature": 1},
    {"type": "box", "size": [20, 10, 10], "feature": 2}, {"type": "box", "size": [30, 10, 10], "feature": 3})";

TEST_F(SurfacesTest, ParentsAndChildrenGoAndComeTogether) {
  const ProMdl solid = part(kFamilyBody, kFamily);
  const auto states = [&] {
    std::string all;
    for (const int id : {1, 2, 3, 4}) all += std::to_string(static_cast<int>(status(solid, id)));
    return all;
  };
  EXPECT_EQ(ProNoError, ProFeatureWithoptionsSuppress(solid, {2}));
  EXPECT_EQ("0500", states()) << "the child stays";
  EXPECT_EQ("0.0000 0.0000 0.0000 to 10.0000 10.0000 10.0000", outline(solid, {})) << "and has no geometry";
  EXPECT_EQ(ProGeneralError, ProSolidRegenerate(solid, 0));
  EXPECT_EQ("M1.PRT: the feature BORE refers to the feature RIB, which is suppressed\n", messages());
  EXPECT_EQ(ProNotFound, ProFeatureNumberGet({solid, 2}).error);
  EXPECT_EQ(3, ProFeatureNumberGet({solid, 3}).value);

  EXPECT_EQ(ProNoError, ProFeatureWithoptionsSuppress(solid, {1}, ProChildren::goAlong));
  EXPECT_EQ("5550", states());
  EXPECT_EQ(ProGeneralError, ProFeatureResume(solid, {3}));
  EXPECT_EQ("5550", states()) << "its parents are away";
  EXPECT_EQ(ProNoError, ProFeatureResume(solid, {3}, ProParents::comeBackToo));
  EXPECT_EQ("0000", states());
  EXPECT_EQ(ProNoError, ProSolidRegenerate(solid, 0));

  EXPECT_EQ(ProNoError, ProFeatureDelete(solid, {2}));
  EXPECT_EQ(ProGeneralError, ProSolidRegenerate(solid, 0));
  EXPECT_NE(std::string::npos,
            messages().find("M1.PRT: the feature BORE refers to the feature 2, which isn't there\n"));
  EXPECT_EQ(ProNoError, ProFeatureDelete(solid, {1}, ProChildren::goAlong));
  EXPECT_EQ(ProNoError, ProFeatureStatusGet({solid, 3}).error) << "it refers to what went before";
  EXPECT_EQ(ProNoError, ProFeatureDelete(solid, {3}));
  EXPECT_EQ(ProNoError, ProSolidRegenerate(solid, 0));
}

TEST_F(SurfacesTest, BehindThePlaceOfInsertModeNothingIsInUse) {
  const ProMdl solid = part(kFamilyBody, kFamily);
  const std::string before = session().models().documentText(solid).value;
  EXPECT_EQ(ProNoError, ProFeatureInsertModeActivate({solid, 2}));
  EXPECT_EQ(ProFeatureStatus::active, status(solid, 2));
  EXPECT_EQ(ProFeatureStatus::inactive, status(solid, 3));
  EXPECT_EQ("0.0000 0.0000 0.0000 to 20.0000 10.0000 10.0000", outline(solid, {}));
  EXPECT_EQ(ProNoError, ProSolidRegenerate(solid, 0));
  EXPECT_EQ(ProNoError, ProInsertModeCancel(solid, true));
  EXPECT_EQ(before, session().models().documentText(solid).value);
  EXPECT_EQ(ProNoError, ProFeatureInsertModeActivate({solid, 2}));
  EXPECT_EQ(ProNoError, ProInsertModeCancel(solid, false));
  EXPECT_EQ(ProFeatureStatus::suppressed, status(solid, 3));
  EXPECT_EQ(ProFeatureStatus::suppressed, status(solid, 4));
  EXPECT_EQ(ProFeatureStatus::active, status(solid, 1));
}

TEST_F(SurfacesTest, TheDistanceOfAParallelSectionIsADimension) {
  const ProMdl solid = part(kBlock, R"("features": [{"id": 1, "name": "MID", "type": 923}],
      "dimensions": [{"id": 1, "value": 4.0}])");
  const ProFeature plane{solid, 1};
  EXPECT_EQ(ProBadInputs, ProXsecParallelCreate(solid, L"", plane, 2).error);
  EXPECT_EQ(ProGeneralError, ProXsecPlanarCreate(solid, L"", plane).error);
  const auto section = ProXsecParallelCreate(solid, L"A", plane, -2.5);
  ASSERT_EQ(ProNoError, section.error);
  EXPECT_EQ(2.5, ProDimensionValueGet({solid, 2}).value);
  EXPECT_EQ(ProNoError, ProDimensionValueSet({solid, 2}, 3));
  EXPECT_EQ(ProNoError, ProSolidRegenerate(solid, 0));
  EXPECT_EQ(-3, session().models().find(solid)->document->record.crossSections[0].distance);
  EXPECT_EQ(ProNoError, ProXsecDelete(section.value));
  EXPECT_EQ(ProNotFound, ProDimensionValueGet({solid, 2}).error);
  EXPECT_EQ(4, ProDimensionValueGet({solid, 1}).value);
}

TEST_F(SurfacesTest, AnInstancesRowDecidesWhereItHasAValue) {
  model("plate.prt.1", R"("features": [{"id": 8, "name": "RIB"}, {"id": 9}], "familyTable": {
      "items": [{"type": "feature", "name": "RIB"}], "instances": [{"name": "A", "values": {"RIB": "y"}, "familyTable":
          {"items": [], "instances": [{"name": "BELOW"}]}}, {"name": "B"}]})");
  const ProMdl plate = retrieve(L"PLATE"), a = retrieve(L"A"), b = retrieve(L"B"), below = retrieve(L"BELOW");
  const auto states = [&](int feature) {
    std::string all;
    for (const ProMdl current : {plate, a, below, b}) all += std::to_string(static_cast<int>(status(current, feature)));
    return all;
  };
  EXPECT_EQ(ProNoError, ProFeatureWithoptionsSuppress(below, {8}));
  EXPECT_EQ("0220", states(8));
  EXPECT_EQ(ProNoError, ProFeatureResume(a, {8}));
  EXPECT_EQ("0000", states(8));
  EXPECT_EQ(ProNoError, ProFeatureWithoptionsSuppress(b, {8, 9}));
  EXPECT_EQ("5005", states(8)) << "A keeps its own word";
  EXPECT_EQ("5555", states(9));
}

}  // namespace
}  // namespace headless
