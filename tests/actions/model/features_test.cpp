// Features that are renamed, made, suppressed and resumed; components that are moved, get parameters and are driven.
#include "headless/model/features.h"
#include "actions/action_fixture.h"
#include "actions/last_row.h"
#include "creo/ProAsmcomp.h"
#include "creo/ProDatum.h"
#include "creo/ProFamtable.h"
#include "headless/model/models.h"
#include "text/numbers.h"

namespace test {
namespace {

constexpr auto kPart = creo::ProMdlType::part;
constexpr auto kAssembly = creo::ProMdlType::assembly;

class FeatureActions : public ActionTest {
 protected:
  void model(const std::string& file, const std::string& members) {
    writeBytes(world.models() + "/" + file + ".1", R"({"format": 1, )" + members + "}");
  }
  const headless::Model& loaded(const std::wstring& name, creo::ProMdlType type) {
    return *world.session().models().find(creo::ProMdlRetrieve(name, type).value);
  }
  // "1 BODY|2 -": numbers and names in the order of the tree.
  std::wstring tree(const std::wstring& name, creo::ProMdlType type) {
    std::wstring all;
    for (const auto& entry : headless::featuresOf(loaded(name, type))) {
      const std::wstring feature = headless::featureName(entry);
      all +=
          (all.empty() ? L"" : L"|") + std::to_wstring(entry.place.number) + L' ' + (feature.empty() ? L"-" : feature);
    }
    return all;
  }
};

constexpr const char* kSlots =
    R"("features": [{"id": 1, "name": "BODY", "type": 917}, {"id": 2, "name": "CUT_A", "type": 916},
                    {"id": 3, "type": 916, "typeName": "CUT"}, {"id": 4, "name": "CUT_1", "type": 911}],
       "crossSections": [{"id": 1, "name": "A", "plane": "BODY"}],
       "familyTable": {"items": [{"type": "feature", "name": "CUT_A"}, {"type": "feature", "name": "3"}],
                       "instances": [{"name": "PLAIN", "values": {"CUT_A": "N", "3": "N"}}]})";

TEST_F(FeatureActions, ARenamedFeatureKeepsItsColumnAndItsSections) {
  model("bracket.prt", kSlots);
  // 916 has the code 38.
  EXPECT_EQ(
      L"B0 Rename feature|BODY -> BASE|"
      L"B1 Rename feature|CUT_A -> CUT_2|CUT_id_3 -> CUT_3|"
      L"B2 Rename feature|"
      L"B3 Rename feature|E:'BASE' can't become 'cut_2', another feature has that name|"
      L"B4 Rename feature|E:featid is no number of a feature: 1st|No feature found|"
      L"B5 Rename feature|E:The attribute 'name' is missing|"
      L"B6 Rename feature|E:The replaced output is to large for this task|E:The new name is empty, too long or can't "
      L"be put together|"
      L"B7 Rename feature|W:feattype: 'CUT' is no code of a feature type, which goes from 0 to 246|No feature found|"
      L"B8 Rename feature|W:feattype: '038' is no code of a feature type, which goes from 0 to 246|No feature found",
      run(task("renameFeature", "feat='4' featname='BO*' name='BASE'") +
          task("renameFeature", "feat='1' feattype='38' name='CUT'") +
          task("renameFeature", "feat='1' feattype='38' name='CUT'") +
          task("renameFeature", "feat='2' featid='1' name='cut_2'") +
          task("renameFeature", "feat='2' featid='1st' name='X'") + task("renameFeature", "feat='3'") +
          task("renameFeature", "feat='3' name='" + std::string(32, 'x') + "'") +
          task("renameFeature", "feat='1' feattype='CUT' name='X'") +
          task("renameFeature", "feat='1' feattype='038' name='X'")));
  EXPECT_EQ(L"1 BASE|2 CUT_2|3 CUT_3|4 CUT_1", tree(L"BRACKET", kPart));
  EXPECT_EQ("BASE", loaded(L"BRACKET", kPart).document->record.crossSections[0].plane);
  const headless::Model& plain = loaded(L"PLAIN", kPart);
  for (const int id : {2, 3})
    EXPECT_EQ(creo::ProFeatureStatus::familyTableSuppressed, headless::featureStatus(*headless::featureOf(plain, id)));
}

