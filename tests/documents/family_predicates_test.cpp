// Predicates on the session, on files, on the PDM system and on families.
#include <gtest/gtest.h>

#include "core/state.h"
#include "creo/ProFamtable.h"
#include "creo/ProMdl.h"
#include "documents/filter.h"
#include "documents/parsed.h"
#include "headless/model/models.h"
#include "language/user_variables.h"
#include "language/variables.h"
#include "os/processes.h"
#include "support/world.h"
#include "text/encoding.h"

namespace {

using namespace creo;
using test::World;

void document(const World& world, const std::string& file, const std::string& members) {
  test::writeBytes(world.models() + "/" + file, "{\"format\": 1" + (members.empty() ? "" : ", " + members) + "}");
}
std::string family(const std::string& rows) { return R"("familyTable": {"items": [], "instances": [)" + rows + "]}"; }
// A row with a table of its own, unless `rows` is empty.
std::string row(const std::string& name, const std::string& rows = "", bool verified = true) {
  return R"({"name": ")" + name + R"(", "verification": ")" + (verified ? "verified" : "failed") + "\"" +
         (rows.empty() ? "" : ", " + family(rows)) + "}";
}
std::string uses(const std::string& name, const std::string& type = "asm") {
  return R"({"name": ")" + name + R"(", "type": ")" + type + "\"}";
}
// Once control is back.
std::size_t inMemory(World& world) {
  world.session().settle();
  return world.session().models().list().size();
}

struct Case {
  const wchar_t* item;
  int result;
};
void check(const std::vector<Case>& cases, ProMdl model) {
  for (const Case& c : cases) EXPECT_EQ(c.result, test::predicate(c.item, model)) << text::toUtf8(c.item);
}

TEST(SessionPredicates, AskVariablesEnvironmentAndVersion) {
  World world;
  world.part(L"BRACKET").with(L"COLOR", L"red").with(L"COUNT", 3).with(L"MASS", 2.5).with(L"DONE", true);
  ASSERT_EQ(0, world.start());
  const ProMdl part = world.open(L"BRACKET", ProMdlType::part);
  language::userVariables().set(L"Paint", L"red");
  language::userVariables().set(L"Other", L"A3");
  os::setEnvironment(L"KVD_TEST_SITE", L"North");
  check(
      {
          {L"type='userVariable' param='paint' value='RED'", 1},
          {L"type='userVariable' param='*' value='A*'", 1},
          {L"type='userVariable' param='paint' value='A3'", 0},
          {L"type='userVariable' param='Paint' value='%COLOR%'", 1},
          {L"type='userVariable' param='%MISSING%' value='*'", 0},
          {L"type='environmentVariable' param='KVD_TEST_SITE' value='n*'", 1},
          {L"type='environmentVariable' param='KVD_TEST_SITE' value='south'", 0},
          {L"type='environmentVariable' param='KVD_TEST_UNSET' value='*'", 0},
          {L"type='creoVersion' creo7='true' creo8='true'", 1},
          {L"type='creoVersion' creo7='true' creo8='false'", 0},
          {L"type='creoVersion' creo2='true'", 0},
          {L"type='parametertype' pname='color' ptype='0'", 1},
          {L"type='parametertype' pname='COUNT' ptype='1'", 1},
          {L"type='parametertype' pname='MASS' ptype='2'", 1},
          {L"type='parametertype' pname='DONE' ptype='3'", 1},
          {L"type='parametertype' pname='DONE' ptype='0'", 0},
          {L"type='parametertype' pname='DONE'", 0},
          {L"type='parametertype' pname='C*' ptype='0'", 0},
      },
      part);
  EXPECT_TRUE(world.logHas(L"CreoVersion: Don't know version Creo 8.0"));
}

