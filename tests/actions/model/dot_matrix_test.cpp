// QR codes of datum points: read from the points of the finished part by ZXing's reader.
#include "actions/action_fixture.h"
#include "creo/ProDatum.h"
#include "creo/ProDimension.h"
#include "creo/ProFeatureCreate.h"
#include "creo/ProLayer.h"
#include "creo/ProMdl.h"
#include "headless/model/models.h"
#include "headless/store/document.h"
#include "headless/store/records_geometry.h"
#include "support/scanner.h"
#include "text/encoding.h"

namespace test {
namespace {

using creo::ProError;

// The coordinate system's x axis is the part's y, its y axis the part's -x.
constexpr const char* kPart = R"({"format": 1,
  "parameters": [{"name": "NUMBER", "type": "string", "value": "P-4711"}],
  "features": [{"id": 7, "name": "CS_CODE", "type": 979}, {"id": 9, "name": "BASE", "type": 917, "dimensions": [1]}],
  "dimensions": [{"id": 1, "value": 5}],
  "layers": [{"id": 1, "name": "POINTS"}],
  "solid": {"primitives": [{"type": "box", "size": [80, 40, "d1"]}],
            "coordinateSystems": [{"feature": 7, "placement": {"position": [10, 20, 5], "xAxis": [0, 1, 0]}},
                                  {"name": "OTHER"}]}})";

// Calls back behind each operation.
struct Watcher : headless::SessionObserver {
  std::function<void(std::string_view)> behind;
  void operation(std::string_view name, int, long long) override { behind(name); }
};

class DotMatrix : public ActionTest {
 protected:
  DotMatrix() { world.config("kvd_write_history_in_models=0"); }
  static std::string matrix(const std::string& more = "", const std::string& text = "Drawing %NUMBER%") {
    const bool isElsewhere = more.find("csn=") != more.npos, isSized = more.find("pixelsize=") != more.npos;
    return task("createQRdotmatrix", "encoding='2' casesensitive='1' eclevel='1' valueh='0' valuec='1' value0='" +
                                         text + "' " + (isElsewhere ? "" : "csn='CS_CODE' ") +
                                         (isSized ? "" : "pixelsize='0.5' ") + more);
  }
  // The session with the part open.
  creo::ProMdl open(World& own, const std::string& tasks, const char* part = kPart) const {
    writeBytes(own.models() + "/plate.prt.1", part);
    own.list("list.xml", tasks + task("saveModel"));
    own.start();
    const creo::ProMdl plate = own.open(L"PLATE", creo::ProMdlType::part);
    EXPECT_EQ(creo::ProNoError, creo::ProLayerDefLayerSet(plate, creo::kPointLayer, L"POINTS"));
    EXPECT_EQ(creo::ProNoError, creo::ProLayerDefLayerSet(plate, creo::kPointFeatureLayer, L"GONE"));
    return plate;
  }
  static headless::ModelRecord saved(const World& own) {
    headless::ModelRecord record;
    EXPECT_FALSE(headless::readDocument(own.document("plate.prt"), record));
    return record;
  }
  // "features|layers with counts of items|default layers|dimensions, points, planes": what a dot matrix adds to.
  static std::string contents(const headless::ModelRecord& record) {
    std::string all;
    for (const auto& entry : record.features) all += entry.name + (entry.pattern ? "pattern" : "") + " ";
    all += "|";
    for (const auto& item : record.layers) all += item.name + "(" + std::to_string(item.items.size()) + ") ";
    all += "|";
    const creo::ProMdl plate = creo::ProMdlInit(L"PLATE", creo::ProMdlType::part).value;
    for (const int kind : {7, 9, 10, 54, 55})
      if (const auto layer = creo::ProLayerDefLayerGet(plate, kind); !layer.value.empty())
        all += std::to_string(kind) + text::toUtf8(layer.value) + " ";
    const headless::SolidRecord solid = headless::solidRecord(record.solid);
    return all + "|" + std::to_string(record.dimensions.size()) + " dimensions, " +
           (solid.points.empty() ? "no points, " : "points, ") + std::to_string(solid.planes.size()) + " planes";
  }
  static std::vector<creo::ProVector> points(creo::ProMdl model) {
    std::vector<creo::ProVector> all;
    creo::ProSolidDatumPointVisit(model, [&](const creo::ProDatumPoint& point) {
      const auto at = creo::ProDatumPointGet(point);
      EXPECT_EQ(creo::ProNoError, at.error);
      all.push_back(at.value);
      return creo::ProNoError;
    });
    return all;
  }
  // What a scanner reads where each point is a module, seen from below the coordinate system.
  static std::string read(const std::vector<creo::ProVector>& points, double module) {
    constexpr int kModules = 60, kDots = 4;
    Picture picture(kModules * kDots, kModules * kDots);
    for (const creo::ProVector& point : points)
      picture.fill(((point.y - 20) / module + 5) * kDots, ((10 - point.x) / module + 5) * kDots, kDots, kDots);
    return scanned(picture, "QRCode");
  }
};

