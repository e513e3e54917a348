// What solids hold: the tree of features, layers, states, materials, relations, settings.
#include "creo/ProFeature.h"
#include "creo/ProLayer.h"
#include "creo/ProMaterial.h"
#include "creo/ProModelitem.h"
#include "creo/ProRelset.h"
#include "creo/ProSolid.h"
#include "creo/ProSolidSettings.h"
#include "creo/ProState.h"
#include "headless/session_fixture.h"

namespace headless {
namespace {

using namespace creo;

class Solids : public test::HeadlessSession {
 protected:
  // "1:CSYS 40:Q* 5:LAST(2)": ids and names in order, "*" a component, a status that isn't active in brackets.
  static std::string tree(ProMdl solid) {
    std::string out;
    ProSolidFeatVisit(solid, [&](const ProFeature& feature) {
      const auto name = ProFeatureNameGet(feature);
      const int status = static_cast<int>(ProFeatureStatusGet(feature).value);
      out += (out.empty() ? "" : " ") + std::to_string(feature.id) + ":" + text::toUtf8(name.value);
      if (ProFeatureTypeGet(feature).value == kComponentFeature) out += "*";
      if (status != 0) out += "(" + std::to_string(status) + ")";
      return ProNoError;
    });
    return out;
  }
};

TEST_F(Solids, ComponentsStandInTheTreeAndFamilyTablesPruneIt) {
  model("g.prt.1", R"("familyTable": {"items": [], "instances": [{"name": "P"}]})");
  for (const char* part : {"q", "r", "s"}) model(part + std::string(".prt.1"));
  model("top.asm.1", R"("features": [{"id": 1, "name": "CSYS", "type": 979}, {"id": 40, "number": 7, "name": "Q_REF"},
      {"id": 5, "name": "LAST"}, {"id": 9, "status": "suppressed"}],
      "components": [{"name": "P<G>", "type": "prt"}, {"name": "q", "type": "prt", "feature": 40, "flexible": true},
        {"name": "R", "type": "prt", "feature": 40}, {"name": "S", "type": "prt", "feature": 2}],
      "familyTable": {"items": [{"type": "component", "name": "Q"}, {"type": "feature", "name": "LAST"},
          {"type": "feature", "name": "9"}],
        "instances": [{"name": "WITHOUT", "values": {"Q": false, "LAST": "N"}},
          {"name": "OTHER", "values": {"Q": "S", "LAST": true, "9": "Y"}}]})");
  const ProMdl top = retrieve(L"TOP", ProMdlType::assembly);
  EXPECT_EQ("1:CSYS 40:Q* 5:LAST 9:(5) 3:P* 4:R* 2:S*", tree(top));
  EXPECT_EQ("1:CSYS 5:LAST(2) 9:(5) 3:P* 4:R* 2:S*", tree(retrieve(L"WITHOUT", ProMdlType::assembly)));
  EXPECT_EQ("1:CSYS 40:S* 5:LAST 9: 3:P* 4:R* 2:S*", tree(retrieve(L"OTHER", ProMdlType::assembly)));

  EXPECT_EQ(L"P", ProMdlNameGet(ProAsmcompMdlGet({top, 3}).value).value);
  EXPECT_EQ(7, ProFeatureNumberGet({top, 40}).value);
  EXPECT_EQ(3, ProFeatureNumberGet({top, 5}).value);
  EXPECT_TRUE(ProAsmcompIsFlexible({top, 40}).value);
  EXPECT_FALSE(ProAsmcompIsFlexible({top, 3}).value);
  EXPECT_EQ(ProBadInputs, ProAsmcompMdlGet({top, 5}).error);
  EXPECT_EQ(ProNotFound, ProFeatureTypeGet({top, 6}).error);
  EXPECT_EQ(ProNotFound, ProFeatureNameGet({top, 9}).error);
  EXPECT_EQ(ProNotFound, ProFeatureStatusGet({ProMdlInit(L"WITHOUT", ProMdlType::assembly).value, 40}).error);
}

TEST_F(Solids, AComponentWithoutAModelIsAFeatureStill) {
  model("top.asm.1", R"("components": [{"name": "GONE", "type": "prt", "feature": 4}])");
  const ProMdl top = retrieve(L"TOP", ProMdlType::assembly);
  EXPECT_EQ("4:GONE*", tree(top));
  EXPECT_EQ(ProNotFound, ProAsmcompMdlGet({top, 4}).error);
}

TEST_F(Solids, FeaturesTellTheirSketches) {
  model("a.prt.1", R"("features": [{"id": 3, "typeName": "CUT", "subtype": "EXTRUDE", "geometryChecks": true,
      "sections": [{"entities": [{"id": 1, "type": 2}, {"id": 4, "type": 5}]}, {}]}])");
  const ProFeature cut{retrieve(L"A"), 3};
  EXPECT_EQ(L"CUT EXTRUDE", ProFeatureTypenameGet(cut).value + L" " + ProFeatureSubtypeGet(cut).value);
  EXPECT_TRUE(ProFeatureHasGeomchks(cut).value);
  EXPECT_EQ(2, ProFeatureNumSectionsGet(cut).value);
  const auto entities = ProFeatureSectionEntitiesGet(cut, 0).value;
  ASSERT_EQ(2u, entities.size());
  EXPECT_EQ(5, entities[1].type);
  EXPECT_TRUE(ProFeatureSectionEntitiesGet(cut, 1).value.empty());
  for (const int section : {-1, 2}) EXPECT_EQ(ProNotFound, ProFeatureSectionEntitiesGet(cut, section).error);
}

