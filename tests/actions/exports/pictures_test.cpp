// Pictures of models, looked at by another program.
#include "actions/action_fixture.h"
#include "creo/ProMdl.h"
#include "creo/ProUtil.h"
#include "creo/ProWindow.h"
#include "support/drawings.h"
#include "support/foreign_program.h"

namespace {

using namespace creo;
using test::said;

constexpr const char* kRedPlate = R"({"format": 1, "appearance": {"color": [0.9, 0.1, 0.1]},
  "solid": {"primitives": [{"type": "box", "size": [80, 40, 20]}]}})";

class PictureExports : public test::ActionTest {
 protected:
  void SetUp() override {
    test::writeBytes(world.models() + "/BRACKET.prt.1", kRedPlate);
    world.config("kvd_write_history_in_models=0");
  }
  std::string file(const std::string& name) { return world.temp() + "/" + name; }
  // "JPEG 600x300", and the colour of a dot.
  static std::string form(const std::string& path) { return said("identify -format '%m %wx%h' '" + path + "'"); }
  static std::string dot(const std::string& path, int x, int y) {
    return said("convert '" + path + "' -format '%[fx:round(4*p{" + std::to_string(x) + "," + std::to_string(y) +
                "}.r)] %[fx:round(4*p{" + std::to_string(x) + "," + std::to_string(y) + "}.g)]' info:");
  }
};

TEST_F(PictureExports, AJpegShowsTheSolidInItsColourOnWhite) {
  EXPECT_EQ(L"B0 Export jpg|Export completed",
            run(task("exportjpg", "folder='t:\\' exportname='@mdln@' width='600' height='300'")));
  EXPECT_EQ("JPEG 600x300", form(file("BRACKET.jpg")));
  EXPECT_EQ("4 4", dot(file("BRACKET.jpg"), 2, 2)) << "the background is white";
  EXPECT_EQ('0', dot(file("BRACKET.jpg"), 300, 150).back()) << "the plate has hardly any green";
  EXPECT_GE(dot(file("BRACKET.jpg"), 300, 150).front(), '2');
}

TEST_F(PictureExports, SurfacesHaveTheirOwnColours) {
  std::string looks;
  for (int surface = 1; surface <= 6; ++surface)
    looks += (looks.empty() ? "" : ", ") + (R"({"surface": )" + std::to_string(surface)) +
             R"(, "appearance": {"color": [0, 1, 0]}})";
  test::writeBytes(world.models() + "/BRACKET.prt.1", R"({"format": 1, "appearance": {"color": [0.9, 0.1, 0.1]},
      "solid": {"primitives": [{"type": "box", "size": [80, 40, 20]}]}, "surfaceAppearances": [)" +
                                                          looks + "]}");
  run(task("exportjpg", "folder='t:\\' exportname='green' width='600' height='300'"));
  EXPECT_EQ('0', dot(file("green.jpg"), 300, 150).front());
  EXPECT_GE(dot(file("green.jpg"), 300, 150).back(), '2');
}

// What lies before the plane isn't there, and where it cuts the solid one sees its colour, not that of a surface.
TEST_F(PictureExports, AnActiveCrossSectionCutsThePicture) {
  std::string looks;
  for (int surface = 1; surface <= 6; ++surface)
    looks += (looks.empty() ? "" : ", ") + (R"({"surface": )" + std::to_string(surface)) +
             R"(, "appearance": {"color": [0, 1, 0]}})";
  test::writeBytes(world.models() + "/BRACKET.prt.1", R"({"format": 1, "appearance": {"color": [0.9, 0.1, 0.1]},
      "solid": {"primitives": [{"type": "box", "size": [80, 40, 20]}]}, "activeCrossSection": "A",
      "crossSections": [{"id": 1, "name": "A", "plane": "FRONT", "distance": 10}], "surfaceAppearances": [)" +
                                                          looks + "]}");
  run(task("exportjpg", "folder='t:\\' exportname='cut' width='600' height='300'"));
  EXPECT_EQ('0', dot(file("cut.jpg"), 300, 150).back());
  EXPECT_GE(dot(file("cut.jpg"), 300, 150).front(), '2');
  EXPECT_EQ("4 4", dot(file("cut.jpg"), 275, 238)) << "the front's lower edge has gone";
  EXPECT_EQ('0', dot(file("cut.jpg"), 300, 60).front()) << "the top is there, and green";
}

