// Solids as STEP and IGES files, and such files as models.
#include <cmath>
#include <numbers>
#include <set>

#include "creo/ProAppearance.h"
#include "creo/ProIntf.h"
#include "creo/ProIntfimport.h"
#include "creo/ProSolid.h"
#include "creo/ProSurface.h"
#include "headless/session_fixture.h"
#include "os/clock.h"
#include "os/surroundings.h"
#include "support/step_file.h"
#include "text/format.h"

namespace headless {
namespace {

using namespace creo;

constexpr double kPi = std::numbers::pi;

class ExchangeTest : public test::HeadlessSession {
 protected:
  // A plate of mm and, twice, a pin of inches in an assembly of mm; a suppressed pin and a skeleton count for nothing.
  ProMdl gear() {
    model("plate.prt.1", R"("appearance": {"color": [0.2, 0.4, 0.6]},
        "solid": {"primitives": [{"type": "box", "size": [80, 40, 5]}]})");
    model("pin.prt.1", R"("units": "inlbs", "appearance": {"color": [1, 0, 0]},
        "solid": {"primitives": [{"type": "cylinder", "diameter": 0.2, "length": 1}]})");
    model("bones.prt.1", R"("skeleton": true, "solid": {"primitives": [{"type": "box", "size": [1, 1, 1]}]})");
    model("gear.asm.1", R"("features": [{"id": 9, "type": 1000, "status": "suppressed"}], "components": [
        {"name": "PLATE", "type": "prt"}, {"name": "BONES", "type": "prt"},
        {"name": "PIN", "type": "prt", "placement": {"position": [10, 20, 5]}},
        {"name": "PIN", "type": "prt", "placement": {"position": [30, 20, 5], "zAxis": [0, 1, 0]}},
        {"name": "PIN", "type": "prt", "feature": 9}])");
    return retrieve(L"GEAR", ProMdlType::assembly);
  }
  static constexpr double kPin = kPi * 0.01 * 25.4 * 25.4 * 25.4;  // of its volume in mm^3
  static constexpr double kGear = 16000 + 2 * kPin;