TEST_F(Solids, ThingsAreFoundByNameAndToldByIt) {
  model("a.prt.1", R"("material": "steel", "materials": [{"name": "STEEL"}, {"name": "BRASS"}],
      "features": [{"id": 2, "name": "BORE"}], "dimensions": [{"id": 1, "symbol": "LEN"}, {"id": 1, "reference": true}],
      "layers": [{"id": 7, "name": "Höhe", "items": [{"type": "feature", "id": 2}, {"type": "view", "id": 1}]}],
      "layerStates": [{"name": "QUIET"}], "views": [{"id": 1, "name": "FRONT", "alternateName": "Vorne"}],
      "simplifiedReps": [{"id": 1, "name": "LIGHT"}], "explodedStates": [{"id": 1, "name": "OPEN"}],
      "styleStates": [{"id": 1, "name": "GLASS"}], "combinedStates": [{"id": 3, "name": "SALES"}],
      "crossSections": [{"id": 1, "name": "A"}])");
  const ProMdl part = retrieve(L"A");
  const struct {
    ProItemType type;
    const wchar_t *asked, *name;
    int id;
    bool isFound = true;  // by its name
  } cases[] = {
      {ProItemType::feature, L"bore", L"BORE", 2},
      {ProItemType::layer, L"HÖHE", L"Höhe", 7},
      {ProItemType::combinedState, L"sales", L"SALES", 3},
      {ProItemType::material, L"brass", L"BRASS", 0},
      {ProItemType::dimension, L"len", L"LEN", 1, false},
      {ProItemType::referenceDimension, L"RD1", L"rd1", 1, false},
      {ProItemType::view, L"front", L"FRONT", 1, false},
      {ProItemType::simplifiedRep, L"light", L"LIGHT", 1, false},
      {ProItemType::explodedState, L"OPEN", L"OPEN", 1, false},
      {ProItemType::styleState, L"Glass", L"GLASS", 1, false},
      {ProItemType::crossSection, L"a", L"A", 1, false},
  };
  for (const auto& c : cases) {
    const auto item = ProModelitemByNameInit(part, c.type, c.asked);
    EXPECT_EQ(c.isFound ? ProNoError : ProBadInputs, item.error) << text::toUtf8(c.asked);
    if (c.isFound) {
      EXPECT_EQ(c.id, item.value.id) << text::toUtf8(c.asked);
      EXPECT_EQ(ProNotFound, ProModelitemByNameInit(part, c.type, L"other").error) << text::toUtf8(c.asked);
      EXPECT_EQ(ProNotFound, ProModelitemByNameInit(part, c.type, L"").error) << text::toUtf8(c.asked);
    }
    EXPECT_EQ(c.name, ProModelitemNameGet({c.type, c.id, part, c.name}).value);
    EXPECT_EQ(ProNotFound, ProModelitemNameGet({c.type, 99, part, L"other"}).error) << text::toUtf8(c.asked);
  }
  EXPECT_EQ(ProBadInputs, ProModelitemNameGet({ProItemType::none, 1, part, {}}).error);
  EXPECT_EQ(ProBadInputs, ProModelitemNameSet({ProItemType::layer, 7, part, {}}, std::wstring(32, L'L')));
  EXPECT_EQ(ProNoError, ProModelitemNameSet({ProItemType::layer, 7, part, {}}, std::wstring(31, L'L')));
  model("plan.drw.1", R"("models": [{"name": "A", "type": "prt"}], "views": [
      {"id": 1, "name": "V", "model": "A.prt", "section": "a"},
      {"id": 2, "name": "W", "model": "B.prt", "section": "A"}])");
  const auto& views = session().models().find(retrieve(L"PLAN", ProMdlType::drawing))->document->record.views;
  EXPECT_EQ(ProNoError, ProModelitemNameSet({ProItemType::crossSection, 1, part, {}}, L"MIDDLE"));
  EXPECT_EQ("MIDDLE A", views[0].section + " " + views[1].section) << "of the model's views alone";
  EXPECT_EQ(L"STEEL", ProMaterialCurrentGet(part).value.name);
  EXPECT_EQ(2u, ProLayerItemsGet({part, 7}).value.size());
  EXPECT_EQ(ProNotFound, ProLayerItemsGet({part, 8}).error);
  EXPECT_EQ(L"QUIET", ProLayerstateNameGet(ProLayerstatesGet(part).value.at(0)).value);
  EXPECT_EQ(L"Vorne", ProViewNamesGet(part).value.alternateNames.at(0));
  EXPECT_EQ(L"SALES", ProCombstateDataGet(ProMdlCombstatesGet(part).value.at(0)).value.name);
}