// Two halves of a plate, one of a rod: where their faces go on as one there is no edge.
TEST_F(PictureExports, WhatIsJoinedLooksAsOne) {
  const auto part = [this](const std::string& name, const std::string& primitives) {
    test::writeBytes(world.models() + "/" + name + ".prt.1",
                     R"({"format": 1, "solid": {"primitives": [)" + primitives + "]}}");
  };
  const std::string rod = R"({"type": "cylinder", "diameter": 20, "placement": {"position": [40, 20, )";
  part("BRACKET", R"({"type": "box", "size": [80, 40, 20]}, )" + rod + R"(20]}, "length": 30})");
  part("JOINED", R"({"type": "box", "size": [50, 40, 20]},
      {"type": "box", "size": [30, 40, 20], "placement": {"position": [50, 0, 0]}}, )" +
                     rod + R"(20]}, "length": 10}, )" + rod + R"(30]}, "length": 20})");
  world.list("jpg.xml", task("exportjpg", "folder='t:\\' exportname='@mdln@' width='600' height='300'"));
  world.runOn(L"BRACKET", ProMdlType::part, "jpg.xml");
  world.runOn(L"JOINED", ProMdlType::part, "jpg.xml");
  EXPECT_EQ("JPEG 600x300", form(file("JOINED.jpg")));
  // Two edges across the plate and one around the rod would be some hundreds of dots.
  EXPECT_LT(std::stoi(said("compare -metric AE -fuzz 20% '" + file("BRACKET.jpg") + "' '" + file("JOINED.jpg") +
                           "' null: 2>&1")),
            100);
}

// Bodies are built ahead of the picture, all at once; which of them can't be is told as if it were alone.
TEST_F(PictureExports, APartThatCantBeBuiltIsNamedOnce) {
  const auto part = [this](const std::string& name, int width) {
    test::writeBytes(world.models() + "/" + name + ".prt.1", R"({"format": 1, "solid": {"primitives": [
        {"type": "box", "size": [)" + std::to_string(width) + ", 40, 20]}]}}");
  };
  part("GOOD", 10);
  part("BAD", -30);
  part("FAIR", 20);
  test::writeBytes(world.models() + "/ALL.asm.1", R"({"format": 1, "components": [
      {"name": "GOOD", "type": "prt"}, {"name": "BAD", "type": "prt"}, {"name": "FAIR", "type": "prt"}]})");
  world.list(
      "jpg.xml",
      "<task type='exportjpg' version='3' forPRT='false' forASM='true' forDRW='false' forEF='false' folder='t:\\' "
      "exportname='a' width='60' height='60'/>");
  world.runOn(L"ALL", ProMdlType::assembly, "jpg.xml");
  EXPECT_TRUE(test::told(world.log()).ends_with(L"B0 Export jpg|E:Fehler occured while export as jpg"));
  const std::wstring told = world.messages();
  EXPECT_NE(told.npos, told.find(L"BAD.PRT: primitive 1: "));
  EXPECT_EQ(told.find(L"BAD.PRT: primitive 1: "), told.rfind(L"BAD.PRT: primitive 1: "));
  EXPECT_EQ(told.npos, told.find(L"GOOD.PRT: "));
  EXPECT_EQ(told.npos, told.find(L"FAIR.PRT: "));
}

TEST_F(PictureExports, AModelWithoutABodyGivesAnErrorAndNoPicture) {
  test::writeBytes(world.models() + "/BRACKET.prt.1", R"({"format": 1})");
  EXPECT_EQ(
      L"B0 Export jpg|E:Fehler occured while export as jpg|B1 Export tiff|E:Fehler occured while export as "
      L"tiff|E:Error -1",
      run(task("exportjpg", "folder='t:\\' exportname='a' width='60' height='60'") +
          task("exporttiff", "folder='t:\\' exportname='b'")));
  EXPECT_FALSE(std::filesystem::exists(file("a.jpg")) || std::filesystem::exists(file("b.tiff")) ||
               std::filesystem::exists(file("b_1.tiff")));
  EXPECT_NE(std::wstring::npos, world.messages().find(L"BRACKET.PRT has no geometry to show"));
}

TEST_F(PictureExports, AnOldPictureStaysUnlessItMayBeReplaced) {
  world.list("keep.xml", task("exportjpg", "folder='t:\\' exportname='old.JPG' width='60' height='60'"));
  world.list("replace.xml",
             task("exportjpg", "folder='t:\\' exportname='old.JPG' width='60' height='60' overwriteExisting='true'"));
  test::writeBytes(file("old.JPG"), "old");
  world.runOn(L"BRACKET", ProMdlType::part, "keep.xml");
  EXPECT_EQ(L"B0 Export jpg|W:File already exists, no new image taken", test::told(world.log()));
  EXPECT_EQ("old", test::readBytes(file("old.JPG")));
  world.run("replace.xml");
  EXPECT_EQ("JPEG 60x60", form(file("old.JPG")));
}

