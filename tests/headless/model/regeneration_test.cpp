// Regeneration: relations are read and worked out, what is wrong fails and says so.
#include "creo/ProDimension.h"
#include "creo/ProFeature.h"
#include "creo/ProMdlCopy.h"
#include "creo/ProNotify.h"
#include "creo/ProRelset.h"
#include "creo/ProSolid.h"
#include "creo/ProSurface.h"
#include "creo/ProUtil.h"
#include "headless/session_fixture.h"

namespace headless {
namespace {

using namespace creo;

class Regeneration : public test::HeadlessSession {
 protected:
  static std::string quoted(const std::vector<std::string>& lines) {
    std::string out = "[";
    for (const std::string& line : lines) {
      out += out.size() > 1 ? ", \"" : "\"";
      for (const char c : line) out += c == '"' || c == '\\' ? std::string("\\") + c : std::string(1, c);
      out += "\"";
    }
    return out + "]";
  }
  static double number(ProMdl part, const wchar_t* name) {
    return ProParameterValueGet(ProParameterInit(item(part), name).value).value.real;
  }
  ProMdl related(const std::vector<std::string>& relations) {
    const std::string name = "m" + std::to_string(++number_);
    model(name + ".prt.1", R"("parameters": [{"name": "A", "type": "double", "value": 2},
        {"name": "N", "type": "integer", "value": 3}, {"name": "T", "type": "string", "value": "x"},
        {"name": "B", "type": "boolean", "value": false}],
        "dimensions": [{"id": 1, "value": 10}], "relations": )" +
                               quoted(relations));
    return retrieve(text::fromUtf8(name));
  }

 private:
  int number_ = 0;
};

TEST_F(Regeneration, RelationsAreWorkedOut) {
  const struct {
    std::vector<std::string> relations;
    const char* parameters;
  } cases[] = {
      {{"A = 1 + 2 * 3 ^ 2"}, "A=19 N=3 T=x B=false"},
      {{"a=-2^2+(1+2)*-3"}, "A=-13 N=3 T=x B=false"},
      {{"A = 2 ^ -1 - 1 - 1"}, "A=-1.5 N=3 T=x B=false"},
      {{"A = d1 / 4 + n"}, "A=5.5 N=3 T=x B=false"},
      {{"A = sqrt(16) + max(1, 2) + sin(90) + C2"}, "A=9 N=3 T=x B=false"},
      {{"A = 1.5e1 + .5"}, "A=15.5 N=3 T=x B=false"},
      {{"T = \"a=b\" + '/*'  /* a text keeps its marks"}, "A=2 N=3 T=a=b/* B=false"},
      {{"B = A > 1 & !(T == \"y\") | NO"}, "A=2 N=3 T=x B=true"},
      {{"N = 7.6"}, "A=2 N=8 T=x B=false"},
      {{"w = 4", "A = w * 2"}, "A=8 N=3 T=x B=false"},
      {{"A = w * 2", "w = 4"}, "A=2 N=3 T=x B=false"},
      {{"A = 1", "A = A + 1"}, "A=2 N=3 T=x B=false"},
      {{"A = 1 + \\", "  2 \\  ", "+ 3"}, "A=6 N=3 T=x B=false"},
      {{"IF A > 5", "N = 1", "ELSE", "IF (B)", "N = 2", "ELSE", "N = 9", "ENDIF", "ENDIF"}, "A=2 N=9 T=x B=false"},
      {{"", "/* = (", "  "}, "A=2 N=3 T=x B=false"},
      {{"A = 5 [in] + 1", "N = (2 + 1) [cm]"}, "A=128 N=30 T=x B=false"},
      {{"T = itos(7.6) + '/' + rtos(2.5) + '/' + rtos(1/3, 2)"}, "A=2 N=3 T=8/2.5/0.33 B=false"},
      {{"N = search('a\xC3\xA4"
        "bc', 'bc')",
        "T = extract('a\xC3\xA4"
        "bc', 2, 2)",
        "A = string_length('\xC3\xA4')"},
       "A=1 N=3 T=\xC3\xA4"
       "b B=false"},
      {{"B = string_starts(T, 'x') & string_ends('ax', T) & !string_match(T, 'y')"}, "A=2 N=3 T=x B=true"},
      {{"A = if(exists('d1') & !exists('WIDHT'), 4, 5)"}, "A=4 N=3 T=x B=false"},
      {{"A = ceil(10.255, 2) - 10.2", "N = floor(-10.2)"}, "A=0.06 N=-11 T=x B=false"},
      {{"A = floor(-10.255, 2)", "N = ceil(3.0000000001)"}, "A=-10.26 N=3 T=x B=false"},
      {{"A = ceil(1.23456789012, 9)", "N = ceil(10.255, 0.9)"}, "A=1.23457 N=11 T=x B=false"},
      {{"B = near(A, 2.5, 0.5) & !near(A, 3, 0.5)", "A = dead(7, 1, 4) + dead(-1, 1, 4) * 10 + dead(2, 1, 4)"},
       "A=-17 N=3 T=x B=true"},
      {{"T = rel_model_type()", "B = string_starts(rel_model_name(), 'M')"}, "A=2 N=3 T=PART B=true"},
      // What isn't worked out leaves its target alone.
      {{"N = mp_mass(\"\") + 1", "T = rel_model_name:2()"}, "A=2 N=3 T=x B=false"},
      {{"N = PRO_MP_MASS", "A = EVALGRAPH('g', 1)"}, "A=2 N=3 T=x B=false"},
      {{"IF mp_mass(\"\") > 3", "A = 7", "ENDIF"}, "A=2 N=3 T=x B=false"},
      {{"A = LENGTH:12 * 2"}, "A=2 N=3 T=x B=false"},
      {{"SOLVE", "x + A = d1", "FOR x", "N = x"}, "A=2 N=3 T=x B=false"},
      // What isn't chosen may have any value: that is what guards are for.
      {{"IF N > 5", "A = sqrt(-1)", "A = 1 / (N - 3)", "A = T * 2", "B = T > 1", "A = 'x'", "T = extract(T, 0, 1)",
        "IF T", "A = 9", "ENDIF", "IF 1 / 0", "ELSE", "A = 9", "ENDIF", "ENDIF"},
       "A=2 N=3 T=x B=false"},
      {{"IF N == 3", "A = 7", "ELSE", "A = ln(-1)", "ENDIF"}, "A=7 N=3 T=x B=false"},
      {{"A = if(N == 3, 4, 1 / (N - 3))"}, "A=4 N=3 T=x B=false"},
      {{"A = if(N > 3, sqrt(-1), if(B, -T * 2, 6)) + 1"}, "A=7 N=3 T=x B=false"},
      {{"IF mp_mass(\"\") > 3", "A = 1 / 0", "ENDIF"}, "A=2 N=3 T=x B=false"},
      {{"IF EXISTS ( \"Width\")", "A = WIDTH", "ENDIF", "N = if(exists('width'), width, 8)"}, "A=2 N=8 T=x B=false"},
      {{"SOLVE", "x = 1 / (N - 3)", "FOR x"}, "A=2 N=3 T=x B=false"},
  };
  for (const auto& c : cases) {
    const ProMdl part = related(c.relations);
    EXPECT_EQ(ProNoError, ProSolidRegenerate(part, kRegenerateNoFlags)) << messages();
    EXPECT_EQ(c.parameters, parameters(part)) << c.relations.front();
  }
}