constexpr const char* kUntouched = "CS_CODE BASE |POINTS(0) |9POINTS 54GONE |1 dimensions, no points, 0 planes";
constexpr const char* kWhole =
    "CS_CODE BASE CS_CODE_PNT pattern CS_CODE_DTM |POINTS(0) CS_CODE_LAY(3) |9POINTS 54GONE |5 dimensions, points, 1 "
    "planes";

TEST_F(DotMatrix, IsReallyInThePart) {
  const creo::ProMdl plate = open(world, matrix());
  world.run("list.xml");
  EXPECT_EQ(L"B0 Set QR Code|B1 Save model", told(world.log()));
  const headless::ModelRecord record = saved(world);
  EXPECT_EQ(kWhole, contents(record));
  const auto all = points(plate);
  EXPECT_EQ("Drawing P-4711", read(all, 0.5));
  for (const creo::ProVector& element : all) ASSERT_DOUBLE_EQ(5, element.z);

  // The table: the dimensions of the point, rows in the order of the code.
  const headless::FeatureRecord &point = record.features[2], &pattern = record.features[3], &plane = record.features[4];
  EXPECT_EQ(creo::kPatternFeature, pattern.type);
  ASSERT_EQ(3U, point.dimensions.size());
  EXPECT_EQ(point.dimensions, pattern.pattern->dimensions);
  ASSERT_EQ(all.size(), pattern.pattern->members.size() + 1);
  const auto& members = pattern.pattern->members;
  EXPECT_EQ((std::vector<double>{0.5, 0, 0}), members.front().values);
  for (std::size_t i = 0; i < members.size(); ++i) {
    ASSERT_EQ(static_cast<int>(i) + 1, members[i].number);
    ASSERT_DOUBLE_EQ(10 - members[i].values[1], all[i + 1].x);
    ASSERT_DOUBLE_EQ(20 + members[i].values[0], all[i + 1].y);
  }
  const headless::SolidRecord solid = headless::solidRecord(record.solid);
  EXPECT_EQ(plane.id, solid.planes[0].feature);
  EXPECT_EQ("CS_CODE", solid.planes[0].csys);
  EXPECT_EQ(10, creo::ProDimensionValueGet({plate, plane.dimensions[0], false}).value);

  // The point follows its dimensions, and its coordinate system under another name.
  EXPECT_EQ(creo::ProNoError, creo::ProDimensionValueSet({plate, point.dimensions[0], false}, 7));
  EXPECT_EQ(creo::ProNoError, creo::ProModelitemNameSet({creo::ProItemType::feature, 7, plate, {}}, L"CS_NEW"));
  EXPECT_DOUBLE_EQ(27, points(plate).front().y);
  creo::ProMdlLayerVisit(plate, [](const creo::ProLayer& layer) {
    // What was blanked shows again once the model is saved.
    EXPECT_EQ(creo::ProLayerDisplay::normal, creo::ProLayerDisplaystatusGet(layer).value);
    return creo::ProNoError;
  });
}

TEST_F(DotMatrix, IsMadeOnceOnACoordinateSystem) {
  const creo::ProMdl plate = open(world, matrix() + matrix("", "another") + matrix("csn='OTHER' pixelsize='2'", "2"));
  world.run("list.xml");
  EXPECT_EQ(
      L"B0 Set QR Code|B1 Set QR Code|E:There is a dot matrix on the coordinate system already: CS_CODE_DTM|B2 "
      L"Set QR Code|B3 Save model",
      told(world.log()));
  EXPECT_EQ(
      "CS_CODE BASE CS_CODE_PNT pattern CS_CODE_DTM OTHER_PNT pattern OTHER_DTM |POINTS(0) CS_CODE_LAY(3) "
      "OTHER_LAY(3) |9POINTS 54GONE |9 dimensions, points, 2 planes",
      contents(saved(world)));
  auto all = points(plate);
  std::erase_if(all, [](const creo::ProVector& point) { return point.z == 0; });
  EXPECT_EQ("Drawing P-4711", read(all, 0.5));
}

TEST_F(DotMatrix, StandsWhereInsertModeSays) {
  std::string part = kPart;
  part.insert(part.find("\"layers\""), "\"insertAfter\": 1, ");
  const creo::ProMdl plate = open(world, matrix(), part.c_str());
  world.run("list.xml");
  std::string order;
  creo::ProSolidFeatVisit(plate, [&](const creo::ProFeature& feature) {
    order += std::to_string(creo::ProFeatureNumberGet(feature).value) +
             text::toUtf8(creo::ProFeatureNameGet(feature).value) + " ";
    return creo::ProNoError;
  });
  EXPECT_EQ("1CS_CODE 2CS_CODE_PNT 3 4CS_CODE_DTM 5BASE ", order);
  EXPECT_EQ(4, saved(world).insertAfter);
  std::vector<int> made;
  for (const auto& entry : saved(world).features)
    if (entry.id != 7 && entry.id != 9) made.push_back(entry.id);
  EXPECT_EQ(creo::ProNoError, creo::ProFeatureDelete(plate, made));
  EXPECT_EQ(1, world.session().models().find(plate)->document->record.insertAfter);
}