TEST_F(FeatureActions, ComponentsAndInstancesAreNotRenamed) {
  model("bracket.prt", kSlots);
  model("top.asm", R"("features": [{"id": 5, "type": 1000}, {"id": 6, "type": 923}],
                      "components": [{"name": "BRACKET", "type": "prt", "feature": 5}])");
  EXPECT_EQ(L"B0 Rename feature|W:1 components keep the names of their models|FEATURE_id_6 -> MID",
            lastRow(run(task("renameFeature", "feat='3' name='MID'"), L"TOP", kAssembly)));
  EXPECT_EQ(L"1 BRACKET|2 MID", tree(L"TOP", kAssembly));
}

TEST_F(FeatureActions, OfAnInstanceAreNotRenamed) {
  model("bracket.prt", kSlots);
  const std::wstring all =
      run("<task type='groupActions' version='3' forPRT='true' forEF='false' reworkMode='1'>"
          "<subtasks>" +
          task("renameFeature", "feat='3' name='MID'") + "</subtasks></task>");
  EXPECT_NE(std::wstring::npos, all.find(L"W:Model is a instance, action is canceled"));
}

TEST_F(FeatureActions, TheFirstFeaturesAreMadeWhereThereAreNone) {
  model("bracket.prt", R"("features": [{"id": 7, "name": "BODY", "type": 917}],
                          "solid": {"primitives": [{"type": "box", "size": [1, 2, 3]}], "note": "kept"})");
  const std::string first = task("addFirstKEs", "csys='CS0' planex='RIGHT' planey='body' planez='FRONT'");
  EXPECT_EQ(
      L"B0 Add first features|CS0 is made|RIGHT is made|"
      L"E:'body' can't be made, another feature has that name|FRONT is made|"
      L"B1 Add first features|There is a coordinate system already|There are datum planes already|"
      L"B2 Add first features|E:The attribute 'csys' is missing",
      run(first + first + task("addFirstKEs")));
  EXPECT_EQ(L"1 BODY|2 CS0|3 RIGHT|4 FRONT", tree(L"BRACKET", kPart));
  const auto part = loaded(L"BRACKET", kPart).handle;
  std::wstring names;
  creo::ProSolidCsysVisit(part, [&](const creo::ProCsys& csys) {
    names += creo::ProCsysNameGet(csys).value + L' ';
    return creo::ProNoError;
  });
  EXPECT_EQ(L"CS0 ", names);
  const auto& planes = world.session().models().find(part)->document->solid().planes;
  ASSERT_EQ(2U, planes.size());
  EXPECT_EQ((headless::Measures{0, 0, 1}), planes[1].placement->zAxis) << "FRONT is normal to z";
  EXPECT_NEAR(6, creo::ProSolidMassPropertyGet(part).value.volume, 1e-9) << "the body stays";
  EXPECT_NE(std::string::npos, world.session().models().documentText(part).value.find(R"("note": "kept")"));
}

TEST_F(FeatureActions, NewFeaturesComeBehindTheComponents) {
  model("a.prt", R"("commonName": "a")");
  model("top.asm", R"("features": [{"id": 1, "name": "REF"}],
                      "components": [{"name": "A", "type": "prt"}, {"name": "A", "type": "prt"}])");
  const std::string first = task("addFirstKEs", "csys='CS0'");
  EXPECT_EQ(L"B0 Add first features|CS0 is made", lastRow(run(first, L"TOP", kAssembly)));
  EXPECT_EQ(L"1 REF|2 A|3 A|4 CS0", tree(L"TOP", kAssembly));
}

TEST_F(FeatureActions, NewFeaturesComeAtThePlaceOfInsertMode) {
  model("a.prt", R"("insertAfter": 1,
      "features": [{"id": 1, "number": 1, "name": "FIRST"}, {"id": 2, "number": 2, "name": "LAST"}])");
  run(task("addFirstKEs", "csys='CS0'"), L"A");
  const auto model = creo::ProMdlInit(L"A", kPart).value;
  std::wstring names;
  creo::ProSolidFeatVisit(model, [&](const creo::ProFeature& feature) {
    names += std::to_wstring(creo::ProFeatureNumberGet(feature).value) + creo::ProFeatureNameGet(feature).value + L' ';
    return creo::ProNoError;
  });
  EXPECT_EQ(L"1FIRST 2CS0 3LAST ", names);
  EXPECT_EQ(2, world.session().models().find(model)->document->record.insertAfter);
}