TEST_F(Regeneration, ARelationThatIsWrongFailsAndSaysWhy) {
  const struct {
    std::vector<std::string> relations;
    std::string message;
  } cases[] = {
      {{"A = (1 + 2"}, "1: a bracket isn't closed"},
      {{"A = 1)"}, "1: a bracket closes that wasn't opened"},
      {{"", "A = 5 [mm"}, "2: a bracket isn't closed"},
      {{"T = \"x"}, "1: a text isn't closed"},
      {{"= 5"}, "1: it has no left side"},
      {{"A + 1 = 5"}, "1: its left side is no name"},
      {{"A == 5"}, "1: it assigns nothing"},
      {{"/* fine", "A = 1", "A = WIDHT / 2"}, "3: 'WIDHT' is neither a parameter nor a dimension"},
      {{"A = fine(1)"}, "1: 'fine' is no function of 1 arguments"},
      {{"A = sin(1, 2)"}, "1: 'sin' is no function of 2 arguments"},
      {{"A = 1 [smoot]"}, "1: '[smoot]' is no unit"},
      {{"T = extract(T, 0, 1)"}, "1: a piece begins at 1 or behind, and its length isn't negative"},
      {{"T = itos('x')"}, "1: a text stands where a number is needed"},
      {{"A = string_length(1)"}, "1: a number stands where a text is needed"},
      {{"A = 1 /"}, "1: an operand is missing"},
      {{"A = * 2"}, "1: an operand is missing before '* 2'"},
      {{"A = 1 2"}, "1: '2' isn't expected"},
      {{"A = 1a"}, "1: 'a' isn't expected"},
      {{"A = 1 / (N - 3)"}, "1: it gives no number"},
      {{"A = T * 2"}, "1: a text stands where a number is needed"},
      {{"B = T > 1"}, "1: a text is compared with a number"},
      {{"A = 1", "IF A"}, "2: IF without ENDIF"},
      {{"ENDIF"}, "1: ENDIF without IF"},
      {{"IF A", "ELSE", "ELSE", "ENDIF"}, "3: ELSE without IF"},
      {{"IF NO", "A = WIDHT", "ENDIF"}, "2: 'WIDHT' is neither a parameter nor a dimension"},
      {{"IF NO", "A = (1", "ENDIF"}, "2: a bracket isn't closed"},
      {{"IF YES", "A = 1 / (N - 3)", "ENDIF"}, "2: it gives no number"},
      {{"IF T", "ENDIF"}, "1: a text is neither yes nor no"},
      {{"A = if(YES, 1 / 0, 2)"}, "1: it gives no number"},
      {{"A = if(1 / 0, 1, 2)"}, "1: it gives no number"},
      {{"A = if(NO, fine(1), 2)"}, "1: 'fine' is no function of 1 arguments"},
      {{"A = max(if(NO, 1, 1 / 0), T * 2) +"}, "1: an operand is missing"},
      {{"A = 9", "d1 = 8", "N = 'x'", "B = YES"}, "3: 'N' can't take the value that a relation gives it"},
      {{"A = 9", "d1 = 'x'"}, "2: 'd1' can't take the value that a relation gives it"},
      {{"IF !exists('WIDTH')", "A = WIDTH", "ENDIF"}, "2: 'WIDTH' is neither a parameter nor a dimension"},
      {{"SOLVE", "A"}, "2: it is no equation"},
      {{"A = 1 + \\", "\\", "* 2"}, "1: an operand is missing before '* 2'"},
      {{"A = " + std::string(100000, '(')}, "1: it is nested too deeply"},
      {{"A = " + std::string(100000, '-')}, "1: an operand is missing"},
      {{"A = \xC3\xA4\xF0\x9D\x94\xB8"}, "1: '\xC3\xA4\xF0\x9D\x94\xB8' is neither a parameter nor a dimension"},
  };
  std::size_t said = 0;
  for (const auto& c : cases) {
    const ProMdl part = related(c.relations);
    EXPECT_EQ(ProGeneralError, ProSolidRegenerate(part, kRegenerateNoFlags)) << c.message;
    ASSERT_EQ(++said, session().messages().size()) << c.message;
    EXPECT_EQ(text::toUtf8(ProMdlNameGet(part).value) + ".PRT: relation line " + c.message,
              text::toUtf8(session().messages().back()));
    EXPECT_EQ(ProRegenerationStatus::failed, ProSolidRegenerationstatusGet(part).value);
    EXPECT_EQ("A=2 N=3 T=x B=false", parameters(part)) << c.message;
    EXPECT_EQ(10, ProDimensionValueGet({part, 1}).value) << c.message;
  }
}

