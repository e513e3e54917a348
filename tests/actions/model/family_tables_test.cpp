// Family tables verified, unlocked, thinned out and dissolved. What is on disk afterwards decides.
#include <filesystem>
#include <set>

#include "actions/action_fixture.h"
#include "headless/model/models.h"
#include "headless/vault/servers.h"
#include "headless/vault/vault.h"
#include "text/encoding.h"

namespace test {
namespace {

constexpr const char* kFlat =
    R"({"name": "M4", "values": {"SIZE": 4.0, "d1": 40.0, "SLOT": "N"}}, {"name": "M5", "values": {"SIZE": 5.0}})";
constexpr const char* kNested =
    R"({"name": "M4", "values": {"SIZE": 4.0}, "verification": "verified", "familyTable": {
  "items": [{"type": "dimension", "name": "d1"}], "instances": [{"name": "M4_LONG", "values": {"d1": 99.0}}]}},
  {"name": "M5"})";
constexpr const char* kBroken = R"({"name": "M6", "values": {"SIZE": "six"}})";

void bolt(const World& world, const std::string& rows, const std::string& members = "",
          const std::string& slot = "active") {
  writeBytes(world.models() + "/bolt.prt.1", R"({"format": 1, "commonName": "bolt", )" + members + R"("parameters": [
  {"name": "SIZE", "type": "double", "value": 3.0}, {"name": "GRADE", "type": "string", "value": "8.8"}],
  "dimensions": [{"id": 1, "symbol": "d1", "value": 30.0}],
  "features": [{"id": 5, "number": 1, "type": 911, "name": "HEAD"},
    {"id": 6, "number": 2, "type": 911, "name": "SLOT", "status": ")" +
                                                 slot + R"("}],
  "familyTable": {"items": [{"type": "parameter", "name": "SIZE"}, {"type": "dimension", "name": "d1"},
    {"type": "feature", "name": "SLOT"}], "instances": [)" +
                                                 rows + "]}}");
}

class FamilyTables : public ActionTest {
 protected:
  FamilyTables() { world.config("kvd_write_history_in_models=0"); }
  std::wstring runOnBolt(const std::string& tasks) { return run(tasks, L"BOLT"); }
  // Names of the documents, a blank between them.
  [[nodiscard]] std::string files() const {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(world.models())) names.insert(entry.path().filename());
    std::string out;
    for (const std::string& name : names)
      if (name.find(".prt.") != name.npos || name.find(".asm.") != name.npos) out += (out.empty() ? "" : " ") + name;
    return out;
  }
  // The newest document without blanks.
  [[nodiscard]] std::string compact(const std::string& file) const {
    std::string all = world.document(file);
    std::erase_if(all, [](char c) { return c == ' ' || c == '\n'; });
    return all;
  }
  void expectIn(const std::string& file, std::initializer_list<const char*> pieces) const {
    for (const char* piece : pieces) EXPECT_NE(std::string::npos, compact(file).find(piece)) << piece << compact(file);
  }
  void expectNotIn(const std::string& file, std::initializer_list<const char*> pieces) const {
    for (const char* piece : pieces) EXPECT_EQ(std::string::npos, compact(file).find(piece)) << piece << compact(file);
  }
  static void expectSaid(const std::wstring& log, std::initializer_list<const wchar_t*> pieces) {
    for (const wchar_t* piece : pieces)
      EXPECT_NE(std::wstring::npos, log.find(piece)) << text::toUtf8(piece) << "\n" << text::toUtf8(log);
  }
  const std::string save = task("saveModel");
  const std::string breakUp = task("breakUpFamilytable");
};

TEST(VerifiedFamilyTables, NameEachInstanceFromTheInsideOut) {
  struct Case {
    const char* rows;
    const char* attributes;
    std::wstring said;
  };
  const Case cases[] = {
      {kNested, "twice='false'", L"M4_LONG - created|M4 - created|M5 - created"},
      {kNested, "twice='true'",
       L"M4_LONG - created - regenerated|M4 - created - regenerated|M5 - created - regenerated"},
      {kNested, "onlyunverified='true'", L"M5 - created"},
      {kNested, "onlyunverified='false'", L"M4_LONG - created|M4 - created|M5 - created"},
      {kBroken, "twice='true'", L"E:M6 - failure while creation"},
  };
  for (const Case& item : cases) {
    World own;
    bolt(own, item.rows, R"("density": 7.8, )");
    own.list("list.xml", "<task type='verifyFamilietable' version='3' forPRT='true' forEF='false' " +
                             std::string(item.attributes) + "/>");
    own.runOn(L"BOLT", creo::ProMdlType::part, "list.xml");
    EXPECT_EQ(L"B0 Verify Family Table|looked on the temporary density at 1 parts / assemblies|" + item.said,
              told(own.log()))
        << item.attributes;
  }
}