TEST_F(PictureExports, WhatFailsLeavesNoFileAndPutsEverythingBack) {
  world.list("jpg.xml", task("exportjpg", "folder='t:\\missing' exportname='a' width='60' height='60'") +
                            task("exportjpg", "folder='t:\\' exportname='flat' width='60' height='0'") +
                            task("exportjpg", "folder='t:\\' exportname='wide' width='60' height='1000000'") +
                            task("exporttiff", "folder='t:\\missing' exportname='b'"));
  ASSERT_EQ(0, world.start());
  world.session().setOption(L"skip_small_surfaces", L"yes");
  world.open(L"BRACKET", ProMdlType::part);
  const int window = ProWindowCurrentGet().value;
  world.run("jpg.xml");
  const auto failed = [](int number) {
    return L"B" + std::to_wstring(number) + L" Export jpg|E:Fehler occured while export as jpg|";
  };
  EXPECT_EQ(failed(0) + failed(1) + failed(2) + L"B3 Export tiff|E:Fehler occured while export as tiff|E:Error -17",
            test::told(world.log()));
  EXPECT_FALSE(std::filesystem::exists(file("flat.jpg")));
  EXPECT_EQ(L"yes", ProConfigoptGet(L"skip_small_surfaces").value);
  EXPECT_EQ(window, ProWindowCurrentGet().value);
}

TEST_F(PictureExports, ATiffShowsASheetInItsSize) {
  test::writeBytes(world.models() + "/PLATE.drw.1", R"({"format": 1, "sheets": [{"size": "A4"}, {"size": "A3"}],
    "currentSheet": 2, "drafts": [{"sheet": 2, "lines": [[10, 148, 410, 148, 8]]}],
    "notes": [{"id": 1, "sheet": 2, "position": {"x": 50, "y": 60}, "lines": ["MASSSTAB"]},
              {"id": 2, "sheet": 2, "position": {"x": 1e300, "y": 5}, "lines": ["far away"]},
              {"id": 3, "sheet": 2, "lines": [[{"text": "huge", "height": 9999999}]]}]})");
  EXPECT_EQ(L"B0 Export tiff|Export completed",
            run(task("exporttiff", "folder='t:\\' exportname='sheet' printmode='1'"), L"PLATE", ProMdlType::drawing));
  EXPECT_EQ("TIFF 4961x3508", form(file("sheet.tiff"))) << "A3 at 300 dots an inch";
  EXPECT_EQ("0 0", dot(file("sheet.tiff"), 2480, 1760)) << "the thick line";
  EXPECT_EQ("4 4", dot(file("sheet.tiff"), 2480, 1600));
  const std::string ink =
      said("convert '" + file("sheet.tiff") + "' -crop 600x80+580+2740 -format '%[fx:mean<0.98]' info:");
  EXPECT_EQ("1", ink) << "the note's letters";
  EXPECT_FALSE(std::filesystem::exists(file("sheet_1.tiff"))) << "the print's own name is gone";
}

// A print has lines alone: the red plate's edges, black on white.
TEST_F(PictureExports, ASolidIsPrintedInLines) {
  EXPECT_EQ(L"B0 Export tiff|Export completed", run(task("exporttiff", "folder='t:\\' exportname='a'")));
  EXPECT_EQ("TIFF 3508x2480", form(file("a.tiff"))) << "A4 across";
  const auto measured = [&](const std::string& what) {
    return said("convert '" + file("a.tiff") + "' -format '%[fx:" + what + "]' info:");
  };
  EXPECT_EQ("1", measured("mean>0.9&&mean<0.9995")) << "lines, no faces";
  EXPECT_EQ("1", measured("abs(mean.r-mean.g)<0.0001")) << "in no colour";
}

TEST_F(PictureExports, ADrawingHasNoPictureButItsPrint) {
  test::writeBytes(world.models() + "/PLATE.drw.1", R"({"format": 1, "sheets": [{"size": "A4"}]})");
  EXPECT_EQ(L"B0 Export jpg|E:Fehler occured while export as jpg|B1 Export tiff|Export completed",
            run(task("exportjpg", "folder='t:\\' exportname='a' width='60' height='60'") +
                    task("exporttiff", "folder='t:\\' exportname='a'"),
                L"PLATE", ProMdlType::drawing));
  EXPECT_FALSE(std::filesystem::exists(file("a.jpg")));
  EXPECT_NE(std::wstring::npos, world.messages().find(L"PLATE.DRW has no picture but its print"));
}

TEST_F(PictureExports, APathThatIsntWholeCountsFromTheWorkingFolder) {
  std::filesystem::create_directory(world.models() + "/out");
  test::writeBytes(world.models() + "/out/kept_1.tiff", "old");
  EXPECT_EQ(
      L"B0 Export jpg|Export completed|B1 Export tiff|Export completed|B2 Export tiff|"
      L"W:File already exists, no new image taken|"
      L"B3 Export tiff|E:d:/out/kept_1.tiff is in the way|E:Fehler occured while export as tiff|E:Error -5",
      run(task("exportjpg", "folder='out' exportname='a' width='60' height='30'") +
          task("exporttiff", "folder='out' exportname='b'") + task("exporttiff", "folder='out' exportname='b'") +
          task("exporttiff", "folder='out' exportname='kept'")));
  EXPECT_EQ("JPEG 60x30", form(world.models() + "/out/a.jpg"));
  EXPECT_TRUE(std::filesystem::exists(world.models() + "/out/b.tiff"));
  EXPECT_EQ("old", test::readBytes(world.models() + "/out/kept_1.tiff"));
}

}  // namespace