TEST_F(FeatureActions, UnbendFeaturesAreSuppressedAndResumed) {
  model("bracket.prt", R"("features": [{"id": 1, "name": "WALL", "typeName": "WALL"},
      {"id": 2, "name": "U", "typeName": "Unbend"}, {"id": 3, "name": "F", "typeName": "FLAT PATTERN"},
      {"id": 4, "name": "GONE", "typeName": "WALL", "status": "suppressed"}])");
  world.list("back.xml", task("showUnbendFeatures", "show='true'"));
  world.config("kvd_write_history_in_models=0");
  EXPECT_EQ(
      L"B0 Show unbend features|2 features are suppressed|B1 Show unbend features|0 features are suppressed|"
      L"B2 Show unbend features|E:'show' can't be 'yes', but true or false",
      run(task("showUnbendFeatures", "show='false'") + task("showUnbendFeatures", "show='false'") +
          task("showUnbendFeatures", "show='yes'")));
  const auto statuses = [&] {
    std::string all;
    for (const auto& entry : headless::featuresOf(loaded(L"BRACKET", kPart)))
      all += headless::featureStatus(entry) == creo::ProFeatureStatus::active ? '+' : '-';
    return all;
  };
  EXPECT_EQ("+---", statuses());
  world.run("back.xml");
  EXPECT_EQ("+++-", statuses());
}

// A frame with a placed part, one that was put somewhere, and a flexible one without references.
constexpr const char* kFrame = R"("components": [
      {"name": "PLATE", "type": "prt", "placement": {"position": [1, 2, 3]}},
      {"name": "PLATE", "type": "prt", "packaged": true, "placement": {"position": [1, "2 * 2", -3], "zAxis": [1, 0, 0]}},
      {"name": "SPRING", "type": "prt", "feature": 9, "flexible": true, "packaged": true}],
    "features": [{"id": 9, "type": 1000, "variantItems": [{"type": "dimension", "id": 4}]}])";

class ComponentActions : public FeatureActions {
 protected:
  void SetUp() override {
    model("plate.prt", R"("parameters": [{"name": "MASS", "type": "double", "value": 2.5, "units": "kg"},
                                         {"name": "COLOR", "type": "string", "value": "red"}])");
    model("spring.prt", R"("parameters": [{"name": "COLOR", "type": "string", "value": "blue"}],
                           "dimensions": [{"id": 4, "symbol": "LENGTH", "value": 80.0}])");
    model("frame.asm", kFrame);
  }
  std::wstring runOnFrame(const std::string& tasks) { return lastRow(run(tasks, L"FRAME", kAssembly)); }
  creo::ProFeature component(int number) {
    const auto& frame = loaded(L"FRAME", kAssembly);
    for (const auto& entry : headless::featuresOf(frame))
      if (entry.place.number == number) return {frame.handle, entry.place.id};
    return {};
  }
  // "COLOR=red MASS=2.5kg" of a component.
  std::wstring parameters(int number) {
    const creo::ProFeature feature = component(number);
    std::wstring all;
    creo::ProParameterVisit({creo::ProItemType::feature, feature.id, feature.owner, {}}, [&](const auto& parameter) {
      const auto value = creo::ProParameterValueGet(parameter).value;
      const bool isReal = value.type == creo::ProParamvalueType::real;
      all += (all.empty() ? L"" : L" ") + parameter.id + L'=' + (isReal ? text::shortest(value.real) : value.string) +
             creo::ProParameterUnitsGet(parameter).value;
      return creo::ProNoError;
    });
    return all;
  }
};