TEST_F(FamilyTables, KeepWhatAVerificationFound) {
  bolt(world, std::string(kFlat) + "," + kBroken, R"("density": 2.5, "densityEstimated": true, )", "unregenerated");
  const std::wstring log = runOnBolt(task("verifyFamilietable", "twice='true'") + save);
  expectSaid(log, {L"|M4 - created - regenerated|", L"|E:M5 - created - failure while regeneration|",
                   L"|E:M6 - failure while creation|"});
  expectIn("BOLT.prt", {R"("verification":"verified")", R"("verification":"failed")", R"("density":2.5)"});
  expectNotIn("BOLT.prt", {"\"densityEstimated\":true"});
}

TEST_F(FamilyTables, WithoutADensityAreGivenNone) {
  bolt(world, kFlat);
  const std::wstring log = runOnBolt(task("verifyFamilietable") + save);
  expectSaid(log, {L"looked on the temporary density at 1 parts / assemblies"});
  expectNotIn("BOLT.prt", {"density"});
}

TEST_F(FamilyTables, AreUnlocked) {
  bolt(world, R"({"name": "M4", "locked": true}, {"name": "M5"})");
  EXPECT_EQ(L"B0 Unlock all instances|Unlock instance 'M4'|B1 Save model|B2 Conflate family table",
            runOnBolt(task("unlockAllInstances") + save + task("conflateFamilietable")));
  expectNotIn("BOLT.prt", {"locked"});
  expectIn("BOLT.prt", {R"({"name":"M4"},{"name":"M5"})"});
}

TEST(FamilyTableInstances, AreDeletedByNameAndByCompositeName) {
  struct Case {
    const char* attributes;
    std::wstring said, left;
  };
  const Case cases[] = {
      {"namec='1' name_0='m5'", L"Delete M5", L"M4 A<B> 1"},
      {"namec='2' name_1='M5<BOLT>.prt'", L"Delete M5", L"M4 A<B> 1"},
      {"namec='1' name_0='A<B> 1'", L"Delete A<B> 1", L"M4 M5"},
      {"namec='1' name_0='*'",
       L"Delete M4|E:Failure while delete instance 'M4'|Delete M5|"
       L"W:One instance of a table is deleted at a time: 1 more fit and stay",
       L"M4 A<B> 1"},
      {"namec='1' name_0='M7' name_1='M5'", L"No instance fits", L"M4 M5 A<B> 1"},
      {"namec='x' name_0='M5'", L"No instance fits", L"M4 M5 A<B> 1"},
  };
  for (const Case& entry : cases) {
    World own;
    bolt(own, R"({"name": "M4", "locked": true}, {"name": "M5"}, {"name": "A<B> 1"})");
    own.list("list.xml", "<task type='deleteFamilyTableInstance' version='3' forPRT='true' forEF='false' " +
                             std::string(entry.attributes) + "/>" +
                             "<task type='saveModel' version='3' forPRT='true' forEF='false'/>");
    own.runOn(L"BOLT", creo::ProMdlType::part, "list.xml");
    const std::wstring title = L"B0 Delete family table instance|";
    EXPECT_EQ(title + (entry.said.empty() ? L"" : entry.said + L"|") + L"B1 Save model", told(own.log()));
    std::wstring left;
    const std::string document = own.document("BOLT.prt");
    for (const char* name : {"M4", "M5", "A<B> 1"})
      if (document.find('"' + std::string(name) + '"') != std::string::npos)
        left += (left.empty() ? L"" : L" ") + text::fromUtf8(name);
    EXPECT_EQ(entry.left, left) << entry.attributes;
  }
}

