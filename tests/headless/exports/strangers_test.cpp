// Parts that strangers made, from packages that the checks install: what they measure, how they are seen, and what of
// them is handed on.
#include <array>
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
#include "support/step_file.h"

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
    bool isDrawn = true;  // the largest would take a minute
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
       {26, 11.5, 32},
       1e-6,
       false},
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
    if (!part.isDrawn) continue;
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

struct Corner {
  double x = 0, y = 0;
  std::array<std::string, 2> points = {};  // above, below
};
using Corners = std::vector<Corner>;

// A plate of 4 mm with hexagonal holes through it, as a STEP file of flat faces, two for each row of holes: the
// library's mending of wires takes the square of their number on a face.
class Honeycomb {
 public:
  static constexpr double kPitch = 5, kSide = 2, kThick = 4;

  Honeycomb(int across, int up) : across_(across), up_(up) {
    const std::string head = test::stepTetrahedron();
    text_ = head.substr(0, head.find("#22="));
    Corners right, left;
    for (int row = 0; row <= up; ++row) {
      right.push_back({across * kPitch, row * kPitch});
      left.push_back({0, row * kPitch});
    }
    right = corners(right);
    left = corners(left);
    for (std::size_t row = 1; row < left.size(); ++row) addRow({left[row - 1], right[row - 1], right[row], left[row]});
    right.insert(right.end(), left.rbegin(), left.rend());
    addSides(right, 1);
  }
  [[nodiscard]] std::string file() const {
    return text_ + "#22=CLOSED_SHELL('',(" + faces_ + "));\nENDSEC;\nEND-ISO-10303-21;\n";
  }
  [[nodiscard]] double volume() const {
    return kThick * across_ * up_ * (kPitch * kPitch - 1.5 * std::numbers::sqrt3 * kSide * kSide);
  }

 private:
  std::string entity(const std::string& body) {
    const std::string name = "#" + std::to_string(++last_);
    text_ += name + "=" + body + ";\n";
    return name;
  }
  std::string triple(const char* what, double x, double y, double z) {
    const auto number = [](double value) { return std::to_string(value); };
    return entity(what + ("('',(" + number(x) + ',' + number(y) + ',' + number(z)) + "))");
  }
  Corners corners(Corners all) {
    for (Corner& corner : all)
      for (const std::size_t below : {0U, 1U})
        corner.points.at(below) = triple("CARTESIAN_POINT", corner.x, corner.y, below ? 0 : kThick);
    return all;
  }
  std::string loop(const std::string& points) { return entity("POLY_LOOP('',(" + points + "))"); }
  // bounds: the outer one first, a comma between them.
  void face(const std::string& bounds, const std::string& at, const std::string& direction) {
    const std::string plane =
        entity("PLANE(''," + entity("AXIS2_PLACEMENT_3D(''," + at + "," + direction + ",$)") + ")");
    faces_ += (faces_.empty() ? "" : ",") + entity("FACE_SURFACE('',(" + bounds + ")," + plane + ",.T.)");
  }
  // Upright faces about corners that go around counter-clockwise; side: 1 around material, -1 around a hole.
  void addSides(const Corners& around, double side) {
    for (std::size_t i = 0; i < around.size(); ++i) {
      const Corner *a = &around[i], *b = &around[(i + 1) % around.size()];
      const std::string out = triple("DIRECTION", side * (b->y - a->y), side * (a->x - b->x), 0);
      if (side < 0) std::swap(a, b);
      const std::string all = a->points[1] + "," + b->points[1] + "," + b->points[0] + "," + a->points[0];
      face(entity("FACE_OUTER_BOUND(''," + loop(all) + ",.T.)"), a->points[0], out);
    }
  }
  void addRow(const Corners& rim) {
    std::vector<Corners> holes;
    for (int i = 0; i < across_; ++i) {
      Corners hexagon;
      for (int k = 0; k < 6; ++k)
        hexagon.push_back({kPitch * (i + 0.5) + kSide * std::cos(k * std::numbers::pi / 3),
                           rim.front().y + kPitch / 2 + kSide * std::sin(k * std::numbers::pi / 3)});
      addSides(holes.emplace_back(corners(hexagon)), -1);
    }
    addLid(rim, holes, 0, 1);
    addLid(rim, holes, 1, -1);
  }
  void addLid(const Corners& rim, const std::vector<Corners>& holes, std::size_t below, double up) {
    const auto bound = [&](const char* kind, const Corners& around, bool isTurned) {
      std::string points;
      for (std::size_t i = 0; i < around.size(); ++i)
        points += (i ? "," : "") + around[isTurned ? around.size() - 1 - i : i].points[below];
      return entity(kind + ("(''," + loop(points)) + ",.T.)");
    };
    std::string bounds = bound("FACE_OUTER_BOUND", rim, up < 0);
    for (const Corners& hole : holes) bounds += "," + bound("FACE_BOUND", hole, up > 0);
    face(bounds, rim.front().points[below], triple("DIRECTION", 0, 0, up));
  }

  int across_, up_, last_ = 1000;
  std::string text_, faces_;
};

// Each hexagon that is seen has its six lines, or the picture is marked.
TEST_F(Strangers, EachCellOfAHoneycombIsSeenOrThePictureIsMarked) {
  const Honeycomb comb(8, 5);
  write("comb.stp", comb.file());
  const ProMdl solid = import("comb.stp", L"COMB");
  EXPECT_EQ("", messages());
  EXPECT_NEAR(comb.volume(), ProSolidMassPropertyGet(solid).value.volume, 1e-6 * comb.volume());
  const Picture above = seen(solid, {});
  EXPECT_TRUE(above.isMarked || above.lines == 6 * 8 * 5 + 4) << above.lines;
  EXPECT_NEAR(40, above.width, 1e-4);
  expectHandedOn(solid, "comb", 1e-6);
}

}  // namespace
}  // namespace headless