constexpr const char* kTin = R"("material": "TIN", "materials": [{"name": "TIN", "parameters": [
  {"name": "PTC_MASS_DENSITY", "type": "double", "value": 2}]}])";

// Behind the regeneration the body is that which the relations have made; before it, that which there was.
TEST_F(Regeneration, RelationsWeighTheirModel) {
  model("bar.prt.1", std::string(kTin) + R"x(, "parameters": [{"name": "LEN", "type": "double", "value": 10},
      {"name": "BEFORE", "type": "double", "value": 0}, {"name": "AFTER", "type": "double", "value": 0},
      {"name": "CENTRE", "type": "double", "value": 0}, {"name": "RHO", "type": "double", "value": 0}],
      "dimensions": [{"id": 1, "symbol": "WIDTH", "value": 5}],
      "solid": {"primitives": [{"type": "box", "size": ["LEN", "WIDTH", 1]}]},
      "relations": ["WIDTH = LEN", "BEFORE = PRO_MP_MASS", "RHO = material_param('PTC_MASS_DENSITY')"],
      "postRelations": ["AFTER = mp_mass(\"\") + mp_volume('')", "CENTRE = MP_CG_X('', '', '')"],
      "familyTable": {"items": [{"type": "parameter", "name": "LEN"}],
        "instances": [{"name": "LONG", "values": {"LEN": 20}}]})x");
  model("pair.asm.1", R"("parameters": [{"name": "M", "type": "double", "value": 0}],
      "postRelations": ["M = pro_mp_mass"], "components": [{"name": "BAR", "type": "prt", "feature": 1}])");
  const ProMdl bar = retrieve(L"BAR");
  EXPECT_EQ(ProNoError, ProSolidRegenerate(bar, 0)) << messages();
  EXPECT_EQ("LEN=10 BEFORE=100 AFTER=300 CENTRE=5 RHO=2", parameters(bar));
  EXPECT_EQ("LEN=20 BEFORE=400 AFTER=1200 CENTRE=10 RHO=2", parameters(retrieve(L"LONG")))
      << "the generic's width before its own relations";
  const ProMdl pair = retrieve(L"PAIR", ProMdlType::assembly);
  EXPECT_EQ(ProNoError, ProSolidRegenerate(pair, 0)) << messages();
  EXPECT_EQ("M=200", parameters(pair));
  // What a post relation weighs is read by the relations of an instance's next pass, and both stay.
  model("rod.prt.1", std::string(kTin) + R"(, "parameters": [{"name": "LEN", "type": "double", "value": 10},
      {"name": "P", "type": "double", "value": 1}, {"name": "A", "type": "double", "value": 0}],
      "solid": {"primitives": [{"type": "box", "size": ["LEN", 1, 1]}]},
      "relations": ["A = P * 2"], "postRelations": ["P = PRO_MP_MASS"],
      "familyTable": {"items": [{"type": "parameter", "name": "LEN"}],
        "instances": [{"name": "STAFF", "values": {"LEN": 20}}]})");
  const ProMdl staff = retrieve(L"STAFF");
  EXPECT_EQ(ProNoError, ProSolidRegenerate(staff, 0)) << messages();
  EXPECT_EQ("LEN=20 P=40 A=80", parameters(staff));
}

TEST_F(Regeneration, WhatIsNotWorkedOutIsToldOnceAModel) {
  const ProMdl part = related({"A = MP_MASS('')", "IF NO", "A = TRAJPAR", "ENDIF", "N = LENGTH:12 * 2"});
  EXPECT_EQ(ProNoError, ProSolidRegenerate(part, kRegenerateForce));
  EXPECT_EQ(ProNoError, ProSolidRegenerate(part, kRegenerateForce));
  EXPECT_EQ(
      "warning: M1.PRT: what these ask for isn't worked out here: relation line 1 (MP_MASS), relation line 5 "
      "(LENGTH:12)\n",
      messages());
}