TEST_F(DotMatrix, ThatCantBeMadeLeavesNothingBehind) {
  const std::wstring noPoint = L"Can't create the point.", noPlane = L"Can't create the datum pane.";
  struct Case {
    std::string task, failing;
    std::wstring said;
    const char* behind = "";  // the failure is that of the first call behind this operation
  };
  const Case cases[] = {
      {matrix("csn='NONE'"), "", L"Can't get the specified coordinate system"},
      {matrix("csn='BASE'"), "", L"Can't get the specified coordinate system"},
      {matrix("", ""), "", L"Can't create the QR code"},
      {matrix("pixelsize='-1'"), "", L"pixelsize isn't a positive number: -1"},
      {matrix("", "%NONE%"), "",
       L"There happened a failure inside the variable replacement. Please check your used variables"},
      {matrix(), "ProModelitemByNameInit", L"Can't get the specified coordinate system"},
      {matrix(), "ProLayerCreate", L"Can't create the layer CS_CODE_LAY"},
      {matrix(), "ProLayerDefLayerGet", L"Can't set the default layers"},
      {matrix(), "ProLayerDefLayerSet", L"Can't set the default layers"},
      {matrix(), "ProSelectionAlloc", L"Can't find Coordinate system."},
      {matrix(), "ProSelectionToReference", L"Can't find Coordinate system."},
      {matrix(), "ProElementWstringSet", noPoint},
      {matrix(), "ProValueDataSet", noPoint},
      {matrix(), "ProFeatureCreate", noPoint},
      {matrix(), "ProFeatureDimensionVisit", noPoint},
      {matrix(), "ProElemtreeElementAdd", noPoint, "ProFeatureDimensionVisit"},
      {matrix(), "ProPatternCreate", noPoint},
      {matrix(), "ProElementDoubleSet", noPlane, "ProPatternCreate"},
      {matrix(), "ProFeatureCreate", noPlane, "ProPatternCreate"},
  };
  for (const Case& entry : cases) {
    World own;
    open(own, entry.task);
    own.openTool();
    own.choose("list.xml");
    Watcher watcher;
    const std::string behind = entry.behind;
    watcher.behind = [&](std::string_view name) {
      if (name == behind) own.session().failNext(entry.failing, creo::ProGeneralError);
    };
    own.session().observe(&watcher);
    own.session().trace(!behind.empty());
    if (behind.empty() && !entry.failing.empty()) own.session().failNext(entry.failing, creo::ProGeneralError);
    own.pressStart();
    EXPECT_TRUE(told(own.log()).ends_with(L"|E:" + entry.said + L"|B1 Save model")) << text::toUtf8(own.log());
    EXPECT_EQ(kUntouched, contents(saved(own))) << entry.task << entry.failing;
    own.session().observe(nullptr);
  }
}

TEST_F(DotMatrix, StaysWhereItsLayerCantBeBlanked) {
  open(world, matrix());
  world.openTool();
  world.choose("list.xml");
  world.session().failNext("ProLayerDisplaystatusSet", creo::ProGeneralError);
  world.pressStart();
  EXPECT_EQ(L"B0 Set QR Code|E:Can't blank the layer CS_CODE_LAY|B1 Save model", told(world.log()));
  EXPECT_EQ(kWhole, contents(saved(world)));
}

TEST_F(DotMatrix, RunsItsMapkeysOnWhatTheyLeaveSelected) {
  const std::string keys =
      "mapkey1c='2' mapkey1_0='~ First `%NUMBER%' mapkey1_1='`' mapkey2c='1' mapkey2_0='~ Second' mapkey3c='1' "
      "mapkey3_0='~ Third' ";
  const creo::ProMdl plate = open(world, matrix(keys + "runmapkeys='1'") + matrix(keys + "csn='OTHER' runmapkeys='0'"));
  world.openTool();
  world.choose("list.xml");
  world.session().select({{{creo::ProItemType::feature, 7, plate, {}}, {}}});
  // The first list leaves the base selected. What is selected where each one runs: features by their numbers.
  std::string seen;
  const auto selected = [&] {
    std::string all;
    for (const auto& selection : creo::ProSelbufferSelectionsGet().value)
      all += std::to_string(creo::ProFeatureNumberGet({plate, selection.item.id}).value) + " ";
    return all + "|";
  };
  Watcher watcher;
  watcher.behind = [&](std::string_view name) {
    if (name == "ProMacroLoad") seen += selected();
    if (name == "ProMacroExecute" && seen == "3 5 |")
      world.session().select({{{creo::ProItemType::feature, 9, plate, {}}, {}}});
  };
  world.session().observe(&watcher);
  world.session().trace(true);
  world.pressStart();
  world.session().observe(nullptr);
  EXPECT_EQ("3 5 |2 |2 5 |", seen);
  EXPECT_EQ("1 |", selected());
  EXPECT_EQ((std::vector<std::wstring>{L"~ First `P-4711`", L"~ Second", L"~ Third"}), world.session().ranSteps());
}

}  // namespace
}  // namespace test