TEST_F(FamilyTables, LoseOneInstanceATable) {
  world.config("kvd_filter_curmod=1\nkvd_filter_inst=1");
  bolt(world, R"({"name": "M4", "familyTable": {"items": [], "instances": [{"name": "M4_A"}, {"name": "M4_B"}]}},
    {"name": "M5_A"}, {"name": "M6", "familyTable": {"items": [], "instances": [{"name": "M6_A"}]}})");
  world.list("list.xml", task("deleteFamilyTableInstance", "namec='1' name_0='*_A'") + save);
  world.start();
  for (const wchar_t* name : {L"BOLT", L"M4", L"M6"}) world.open(name, creo::ProMdlType::part);
  world.open(L"BOLT", creo::ProMdlType::part);
  world.run("list.xml");
  expectSaid(told(world.log()),
             {L"Delete M4_A|Delete M5_A|W:One instance of a table is deleted at a time: 1 more fit"});
  expectIn("BOLT.prt", {R"("M4_B")", R"("M6_A")"});
  expectNotIn("BOLT.prt", {R"("M4_A")", R"("M5_A")"});
}

TEST_F(FamilyTables, BreakUpIntoModelsOfTheirOwn) {
  bolt(world, kFlat, R"("density": 7.8, )");
  EXPECT_EQ(L"B0 Break up family table|looked on the temporary density at 1 parts / assemblies|COUNT : 2|B1 Save model",
            runOnBolt(breakUp + save));
  // The version that the copy itself wrote has gone behind the saved one.
  EXPECT_EQ("bolt.prt.1 bolt.prt.2 m4.prt.2 m5.prt.2", files());
  EXPECT_EQ(L"SIZE=4.0 GRADE=8.8", world.savedParameters("M4.prt"));
  EXPECT_EQ(L"SIZE=5.0 GRADE=8.8", world.savedParameters("M5.prt"));
  expectIn("M4.prt", {R"("value":40.0)", R"("status":"suppressed")", R"("density":7.8)"});
  expectIn("M5.prt", {R"("value":30.0)"});
  expectNotIn("M5.prt", {"suppressed", R"("bolt")"});
  for (const char* file : {"M4.prt", "M5.prt", "BOLT.prt"}) expectNotIn(file, {"familyTable", "OSTELO"});
  EXPECT_EQ(L"SIZE=3.0 GRADE=8.8", world.savedParameters("BOLT.prt"));
}

TEST_F(FamilyTables, BreakUpWithWhatRelationsMakeOfEachRow) {
  bolt(world, R"({"name": "M4", "values": {"SIZE": 4.0}}, {"name": "M5", "values": {"SIZE": 5.0, "d1": 1.0}})",
       R"-("relations": ["GRADE = 'M' + itos(SIZE)", "d1 = SIZE * 10"], )-");
  const std::wstring log = runOnBolt(task("verifyFamilietable", "twice='true'") + save + breakUp);
  expectSaid(log, {L"M4 - created - regenerated", L"M5 - created - regenerated"});
  EXPECT_EQ(L"SIZE=3.0 GRADE=8.8", world.savedParameters("BOLT.prt"));
  expectIn("BOLT.prt", {R"("values":{"SIZE":4.0})", R"("values":{"SIZE":5.0,"d1":1.0})"});
  for (const wchar_t* size : {L"4", L"5"}) {
    const std::string file = "M" + text::toUtf8(size) + ".prt";
    EXPECT_EQ(std::wstring(L"SIZE=") + size + L".0 GRADE=M" + size, world.savedParameters(file));
    expectIn(file, {("\"value\":" + text::toUtf8(size) + "0.0").c_str()});
  }
}

TEST_F(FamilyTables, BreakUpFromTheInsideOut) {
  bolt(world, kNested);
  writeBytes(world.models() + "/m5.prt.1", R"({"format": 1, "parameters": []})");
  expectSaid(runOnBolt(breakUp + save),
             {L"W:A model of the name M5.PRT was on disk already: the instance replaces it"});
  // The first version of another time has gone, now that its successor is there.
  EXPECT_EQ("bolt.prt.1 bolt.prt.2 m4.prt.2 m4_long.prt.2 m5.prt.2 m5.prt.3", files());
  EXPECT_EQ(L"SIZE=4.0 GRADE=8.8", world.savedParameters("M4_LONG.prt"));
  expectIn("M4_LONG.prt", {R"("value":99.0)"});
  expectNotIn("M4.prt", {"familyTable"});
}