TEST_F(Regeneration, ASetHeedsUnitsAsItOrTheOptionSays) {
  const struct {
    const char *members, *feature, *option;
    double a, b;
  } cases[] = {{"", "", "", 50.8, 50.8},
               {R"("unitSensitive": false,)", "", "yes", 2, 50.8},
               {"", R"("unitSensitive": false,)", "", 50.8, 2},
               {"", "", "NO", 2, 2},
               {R"("unitSensitive": true,)", "", "no", 50.8, 2}};
  int count = 0;
  for (const auto& c : cases) {
    if (*c.option) ProConfigoptSet(L"relations_units_sensitive", text::fromUtf8(c.option));
    const std::string name = "u" + std::to_string(++count);
    model(name + ".prt.1", std::string(c.members) + R"("parameters": [
        {"name": "LEN", "type": "double", "value": 2, "units": "in"}, {"name": "A", "type": "double", "value": 0},
        {"name": "B", "type": "double", "value": 0}], "relations": ["A = LEN"],
        "features": [{"id": 4, )" +
                               c.feature + R"("relations": ["B = LEN"]}])");
    const ProMdl part = retrieve(text::fromUtf8(name));
    EXPECT_EQ(ProNoError, ProSolidRegenerate(part, 0));
    EXPECT_EQ(c.a, number(part, L"A")) << name;
    EXPECT_EQ(c.b, number(part, L"B")) << name;
    ProConfigoptSet(L"relations_units_sensitive", L"yes");
  }
  const ProModelitem hole{ProItemType::feature, 4, retrieve(L"U1"), {}};
  EXPECT_EQ(ProNoError, ProRelsetUnitsSensitiveSet({hole}, false));
  EXPECT_EQ(ProNotFound, ProRelsetUnitsSensitiveSet({{ProItemType::model, kPostRegeneration, hole.owner, {}}}, true));
  EXPECT_EQ(ProNoError, ProRelsetRegenerate({hole}));
  EXPECT_EQ(2, number(hole.owner, L"B"));
}

// A set is tested as a whole before any of its values is given, be it the model's or a feature's.
TEST_F(Regeneration, ASetThatFailsLeavesNothingBehind) {
  model("a.prt.1", R"("parameters": [{"name": "A", "type": "double", "value": 2}, {"name": "N", "type": "integer",
      "value": 3}], "dimensions": [{"id": 1, "value": 10}], "relations": ["A = 5", "N = 'x'"],
      "postRelations": ["d1 = A * 2"], "features": [{"id": 4, "parameters": [{"name": "DEPTH", "type": "double",
      "value": 1}, {"name": "COUNT", "type": "integer", "value": 1}], "relations": ["DEPTH = 9", "A = 9", "COUNT = 'x'"]}])");
  const ProMdl part = retrieve(L"A");
  const ProModelitem hole{ProItemType::feature, 4, part, {}};
  ProModelitem post = item(part);
  post.id = kPostRegeneration;
  const auto depth = [&] { return ProParameterValueGet(ProParameterInit(hole, L"DEPTH").value).value.real; };
  const auto dimension = [&] { return ProDimensionValueGet({part, 1}).value; };
  EXPECT_EQ(ProGeneralError, ProRelsetRegenerate({item(part)}));
  EXPECT_EQ(ProGeneralError, ProRelsetRegenerate({hole}));
  EXPECT_EQ("A=2 N=3", parameters(part));
  EXPECT_EQ(1, depth());
  EXPECT_EQ(ProNoError, ProRelsetRegenerate({post})) << "nothing is wrong with it";
  EXPECT_EQ(4, dimension()) << "with what the model has, not with what the failing relations began";
  ASSERT_EQ(ProNoError, ProRelsetRelationsSet({item(part)}, {L"A = 5"}));
  EXPECT_EQ(ProGeneralError, ProSolidRegenerate(part, 0));
  EXPECT_EQ("A=2 N=3", parameters(part)) << "a feature's relations fail";
  EXPECT_EQ(1, depth());
  ASSERT_EQ(ProNoError, ProRelsetRelationsSet({hole}, {L"DEPTH = A * 2"}));
  EXPECT_EQ(ProNoError, ProRelsetRegenerate({hole}));
  EXPECT_EQ(10, depth()) << "its own parameter";
  const std::string area = messages();
  for (const char* line :
       {"A.PRT: relation line 2: 'N' can't take the value that a relation gives it\n",
        "A.PRT: feature 4, relation line 3: 'COUNT' can't take the value that a relation gives it\n"})
    EXPECT_NE(std::string::npos, area.find(line)) << line << area;
}

TEST_F(Regeneration, TheDocumentIsTouchedOnlyWhereSomethingChanges) {
  model("good.prt.1", R"("dimensions": [{"id": 1, "symbol": "W", "value": 4}], "relations": ["W = 4"])");
  model("bad.prt.1", R"("relations": ["W = 4 +"], "regeneration": "failed")");
  model("new.prt.1", R"("dimensions": [{"id": 1, "symbol": "W", "value": 4}], "postRelations": ["W = 5"])");
  const struct {
    const wchar_t* name;
    ProError result;
    bool touched;
  } cases[] = {{L"GOOD", ProNoError, false}, {L"BAD", ProGeneralError, false}, {L"NEW", ProNoError, true}};
  for (const auto& c : cases) {
    const ProMdl part = retrieve(c.name);
    EXPECT_EQ(c.result, ProSolidRegenerate(part, kRegenerateForce)) << text::toUtf8(c.name);
    EXPECT_EQ(c.touched, ProMdlModificationVerify(part).value) << text::toUtf8(c.name);
  }
  EXPECT_NE(std::string::npos, session().models().documentText(retrieve(L"NEW")).value.find("\"value\": 5.0"))
      << "a dimension is driven";
}

TEST_F(Regeneration, PostRelationsThatChangeWhatRelationsReadNeedAnotherPass) {
  model("once.prt.1", R"("parameters": [{"name": "X", "type": "double", "value": 0}, {"name": "Y", "type": "double",
      "value": 1}], "relations": ["X = Y"], "postRelations": ["Y = 2"])");
  const ProMdl part = retrieve(L"ONCE");
  EXPECT_EQ(ProRegenAgain, ProSolidRegenerate(part, 0));
  EXPECT_EQ(ProRegenerationStatus::needed, ProSolidRegenerationstatusGet(part).value);
  EXPECT_EQ(ProNoError, ProSolidRegenerate(part, 0));
  EXPECT_EQ("X=2 Y=2", parameters(part));
}

