// Parts that strangers made, from packages that the checks install: what they measure, how they are seen, and what of
// them is handed on.
#include <cmath>
#include <numbers>

#include "creo/ProIntf.h"
#include "creo/ProIntfimport.h"
#include "creo/ProSolid.h"
#include "creo/ProSurface.h"
#include "headless/geometry/foreign_place.h"
#include "headless/pictures/model_picture.h"
#include "headless/pictures/shown_parts.h"
#include "headless/session_fixture.h"
#include "support/foreign_program.h"

namespace headless {
namespace {

using namespace creo;

class Strangers : public test::HeadlessSession {
 protected:
  // Views that take longer are those by facets, as is told of them.
  Strangers() { geometry::foreignPlace().viewTime = std::chrono::seconds(10); }
  // A file of a package, unpacked where it is packed.
  void fetch(const std::string& from, const std::string& name) {
    ASSERT_TRUE(std::filesystem::exists(from)) << "install what tools/check_packages names";
    write(name, test::said((from.ends_with(".gz") ? "gzip -dc '" : "cat '") + from + "'"));
  }
  ProMdl import(const std::string& file, const std::wstring& name, ProMdlType type = ProMdlType::part) {
    session();
    const bool iges = file.ends_with("igs");
    const auto made = ProIntfimportModelWithOptionsCreate(L"d:\\" + text::fromUtf8(file),
                                                          iges ? ProIntfType::iges : ProIntfType::step, type, name);
    EXPECT_EQ(ProNoError, made.error) << file << ": " << messages();
    return made.value;
  }
  // How wide its lines reach on paper, for a unit of the model; marked is told where they are those of facets.
  struct Picture {
    double width = 0, height = 0;
    std::size_t lines = 0;
    bool isMarked = false;
  };
  Picture seen(ProMdl solid, const ProTransform& screen) {
    constexpr double kPaper = 1000;
    const Model& model = *session().models().find(solid);
    const std::size_t before = messages().size();
    const auto paper = solidLines(session().pictureSources(), model, screen, kPaper, kPaper, false);
    EXPECT_TRUE(paper) << messages();
    geometry::FlatBox box;
    for (const SheetStroke& stroke : paper.value.strokes) box.take(stroke.curve);
    const auto outline = ProSolidOutlineCompute(solid, toScreen(screen), {}).value;
    const double larger = 0.9 * kPaper / std::max(outline.max.x - outline.min.x, outline.max.y - outline.min.y);
    return {(box.right - box.left) / larger, (box.high - box.low) / larger, paper.value.strokes.size(),
            messages().find("is drawn by facets", before) != std::string::npos};
  }
  void expectSeenWhole(ProMdl solid, const char* name) {
    for (const ProTransform& side : {ProTransform{}, kTrimetric}) {
      const auto outline = ProSolidOutlineCompute(solid, toScreen(side), {}).value;
      const Picture picture = seen(solid, side);
      const double wide = outline.max.x - outline.min.x, high = outline.max.y - outline.min.y;
      const double sure = (picture.isMarked ? 1e-2 : 1e-4) * std::max(wide, high);
      EXPECT_NEAR(wide, picture.width, sure) << name;
      EXPECT_NEAR(high, picture.height, sure) << name;
    }
  }
  // Both formats hold what was read.
  void expectHandedOn(ProMdl solid, const char* name, double sure) {
    const double volume = ProSolidMassPropertyGet(solid).value.volume;
    ASSERT_EQ(ProNoError, ProIntf3DFileWriteWithDefaultProfile(solid, ProIntfFormat::step, L"d:\\out")) << name;
    ASSERT_EQ(ProNoError, ProIntf3DFileWrite(solid, ProIntfFormat::iges, L"d:\\out",
                                             ProOutputAssemblyConfiguration::singleFile, {.solids = true}, {}))
        << name;
    for (const char* file : {"out.stp", "out.igs"}) {
      const ProMdl back = import(file, L"BACK_" + std::to_wstring(++backs_));
      EXPECT_NEAR(volume, ProSolidMassPropertyGet(back).value.volume, sure * volume) << name << ": " << file;
    }
  }