TEST(FilePredicates, AskPlacesFilesAndOtherModels) {
  World world;
  world.part(L"BRACKET").with(L"COLOR", L"red");
  world.part(L"PLATE").with(L"COLOR", L"red").with(L"SIZE", 4);
  world.assembly(L"FRAME");
  document(
      world, "twice.prt.1",
      R"("parameters": [{"name": "A", "type": "integer", "value": 1}, {"name": "a", "type": "integer", "value": 2}])");
  test::writeBytes(world.models() + "/list.txt", "x");
  ASSERT_EQ(0, world.start());
  const ProMdl part = world.open(L"BRACKET", ProMdlType::part);
  check(
      {
          {L"type='path' path='d:*'", 1},
          {L"type='path' path='e:*'", 0},
          {L"type='fileexists' filename='d:/LIST.txt'", 1},
          {L"type='fileexists' filename='@mdlpath@bracket.prt.1'", 1},
          {L"type='fileexists' filename='d:/none.txt'", 0},
          {L"type='fileexists' filename=''", 0},
          {L"type='modelexists' filename='PLATE.PRT'", 1},
          {L"type='modelexists' filename='plate.prt'", 1},
          {L"type='modelexists' filename='PLATE.ASM'", 0},
          {L"type='modelexists' filename='FRAME.asm' vcheck='0'", 1},
          {L"type='modelexists' filename='PLATE'", 0},
          {L"type='modelexists' filename='PLATE.PRT' vcheck='1' vcheckvalue='%COLOR%4' vcheckcontent='%COLOR%%SIZE%'",
           1},
          {L"type='modelexists' filename='PLATE.PRT' vcheck='1' vcheckvalue='%COLOR%' vcheckcontent='%SIZE%'", 0},
          {L"type='modelexists' filename='PLATE.PRT' vcheck='1' vcheckvalue='%SIZE%' vcheckcontent='%SIZE%'", 0},
          {L"type='ismodified'", 0},
          {L"type='doubleDefinedParameters'", 0},
      },
      part);
  EXPECT_EQ(1, test::predicate(L"type='doubleDefinedParameters'", world.open(L"TWICE", ProMdlType::part)));
  ProParamvalue blue;
  blue.type = ProParamvalueType::string;
  blue.string = L"blue";
  ProParameterCreate(ProMdlToModelitem(part).value, L"PAINT", blue);
  EXPECT_EQ(1, test::predicate(L"type='ismodified'", part));
}

TEST(PdmPredicates, AnswerThatThereIsNoServer) {
  World world;
  world.part(L"BRACKET").with(L"PTC_WM_LOCATION", L"/Products");
  ASSERT_EQ(0, world.start());
  const ProMdl part = world.open(L"BRACKET", ProMdlType::part);
  check({{L"type='pdmobject' pdmobj='true'", 0},
         {L"type='pdmobject' pdmobj='false'", 1},
         {L"type='pdmobject_2' hdd='true'", 1},
         {L"type='pdmobject_2' ws='true' never_saved='true' cs_checked_out='true'", 0}},
        part);
  world.session().failNext("ProMdlDataGet", ProGeneralError);
  EXPECT_EQ(0, test::predicate(L"type='pdmobject' pdmobj='false'", part));
  EXPECT_TRUE(world.logHas(L"Can't read Mdl data"));
}

