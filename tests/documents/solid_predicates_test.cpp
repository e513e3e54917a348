// Predicates that ask parts and assemblies, on a small pump.
#include <gtest/gtest.h>

#include "creo/ProMdl.h"
#include "creo/ProSolid.h"
#include "documents/parsed.h"
#include "support/world.h"

namespace test {
namespace {

using namespace creo;

constexpr const char* kHousing = R"({"format": 1, "units": "mmNs", "subtype": 12, "material": "steel",
  "parameters": [{"name": "L", "type": "double", "value": 4.0}],
  "materials": [{"name": "STEEL", "parameters": [{"name": "DENSITY", "type": "double", "value": 7.85},
    {"name": "GRADE", "type": "integer", "value": 235}, {"name": "MOST", "type": "integer", "value": 2147483647},
    {"name": "NORM", "type": "string", "value": "EN 10025"},
    {"name": "COATED", "type": "boolean", "value": true},
    {"name": "A_NAME_THAT_IS_31_CHARACTERS_OK", "type": "integer", "value": 1}]}],
  "features": [{"id": 1, "name": "BODY", "type": 917, "typeName": "PROTRUSION", "subtype": "EXTRUDE",
      "sections": [{"entities": [{"id": 3, "type": 2}, {"id": 4, "type": 5}]}, {"entities": [{"id": 9, "type": 2}]}]},
    {"id": 7, "name": "BO*", "type": 911, "status": "suppressed"},
    {"id": 8, "name": "DRAIN", "type": 911, "status": "programSuppressed"}, {"id": 12, "type": 176}],
  "relations": ["/* length", "L = 4"], "postRelations": ["M = L"], "insertAfter": 2,
  "layers": [{"id": 1, "name": "01_DATUMS", "items": [{"type": "feature", "id": 1}, {"type": "feature", "id": 7}]},
    {"id": 2, "name": "02_EMPTY"}],
  "layerStates": [{"name": "MACHINING"}], "views": [{"id": 1, "name": "FRONT", "alternateName": "Vorne"}],
  "accuracy": {"kind": "absolute", "value": 0.01}, "toleranceClass": "medium",
  "simplifiedReps": [{"id": 1, "name": "LIGHT"}], "styleStates": [{"id": 1, "name": "GLASS"}],
  "combinedStates": [{"id": 1, "name": "SALES"}], "crossSections": [{"id": 1, "name": "A"}],
  "explodedStates": [{"id": 1, "name": "OPEN"}]})";

class SolidPredicates : public testing::Test {
 protected:
  void SetUp() override {
    model("housing.prt", kHousing);
    model("blank.prt", R"({"format": 1})");
    model("pump.asm", R"({"format": 1, "features": [{"id": 1, "name": "CSYS", "type": 979, "geometryChecks": true}],
        "components": [{"name": "HOUSING", "type": "prt"}, {"name": "BLANK", "type": "prt", "flexible": true},
          {"name": "GONE", "type": "prt", "flexible": true}]})");
    model("pump.drw", R"({"format": 1, "models": [{"name": "PUMP", "type": "asm"}],
        "views": [{"id": 1, "name": "TOP_VIEW"}]})");
    world.config("kvd_show_no_debug_in_log=0");
    ASSERT_EQ(0, world.start());
    housing = world.open(L"HOUSING", ProMdlType::part);
    blank = world.open(L"BLANK", ProMdlType::part);
    pump = world.open(L"PUMP", ProMdlType::assembly);
    drawing = world.open(L"PUMP", ProMdlType::drawing);
  }
  void model(const std::string& name, const std::string& content) {
    writeBytes(world.models() + "/" + name + ".1", content);
  }
  // What the log got since the last call.
  std::wstring logged() {
    const std::wstring all = world.log();
    const std::wstring fresh = all.substr(std::min(seen_, all.size()));
    seen_ = all.size();
    return fresh;
  }
  bool logged(std::wstring_view piece) { return logged().find(piece) != std::wstring::npos; }

  World world;
  ProMdl housing, blank, pump, drawing;

 private:
  std::size_t seen_ = 0;
};