  static ProError writeIges(ProMdl solid, const std::wstring& path, const ProOutputBrepRepresentation& what,
                            ProOutputAssemblyConfiguration how = ProOutputAssemblyConfiguration::singleFile) {
    return ProIntf3DFileWrite(solid, ProIntfFormat::iges, path, how, what, {});
  }
  static ProError writeStep(ProMdl solid, const std::wstring& stem) {
    return ProIntf3DFileWriteWithDefaultProfile(solid, ProIntfFormat::step, stem);
  }
  static Got<ProMdl> import(const std::wstring& path, ProMdlType type, const std::wstring& name) {
    const bool iges = path.ends_with(L".igs");
    return ProIntfimportModelWithOptionsCreate(path, iges ? ProIntfType::iges : ProIntfType::step, type, name);
  }
  static double volume(ProMdl solid) { return ProSolidMassPropertyGet(solid).value.volume; }
  static double area(ProMdl solid) { return ProSolidMassPropertyGet(solid).value.surfaceArea; }
  static std::vector<double> color(ProMdl solid) {
    const auto look = ProMdlVisibleAppearancepropsGet(item(solid));
    if (!look) return {};
    return {look.value.red, look.value.green, look.value.blue};
  }
  static std::wstring uses(ProMdl assembly) {
    std::wstring all;
    for (const ProDependency& used : ProMdlDependenciesList(assembly).value)
      all += used.name + L'.' + used.typeText + L' ';
    return all;
  }
};

TEST_F(ExchangeTest, AStepFileReadBackHasStructureNamesColoursAndVolume) {
  const ProMdl gear = this->gear();
  const auto box = ProSolidOutlineGet(gear).value;
  ASSERT_EQ(ProNoError, writeStep(gear, L"d:\\gear"));
  const auto back = import(L"d:\\gear.stp", ProMdlType::assembly, L"BACK");
  ASSERT_TRUE(back) << messages();
  EXPECT_EQ(L"PLATE_1.PRT PIN_1.PRT ", uses(back.value));  // the names themselves are taken
  EXPECT_NEAR(kGear, volume(back.value), 1e-6);
  const auto boxBack = ProSolidOutlineGet(back.value).value;
  EXPECT_NEAR(box.min.y, boxBack.min.y, 1e-9);
  EXPECT_NEAR(box.max.y, boxBack.max.y, 1e-9);
  EXPECT_NEAR(box.max.z, boxBack.max.z, 1e-9);
  EXPECT_EQ((std::vector<double>{0.2, 0.4, 0.6}), color(retrieve(L"PLATE_1")));
  EXPECT_EQ((std::vector<double>{1, 0, 0}), color(retrieve(L"PIN_1")));
  EXPECT_NEAR(kPin, volume(retrieve(L"PIN_1")), 1e-6);
}

// The lines of placed members: the library writes colours in an order of its own.
std::string placements(const std::string& step) {
  std::string lines;
  for (std::size_t at = step.find("NEXT_ASSEMBLY"); at != step.npos; at = step.find("NEXT_ASSEMBLY", at + 1))
    lines += step.substr(at, step.find(",'',", at) - at) + "\n";
  return lines;
}

TEST_F(ExchangeTest, FilesOfOneTreeAreEqual) {
  const os::SurroundingsGuard surroundings;
  os::surroundings().clock = std::make_shared<os::FixedClock>(1'700'000'000);
  const ProMdl gear = this->gear();
  ASSERT_EQ(ProNoError, writeStep(gear, L"d:\\gear"));
  const std::string first = os::files().read(L"d:\\gear.stp").value;
  ASSERT_EQ(ProNoError, writeStep(gear, L"d:\\gear"));
  EXPECT_NE(std::string::npos, first.find("NEXT_ASSEMBLY_USAGE_OCCURRENCE('2'"));
  EXPECT_EQ(placements(first), placements(os::files().read(L"d:\\gear.stp").value));
}

// The colours of a part's faces, by what tells the faces apart: where their planes look.
TEST_F(ExchangeTest, FacesKeepTheirColours) {
  model("die.prt.1", R"("units": "inlbs", "appearance": {"color": [0.2, 0.4, 0.6]}, "surfaceAppearances": [
      {"surface": 2, "appearance": {"color": [255, -1, 0]}}, {"surface": 5, "appearance": {"color": [0, 1, 0]}},
      {"surface": 6, "side": 1, "appearance": {"color": [0, 0, 1]}}, {"surface": 7, "appearance": {"color": [1, 1, 1]}}],
      "solid": {"primitives": [{"type": "box", "size": [8, 4, 5]}]})");
  const auto colored = [](ProMdl solid) {
    std::set<std::string> all;
    ProSolidSurfaceVisit(solid, [&](const ProSurface& surface) {
      const auto look = ProSurfaceSideAppearancepropsGet(surface, ProSurfaceSide::outer);
      const ProVector z = ProSurfaceDataGet(surface).value.zAxis;
      if (look)
        all.insert(text::toUtf8(text::format(L"%.0f %.0f %.0f: %.1f %.1f %.1f", z.x + 0.0, z.y + 0.0, z.z + 0.0,
                                             look.value.red, look.value.green, look.value.blue)));
      return ProNoError;
    });
    return all;
  };
  const ProMdl die = retrieve(L"DIE");
  const std::set<std::string> wanted = {"0 0 -1: 0.0 1.0 0.0", "1 0 0: 1.0 0.0 0.0"};
  ASSERT_EQ(ProNoError, writeStep(die, L"d:\\die"));
  const auto back = import(L"d:\\die.stp", ProMdlType::part, L"BACK");
  ASSERT_TRUE(back) << messages();
  EXPECT_EQ(wanted, colored(back.value));
  EXPECT_EQ(ProAccuracyKind::absolute, ProSolidAccuracyGet(back.value).value.kind);
  EXPECT_EQ(0.00039, ProSolidAccuracyGet(back.value).value.value);  // in inches
  EXPECT_EQ((std::vector<double>{0.2, 0.4, 0.6}), color(back.value));
}

TEST_F(ExchangeTest, AnImportIsWholeBehindSavingAndReading) {
  ASSERT_EQ(ProNoError, writeStep(gear(), L"d:\\gear"));
  const auto back = import(L"d:\\gear.stp", ProMdlType::assembly, L"BACK");
  ASSERT_TRUE(back);
  EXPECT_EQ(std::string::npos, files().find("back"));
  ASSERT_EQ(ProNoError, ProMdlSave(back.value));
  EXPECT_NE(std::string::npos, files().find("plate_1.prt.1"));
  endSession();
  EXPECT_NEAR(kGear, volume(retrieve(L"BACK", ProMdlType::assembly)), 1e-6) << messages();
}

TEST_F(ExchangeTest, APartOfAnAssemblysFileIsItsBodiesAsOne) {
  ASSERT_EQ(ProNoError, writeStep(gear(), L"d:\\gear"));
  const auto whole = import(L"d:\\gear.stp", ProMdlType::part, L"WHOLE");
  ASSERT_TRUE(whole);
  EXPECT_NEAR(kGear, volume(whole.value), 1e-6);
  EXPECT_EQ(ProExists, import(L"d:\\gear.stp", ProMdlType::part, L"WHOLE").error);
  EXPECT_EQ(ProInvalidType, import(L"d:\\gear.stp", ProMdlType::drawing, L"SHEET").error);
}

TEST_F(ExchangeTest, UnitsAreKept) {
  gear();
  const ProMdl pin = retrieve(L"PIN");
  for (const bool step : {true, false}) {
    const std::wstring file = step ? L"d:\\pin.stp" : L"d:\\pin.igs";
    ASSERT_EQ(ProNoError, step ? writeStep(pin, L"d:\\pin") : writeIges(pin, L"d:\\pin", {.solids = true}));
    const auto back = import(file, ProMdlType::part, step ? L"ONE" : L"TWO");
    ASSERT_TRUE(back) << messages();
    EXPECT_EQ(L"Inch lbm Second (Creo Parametric Default)", ProMdlPrincipalunitsystemGet(back.value).value);
    EXPECT_NEAR(volume(pin), volume(back.value), 1e-6);
    EXPECT_EQ((std::vector<double>{1, 0, 0}), color(back.value));
  }
}

TEST_F(ExchangeTest, IgesHoldsWhatIsAskedFor) {
  const ProMdl gear = this->gear();
  const double wanted = area(gear);
  using How = ProOutputAssemblyConfiguration;
  const struct {
    ProOutputBrepRepresentation what;
    How how;
    bool closed;
  } cases[] = {{{.solids = true}, How::singleFile, true},
               {{.solids = true}, How::flatFile, true},
               {{.surfaces = true}, How::singleFile, true},
               {{.wireframe = true, .solids = true}, How::singleFile, true},
               {{.wireframe = true}, How::flatFile, false}};
  int number = 0;
  for (const auto& [what, how, closed] : cases) {
    ASSERT_EQ(ProNoError, writeIges(gear, L"d:\\gear", what, how)) << messages();
    const auto back = import(L"d:\\gear.igs", ProMdlType::part, L"I" + std::to_wstring(++number));
    EXPECT_EQ(closed ? ProNoError : ProGeneralError, back.error) << number;
    if (!back) continue;
    EXPECT_NEAR(kGear, volume(back.value), 1) << number;
    EXPECT_NEAR(wanted, area(back.value), 1) << number;
  }
  EXPECT_EQ(ProGeneralError, writeIges(gear, L"d:\\none", {.quilts = true}));
  EXPECT_FALSE(std::filesystem::exists(folder_ + "/none.igs"));
}

TEST_F(ExchangeTest, SeveralFilesAreTheWholeAndItsParts) {
  ASSERT_EQ(ProNoError, writeIges(gear(), L"d:\\gear", {.solids = true}, ProOutputAssemblyConfiguration::multiFiles));
  const auto whole = import(L"d:\\gear.igs", ProMdlType::part, L"A");
  const auto plate = import(L"d:\\plate_prt.igs", ProMdlType::part, L"B");
  const auto pin = import(L"d:\\pin_prt.igs", ProMdlType::part, L"C");
  ASSERT_TRUE(whole && plate && pin) << messages();
  EXPECT_NEAR(kGear, volume(whole.value), 1);
  EXPECT_NEAR(16000, volume(plate.value), 1e-3);
  EXPECT_FALSE(std::filesystem::exists(folder_ + "/bones_prt.igs"));
}

TEST_F(ExchangeTest, TheProfileChoosesTheSchema) {
  const ProMdl gear = this->gear();
  write("new.dep_step", "<profile><format>ap242</format></profile>");
  ASSERT_EQ(ProNoError, writeStep(gear, L"d:\\old"));
  EXPECT_NE(std::string::npos, read("old.stp").find("AUTOMOTIVE_DESIGN"));
  session().setOption(L"export_profiles_step", L"d:\\new.dep_step");
  ASSERT_EQ(ProNoError, writeStep(gear, L"d:\\new"));
  EXPECT_NE(std::string::npos, read("new.stp").find("AP242_MANAGED_MODEL_BASED_3D_ENGINEERING"));
  session().setOption(L"export_profiles_step", L"d:\\none.dep_step");
  EXPECT_EQ(ProGeneralError, writeStep(gear, L"d:\\none"));
  EXPECT_NE(std::string::npos, messages().find("none.dep_step: can't be read"));
}

TEST_F(ExchangeTest, WhatCantBeWrittenLeavesTheOldFile) {
  model("empty.prt.1");
  const ProMdl empty = retrieve(L"EMPTY");
  write("empty.stp", "old");
  EXPECT_EQ(ProGeneralError, writeStep(empty, L"d:\\empty"));
  EXPECT_EQ("old", read("empty.stp"));
  EXPECT_NE(std::string::npos, messages().find("EMPTY.PRT: there is no geometry to write"));
  EXPECT_EQ(ProCantWrite, writeStep(gear(), L"d:\\nowhere\\gear"));
  EXPECT_EQ(ProNoLicense, ProIntf3DFileWrite(empty, ProIntfFormat::sat, L"d:\\a", {}, {}, {}));
  // The format's ending comes behind any other, and a name stands in front of it.
  EXPECT_EQ(ProNoError, writeIges(retrieve(L"PLATE"), L"d:\\plate.v2", {.solids = true}));
  EXPECT_TRUE(std::filesystem::exists(folder_ + "/plate.v2.igs"));
  EXPECT_EQ(ProBadInputs, writeIges(retrieve(L"PLATE"), L"d:\\", {.solids = true}));
}

TEST_F(ExchangeTest, FilesThatAreNoModelAreToldAndMakeNothing) {
  ASSERT_EQ(ProNoError, writeStep(gear(), L"d:\\gear"));
  ASSERT_EQ(ProNoError, writeIges(retrieve(L"PLATE"), L"d:\\plate", {.solids = true}));
  const std::string step = test::stepTetrahedron(), iges = read("plate.igs");
  const std::string picture = "\xFF\xD8\xFF\xE0 JFIF";
  const std::size_t data = step.find("#20=");
  const std::pair<std::string, std::pair<std::string, std::string>> cases[] = {
      {"cut.stp", {step.substr(0, step.size() / 2), "cut.stp: the file is cut: its end is missing"}},
      {"empty.stp", {"", "empty.stp: the file is empty"}},
      {"picture.stp", {picture, "picture.stp: the file is no STEP file"}},
      {"bare.stp", {step.substr(0, data) + "ENDSEC;\nEND-ISO-10303-21;\n", "bare.stp: "}},
      {"cut.igs", {iges.substr(0, iges.size() / 2), "cut.igs: the file is cut: its end is missing"}},
      {"picture.igs", {picture, "picture.igs: the file is no IGES file"}},
      {"step.igs", {step, "step.igs: the file is no IGES file"}},
  };
  const std::size_t before = session().models().list().size();
  for (const auto& [file, contents] : cases) {
    write(file, contents.first);
    for (const ProMdlType type : {ProMdlType::part, ProMdlType::assembly})
      EXPECT_EQ(ProGeneralError, import(L"d:\\" + text::fromUtf8(file), type, L"NEW").error) << file;
    EXPECT_NE(std::string::npos, messages().find(contents.second)) << file << "\n" << messages();
  }
  EXPECT_EQ(ProNotFound, import(L"d:\\none.stp", ProMdlType::part, L"NEW").error);
  for (const std::wstring& name : {std::wstring(L"NO NAME"), std::wstring(32, L'N'), std::wstring()})
    EXPECT_EQ(ProBadInputs, import(L"d:\\gear.stp", ProMdlType::part, name).error) << name.size();
  EXPECT_EQ(ProBadInputs, import(L"gear.stp", ProMdlType::part, L"NEW").error) << "the path isn't whole";
  EXPECT_EQ(before, session().models().list().size());
}

}  // namespace
}  // namespace headless