TEST_F(Solids, WhatAModelHasntIsNotFoundAndADrawingIsNoSolid) {
  model("a.prt.1");
  model("a.drw.1");
  const ProMdl part = retrieve(L"A"), drawing = retrieve(L"A", ProMdlType::drawing);
  const auto feature = [](const ProFeature&) { return ProNoError; };
  const auto state = [](const ProModelitem&) { return ProNoError; };
  const struct {
    const char* what;
    std::function<ProError(ProMdl)> ask;
    ProError ofPart, ofDrawing;
  } cases[] = {
      {"features", [&](ProMdl m) { return ProSolidFeatVisit(m, feature); }, ProNotFound, ProBadInputs},
      {"representations", [&](ProMdl m) { return ProSolidSimprepVisit(m, state); }, ProNotFound, ProBadInputs},
      {"exploded", [&](ProMdl m) { return ProSolidExpldstateVisit(m, state); }, ProNotFound, ProBadInputs},
      {"styles", [&](ProMdl m) { return ProSolidCompdisplayVisit(m, state); }, ProNotFound, ProBadInputs},
      {"sections", [&](ProMdl m) { return ProSolidXsecVisit(m, state); }, ProNotFound, ProBadInputs},
      {"combined", [](ProMdl m) { return ProMdlCombstatesGet(m).error; }, ProNotFound, ProBadInputs},
      {"layer states", [](ProMdl m) { return ProLayerstatesGet(m).error; }, ProNotFound, ProBadInputs},
      {"views", [](ProMdl m) { return ProViewNamesGet(m).error; }, ProNotFound, ProNotFound},
      {"material", [](ProMdl m) { return ProMaterialCurrentGet(m).error; }, ProNotFound, ProBadInputs},
      {"accuracy", [](ProMdl m) { return ProSolidAccuracyGet(m).error; }, ProNoError, ProBadInputs},
      {"class", [](ProMdl m) { return ProSolidModelclassGet(m).error; }, ProNotFound, ProBadInputs},
      {"relations", [](ProMdl m) { return ProModelitemToRelset(item(m)).error; }, ProNotFound, ProNotFound},
      {"units", [](ProMdl m) { return ProMdlPrincipalunitsystemGet(m).error; }, ProNoError, ProBadInputs},
      {"insert mode", [](ProMdl m) { return ProInsertModeIsActive(m).error; }, ProNoError, ProBadInputs},
      {"status", [](ProMdl m) { return ProSolidRegenerationstatusGet(m).error; }, ProNoError, ProBadInputs},
      {"regeneration", [](ProMdl m) { return ProSolidRegenerate(m, 0); }, ProNoError, ProBadInputs},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.ofPart, c.ask(part)) << c.what;
    EXPECT_EQ(c.ofDrawing, c.ask(drawing)) << c.what;
    EXPECT_EQ(ProBadInputs, c.ask({})) << c.what;
  }
}

