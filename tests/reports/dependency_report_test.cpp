// The report on what a model uses.
#include "creo/ProMdl.h"
#include "reports/report_fixture.h"

namespace test {
namespace {

using namespace creo;

class DependencyReport : public ReportTest {
 protected:
  static std::string uses(const std::string& attributes) { return task("reportDependencies", attributes); }
};

const std::vector<std::string> kColumns = {"all",     "allwithpath", "allpath", "layouts",
                                           "missing", "supfeat",     "inafeat", "unrfeat"};

TEST_F(DependencyReport, NamesPathsAndWhatIsMissing) {
  model("gear.prt");
  model("bolt.prt", R"("familyTable": {"items": [], "instances": [{"name": "B1"}]})");
  model("top.asm", R"("features": [{"id": 1, "name": "CUT", "status": "suppressed"}, {"id": 2, "status": "inactive"},
        {"id": 3, "name": "LATE", "status": "unregenerated"}, {"id": 4, "name": "FINE"}],
      "components": [{"name": "GEAR", "type": "prt"}, {"name": "GONE", "type": "asm"}, {"name": "GEAR", "type": "prt"},
        {"name": "B1<BOLT>", "type": "prt"}],
      "layouts": [{"name": "plan"}, {"name": "PLAN"}])");
  EXPECT_EQ(report(notParts(uses(on(kColumns))), L"TOP", ProMdlType::assembly),
            line({"All dependencies", "All dependencies with path", "All dependency paths", "Dependent from layouts",
                  "Missing dependencies", "Suppressed features", "Inactive features", "Unregenerated features"}) +
                line({"GEAR.PRT\nGONE.ASM\nB1.PRT\nPLAN.LAY",
                      folder() + "gear.prt.1\nGONE.ASM\n" + folder() + "bolt.prt.1\nPLAN.LAY", folder(), "PLAN.LAY",
                      "GONE.ASM\nPLAN.LAY", "1 - CUT", "2 - ", "3 - LATE"}));
}

TEST_F(DependencyReport, MissingOnesThatComeBackAreRetrievedAndStay) {
  model("gear.prt");
  model("top.asm", R"("components": [{"name": "GEAR", "type": "prt"}])");
  prepare(notParts(uses(on({"all", "missing"}))), L"TOP", ProMdlType::assembly);
  ProMdlErase(ProMdlInit(L"TOP", ProMdlType::assembly).value);
  world.session().settle();
  world.open(L"TOP", ProMdlType::assembly);
  EXPECT_EQ(rows(), line({"GEAR.PRT", ""}));
  EXPECT_TRUE(ProMdlInit(L"GEAR", ProMdlType::part));
}

TEST_F(DependencyReport, ADrawingHasNoFeatureColumns) {
  model("gear.prt");
  model("gear.drw", R"("models": [{"name": "GEAR", "type": "prt"}])");
  EXPECT_EQ(report(notParts(uses(on(kColumns))), L"GEAR", ProMdlType::drawing),
            line({"All dependencies", "All dependencies with path", "All dependency paths", "Dependent from layouts",
                  "Missing dependencies"}) +
                line({"GEAR.PRT", folder() + "gear.prt.1", folder(), "", ""}));
}

TEST_F(DependencyReport, AssembliesThatUseEachOtherEnd) {
  model("a.asm", R"("components": [{"name": "B", "type": "asm"}, {"name": "A", "type": "asm"}])");
  model("b.asm", R"("components": [{"name": "A", "type": "asm"}])");
  const std::string all =
      report(uses(on({"all", "missing"})) + task("reportModeldata", on({"featregen"})), L"A", ProMdlType::assembly);
  EXPECT_NE(all.find(line({"B.ASM\nA.ASM", "", "OK"})), std::string::npos) << all;
  EXPECT_NE(all.find(line({"A.ASM", "", "OK"})), std::string::npos) << all;
}

TEST_F(DependencyReport, AFailingOperationCostsItsFieldOnly) {
  model("gear.prt");
  model("top.asm", R"("components": [{"name": "GEAR", "type": "prt"}])");
  prepare(notParts(uses(on({"allwithpath", "allpath", "supfeat"})) + task("reportModeldata", on({"mdlname"}))), L"TOP",
          ProMdlType::assembly);
  const std::string path = folder() + "gear.prt.1", folderPath = folder();
  const std::vector<std::pair<const char*, std::vector<std::string>>> cases = {
      {"ProMdlOriginGet", {"GEAR.PRT", folderPath, "", "TOP"}},
      {"ProMdlDirectoryPathGet", {path, "", "", "TOP"}},
      {"ProSolidFeatVisit", {path, folderPath, "", "TOP"}},
  };
  for (const auto& [operation, expected] : cases) {
    world.session().failNext(operation, ProGeneralError);
    EXPECT_EQ(rows(), line(expected)) << operation;
  }
}

}  // namespace
}  // namespace test