TEST_F(SolidPredicates, AnswerForEachKindOfModel) {
  const struct {
    const wchar_t* item;
    const char* answers;  // of the housing, the blank part, the assembly, the drawing
    const wchar_t* logged = L"";
  } cases[] = {
      {L"type='relation' rel='true' search='l = 4'", "1000", L"8(DBG)     Extended filter: Relations"},
      {L"type='relation' rel='true' posrel='true' search='M*'", "1000", L"Extended filter: Post relations"},
      {L"type='relation' rel='true' search='M*'", "0000"},
      {L"type='relation' posrel='true' search='L*'", "0000"},
      {L"type='relation' rel='true' search=''", "0000"},
      {L"type='currentMaterialName' currmat='ste*'", "1033", L"Extended filter: Current material name"},
      {L"type='currentMaterialName' currmat='brass' whenNoCurr='true'", "0133"},
      {L"type='currentMaterialName' currmat='PTC_*' whenNoCurr='true'", "1133"},
      {L"type='currentMaterialName' currmat='PTC_*' whenNoCurr='false'", "0033"},
      {L"type='layer' currmat='02*' aomi='false'", "1003", L"Extended filter: Layer"},
      {L"type='layer' currmat='*' aomi='true' aomisign='=' aomitf='2'", "1003"},
      {L"type='layer' currmat='*' aomi='true' aomisign='&gt;' aomitf='2'", "0003"},
      {L"type='layer' currmat='*' aomi='true' aomisign='&lt;' aomitf='1'", "1003"},
      {L"type='layer' currmat='01*' aomisign='&lt;' aomitf='2'", "0003"},
      {L"type='layer' currmat='*' aomi='true' aomisign='?' aomitf='2'", "0003"},
      {L"type='unitSystem' us='millimeter newton second (mmns)'", "1003", L"Extended filter: Unit system"},
      {L"type='unitSystem' us='millimeter*'", "1113"},
      {L"type='keExists' ke='BOLT'", "1003", L"Extended filter: Feature exists"},
      {L"type='keExists' ke='body'", "1003"},
      {L"type='keExists' ke='*'", "0003"},
      {L"type='keExists' ke='HOUSING'", "0013"},
      {L"type='keSuppressed' ke='bo*'", "1003", L"Extended filter: Feature suppressed"},
      {L"type='keSuppressed' ke='DRAIN'", "0003"},
      {L"type='keSuppressed' ke='BODY'", "0003"},
      {L"type='materialParameter' param='density' value='7.85'", "1033", L"Extended filter: Material parameter"},
      {L"type='materialParameter' param='DENSITY' value='7.8500001'", "0033"},
      {L"type='materialParameter' param='DENSITY' value='dense'", "0033", L"2(ERR)"},
      {L"type='materialParameter' param='GRADE' value='235'", "1033"},
      {L"type='materialParameter' param='MOST' value='2147483647'", "1033"},
      {L"type='materialParameter' param='MOST' value='99999999999'", "0033"},
      {L"type='materialParameter' param='GRADE' value='235.0'", "0033", L"Failure can't cast integer value"},
      {L"type='materialParameter' param='NORM' value='EN*'", "1033"},
      {L"type='materialParameter' param='COATED' value='Yes'", "1033"},
      {L"type='materialParameter' param='COATED' value='ja'", "0033"},
      {L"type='materialParameter' param='COATED' value='0'", "0033"},
      {L"type='materialParameter' param='L' value='4'", "0033"},
      {L"type='materialParameter' param='A_NAME_THAT_IS_31_CHARACTERS_OKAY' value='1'", "1033"},
      {L"type='geomchk'", "0013", L"Extended filter: Geometry check exists"},
      {L"type='simpRepExists' simpRepName='l*'", "1003"},
      {L"type='simpRepExists' simpRepName='Master Rep'", "0003"},
      {L"type='viewexists' viewname='front'", "1000"},
      {L"type='viewexists' viewname='vorne'", "1000"},
      {L"type='viewexists' viewname='top*'", "0000"},
      {L"type='tolerance' tol='2'", "1003"},
      {L"type='tolerance' tol='1'", "0003"},
      {L"type='tolerance' tol='0'", "0113"},
      {L"type='combinedState' csname='sales'", "1003"},
      {L"type='combstateexists' statename='s*'", "1003"},
      {L"type='combstateexists' csname='sales'", "0003"},
      {L"type='layerstateexists' statename='/^MACH/'", "1003"},
      {L"type='stylestateexists' stylename='glass'", "1003"},
      {L"type='xsecexists' xsecname='a'", "1003"},
      {L"type='explodestateexists' expldname='open'", "1003"},
      {L"type='insertmodeisactive'", "1003"},
      {L"type='keIsFlexible' ke='BLANK'", "3313"},
      {L"type='keIsFlexible' ke='HOUS*'", "3303"},
      {L"type='keIsFlexible' ke='GONE'", "3303"},
  };
  for (const auto& c : cases) {
    std::string answers;
    for (const ProMdl model : {housing, blank, pump, drawing}) answers += std::to_string(predicate(c.item, model));
    EXPECT_EQ(c.answers, answers) << text::toUtf8(c.item);
    EXPECT_TRUE(logged(c.logged)) << text::toUtf8(c.item);
  }
}