TEST_F(Solids, RelationsAreReadByTheItemThatOwnsThem) {
  model("a.prt.1", R"("postRelations": ["/* later"])");
  const ProMdl part = retrieve(L"A");
  ProModelitem owner = item(part);
  EXPECT_EQ(ProNotFound, ProModelitemToRelset(owner).error);
  model("bare.prt.1");
  EXPECT_EQ(ProNotFound, ProRelsetPostregenerationInit(retrieve(L"BARE")).error);
  EXPECT_EQ(ProBadInputs, ProRelsetPostregenerationInit({}).error);
  const auto made = ProRelsetCreate(owner);
  EXPECT_TRUE(made);
  EXPECT_TRUE(ProRelsetRelationsGet(made.value).value.empty());
  EXPECT_FALSE(ProMdlModificationVerify(part).value) << "nothing was written";
  owner.id = kPostRegeneration;
  EXPECT_EQ(ProExists, ProRelsetCreate(owner).error);
  EXPECT_EQ(L"/* later", ProRelsetRelationsGet(ProRelsetPostregenerationInit(part).value).value.at(0));
  EXPECT_EQ(ProBadInputs, ProModelitemToRelset(owner).error) << "those behind the regeneration aren't had so";
  owner.type = ProItemType::material;
  EXPECT_EQ(ProBadInputs, ProModelitemToRelset(owner).error);
}

TEST_F(Solids, SettingsAreToldAsCreoTellsThem) {
  const std::pair<const char*, const wchar_t*> systems[] = {
      {"", L"millimeter Kilogram Sec (mmKs)"},      {"mmKs", L"millimeter Kilogram Sec (mmKs)"},
      {"mmNs", L"millimeter Newton Second (mmNs)"}, {"mks", L"meter Kilogram Second (MKS)"},
      {"cgs", L"centimeter Gram Second (CGS)"},     {"inlbs", L"Inch lbm Second (Creo Parametric Default)"},
      {"fps", L"Foot Pound Second (FPS)"},          {"Our own", L"Our own"},
  };
  int number = 0;
  for (const auto& [units, name] : systems) {
    const std::string file = "u" + std::to_string(++number);
    model(file + ".prt.1", "\"units\": \"" + std::string(units) + "\"");
    EXPECT_EQ(name, ProMdlPrincipalunitsystemGet(retrieve(text::fromUtf8(file))).value) << units;
  }
  const std::pair<int, bool> places[] = {{0, false}, {1, true}, {2, false}, {9, false}};
  for (const auto& [after, active] : places) {
    const std::string file = "i" + std::to_string(after);
    model(file + ".prt.1", "\"features\": [{\"id\": 5}, {\"id\": 3}], \"insertAfter\": " + std::to_string(after));
    EXPECT_EQ(active, ProInsertModeIsActive(retrieve(text::fromUtf8(file))).value) << after;
  }
  model("a.prt.1", R"("accuracy": {"kind": "absolute", "value": 0.01}, "toleranceClass": "veryCoarse")");
  const ProMdl part = retrieve(L"A");
  EXPECT_EQ(ProAccuracyKind::absolute, ProSolidAccuracyGet(part).value.kind);
  EXPECT_EQ(0.01, ProSolidAccuracyGet(part).value.value);
  EXPECT_EQ(ProToleranceClass::veryCoarse, ProSolidModelclassGet(part).value);
  // One that states none has Creo's default; setting that changes nothing.
  model("b.prt.1", R"("readOnly": false)");
  const ProMdl silent = retrieve(L"B");
  EXPECT_EQ(ProAccuracyKind::relative, ProSolidAccuracyGet(silent).value.kind);
  EXPECT_EQ(0.0012, ProSolidAccuracyGet(silent).value.value);
  EXPECT_EQ(ProNoError, ProSolidAccuracySet(silent, {ProAccuracyKind::relative, 0.0012}));
  EXPECT_FALSE(ProMdlModificationVerify(silent).value);
  EXPECT_EQ(ProNoError, ProSolidAccuracySet(silent, {ProAccuracyKind::absolute, 0.0012}));
  EXPECT_TRUE(ProMdlModificationVerify(silent).value);
}

}  // namespace
}  // namespace headless