TEST_F(Regeneration, AFeatureThatIsNotRegeneratedFailsUnlessItIsTakenOut) {
  model("a.prt.1", R"("features": [{"id": 1}, {"id": 4, "name": "BORE", "status": "unregenerated"}],
      "familyTable": {"items": [{"type": "feature", "name": "BORE"}], "instances": [
        {"name": "WITH"}, {"name": "WITHOUT", "values": {"BORE": "N"}}]})");
  EXPECT_EQ(ProGeneralError, ProSolidRegenerate(retrieve(L"A"), 0));
  EXPECT_EQ(ProNoError, ProSolidRegenerate(retrieve(L"WITHOUT"), 0));
  EXPECT_EQ(ProRegenerationStatus::regenerated, ProSolidRegenerationstatusGet(retrieve(L"WITHOUT")).value);
  EXPECT_EQ(ProRegenerationStatus::failed, ProSolidRegenerationstatusGet(retrieve(L"WITH")).value) << "its generic's";
  EXPECT_EQ(ProGeneralError, ProSolidRegenerate(retrieve(L"A"), kRegenerateForce | kRegenerateUpdateInstances));
  EXPECT_EQ(
      "A.PRT: the feature BORE isn't regenerated\nA.PRT: the feature BORE isn't regenerated\n"
      "WITH.PRT: the feature BORE isn't regenerated\n",
      messages());
}

TEST_F(Regeneration, AnInstanceHasTheValuesThatItsOwnRowMakes) {
  model("bolt.prt.1", R"("parameters": [{"name": "LEN", "type": "double", "value": 20},
      {"name": "MASS", "type": "double", "value": 40}, {"name": "FREE", "type": "double", "value": 20}],
      "relations": ["MASS = LEN * 2", "FREE = LEN"],
      "familyTable": {"items": [{"type": "parameter", "name": "LEN"}, {"type": "parameter", "name": "MASS"}],
        "instances": [{"name": "LONG", "values": {"LEN": 30.0}}]})");
  const ProMdl bolt = retrieve(L"BOLT"), instance = retrieve(L"LONG");
  EXPECT_EQ(ProNoError, ProSolidRegenerate(bolt, 0));
  EXPECT_EQ("LEN=30 MASS=60 FREE=30", parameters(instance));
  const std::string before = session().models().documentText(bolt).value;
  EXPECT_EQ(ProNoError, ProSolidRegenerate(bolt, kRegenerateNoFlags));
  EXPECT_EQ(ProNoError, ProRelsetRegenerate(ProModelitemToRelset(item(instance)).value));
  EXPECT_FALSE(ProMdlModificationVerify(bolt).value);
  EXPECT_EQ(ProNoError, set(instance, L"LEN", real(50)));
  EXPECT_EQ("LEN=50 MASS=100 FREE=50", parameters(instance));
  EXPECT_EQ("LEN=20 MASS=40 FREE=20", parameters(bolt));
  EXPECT_EQ(ProNoError, set(instance, L"LEN", real(30)));
  EXPECT_EQ(before, session().models().documentText(bolt).value) << "no column or value comes of it";
}

TEST_F(Regeneration, WhatDrivesAnInstanceIsAskedOfItsOwnRow) {
  // D is in the row: 5 in SMALL, the generic's 20 in LARGE.
  const auto bolt = [](const std::string& relations, const std::string& more) {
    return R"("parameters": [{"name": "D", "type": "double", "value": 20}, {"name": "X", "type": "double", "value": 1},
        {"name": "Y", "type": "double", "value": 1}, {"name": "N", "type": "integer", "value": 7},
        {"name": "T", "type": "string", "value": "t"}], "relations": )" +
           relations + more + R"(, "familyTable": {"items": [{"type": "parameter", "name": "D"}], "instances": [
             {"name": "SMALL", "values": {"D": 5.0}, "parameters": [{"name": "OWN", "type": "double", "value": 0}]},
             {"name": "LARGE"}]})";
  };
  const struct {
    std::string relations, more, small, large;
    ProError regenerated = ProNoError;
  } cases[] = {
      {quoted({"X = D * 2"}), "", "D=5 X=10 Y=1 N=7 T=t OWN=0", "D=20 X=40 Y=1 N=7 T=t"},
      {quoted({"IF D > 10", "X = 2", "ENDIF"}), "", "D=5 X=1 Y=1 N=7 T=t OWN=0", "D=20 X=2 Y=1 N=7 T=t"},
      {quoted({"N = D / 2", "T = 'd' + itos(D)"}), "", "D=5 X=1 Y=1 N=3 T=d5 OWN=0", "D=20 X=1 Y=1 N=10 T=d20"},
      {quoted({"OWN = D"}), "", "D=5 X=1 Y=1 N=7 T=t OWN=5", "D=20 X=1 Y=1 N=7 T=t"},
      {quoted({"N = N + 1"}), "", "D=5 X=1 Y=1 N=8 T=t OWN=0", "D=20 X=1 Y=1 N=8 T=t"},
      // What is assigned behind the relations counts in them.
      {quoted({"X = Y * 2", "N = N + 1"}), R"(, "postRelations": ["Y = D"])", "D=5 X=10 Y=5 N=8 T=t OWN=0",
       "D=20 X=40 Y=20 N=8 T=t"},
      {quoted({"X = Y"}), R"(, "postRelations": ["Y = Y + D"])", "D=5 X=16 Y=21 N=7 T=t OWN=0",
       "D=20 X=61 Y=81 N=7 T=t", ProRegenAgain},
      // One that fails has its generic's.
      {quoted({"X = D * 2", "Y = sqrt(D - 6)"}), "", "D=5 X=1 Y=1 N=7 T=t OWN=0", "", ProGeneralError},
  };
  int number = 0;
  for (const auto& c : cases) {
    endSession();
    std::filesystem::remove_all(folder_ + "/models");
    std::filesystem::create_directories(folder_ + "/models");
    model("bolt" + std::to_string(++number) + ".prt.1", bolt(c.relations, c.more));
    const ProMdl small = retrieve(L"SMALL");
    EXPECT_EQ(c.small, parameters(small)) << c.relations;
    if (!c.large.empty()) EXPECT_EQ(c.large, parameters(retrieve(L"LARGE"))) << c.relations;
    EXPECT_EQ(c.regenerated, ProSolidRegenerate(small, 0)) << c.relations;
    EXPECT_EQ(c.small, parameters(small)) << c.relations;
    EXPECT_EQ(c.regenerated == ProGeneralError, messages().find("SMALL.PRT: relation line 2") != std::string::npos);
  }
}

