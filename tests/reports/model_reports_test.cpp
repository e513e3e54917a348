// The reports on one aspect of a model each: what a filter says, family table, materials, layers, relations.
#include "creo/ProMdl.h"
#include "reports/report_fixture.h"

namespace test {
namespace {

using namespace creo;

class ModelReports : public ReportTest {};

TEST_F(ModelReports, AFilterDecidesBetweenTwoTexts) {
  const auto universal = [](const std::string& attributes, const std::string& children = "",
                            const std::string& version = "4") {
    return task("reportUniversal", "trueissue='@mdln@ yes' falseissue='no' " + attributes, children, version);
  };
  const auto filter = [](const std::string& material) {
    return "<reportFilter forPRT='true' forEF='true'><filter><i type='currentMaterialName' filtertype='true' "
           "currmat='" +
           material + "'/></filter></reportFilter>";
  };
  model("gear.prt", R"("material": "STEEL", "materials": [{"name": "STEEL"}])");
  EXPECT_EQ(report(universal("title='Steel?'", filter("brass") + filter("steel")) +
                       universal("title='Brass?'", filter("steel") + filter("brass")) +
                       universal("title='Unasked'", "<filter/>") + universal("title='Old'", filter("steel"), "3"),
                   L"GEAR"),
            line({"Steel?", "Brass?", "Unasked"}) + line({"GEAR yes", "no", ""}));
  EXPECT_TRUE(world.logHas(L"XML Structure for filter definition can't be found"));
}

const std::vector<std::string> kFamilyColumns = {"amount", "amountlocked", "unregenInstances", "firstInstances",
                                                 "mlft"};

TEST_F(ModelReports, FamilyTablesAreCounted) {
  model("bolt.prt", R"("familyTable": {"items": [], "instances": [{"name": "B1", "verification": "verified"},
      {"name": "B2", "verification": "failed", "locked": true}, {"name": "B3", "locked": true,
        "familyTable": {"items": [], "instances": [{"name": "B31"}]}}, {"name": "B4"}]})");
  model("nut.prt", R"("familyTable": {"items": [], "instances": [{"name": "N1"}]})");
  model("plain.prt");
  model("top.asm", R"("components": [{"name": "BOLT", "type": "prt"}, {"name": "NUT", "type": "prt"},
      {"name": "PLAIN", "type": "prt"}])");
  const std::string family = task("reportFamilietable", on(kFamilyColumns) + "x='2'");
  EXPECT_EQ(report(family, L"TOP", ProMdlType::assembly),
            line({"No. instances", "No. locked instances", "No. unregenerated instances", "First 2 instances",
                  "Multi level family table"}) +
                line({"4", "2", "3", "B1\nB2", "true"}) + line({"1", "0", "1", "N1", "false"}) +
                line({"0", "0", "0", "", "false"}) + line({"0", "0", "0", "", "false"}));
  EXPECT_TRUE(world.logHas(L"work now on PLAIN.PRT - Model has no famtable, or there are errors while read em."));
  EXPECT_FALSE(world.logHas(L"work now on NUT.PRT - Model has no famtable"));
  for (const wchar_t* brought : {L"B1", L"B2", L"B3", L"N1"})
    EXPECT_EQ(ProNotFound, ProMdlInit(brought, ProMdlType::part).error) << brought;
}

TEST_F(ModelReports, InstancesInMemoryStayAndThoseThatCantBeBuiltAreTold) {
  model("bolt.prt", R"("familyTable": {"items": [], "instances": [{"name": "B1"}, {"name": "B2"}]})");
  prepare(task("reportFamilietable", on({"mlft"})), L"BOLT");
  const auto kept = ProMdlRetrieve(L"B1", ProMdlType::part);
  world.session().failNext("ProFaminstanceRetrieve", ProGeneralError);
  EXPECT_EQ(rows(), line({"false"}));
  EXPECT_NE(log().find(L"E:Can't retrieve an instance"), std::wstring::npos);
  EXPECT_EQ(kept.value, ProMdlInit(L"B1", ProMdlType::part).value);
  EXPECT_FALSE(ProMdlInit(L"B2", ProMdlType::part));
}

TEST_F(ModelReports, ABrokenFamilyTableCountsAsNone) {
  model("bolt.prt", R"("parameters": [{"name": "L", "type": "double", "value": 1.0}],
      "familyTable": {"items": [{"type": "parameter", "name": "L"}],
        "instances": [{"name": "B1", "values": {"L": "long"}}, {"name": "B2"}]})");
  EXPECT_EQ(report(task("reportFamilietable", on({"amount"})), L"BOLT"), line({"No. instances"}) + line({"0"}));
  EXPECT_NE(log().find(L"W:Model has no famtable, or there are errors while read em."), std::wstring::npos);
  EXPECT_NE(world.messages().find(L"BOLT: the row B1 can't be read: "), std::wstring::npos);
}