TEST(FamilyPredicates, SearchAllLevelsAndEraseWhatTheyBuilt) {
  World world;
  document(world, "bolt.prt.1",
           family(row("BOLT_S", row("BOLT_S1") + "," + row("BOLT_S2", "", false)) + "," + row("BOLT_L") + "," +
                  row("BOLT_OPEN")));
  document(world, "nut.prt.1", family(row("NUT_A", "", false)));
  document(world, "loop.prt.1", family(row("LOOP_A", row("LOOP", row("LOOP_B")))));
  document(world, "odd.prt.1", R"("parameters": [{"name": "L", "type": "integer", "value": 1}], "familyTable": {
      "items": [{"type": "parameter", "name": "L"}],
      "instances": [{"name": "ODD_A", "verification": "verified", "values": {"L": "wrong"}}]})");
  world.drawing(L"BOLT");
  std::string deep;
  for (int level = 60; level > 0; --level) deep = row("DEEP_" + std::to_string(level), deep);
  document(world, "deep.prt.1", family(deep));
  ASSERT_EQ(0, world.start());
  const struct {
    const wchar_t* model;
    const wchar_t* item;
    int result;
  } cases[] = {
      {L"BOLT", L"type='hasInstanceWithName' filename='bolt_l'", 1},
      {L"BOLT", L"type='hasInstanceWithName' filename='*_S2'", 1},
      {L"BOLT", L"type='hasInstanceWithName' filename='bolt'", 0},
      {L"BOLT", L"type='hasInstanceWithName' filename='%NONE%'", 0},
      {L"BOLT", L"type='hasInstanceWithName' filename='@mdln@_S1'", 1},
      {L"BOLT", L"type='hasUnregeneratedInstance' level='one'", 0},
      {L"BOLT", L"type='hasUnregeneratedInstance' level='all'", 1},
      {L"NUT", L"type='hasUnregeneratedInstance'", 1},
      {L"LOOP", L"type='hasInstanceWithName' filename='none'", 0},
      {L"LOOP", L"type='hasUnregeneratedInstance' level='all'", 0},
      {L"DEEP", L"type='hasInstanceWithName' filename='DEEP_60'", 1},
      {L"DEEP", L"type='hasUnregeneratedInstance' level='all'", 0},
      {L"ODD", L"type='hasInstanceWithName' filename='ODD_A'", 0},
      {L"ODD", L"type='hasUnregeneratedInstance' level='all'", 0},
  };
  for (const auto& c : cases) {
    const ProMdl model = world.open(c.model, ProMdlType::part);
    if (c.model == std::wstring(L"BOLT")) (void)ProMdlRetrieve(L"BOLT_OPEN", ProMdlType::part);
    const std::size_t before = inMemory(world);
    EXPECT_EQ(c.result, test::predicate(c.item, model)) << text::toUtf8(c.item);
    EXPECT_EQ(before, inMemory(world)) << text::toUtf8(c.item);
  }
  EXPECT_TRUE(world.logHas(L"ODD_A - failure while creation"));
  EXPECT_TRUE(ProMdlInit(L"BOLT_OPEN", ProMdlType::part)) << "an instance that somebody opened stays";
  const ProMdl drawing = world.open(L"BOLT", ProMdlType::drawing);
  for (const wchar_t* type : {L"hasInstanceWithName", L"hasUnregeneratedInstance", L"containsCircularReferences"})
    EXPECT_EQ(3, test::predicate(L"type='" + std::wstring(type) + L"' filename='*'", drawing));
}

TEST(CircularReferences, AreFoundHoweverDeepAndShared) {
  World world;
  document(world, "ring.asm.1", R"("components": [)" + uses("ring_b") + "]");
  document(world, "ring_b.asm.1", R"("components": [)" + uses("leaf", "prt") + "," + uses("ring") + "]");
  document(world, "self.asm.1", R"("components": [)" + uses("self") + "]");
  document(world, "above.asm.1", R"("components": [)" + uses("ring") + "]");
  document(world, "open.asm.1", R"("components": [)" + uses("lost", "prt") + "," + uses("leaf", "prt") + "]");
  document(world, "leaf.prt.1", "");
  // Two ways at each of forty levels: a million million ways in all.
  for (int level = 0; level < 40; ++level)
    for (const std::string side : {"a", "b"}) {
      const std::string below = std::to_string(level + 1);
      document(
          world, "dia" + std::to_string(level) + side + ".asm.1",
          level == 39 ? "" : R"("components": [)" + uses("dia" + below + "a") + "," + uses("dia" + below + "b") + "]");
    }
  for (int level = 0; level < 3000; ++level)
    document(world, "deep" + std::to_string(level) + ".asm.1",
             level == 2999 ? "" : R"("components": [)" + uses("deep" + std::to_string(level + 1)) + "]");
  ASSERT_EQ(0, world.start());
  const struct {
    const wchar_t* model;
    int result;
    const wchar_t* logged;
  } cases[] = {
      {L"RING", 1, L"Circular: 'RING.ASM\n"},
      {L"SELF", 1, L"Circular: 'SELF.ASM\n"},
      {L"ABOVE", 1, L"Circular: 'RING.ASM\n"},
      {L"OPEN", 0, L"Dependency: 'LOST.PRT' could not be retrieved"},
      {L"DIA0A", 0, L""},
      {L"DEEP0", 0, L""},
  };
  for (const auto& c : cases) {
    const auto model = ProMdlRetrieve(c.model, ProMdlType::assembly);
    EXPECT_EQ(c.result, test::predicate(L"type='containsCircularReferences'", model.value)) << text::toUtf8(c.model);
    EXPECT_TRUE(world.logHas(c.logged)) << text::toUtf8(c.logged);
  }
}

}  // namespace
