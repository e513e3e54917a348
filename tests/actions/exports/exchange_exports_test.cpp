// Parts and assemblies as STEP and IGES by lists, and imported in groups.
#include <filesystem>

#include "actions/action_fixture.h"
#include "creo/ProMdl.h"
#include "creo/ProSolid.h"
#include "creo/ProUtil.h"
#include "headless/model/models.h"
#include "support/step_file.h"

namespace test {
namespace {

namespace fs = std::filesystem;

class ExchangeExports : public ActionTest {
 protected:
  ExchangeExports() {
    writeBytes(world.models() + "/bracket.prt.1",
               R"({"format": 1, "solid": {"primitives": [{"type": "box", "size": [80, 40, 5]}]}})");
    fs::create_directories(world.models() + "/out");
    world.config("kvd_write_history_in_models=0");
  }
  static std::string step(const std::string& attributes) {
    return "<task type='exportStep' version='4' forPRT='true' forASM='true' forDRW='true' forEF='false' " + attributes +
           "/>";
  }
  static std::string iges(const std::string& attributes) {
    return task("exportiges", "assemblyConfig='single file' solids='true' " + attributes);
  }
  // Names in the target folder, joined by blanks.
  [[nodiscard]] std::string files() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(world.models() + "/out"))
      names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    std::string all;
    for (const std::string& name : names) all += (all.empty() ? "" : " ") + name;
    return all;
  }
  void put(const std::string& file) const { writeBytes(world.models() + "/out/" + file, "old"); }
  [[nodiscard]] bool isOld(const std::string& file) const {
    return readBytes(world.models() + "/out/" + file) == "old";
  }
  static bool told(const std::wstring& log, std::wstring_view text) { return log.find(text) != std::wstring::npos; }
  // For the cases of one test: a new session, a new package.
  void begin() {
    world.endSession();
    fs::remove(world.packages() + "/standards.kvz");
  }
};

TEST_F(ExchangeExports, NamesCarryTheExtensionOfTheFormat) {
  const auto log =
      run(step("folder='d:/out' file='a.STEP'") + step("folder='d:\\out\\' file='@mdln@'") +
          step("folderFromModel='true' folder='d:/none' file='out/b.stp'") + iges("folder='d:/out' file='c'") +
          iges("folder='d:/out' file='d.IGS'") + iges("folder='d:/out' file='e.iges'"));
  EXPECT_EQ("BRACKET.stp a.stp b.stp c.igs d.igs e.igs", files()) << testing::PrintToString(log);
  EXPECT_TRUE(told(log, L"Export completed"));
  EXPECT_FALSE(told(log, L"E:"));
}

TEST_F(ExchangeExports, AnOldFileStaysUnlessItMayBeReplaced) {
  for (const char* file : {"a.stp", "b.stp", "c.igs", "d.igs", "e.igs"}) put(file);
  const auto log =
      run(step("folder='d:/out' file='a.step'") + step("folder='d:/out' file='b.step' overwriteExisting='true'") +
          iges("folder='d:/out' file='c'") + iges("folder='d:/out' file='d' overwriteExisting='true'") +
          iges("folder='d:/out' file='e.iges'"));
  EXPECT_TRUE(isOld("a.stp") && isOld("c.igs") && isOld("e.igs")) << files();
  EXPECT_FALSE(isOld("b.stp") || isOld("d.igs"));
  EXPECT_TRUE(told(log, L"W:File already exists, no new image taken"));
}

TEST_F(ExchangeExports, TheProfileIsPutBackOnEveryPath) {
  world.member("models/new.dep_step", "ap242");
  struct Case {
    std::string config, operation;
    bool written;
  };
  for (const auto& [config, operation, written] :
       {Case{"config='@project_dir@\\new.dep_step'", "", true}, Case{"config='d:\\none.dep_step'", "", false},
        Case{"config='@project_dir@\\new.dep_step'", "ProIntf3DFileWriteWithDefaultProfile", false},
        Case{"config='@project_dir@\\new.dep_step'", "ProConfigoptSet", false}}) {
    begin();
    world.list("list.xml", step("folder='d:/out' file='a' overwriteExisting='true' " + config));
    world.start();
    world.session().setOption(L"export_profiles_step", L"d:\\site.dep_step");
    if (!operation.empty()) world.session().failNext(operation, creo::ProGeneralError);
    world.open(L"BRACKET", creo::ProMdlType::part);
    world.run("list.xml");
    EXPECT_EQ(!written, world.logHas(L"Failure occured while export to step")) << config << operation;
    EXPECT_EQ(L"d:\\site.dep_step", creo::ProConfigoptGet(L"export_profiles_step").value) << config << operation;
  }
  EXPECT_NE(std::string::npos, readBytes(world.models() + "/out/a.stp").find("AP242"));
}