TEST_F(Regeneration, ParametersWithUnitsCountInThoseOfTheModel) {
  model("rod.prt.1", R"("parameters": [{"name": "LEN", "type": "double", "value": 1, "units": "in"},
      {"name": "GAP", "type": "double", "value": 2.5, "units": "cm"}, {"name": "BARE", "type": "double", "value": 3},
      {"name": "SUM", "type": "double", "value": 0}, {"name": "OUT", "type": "double", "value": 0, "units": "in"},
      {"name": "CUT", "type": "double", "value": 0, "units": "in"}, {"name": "HUGE", "type": "double", "value": 1e308,
      "units": "km"}, {"name": "KEPT", "type": "double", "value": 4}],
      "relations": ["d1 = LEN", "SUM = LEN + GAP + BARE", "OUT = d1 * 3", "CUT = 5 [in]", "KEPT = HUGE / 2"],
      "dimensions": [{"id": 1, "value": 10}], "features": [{"id": 4, "relations": ["DEEP = LEN * 10"],
        "parameters": [{"name": "DEEP", "type": "double", "value": 1, "units": "cm"}]}],
      "solid": {"primitives": [{"type": "box", "size": ["LEN", 1, 1]}]},
      "familyTable": {"items": [{"type": "parameter", "name": "LEN"}], "instances": [
        {"name": "LONG", "values": {"LEN": 2.0}}]})");
  const ProMdl rod = retrieve(L"ROD"), instance = retrieve(L"LONG");
  const auto reported = [](ProMdl solid) {
    std::string out = std::to_string(ProDimensionValueGet({solid, 1}).value);
    const auto add = [&out](const ProModelitem& owner, const wchar_t* name) {
      out += " " + std::to_string(ProParameterScaledvalueGet(ProParameterInit(owner, name).value).value.real);
    };
    for (const wchar_t* name : {L"SUM", L"OUT", L"CUT", L"KEPT"}) add(item(solid), name);
    add({ProItemType::feature, 4, solid, {}}, L"DEEP");
    return out + " " + std::to_string(ProSolidMassPropertyGet(solid).value.volume);
  };
  EXPECT_EQ(ProNoError, ProSolidRegenerate(rod, kRegenerateNoFlags));
  EXPECT_EQ("25.400000 53.400000 3.000000 5.000000 4.000000 25.400000 25.400000", reported(rod));
  EXPECT_EQ("50.800000 78.800000 6.000000 5.000000 4.000000 50.800000 50.800000", reported(instance));
  const std::string before = session().models().documentText(rod).value;
  EXPECT_NE(std::string::npos, before.find("\"value\": 3.0,\n      \"units\": \"in\"")) << before;
  EXPECT_EQ(ProNoError, ProSolidRegenerate(rod, kRegenerateNoFlags));
  EXPECT_EQ(before, session().models().documentText(rod).value) << "to its last digit";
}

// A sketch's relations come before its feature's, which read what they made.
TEST_F(Regeneration, AFeatureReadsWhatItsSketchHasAssigned) {
  model("plate.prt.1", R"("parameters": [{"name": "D", "type": "double", "value": 20}],
      "features": [{"id": 4, "sections": [{"relations": ["H = D * 2"]}], "relations": ["V = H + 1"],
        "parameters": [{"name": "H", "type": "double", "value": 7}, {"name": "V", "type": "double", "value": 8}]}],
      "familyTable": {"items": [{"type": "parameter", "name": "D"}], "instances": [
        {"name": "SMALL", "values": {"D": 5.0}}]})");
  const ProMdl plate = retrieve(L"PLATE"), small = retrieve(L"SMALL");
  EXPECT_EQ(ProNoError, ProSolidRegenerate(plate, kRegenerateNoFlags));
  for (const auto& [solid, value] : {std::pair(plate, 41.0), std::pair(small, 11.0)})
    EXPECT_EQ(value,
              ProParameterValueGet(ProParameterInit({ProItemType::feature, 4, solid, {}}, L"V").value).value.real);
}