 private:
  const geometry::ForeignPlaceGuard place_;
  int backs_ = 0;
};

// Volumes and areas are integrals along the edges of all faces that were worked out apart from this program, in steps
// so fine that half of them come to the same; boxes are the geometry library's own.
TEST_F(Strangers, PartsMeasureAsElsewhereAreSeenWholeAndHandedOn) {
  const struct {
    const char* file;
    double volume, area;
    ProVector min, max;
    double sure = 1e-6;
  } cases[] = {
      {"/usr/share/opencascade/data/step/screw.step",
       3788.27298321,
       1929.33137785,
       {-27.8196812, -10.8262972, -34.56367},
       {-7.97654618, 9.17370303, 7.73145014}},
      // Fillets upon fillets, whose faces don't meet any better: its volume changes by as much with the point from
      // which they are looked at.
      {"/usr/share/opencascade/data/step/linkrods.step",
       3.847015,
       32.151437,
       {3.125, 2.5, 0},
       {8.14528481, 4, 2},
       1e-5},
      // Splines alone; the library's usual integrals are off by 5e-4.
      {"/usr/share/doc/gmsh-doc/doc/gmsh/tutorial/t20_data.step.gz",
       18384.3133796,
       6365.47630028,
       {-18.4752087, 155.86779, -16.0001232},
       {18.4752087, 188.5, 16.0001112}},
      // In inches.
      {"/usr/share/doc/netgen/examples/frame.step",
       10156685.0313 / 16387.064,
       1026843.87949 / 645.16,
       {-2, 0, 0},
       {26, 11.5, 32}},
  };
  for (const auto& part : cases) {
    fetch(part.file, "part.stp");
    const std::size_t before = messages().size();
    const ProMdl solid = import("part.stp", L"PART_" + std::to_wstring(&part - cases));
    EXPECT_EQ("", messages().substr(before)) << part.file;
    const auto mass = ProSolidMassPropertyGet(solid).value;
    EXPECT_NEAR(part.volume, mass.volume, part.sure * part.volume) << part.file;
    EXPECT_NEAR(part.area, mass.surfaceArea, part.sure * part.area) << part.file;
    const auto box = ProSolidOutlineGet(solid).value;
    const double size = part.max.x - part.min.x;
    for (const auto axis : {&ProVector::x, &ProVector::y, &ProVector::z}) {
      EXPECT_NEAR(part.min.*axis, box.min.*axis, part.sure * size) << part.file;
      EXPECT_NEAR(part.max.*axis, box.max.*axis, part.sure * size) << part.file;
    }
    expectSeenWhole(solid, part.file);
    expectHandedOn(solid, part.file, part.sure);
  }
}

// An assembly of 18 parts by two levels, whose holes and rods are splines. Its nut is a plate of 20, 15 and 3 mm with a
// bore of 10 mm, its rod a bar of 10 mm; what the file itself says of their volumes is off by 1.5e-4.
TEST_F(Strangers, AnAssemblysPartsMeasureWhatTheirShapesDo) {
  fetch("/usr/share/doc/gmsh-doc/doc/gmsh/demos/api/as1-tu-203.stp.gz", "as1.stp");
  const ProMdl whole = import("as1.stp", L"AS1", ProMdlType::assembly);
  const auto volumeOf = [&](const wchar_t* name) { return ProSolidMassPropertyGet(retrieve(name)).value.volume; };
  constexpr double kBore = std::numbers::pi * 25;
  EXPECT_NEAR(900 - 3 * kBore, volumeOf(L"NUT"), 1e-6 * 900);
  EXPECT_NEAR(200 * kBore, volumeOf(L"ROD"), 1e-6 * 200 * kBore);
  const double all =
      volumeOf(L"PLATE") + 2 * volumeOf(L"L-BRACKET") + 8 * volumeOf(L"NUT") + 6 * volumeOf(L"BOLT") + volumeOf(L"ROD");
  EXPECT_NEAR(all, ProSolidMassPropertyGet(whole).value.volume, 1e-6 * all);
  expectSeenWhole(whole, "as1");
}

// 3,006 faces: each hexagon that is seen has its six lines, or the picture is marked.
TEST_F(Strangers, AHoneycombEndsAndIsRightOrMarked) {
  constexpr int kAcross = 25, kUp = 20;
  constexpr double kPitch = 5, kSide = 2, kThick = 4;
  std::string primitives = R"({"type": "box", "size": [125, 100, 4]})";
  for (int i = 0; i < kAcross * kUp; ++i) {
    std::string profile;
    for (int corner = 0; corner < 6; ++corner) {
      const double angle = corner * std::numbers::pi / 3;
      profile += (profile.empty() ? "[" : ", [") +
                 std::to_string(kPitch * (i % kAcross + 0.5) + kSide * std::cos(angle)) + ", " +
                 std::to_string(kPitch * (i / kAcross + 0.5) + kSide * std::sin(angle)) + "]";
    }
    primitives += R"(, {"type": "extrusion", "use": "cut", "length": 4, "profile": [)" + profile + "]}";
  }
  const ProMdl solid = part(primitives);
  const double hexagon = 1.5 * std::numbers::sqrt3 * kSide * kSide;
  const double volume = kThick * (kAcross * kUp * (kPitch * kPitch - hexagon));
  EXPECT_NEAR(volume, ProSolidMassPropertyGet(solid).value.volume, 1e-6 * volume) << messages();
  const Picture above = seen(solid, {});
  EXPECT_TRUE(above.isMarked || above.lines == 6 * kAcross * kUp + 4) << above.lines;
  EXPECT_NEAR(125, above.width, 1e-4);
  ASSERT_EQ(ProNoError, ProIntf3DFileWriteWithDefaultProfile(solid, ProIntfFormat::step, L"d:\\comb"));
  const ProMdl back = import("comb.stp", L"COMB");
  EXPECT_NEAR(volume, ProSolidMassPropertyGet(back).value.volume, 1e-6 * volume);
}

}  // namespace
}  // namespace headless