TEST_F(FamilyTables, AssembliesFindTheirInstancesAfterwards) {
  bolt(world, kFlat);
  writeBytes(world.models() + "/unit.asm.1",
             R"({"format": 1, "components": [{"name": "M4<BOLT>", "type": "prt", "feature": 1}]})");
  runOnBolt(breakUp + save);
  world.open(L"UNIT", creo::ProMdlType::assembly);
  EXPECT_EQ(std::wstring::npos, world.messages().find(L"can't be retrieved")) << text::toUtf8(world.messages());
}

TEST_F(FamilyTables, AssembliesBreakUpWithTheirComponents) {
  world.part(L"PIN").with(L"A", 1);
  world.part(L"NUT").with(L"A", 2);
  writeBytes(world.models() + "/unit.asm.1", R"({"format": 1, "components": [
  {"name": "PIN", "type": "prt", "feature": 1}, {"name": "NUT", "type": "prt", "feature": 2}],
  "features": [{"id": 1, "dimensions": [7]}], "dimensions": [{"id": 7, "value": 3.0}], "relations": ["FAR = d7 * 2"],
  "layers": [{"id": 5, "name": "SMALL", "items": [{"type": "feature", "id": 1}, {"type": "feature", "id": 2},
    {"type": "dimension", "id": 7}]}],
  "simplifiedReps": [{"id": 1, "name": "LIGHT", "items": [{"feature": 1, "action": "exclude"},
    {"feature": 2, "action": "exclude"}]}],
  "familyTable": {"items": [{"type": "component", "name": "PIN"}, {"type": "component", "name": "NUT"}],
    "instances": [{"name": "BARE", "values": {"PIN": "N"}}, {"name": "NUTS", "values": {"PIN": "NUT"}},
      {"name": "LOST", "values": {"NUT": "NOWHERE"}}]}})");
  const std::wstring log = run(breakUp + save, L"UNIT", creo::ProMdlType::assembly);
  expectSaid(log, {L"E:The instance 'LOST' stays in the family table: it can't be created"});
  EXPECT_EQ("NUT.prt.1 NUT.prt.2 PIN.prt.1 PIN.prt.2 bare.asm.2 nuts.asm.2 unit.asm.1 unit.asm.2", files());
  expectNotIn("BARE.asm", {"PIN"});
  // A dimension stays for the relations that read it.
  expectIn("BARE.asm", {R"("items":[{"type":"feature","id":2},{"type":"dimension","id":7}])", R"({"id":7,"value":3.0})",
                        R"("items":[{"feature":2,"action":"exclude"}])"});
  expectIn("NUTS.asm",
           {R"("items":[{"type":"feature","id":1},{"type":"feature","id":2},{"type":"dimension","id":7}])"});
  expectNotIn("NUTS.asm", {"PIN"});
  expectIn("UNIT.asm", {R"("LOST")"});
  expectNotIn("UNIT.asm", {R"("BARE")", R"("NUTS")"});
}

// What can't be replaced stays, under its own name.
TEST_F(FamilyTables, KeepWhatCannotBeBrokenUp) {
  bolt(world,
       std::string(kBroken) + R"(, {"name": "M7", "familyTable": {"items": [{"type": "parameter", "name": "SIZE"}],
  "instances": [{"name": "M7_BAD", "values": {"SIZE": "x"}}]}}, {"name": "A<B>"}, {"name": "M8", "locked": true},
  {"name": "M 9"}, {"name": "M23456789012345678901234567890123"})");
  const std::wstring log = runOnBolt(breakUp + save);
  expectSaid(log,
             {L"E:The instance 'M6' stays in the family table: it can't be created",
              L"E:The instance 'M7_BAD' stays in the family table: it can't be created",
              L"E:The instance 'M7' stays in the family table: its own family table has instances left",
              L"E:The instance 'A<B>' stays in the family table: it can't be copied",
              L"E:The instance 'M8' stays in the family table: it can't be renamed",
              L"E:The instance 'M 9' stays in the family table: it can't be copied",
              L"E:The instance 'M23456789012345678901234567890123' stays in the family table: its name is too long"});
  EXPECT_EQ("bolt.prt.1 bolt.prt.2", files());
  expectIn("BOLT.prt", {R"("M6")", R"("M7")", R"("M7_BAD")", R"("A<B>")", R"("M8")", R"("M9")"});
  expectNotIn("BOLT.prt", {"OSTELO"});
}