TEST_F(ComponentActions, OnlyWhatStandsWithoutReferencesIsRescaled) {
  EXPECT_EQ(
      L"B0 Rescale ASM position|"
      L"E:PLATE: Can't set new position, this component need external references|2 components have a new position|"
      L"B1 Rescale ASM position|E:Can't parse left operand|B2 Rescale ASM position|E:Can't parse right operand|"
      L"B3 Rescale ASM position|E:Can't parse right operand|"
      L"B4 Rescale ASM position|"
      L"E:PLATE: Can't set new position, this component need external references|"
      L"E:PLATE: the new position can't be set|1 components have a new position",
      runOnFrame(task("rescaleASMPosition", "left='25.4' right='2'") +
                 task("rescaleASMPosition", "left='0' right='2'") + task("rescaleASMPosition", "left='1'") +
                 task("rescaleASMPosition", "left='1' right='two'") +
                 task("rescaleASMPosition", "left='1e300' right='1'")));
  const struct {
    int number;
    creo::ProVector origin;
  } cases[] = {{1, {0, 0, 0}}, {2, {1, 2, 3}}, {3, {12.7, 50.8, -38.1}}};
  for (const auto& c : cases) {
    const auto at = creo::ProAsmcompPositionGet(component(c.number)).value;
    EXPECT_NEAR(c.origin.x, at.origin.x, 1e-9) << c.number;
    EXPECT_NEAR(c.origin.y, at.origin.y, 1e-9) << c.number;
    EXPECT_NEAR(c.origin.z, at.origin.z, 1e-9) << c.number;
  }
  EXPECT_EQ(1, creo::ProAsmcompPositionGet(component(3)).value.zAxis.x) << "its direction stays";
}

TEST_F(ComponentActions, ComponentsTakeTheValuesOfTheirModels) {
  const std::string fill = "name_0='color' name_2='MASS' newname_2='OWN_MASS'";
  EXPECT_EQ(L"B0 Fill component parameters by reference|W:SPRING has no parameter MASS|5 parameters are filled",
            runOnFrame(task("fillComponentParametersByReference", fill)));
  EXPECT_EQ(L"1 SPRING|2 PLATE|3 PLATE", tree(L"FRAME", kAssembly)) << "records of their own move nothing";
  EXPECT_EQ(L"COLOR=blue", parameters(1));
  EXPECT_EQ(L"COLOR=red OWN_MASS=2.5kg", parameters(2));
  EXPECT_EQ(L"COLOR=red OWN_MASS=2.5kg", parameters(3));
}

TEST_F(ComponentActions, AParameterKeepsItsUnitInAnAssemblyOfOtherUnits) {
  model("plate.prt", R"("parameters": [{"name": "REACH", "type": "double", "value": 2.5, "units": "cm"}])");
  model("frame.asm", R"("units": "mks", "components": [{"name": "PLATE", "type": "prt", "feature": 3}],
      "features": [{"id": 3, "type": 1000, "parameters": [
        {"name": "REACH", "type": "double", "value": 1.0, "units": "cm"}]}])");
  runOnFrame(task("fillComponentParametersByReference", "name_0='REACH' name_1='REACH' newname_1='NEW'"));
  EXPECT_EQ(L"REACH=0.025cm NEW=0.025cm", parameters(1)) << "as the assembly reads it, in m";
}

TEST_F(ComponentActions, AParameterOfAnotherKindKeepsItsValue) {
  model("frame.asm", R"("components": [{"name": "PLATE", "type": "prt", "feature": 3}], "features": [{"id": 3,
      "type": 1000, "parameters": [{"name": "COLOR", "type": "integer", "value": 3}, {"name": "MASS", "type": "double",
      "value": 1.0, "units": "g"}]}])");
  EXPECT_EQ(
      L"B0 Fill component parameters by reference|E:COLOR of the component PLATE can't take the value|"
      L"E:MASS of the component PLATE can't take the value|0 parameters are filled|"
      L"B1 Fill component parameters by reference|E:The attribute 'name_0' is missing",
      runOnFrame(task("fillComponentParametersByReference", "name_0='COLOR' name_1='MASS'") +
                 task("fillComponentParametersByReference")));
  EXPECT_EQ(L"COLOR= MASS=0.001g", parameters(1)) << "as the assembly reads it, in kg";
}