TEST_F(SolidPredicates, AccuracyIsComparedWithAMargin) {
  const struct {
    const wchar_t *kind, *how, *value;
    int answer;
  } cases[] = {
      {L"abs", L"1", L"0.01", 1},         {L"rel", L"1", L"0.01", 0},         {L"", L"1", L"0.01", 1},
      {L"abs", L"1", L"0.0100000005", 1}, {L"abs", L"1", L"0.010000002", 0},  {L"abs", L"0", L"0.02", 1},
      {L"abs", L"0", L"0.01", 0},         {L"abs", L"0", L"0.0100000005", 0}, {L"abs", L"2", L"0.005", 1},
      {L"abs", L"2", L"0.01", 0},         {L"abs", L"2", L"0.0099999995", 0}, {L"abs", L"3", L"0.01", 0},
  };
  for (const auto& c : cases) {
    const std::wstring item =
        L"type='accuracy' valtype='" + std::wstring(c.kind) + L"' eq='" + c.how + L"' value='" + c.value + L"'";
    EXPECT_EQ(c.answer, predicate(item, housing)) << text::toUtf8(item);
  }
  EXPECT_EQ(0, predicate(L"type='accuracy' eq='1' value='0'", blank));
  EXPECT_EQ(3, predicate(L"type='accuracy' eq='1' value='0'", drawing));
}

TEST_F(SolidPredicates, AFeatureHitsWhenAllEnabledTestsHold) {
  const struct {
    const wchar_t* tests;
    int answer;
  } cases[] = {
      {L"", 1},
      {L"featnamesel='true' featname='b*'", 1},
      {L"featnamesel='true' featname='*N'", 1},
      {L"featnamesel='true' featname=''", 0},
      {L"featnamesel='TRUE' featname='none'", 1},
      {L"featnumsel='true' featnum='1'", 1},
      {L"featnumsel='true' featnum='3'", 0},  // a suppressed feature has no number
      {L"featnumsel='true' featnum='5'", 0},
      {L"featidsel='true' featid='12'", 1},
      {L"featidsel='true' featid='3'", 0},
      {L"feattypesel='true' feattype='42'", 1},
      {L"feattypesel='true' feattype='0'", 0},
      {L"featidsel='true' featid='12' feattypesel='true' feattype='42' featnumsel='true' featnum='4'", 1},
      {L"featidsel='true' featid='7' feattypesel='true' feattype='42'", 0},
      {L"featidsel='true' featid='12' featnamesel='true' featname='*'", 0},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.answer, predicate(L"type='keFromType' version='4' " + std::wstring(c.tests), housing))
        << text::toUtf8(c.tests);
  }
  EXPECT_FALSE(logged(L"is no code of a feature type"));
  EXPECT_EQ(0, predicate(L"type='keFromType' version='4' feattypesel='true' feattype='hole'", housing));
  EXPECT_TRUE(logged(L"feattype: 'hole' is no code of a feature type"));
  EXPECT_EQ(3, predicate(L"type='keFromType' version='4'", drawing));
  EXPECT_TRUE(logged(L"Extended filter: Feature from type"));
  EXPECT_EQ(3, predicate(L"type='keFromType' version='3'", housing));
  EXPECT_TRUE(logged(L"Please Update the kvz to get a compatible version"));
  EXPECT_EQ(1, predicate(L"type='keFromType' version='4' feattypesel='true' feattype='28' featnamesel='true' "
                         L"featname='GONE'",
                         pump))
      << "a component, by its model's name";
}

TEST_F(SolidPredicates, TheFirstNumberThatASubtypePatternMeetsCounts) {
  const std::pair<const wchar_t*, int> cases[] = {{L"12", 1}, {L"/^12$/", 1}, {L"1*", 0}, {L"*2", 0}, {L"31", 0}};
  for (const auto& [pattern, answer] : cases)
    EXPECT_EQ(answer, predicate(L"type='modelsubtype' subtype='" + std::wstring(pattern) + L"'", housing))
        << text::toUtf8(pattern);
  EXPECT_TRUE(logged(L"Extended filter: Model sub type"));
  EXPECT_EQ(1, predicate(L"type='modelsubtype' subtype='*'", blank)) << "the first is 1";
  world.session().failNext("ProMdlSubtypeGet", ProGeneralError);
  EXPECT_EQ(3, predicate(L"type='modelsubtype' subtype='12'", housing));
  const std::wstring lines = logged();
  EXPECT_NE(std::wstring::npos, lines.find(L"1(WAR)"));
  EXPECT_NE(std::wstring::npos, lines.find(L"Failure while ProMdlTypeGet"));
}