// Whatever fails once, each instance is in the table or on disk.
TEST(BrokenUpFamilyTables, LoseNoInstanceWhenAnOperationFailsOnce) {
  for (const char* operation :
       {"ProFaminstanceCreate", "ProSolidRegenerate", "ProMdlRename", "ProMdlCopy", "ProMdlSave", "ProMdlErase",
        "ProFaminstanceRemove", "ProFamtableErase", "ProFamtableInit", "ProFamtableInstanceVisit", "ProMdlTypeGet",
        "ProDirectoryCurrentGet", "ProMdlCommonnameGet", "ProSolidFamtableCheck"}) {
    World own;
    bolt(own, kFlat, R"("density": 7.8, )");
    own.list("list.xml",
             "<task type='breakUpFamilytable' version='3' forPRT='true' forEF='false'/>"
             "<task type='saveModel' version='3' forPRT='true' forEF='false'/>");
    own.start();
    own.open(L"BOLT", creo::ProMdlType::part);
    own.openTool();
    own.choose("list.xml");
    own.session().failNext(operation, creo::ProGeneralError);
    own.pressStart();
    for (const std::string name : {"M4", "M5"}) {
      const bool onDisk = !own.document(name + ".prt").empty();
      const bool inTable = own.document("BOLT.prt").find('"' + name + '"') != std::string::npos;
      EXPECT_TRUE(onDisk || inTable) << operation << " " << name;
      if (onDisk) {
        EXPECT_NE(L"", own.savedParameters(name + ".prt")) << operation;
      }
    }
  }
}

TEST_F(FamilyTables, BreakUpWithAServerKeepsLooksAndSavesTheGeneric) {
  bolt(world, kFlat,
       R"("appearance": {"color": [1.0, 0.0, 0.0], "label": "red"},
  "surfaceAppearances": [{"surface": 2, "side": 1, "appearance": {"label": "blue"}}],
  "solid": {"primitives": [{"type": "box", "size": [1, 2, 3]}]}, )");
  world.list("list.xml", breakUp);
  ASSERT_TRUE(headless::Vault::create(L"c:\\plm", "plm"));
  ASSERT_EQ(0, world.start());
  ASSERT_EQ(L"", world.session().servers().connect({L"c:\\plm", L"design", L"ann", 0}));
  world.open(L"BOLT", creo::ProMdlType::part);
  world.run("list.xml");
  EXPECT_EQ("bolt.prt.1 bolt.prt.2 m4.prt.1 m5.prt.1", files());
  expectIn("M4.prt", {R"("label":"red")", R"("label":"blue")"});
  EXPECT_EQ(L"SIZE=5.0 GRADE=8.8", world.savedParameters("M5.prt"));
  expectNotIn("BOLT.prt", {"familyTable"});
}

// What can't be saved outside its table goes back into it, as it was.
TEST_F(FamilyTables, BreakUpWithAServerPutsBackWhatCannotBeSaved) {
  bolt(world, R"({"name": "M4", "values": {"SIZE": 4.0, "d1": 40.0, "SLOT": "N"},
  "parameters": [{"name": "OWN", "type": "string", "value": "kept"}]}, {"name": "M5"})");
  world.list("list.xml", breakUp + save);
  ASSERT_TRUE(headless::Vault::create(L"c:\\plm", "plm"));
  ASSERT_EQ(0, world.start());
  ASSERT_EQ(L"", world.session().servers().connect({L"c:\\plm", L"design", L"ann", 0}));
  world.open(L"BOLT", creo::ProMdlType::part);
  world.openTool();
  world.choose("list.xml");
  world.session().failNext("ProMdlSave", creo::ProGeneralError);
  world.pressStart();
  expectSaid(told(world.log()), {L"E:The instance 'M4' stays in the family table: it can't be saved"});
  EXPECT_EQ("bolt.prt.1 bolt.prt.2 m5.prt.1", files());
  expectIn("BOLT.prt", {R"("M4")", R"("d1":40.0)", R"("SLOT":"N")", R"("kept")"});
  expectNotIn("BOLT.prt", {R"("M5")"});
}

}  // namespace
}  // namespace test