TEST_F(ComponentActions, AParameterDrivesAFlexibleDimension) {
  const std::string key = "addassociativeparametertoflexibledimension";
  const std::wstring title = L" Add associative parameter to flexible dimension|";
  EXPECT_EQ(L"B0" + title + L"REACH drives length of SPRING|" + L"B1" + title + L"REACH drives LENGTH of SPRING|" +
                L"B2" + title + L"W:No flexible component varies the dimension WIDTH|" + L"B3" + title +
                L"E:9A can't drive LENGTH of SPRING|" + L"B4" + title + L"E:The attribute 'name' is missing",
            runOnFrame(task(key, "name='REACH' dim='length'") + task(key, "name='REACH' dim='LENGTH'") +
                       task(key, "name='REACH' dim='WIDTH'") + task(key, "name='9A' dim='LENGTH'") + task(key)));
  EXPECT_EQ(L"REACH=80", parameters(1));
  const creo::ProFeature spring = component(1);
  const std::string frame = world.session().models().documentText(spring.owner).value;
  EXPECT_NE(frame.npos, frame.find(R"("parameter": "REACH")")) << frame;
  EXPECT_EQ(creo::ProGeneralError,
            creo::ProParameterDelete({L"REACH", {creo::ProItemType::feature, spring.id, spring.owner, {}}, 0}));
}

// Each of the operations failing once leaves a line and lets the list go on.
TEST_F(ComponentActions, AFailingOperationHasItsLine) {
  const struct {
    const char* operation;
    std::string task;
    const wchar_t* line;
  } cases[] = {
      {"ProAsmcompOriginSet", task("rescaleASMPosition", "left='2' right='1'"),
       L"SPRING: the new position can't be set"},
      {"ProAsmcompMdlGet", task("fillComponentParametersByReference", "name_0='COLOR'"),
       L"The model of SPRING can't be found"},
      {"ProSolidFeatVisit", task("fillComponentParametersByReference", "name_0='COLOR'"),
       L"The components can't be visited"},
      {"ProSolidFeatVisit", task("rescaleASMPosition", "left='2' right='1'"), L"The components can't be visited"},
      {"ProFeatureTypeGet", task("fillComponentParametersByReference", "name_0='COLOR'"), L"can't be read"},
      {"ProMdlToModelitem", task("fillComponentParametersByReference", "name_0='COLOR'"),
       L"COLOR of the component SPRING can't take the value"},
      {"ProVariantfeatDriverSet", task("addassociativeparametertoflexibledimension", "name='A' dim='LENGTH'"),
       L"A can't drive LENGTH of SPRING"},
      {"ProDefaultCsysCreate", task("addFirstKEs", "csys='CS0'"), L"The feature of 'csys' can't be made"},
      {"ProSolidFeatVisit", task("addFirstKEs", "csys='CS0'"), L"The features can't be visited"},
      {"ProFeatureTypeGet", task("addFirstKEs", "csys='CS0'"), L"The type of a feature can't be read"},
      {"ProFeatureTypeGet", task("renameFeature", "feat='3' name='X'"), L"The type of a feature can't be read"},
      {"ProModelitemNameSet", task("renameFeature", "feat='3' name='X'"), L"'PART_id_30' can't become 'X'"},
  };
  for (const auto& c : cases) {
    World own;
    writeBytes(own.models() + "/plate.prt.1", readBytes(world.models() + "/plate.prt.1"));
    writeBytes(own.models() + "/spring.prt.1", readBytes(world.models() + "/spring.prt.1"));
    std::string frame = std::string(R"({"format": 1, )") + kFrame + "}";
    const std::string features = R"("features": [)";
    frame.insert(frame.find(features) + features.size(), R"({"id": 30, "type": 3, "typeName": "PART"}, )");
    writeBytes(own.models() + "/frame.asm.1", frame);
    own.list("list.xml", c.task);
    own.start();
    own.open(L"FRAME", kAssembly);
    own.session().failNext(c.operation, creo::ProGeneralError);
    own.run("list.xml");
    EXPECT_TRUE(own.logHas(c.line)) << c.operation;
  }
}

}  // namespace
}  // namespace test