TEST_F(SolidPredicates, SketchesAreWrittenToTheLog) {
  EXPECT_EQ(1, predicate(L"type='sketchhasentities'", housing));
  const std::wstring lines = logged();
  for (const wchar_t* line : {L"1 - PROTRUSION - EXTRUDE - 2", L"3 - 2", L"4 - 5"})
    EXPECT_NE(std::wstring::npos, lines.find(line)) << text::toUtf8(line);
  EXPECT_EQ(std::wstring::npos, lines.find(L"9 - 2")) << "only the first sketch";
  EXPECT_EQ(1, predicate(L"type='sketchhasentities'", blank));
  EXPECT_EQ(3, predicate(L"type='sketchhasentities'", drawing));
}

TEST_F(SolidPredicates, ASolidIsReallyRegenerated) {
  model("wrong.prt", R"({"format": 1, "relations": ["X = Y"]})");
  model("never.prt", R"({"format": 1, "parameters": [{"name": "A", "type": "double", "value": 0},
      {"name": "B", "type": "double", "value": 0}], "relations": ["A = B"], "postRelations": ["B = A + 1"]})");
  const ProMdl wrong = world.open(L"WRONG", ProMdlType::part), never = world.open(L"NEVER", ProMdlType::part);
  const struct {
    const wchar_t* item;
    ProMdl model;
    int answer, passes;
  } cases[] = {
      {L"type='isregenerateable'", housing, 1, 1},
      {L"type='isregenerateable' force='false'", wrong, 0, 1},
      {L"type='isregenerateable' force='true'", wrong, 0, 1},
      {L"type='isregenerateable' force='false'", blank, 1, 1},
      {L"type='isregenerateable'", blank, 1, 1},
      {L"type='isregenerateable'", never, 0, 3},
      {L"type='isregenerateable' force='false'", never, 0, 3},
      {L"type='isregenerateable'", pump, 0, 1},  // a component is missing
  };
  for (const auto& c : cases) {
    const int before = world.session().calls("ProSolidRegenerate");
    const std::string about = text::toUtf8(c.item + (L" " + ProMdlNameGet(c.model).value));
    EXPECT_EQ(c.answer, predicate(c.item, c.model)) << about;
    EXPECT_EQ(c.passes, world.session().calls("ProSolidRegenerate") - before) << about;
  }
  EXPECT_EQ(ProRegenerationStatus::failed, ProSolidRegenerationstatusGet(wrong).value);
  EXPECT_EQ(1, predicate(L"type='isregenerateable'", drawing));
  logged();
  world.session().failNext("ProDwgDraftRegenerate", ProGeneralError);
  EXPECT_EQ(0, predicate(L"type='isregenerateable'", drawing));
  EXPECT_TRUE(logged(L"8(DBG)     Failure while regenerate drawing"));
}

TEST_F(SolidPredicates, OperationsThatFailAreNoHits) {
  const struct {
    const char* operation;
    const wchar_t* item;
    int answer;
    const wchar_t* logged;
  } cases[] = {
      {"ProMdlTypeGet", L"type='layer' currmat='*' aomi='false'", 3, L"Failure while ProMdlTypeGet"},
      {"ProMdlTypeGet", L"type='isregenerateable'", 3, L"Failure while ProMdlTypeGet"},
      {"ProMdlPrincipalunitsystemGet", L"type='unitSystem' us='*'", 0, L"Failure while ProMdlPrincipalunitsystemGet"},
      {"ProLayerItemsGet", L"type='layer' currmat='02*' aomisign='=' aomitf='0'", 0,
       L"AAAAAAAAAAAH .... PLIG Error ^^"},
      {"ProModelitemToRelset", L"type='relation' rel='true' search='L*'", 0, L""},
      {"ProRelsetRelationsGet", L"type='relation' rel='true' search='L*'", 0, L""},
      {"ProModelitemByNameInit", L"type='materialParameter' param='GRADE' value='235'", 0, L""},
      {"ProViewNamesGet", L"type='viewexists' viewname='*'", 0, L""},
      {"ProSolidModelclassGet", L"type='tolerance' tol='0'", 1, L""},
      {"ProInsertModeIsActive", L"type='insertmodeisactive'", 0, L""},
  };
  for (const auto& c : cases) {
    EXPECT_NE(c.answer, predicate(c.item, housing)) << text::toUtf8(c.item);
    logged();
    world.session().failNext(c.operation, ProGeneralError);
    EXPECT_EQ(c.answer, predicate(c.item, housing)) << text::toUtf8(c.item);
    EXPECT_TRUE(logged(c.logged)) << text::toUtf8(c.item);
  }
}

}  // namespace
}  // namespace test