TEST_F(ExchangeExports, EachRefusalHasItsLine) {
  struct Case {
    std::string attributes, operation;
    std::wstring line;
  };
  for (const auto& [attributes, operation, line] :
       {Case{"solids='true'", "ProOutputAssemblyConfigurationIsSupported", L"The ASM export type is not supported"},
        Case{"", "", L"The brep representation is not supported"},
        Case{"quilts='true'", "", L"Failure occured while export to iges"},
        Case{"solids='true'", "ProOutputLayerOptionsAlloc", L"Failure occured while export to iges"},
        Case{"solids='true'", "ProIntf3DFileWrite", L"Failure occured while export to iges"}}) {
    begin();
    world.list("list.xml", task("exportiges", "folder='d:/out' file='a' assemblyConfig='flat file' " + attributes));
    world.start();
    if (!operation.empty()) world.session().failNext(operation, creo::ProGeneralError);
    world.open(L"BRACKET", creo::ProMdlType::part);
    world.run("list.xml");
    EXPECT_TRUE(world.logHas(line)) << attributes << operation;
    EXPECT_EQ("", files());
  }
  begin();  // what is written is "d:/out/.igs"
  EXPECT_TRUE(told(run(iges("folder='d:/out' file='.iges'")), L"E:The path names no file: 'd:/out/.igs'"));
  EXPECT_EQ("", files());
  begin();
  EXPECT_TRUE(
      told(run(task("exportsat", "folder='d:/out' file='a' solids='true'")), L"E:Failure occured while export to sat"));
}

TEST_F(ExchangeExports, AGroupWorksOnWhatItImports) {
  const std::string save = "<subtasks>" + task("saveModel") + "</subtasks>";
  const auto import = [&save](const std::string& file) {
    return task("groupActions", "reworkMode='5' mdlname='" + file + "' removeFromSession='2'", save);
  };
  // The first path counts from the working folder.
  const auto log = run(step("folder='d:/out' file='plate'") + import("out\\plate.stp") + import("d:\\out\\plate.stp"));
  EXPECT_TRUE(fs::exists(world.models() + "/plate.prt.1")) << testing::PrintToString(log);
  EXPECT_TRUE(told(log, L"E:Can't load model")) << testing::PrintToString(log);
  EXPECT_TRUE(world.logHas(L" - -5"));  // the second time there is a model of that name
  EXPECT_FALSE(creo::ProMdlInit(L"PLATE", creo::ProMdlType::part));
  const auto plate = creo::ProMdlRetrieve(L"PLATE", creo::ProMdlType::part);
  ASSERT_TRUE(plate);
  EXPECT_NEAR(16000, creo::ProSolidMassPropertyGet(plate.value).value.volume, 1e-6);
}

// The file gives the model its name.
TEST_F(ExchangeExports, AFileWhoseNameNoModelCanHaveIsntImported) {
  std::string tasks;
  for (const std::string& name : {std::string("lower plate"), std::string(32, 'p')}) {
    writeBytes(world.models() + "/out/" + name + ".stp", stepTetrahedron());
    tasks += task("groupActions", "reworkMode='5' mdlname='d:\\out\\" + name + ".stp'", "<subtasks/>");
  }
  const std::wstring log = run(tasks);
  EXPECT_TRUE(told(log, L"E:|E:Can't load model|E:The file that isn't imported: d:\\out\\lower plate.stp"))
      << testing::PrintToString(log);
  EXPECT_TRUE(told(log, L"pppp.stp"));
  EXPECT_EQ(1U, world.session().models().list().size());
}

TEST_F(ExchangeExports, AGroupThatCantImportNamesTheFile) {
  const std::string whole = stepTetrahedron();
  writeBytes(world.models() + "/out/cut.stp", whole.substr(0, whole.size() / 2));
  const std::string group = "reworkMode='5' mdlname='d:\\out\\cut.stp'";
  const auto log = run(task("groupActions", group, "<subtasks>" + task("saveModel") + "</subtasks>"));
  EXPECT_TRUE(told(log, L"E:Can't load model"));
  EXPECT_TRUE(told(log, L"E:The file that isn't imported: d:\\out\\cut.stp"));
  EXPECT_TRUE(world.logHas(L" - -1"));
  EXPECT_NE(std::wstring::npos, world.messages().find(L"cut.stp: the file is cut: its end is missing"));
  EXPECT_EQ("cut.stp", files());
  EXPECT_EQ(1U, world.session().models().list().size());
}

}  // namespace
}  // namespace test