TEST_F(ModelReports, MaterialsOfParts) {
  model("gear.prt", R"("material": "steel", "materials": [{"name": "BRASS"}, {"name": "STEEL"}])");
  model("blank.prt");
  model("top.asm", R"("components": [{"name": "GEAR", "type": "prt"}, {"name": "BLANK", "type": "prt"}])");
  EXPECT_EQ(report(task("reportMaterials", on({"actual", "allInModel"})) + task("reportModeldata", on({"mdlname"})),
                   L"TOP", ProMdlType::assembly),
            line({"Current material", "All materials in model", "Model name"}) + line({"", "", "BLANK"}) +
                line({"STEEL", "BRASS\nSTEEL", "GEAR"}) + line({"", "", "TOP"}));
}

TEST_F(ModelReports, LayersOfEachForm) {
  model("gear.prt", R"("layers": [{"id": 1, "name": "01_DATUMS", "items": [{"type": "feature", "id": 5},
        {"type": "feature", "id": 6}]}, {"id": 2, "name": "02_AXES", "status": "blank"},
      {"id": 3, "name": "01_HIDDEN", "status": "hidden"}, {"id": 4, "name": "04", "status": "display"},
      {"id": 5, "name": "05", "status": "skip"}, {"id": 6, "name": "06", "status": "none"}])");
  const auto layers = [](const std::string& attributes) { return task("reportLayer", attributes); };
  EXPECT_EQ(report(layers(on({"name", "status", "noOfElements"})) + layers("name='true' layerFilter='*'") +
                       layers("layerFilter='*' status='true'") + layers("name='true' layerFilter='01*'") +
                       layers("layerFilter='/^01_D/' noOfElements='true'") + layers("name='true' layerFilter='none'"),
                   L"GEAR"),
            line({"Layer - Status - Number of Elements", "Layer", "* - Layer - Status", "01* - Layer",
                  "/^01_D/ - Layer - Number of Elements", "none - Layer"}) +
                line({"01_DATUMS - normal - 2\n02_AXES - blank - 0\n01_HIDDEN - hidden - 0\n04 - display - 0\n"
                      "05 - skip - 0\n06 - none - 0",
                      "01_DATUMS\n02_AXES\n01_HIDDEN\n04\n05\n06", "normal\nblank\nhidden\ndisplay\nskip\nnone",
                      "01_DATUMS\n01_HIDDEN", "2", ""}));
}

TEST_F(ModelReports, AFailingLayerOperationCostsItsPieceOnly) {
  model("gear.prt", R"("layers": [{"id": 1, "name": "A"}, {"id": 2, "name": "B"}])");
  prepare(task("reportLayer", on({"name", "status", "noOfElements"})), L"GEAR");
  const std::pair<const char*, const char*> cases[] = {{"ProLayerDisplaystatusGet", "A - 0\nB - normal - 0"},
                                                       {"ProLayerItemsPopulate", "A - normal\nB - normal - 0"},
                                                       {"ProMdlLayerVisit", ""}};
  for (const auto& [operation, left] : cases) {
    world.session().failNext(operation, ProGeneralError);
    // A row without any value isn't written.
    EXPECT_EQ(rows(), *left ? line({left}) : "") << operation;
  }
}

TEST_F(ModelReports, RelationsAndTheirFailures) {
  model("good.prt", R"("parameters": [{"name": "A", "type": "integer", "value": 1}],
      "relations": ["/* width", "A = 4", "B = A"], "postRelations": ["C = B"])");
  model("bad.prt", R"("relations": ["A = 4 +"], "postRelations": ["C = NOTHING"])");
  model("none.prt");
  model("top.asm", R"("components": [{"name": "GOOD", "type": "prt"}, {"name": "BAD", "type": "prt"},
      {"name": "NONE", "type": "prt"}])");
  const std::string columns = on({"relations", "postrelations", "cf1", "cf2"});
  EXPECT_EQ(report(task("reportRelations", columns + "linefilter='*'") +
                       task("reportRelations", on({"relations", "postrelations"}) + "linefilter='/^A/'") +
                       task("reportModeldata", on({"mdlname"})),
                   L"TOP", ProMdlType::assembly),
            line({"Relations", "Post Relations", "Failure in Relations", "Failure in Post Relations", "Relations",
                  "Post Relations", "Model name"}) +
                line({"A = 4 +", "C = NOTHING", "X", "X", "A = 4 +", "", "BAD"}) +
                line({"/* width\nA = 4\nB = A", "C = B", "-", "-", "A = 4", "", "GOOD"}) +
                line({"", "", "", "", "", "", "NONE"}) + line({"", "", "", "", "", "", "TOP"}));
  EXPECT_NE(world.messages().find(L"BAD.PRT: post relation line 1: 'NOTHING' is neither"), std::wstring::npos)
      << "what a relation assigns isn't asked for when another one fails";
}

}  // namespace
}  // namespace test