TEST_F(Regeneration, FeaturesOfAnInstanceFollowItsRow) {
  model("plate.prt.1", R"("parameters": [{"name": "D", "type": "double", "value": 20}], "relations": ["W = D * 2"],
      "dimensions": [{"id": 1, "symbol": "W", "value": 40}],
      "program": ["IF D > 10", "ADD FEATURE", "INTERNAL FEATURE ID 4", "END ADD", "END IF"],
      "features": [{"id": 4, "name": "RIB", "relations": ["DEEP = D / 2", "W = W + 1"],
        "parameters": [{"name": "DEEP", "type": "double", "value": 10}]},
        {"id": 5, "name": "BASE", "relations": ["DEEP = D / 2"],
        "parameters": [{"name": "DEEP", "type": "double", "value": 10}]}],
      "solid": {"primitives": [{"type": "box", "size": ["W", 1, 1]}]},
      "familyTable": {"items": [{"type": "parameter", "name": "D"}], "instances": [
        {"name": "SMALL", "values": {"D": 6.0}}, {"name": "LARGE", "values": {"D": 30.0}}]})");
  const ProMdl plate = retrieve(L"PLATE"), small = retrieve(L"SMALL"), large = retrieve(L"LARGE");
  const auto reported = [](ProMdl solid) {
    std::string out;
    for (const int id : {4, 5}) {
      const auto deep = ProParameterInit({ProItemType::feature, id, solid, {}}, L"DEEP");
      out += std::to_string(static_cast<int>(ProFeatureStatusGet({solid, id}).value)) + " " +
             std::to_string(static_cast<int>(ProParameterValueGet(deep.value).value.real)) + ", ";
    }
    return out + std::to_string(static_cast<int>(ProSolidMassPropertyGet(solid).value.volume + 0.5));
  };
  EXPECT_EQ("4 10, 0 3, 12", reported(small)) << "the rib isn't there, nor what it adds";
  EXPECT_EQ("0 15, 0 15, 61", reported(large));
  EXPECT_EQ("0 10, 0 10, 40", reported(plate)) << "nobody has regenerated it";
  EXPECT_EQ(ProNoError, ProSolidRegenerate(small, 0));
  EXPECT_EQ("0 10, 0 10, 40", reported(plate));
  // A model of its own has what the instance had.
  const auto copy = ProMdlCopy(small, L"ALONE");
  ASSERT_EQ(ProNoError, copy.error);
  EXPECT_EQ("4 10, 0 3, 12", reported(copy.value));
  EXPECT_EQ("D=6", parameters(copy.value));
}

// The program decides on a parent, by a value that relations give.
TEST_F(Regeneration, AParentThatTheProgramTakesAwayComesBackWithIt) {
  model("rack.prt.1", R"("parameters": [{"name": "SIZE", "type": "double", "value": 1},
      {"name": "MODE", "type": "double", "value": 2}], "relations": ["MODE = SIZE", "D1 = SIZE * 10"],
      "program": ["IF MODE == 2", "ADD FEATURE", "INTERNAL FEATURE ID 3", "END ADD", "END IF"],
      "features": [{"id": 3, "name": "RIB"}, {"id": 4, "parents": [3]}],
      "dimensions": [{"id": 1, "symbol": "D1", "value": 20.0}],
      "crossSections": [{"id": 1, "name": "A", "distance": 20.0, "dimension": 1}])");
  const ProMdl rack = retrieve(L"RACK");
  const auto distance = [&] { return session().models().find(rack)->document->record.crossSections[0].distance; };
  EXPECT_EQ(ProGeneralError, ProSolidRegenerate(rack, 0)) << "at once";
  EXPECT_EQ("RACK.PRT: the feature 4 refers to the feature RIB, which is suppressed\n", messages());
  EXPECT_EQ("SIZE=1 MODE=1", parameters(rack)) << "the relations give their values all the same";
  EXPECT_EQ(10, distance()) << "of the dimension that they drive";
  EXPECT_EQ(ProNoError, set(rack, L"SIZE", real(2)));
  EXPECT_EQ(ProNoError, ProSolidRegenerate(rack, 0)) << messages();
  EXPECT_EQ(ProFeatureStatus::active, ProFeatureStatusGet({rack, 3}).value);
  EXPECT_EQ(20, distance());
}

TEST_F(Regeneration, ComponentsComeFirstAndACircleEnds) {
  model("top.asm.1", R"("features": [{"id": 3, "status": "suppressed"}], "components": [
      {"name": "PIN", "type": "prt"}, {"name": "SUB", "type": "asm"}, {"name": "TOP", "type": "asm"},
      {"name": "BAD", "type": "prt", "feature": 3}])");
  model("sub.asm.1", R"("components": [{"name": "TOP", "type": "asm"}, {"name": "PIN", "type": "prt"}])");
  model("pin.prt.1", R"("parameters": [{"name": "X", "type": "double", "value": 0}], "relations": ["X = 7"])");
  model("bad.prt.1", R"("relations": ["X = "])");
  const ProMdl top = retrieve(L"TOP", ProMdlType::assembly);
  EXPECT_EQ(ProNoError, ProSolidRegenerate(top, 0)) << messages();
  EXPECT_EQ("X=7", parameters(retrieve(L"PIN")));

  model("outer.asm.1", R"("components": [{"name": "MIDDLE", "type": "asm"}])");
  model("middle.asm.1", R"("components": [{"name": "BAD", "type": "prt"}])");
  EXPECT_EQ(ProGeneralError, ProSolidRegenerate(retrieve(L"OUTER", ProMdlType::assembly), 0));
  EXPECT_EQ(
      "BAD.PRT: relation line 1: an operand is missing\nMIDDLE.ASM: its component BAD.PRT fails\n"
      "OUTER.ASM: its component MIDDLE.ASM fails\n",
      messages());
}

// Relations are well in each.
TEST_F(Regeneration, WhatCantBeBuiltIsToldByFeature) {
  model("plate.prt.1", R"("features": [{"id": 7, "name": "RIB"}], "dimensions": [{"id": 1, "symbol": "W", "value": 0}],
      "solid": {"primitives": [{"type": "box", "size": [8, 8, 8]},
                               {"type": "box", "size": ["W", 4, 4], "feature": 7}]})");
  model("lost.prt.1", R"("features": [{"id": 7}, {"id": 8, "parents": [9]}, {"id": 9}])");
  model("top.asm.1", R"("features": [{"id": 3, "status": "suppressed"}], "components": [
      {"name": "AWAY", "type": "prt", "feature": 3}, {"name": "GONE", "type": "prt"}])");
  const ProMdl plate = retrieve(L"PLATE");
  const std::size_t before = session().messages().size();
  EXPECT_EQ(ProGeneralError, ProSolidRegenerate(plate, 0));
  EXPECT_EQ(ProRegenerationStatus::failed, ProSolidRegenerationstatusGet(plate).value);
  EXPECT_EQ(ProNoError, ProFeatureWithoptionsSuppress(plate, {7}));
  EXPECT_EQ(ProNoError, ProSolidRegenerate(plate, 0)) << "it isn't asked for";
  EXPECT_EQ(ProGeneralError, ProSolidRegenerate(retrieve(L"LOST"), 0));
  const auto said = session().messages();
  ASSERT_EQ(before + 2, said.size());
  EXPECT_EQ(L"PLATE.PRT: the feature RIB can't be built: primitive 2: each side must be over 0", said[before]);
  EXPECT_EQ(L"LOST.PRT: the feature 8 refers to the feature 9, which comes behind it", said[before + 1]);

  const ProMdl top = retrieve(L"TOP", ProMdlType::assembly);
  EXPECT_EQ(ProGeneralError, ProSolidRegenerate(top, 0));
  EXPECT_EQ(L"TOP.ASM: its component GONE.PRT is missing", session().messages().back());
  model("gone.prt.1");
  EXPECT_EQ(ProGeneralError, ProSolidRegenerate(top, 0)) << "it isn't retrieved";
  retrieve(L"GONE");
  EXPECT_EQ(ProNoError, ProSolidRegenerate(top, 0));
}

TEST_F(Regeneration, ADimensionBelow0TurnsRound) {
  model("bolt.prt.1", R"("dimensions": [{"id": 1, "symbol": "W", "value": 10.0}, {"id": 2, "symbol": "H", "value": 5}],
      "relations": ["H = -W"], "solid": {"primitives": [{"type": "box", "size": ["W", 2, 2]}]},
      "familyTable": {"items": [{"type": "dimension", "name": "W"}], "instances": [
        {"name": "B20", "familyTable": {"instances": [{"name": "B20S"}]}}]})");
  const ProMdl bolt = retrieve(L"BOLT"), instance = retrieve(L"B20");
  const auto isFlipped = [&] { return session().models().find(bolt)->document->record.dimensions[0].flipped; };
  EXPECT_EQ(ProNoError, ProDimensionValueSet({bolt, 1}, -25));
  EXPECT_EQ(-25, ProDimensionValueGet({bolt, 1}).value) << "until it is regenerated";
  EXPECT_EQ(ProNoError, ProSolidRegenerate(bolt, 0));
  EXPECT_EQ(25, ProDimensionValueGet({bolt, 1}).value);
  EXPECT_EQ(25, ProDimensionValueGet({bolt, 2}).value) << "one that a relation drives, too";
  EXPECT_TRUE(isFlipped());
  EXPECT_NEAR(100, ProSolidMassPropertyGet(bolt).value.volume, 1e-9);
  EXPECT_EQ(ProNoError, ProDimensionValueSet({bolt, 1}, -4));
  EXPECT_EQ(ProNoError, ProSolidRegenerate(bolt, 0));
  EXPECT_FALSE(isFlipped()) << "turned back";
  EXPECT_EQ(ProNoError, ProDimensionValueSet({instance, 1}, -30));
  EXPECT_EQ(ProNoError, ProSolidRegenerate(instance, 0));
  EXPECT_EQ(30, ProDimensionValueGet({instance, 1}).value);
  EXPECT_EQ(4, ProDimensionValueGet({bolt, 1}).value);
  const ProMdl below = retrieve(L"B20S");
  EXPECT_EQ(ProNoError, ProDimensionValueSet({instance, 1}, -35));
  EXPECT_EQ(ProNoError, ProSolidRegenerate(below, 0));
  EXPECT_EQ(35, ProDimensionValueGet({instance, 1}).value) << "it decides on the instance below it";
  EXPECT_TRUE(session().models().find(instance)->row->familyTable->items.list.empty()) << "no column comes of it";
}

TEST_F(Regeneration, HandlersAreToldBeforeAndAfter) {
  model("a.prt.1", R"("relations": ["X = Y"])");
  const ProMdl part = retrieve(L"A");
  std::string reported;
  for (const ProNotifyType type : {ProNotifyType::regenerateBefore, ProNotifyType::regenerateAfter}) {
    ProNotificationSet(type, [&reported, type](const ProNotification& given) {
      reported += std::to_string(static_cast<int>(type)) + text::toUtf8(given.name + L"." + given.typeText) + " " +
                  std::to_string(static_cast<int>(ProSolidRegenerationstatusGet(given.model).value)) + "|";
      return ProNoError;
    });
  }
  EXPECT_EQ(ProGeneralError, ProSolidRegenerate(part, 0));
  EXPECT_EQ("21A.PRT 0|22A.PRT 2|", reported);
  ProNotificationSet(ProNotifyType::regenerateBefore,
                     [](const ProNotification& given) { return ProMdlErase(given.model); });
  EXPECT_EQ(ProGeneralError, ProSolidRegenerate(part, 0))
      << "what the handler took away is there until control is back";
  session().settle();
  EXPECT_EQ(ProBadInputs, ProSolidRegenerate(part, 0));
}

}  // namespace
}  // namespace headless
