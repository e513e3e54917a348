// Materials that come from files, replace one another and go.
#include "actions/action_fixture.h"
#include "creo/ProUtil.h"
#include "headless/model/models.h"
#include "headless/session/options.h"
#include "headless/store/document.h"
#include "text/encoding.h"

namespace test {
namespace {

const std::string kSteel =
    "! the steel of the standard\nND_MATERIAL STEEL\nPTC_MASS_DENSITY = 7.85e-06 kg/mm^3 ! dense\n"
    "PTC_MATERIAL_DESCRIPTION = \"plain \"\"steel\"\" ! 1.0037\"\nCERTIFICATE = YES\nGRADE = 235\n"
    "PTC_POISSON_RATIO : Double = 0\n";

class Materials : public ActionTest {
 protected:
  static void fill(const World& world) {
    const auto file = [&](const std::string& name, const std::string& content) {
      writeBytes(world.models() + "/mat/" + name, content);
    };
    file("STEEL.mtl", kSteel);
    file("brass.mat", "/* older\nMASS_DENSITY = 8.5E-06\r\nPTC_HARDNESS = 90 HB\nCONDITION =\n");
    file("both.mtl", "ND_MATERIAL\nFROM = \"mtl\"\n");
    file("both.mat", "FROM = mat\n");
    file("empty.mtl", "");
    file("blank.mat", "/* nothing\n\n");
    file("old.mtl", "MASS_DENSITY = 1\n");
    file("new.mat", "ND_MATERIAL NEW\nA = 1\n");
    file("twice.mtl", "ND_MATERIAL\nA = 1\na = 2\n");
    file("huge.mtl", "ND_MATERIAL\nA = 1e999\n");
    file("open.mtl", "ND_MATERIAL\nA = \"no end\n");
    file("typed.mtl", "ND_MATERIAL\nA : Boolean = 7\n");
    file("lost.mat", "what is this\n");
    file("folder.mtl/readme.txt", "");
    writeBytes(world.models() + "/bracket.prt.1", R"({"format": 1, "material": "wood", "materials": [
      {"name": "WOOD", "parameters": [{"name": "PTC_MASS_DENSITY", "type": "double", "value": 6e-7}]},
      {"name": "Unused", "parameters": []}]})");
    // One column for the material; M4 has its own, the nested M5X too, and M5 takes the generic's.
    writeBytes(world.models() + "/bolt.prt.1", R"({"format": 1, "material": "WOOD",
      "parameters": [{"name": "PTC_MATERIAL_NAME", "type": "string", "value": "WOOD"}],
      "materials": [{"name": "WOOD", "parameters": []}, {"name": "TIN", "parameters": []},
                    {"name": "ZINC", "parameters": []}, {"name": "LEAD", "parameters": []}],
      "familyTable": {"items": [{"type": "parameter", "name": "PTC_MATERIAL_NAME"}], "instances": [
        {"name": "M4", "values": {"PTC_MATERIAL_NAME": "TIN"}},
        {"name": "M5", "familyTable": {"items": [{"type": "parameter", "name": "PTC_MATERIAL_NAME"}],
          "instances": [{"name": "M5X", "values": {"PTC_MATERIAL_NAME": "ZINC"}}]}}]}})");
  }
  void SetUp() override { fill(world); }

  // "WOOD*(PTC_MASS_DENSITY=6e-07) Unused": the document's materials, the current one marked.
  static std::string materials(const World& own, const std::string& part = "BRACKET.prt") {
    const std::string document = own.document(part);
    headless::ModelRecord record;
    headless::readDocument(document, record);
    std::string all;
    for (const headless::MaterialRecord& entry : record.materials) {
      all += (all.empty() ? "" : " ") + entry.name + (headless::sameName(entry.name, record.material) ? "*" : "");
      std::string values;
      for (const headless::ParameterRecord& p : entry.parameters.list) {
        std::string value;
        headless::writeValue(p.value, value, 0);
        values += (values.empty() ? "" : ",") + p.name + "=" + value + p.units;
      }
      if (!values.empty()) all += "(" + values + ")";
    }
    return all;
  }
  // An instance's own value of the column.
  static std::string rowValue(const World& own, const std::string& row) {
    std::string all = own.document("BOLT.prt");
    std::erase_if(all, [](char c) { return c == ' ' || c == '\n'; });
    const std::size_t at = all.find("\"name\":\"" + row + "\",\"values\":{\"PTC_MATERIAL_NAME\":\"");
    if (at == all.npos) return "";
    const std::size_t from = all.find(":{", at) + 23;
    return all.substr(from, all.find('"', from) - from);
  }
  static std::string folders(const World& own) {
    (void)own;
    std::string all;
    for (const std::wstring& item : creo::ProConfigoptArrayGet(L"pro_material_dir").value)
      all += text::toUtf8(item) + "|";
    return all;
  }
  // Runs tasks with the option given twice, as only a settings file can.
  static void runWith(World& own, const std::string& tasks, const std::wstring& name, const char* failing = nullptr) {
    own.list("list.xml", tasks + task("saveModel"));
    own.start();
    own.session().configuration().read(L"pro_material_dir d:\\none\npro_material_dir d:\\mat\\\n");
    own.open(name, creo::ProMdlType::part);
    own.openTool();
    own.choose("list.xml");
    if (failing) own.session().failNext(failing, creo::ProGeneralError);
    own.pressStart();
  }
};

constexpr const char* kBefore = "WOOD*(PTC_MASS_DENSITY=6e-07) Unused";

TEST_F(Materials, AreReadFromFilesOfBothForms) {
  struct Row {
    std::string material, saved;
    std::wstring said;
  };
  const std::string before = kBefore;
  const Row rows[] = {
      {"d:/mat/STEEL.mtl",
       before + " STEEL(PTC_MASS_DENSITY=7.85e-06kg/mm^3,PTC_MATERIAL_DESCRIPTION=\"plain \\\"steel\\\" ! 1.0037\","
                "CERTIFICATE=true,GRADE=235,PTC_POISSON_RATIO=0.0)",
       L"d:\\mat\\STEEL.mtl|Material is added to the model"},
      {"d:/mat/brass", before + " brass(PTC_MASS_DENSITY=8.5e-06,PTC_HARDNESS=\"90 HB\")",
       L"d:\\mat\\brass|Material is added to the model"},
      {"d:/mat/both", before + " both(FROM=\"mtl\")", L"d:\\mat\\both|Material is added to the model"},
      {"d:/mat/both.MAT", before + " both(FROM=\"mtl\")", L"d:\\mat\\both.MAT|Material is added to the model"},
      {"brass.mat", before + " brass(PTC_MASS_DENSITY=8.5e-06,PTC_HARDNESS=\"90 HB\")",
       L"brass.mat|Material is added to the model"},
      {"d:/other/STEEL.mtl", before, L"d:\\other\\STEEL.mtl|E:The defined material has not be found."},
      {"d:/mat/", before, L"d:\\mat\\|E:The defined material has not be found."},
      {"d:/mat/wood.mtl", before, L"d:\\mat\\wood.mtl|W:Material is already in this model"},
  };
  for (const Row& row : rows) {
    World own;
    fill(own);
    runWith(own, task("addMaterial", "material='" + row.material + "'"), L"BRACKET");
    EXPECT_EQ(row.saved, materials(own)) << row.material;
    EXPECT_EQ(L"B0 Add material|" + row.said + L"|B1 Save model", told(own.log())) << row.material;
    EXPECT_EQ("d:\\none|d:\\mat\\|", folders(own)) << row.material;
  }
}

TEST_F(Materials, AFileThatIsNoMaterialSaysWhy) {
  const std::pair<const char*, const wchar_t*> rows[] = {
      {"folder", L"d:\\mat\\folder.mtl is a folder"},
      {"empty", L"d:\\mat\\empty.mtl:1: there is no material in the file"},
      {"blank", L"d:\\mat\\blank.mat:2: there is no material in the file"},
      {"old", L"d:\\mat\\old.mtl:1: an .mtl file begins with 'ND_MATERIAL'; 'NAME = value' alone is .mat"},
      {"new", L"d:\\mat\\new.mat:1: 'ND_MATERIAL' begins an .mtl file; this one is .mat"},
      {"twice", L"d:\\mat\\twice.mtl:3: 'a' stands there twice"},
      {"huge", L"d:\\mat\\huge.mtl:2: the number is out of range"},
      {"open", L"d:\\mat\\open.mtl:2: a text must end with a quote, and nothing may follow"},
      {"typed", L"d:\\mat\\typed.mtl:2: the value is of another type"},
      {"lost", L"d:\\mat\\lost.mat:1: a line must be 'NAME = value'"},
  };
  std::string tasks;
  for (const auto& [name, reason] : rows) tasks += task("addMaterial", "material='d:/mat/" + std::string(name) + "'");
  runWith(world, tasks, L"BRACKET");
  for (const auto& [name, reason] : rows) EXPECT_NE(std::wstring::npos, world.messages().find(reason)) << name;
  EXPECT_EQ(kBefore, materials(world));
  std::size_t reported = 0;
  for (std::size_t at = 0;
       (at = world.log().find(L"There seems to be a failure in this material file", at)) != std::wstring::npos; ++at)
    ++reported;
  EXPECT_EQ(std::size(rows), reported);
}

TEST_F(Materials, AFileThatCantBeReadLosesNothing) {
  world.disk().denyReads(L"d:\\mat");
  runWith(world,
          task("addMaterial", "material='d:/mat/STEEL'") +
              task("replaceMaterial", "path='d:/mat' namef_0='*' namet_0='brass' delreplaced='true'"),
          L"BRACKET");
  EXPECT_EQ(kBefore, materials(world));
  EXPECT_NE(std::wstring::npos, world.messages().find(L"d:\\mat\\STEEL.mtl can't be read: Permission denied"));
  EXPECT_NE(std::wstring::npos, told(world.log()).find(L"E:There seems to be a failure in material file brass"));
}

TEST_F(Materials, ACurrentMaterialIsSetOnce) {
  const std::string add = task("addMaterial", "material='d:/mat/STEEL.mtl' currmat='true'");
  runWith(world, add + add, L"BRACKET");
  EXPECT_EQ("STEEL*", materials(world).substr(materials(world).find("STEEL"), 6));
  EXPECT_EQ(
      L"B0 Add material|d:\\mat\\STEEL.mtl|Material is added to the model|Material is set as current material|"
      L"B1 Add material|d:\\mat\\STEEL.mtl|W:Material is already in this model|Material is already set as current|"
      L"B2 Save model",
      told(world.log()));
}

TEST_F(Materials, AreDeletedByPatternsAndKeptWhereUsed) {
  struct Row {
    const char* part;
    const char* attributes;
    const char* saved;
    const wchar_t* said;
  };
  const Row rows[] = {
      {"BRACKET", "name_0='un*' name_3='UNUSED'", "WOOD*(PTC_MASS_DENSITY=6e-07)", L"Material 'Unused' deleted"},
      {"BRACKET", "name_0='wood'", "Unused", L"Material 'WOOD' deleted"},
      {"BRACKET", "name_0='*' deleteOnlyUnused='true'", "WOOD*(PTC_MASS_DENSITY=6e-07)",
       L"Delete only unused materials|W:Don't delete WOOD because it's used by the model or an instance.|"
       L"Material 'Unused' deleted"},
      {"BOLT", "name_0='*' deleteOnlyUnused='true'", "WOOD* TIN ZINC",
       L"Delete only unused materials|W:Don't delete WOOD because it's used by the model or an instance.|"
       L"W:Don't delete TIN because it's used by the model or an instance.|"
       L"W:Don't delete ZINC because it's used by the model or an instance.|Material 'LEAD' deleted"},
  };
  for (const Row& row : rows) {
    World own;
    fill(own);
    runWith(own, task("deleteMaterial", row.attributes), text::fromUtf8(row.part));
    EXPECT_EQ(row.saved, materials(own, std::string(row.part) + ".prt")) << row.attributes;
    EXPECT_EQ(std::wstring(L"B0 Delete material|") + row.said + L"|B1 Save model", told(own.log())) << row.attributes;
  }
}

TEST_F(Materials, WhatNamedADeletedOneIsEmpty) {
  runWith(world, task("deleteMaterial", "name_0='WOOD' name_1='TIN'"), L"BOLT");
  EXPECT_EQ("ZINC LEAD", materials(world, "BOLT.prt"));
  EXPECT_EQ(L"PTC_MATERIAL_NAME=", world.savedParameters("BOLT.prt"));
  EXPECT_NE(std::string::npos, world.document("BOLT.prt").find("\"PTC_MATERIAL_NAME\": \"\""));
  EXPECT_EQ("ZINC", rowValue(world, "M5X"));
  EXPECT_EQ(
      L"B0 Delete material|Material 'WOOD' deleted|Material 'TIN' deleted|The instance M4 has no material any more|"
      L"B1 Save model",
      told(world.log()));
}

TEST_F(Materials, RowsThatCantBeEmptiedHaveErrorLines) {
  for (const char* operation : {"ProFaminstanceValueGet", "ProFaminstanceValueSet", "ProFaminstanceCreate"}) {
    World own;
    fill(own);
    runWith(own, task("deleteMaterial", "name_0='TIN'"), L"BOLT", operation);
    EXPECT_NE(std::wstring::npos, told(own.log()).find(L"E:")) << operation;
  }
}

TEST_F(Materials, AnotherOneTakesThePlaceInPartAndInstances) {
  const std::string pairs =
      "path='d:/mat' namef_0='WOOD.mtl' namet_0='both.MTL' namef_1='/^(TIN|ZINC)$/' namet_1='brass' "
      "delreplaced='true' instances='true'";
  runWith(world, task("replaceMaterial", pairs) + task("replaceMaterial", pairs), L"BOLT");
  EXPECT_EQ("LEAD both*(FROM=\"mtl\") brass(PTC_MASS_DENSITY=8.5e-06,PTC_HARDNESS=\"90 HB\")",
            materials(world, "BOLT.prt"));
  EXPECT_EQ("brass", rowValue(world, "M4"));
  EXPECT_EQ("brass", rowValue(world, "M5X"));
  EXPECT_EQ(L"PTC_MATERIAL_NAME=both", world.savedParameters("BOLT.prt"));
  EXPECT_EQ(
      L"B0 Replace material|Replace material: WOOD -> both|Set current material to both!|Material WOOD deleted|"
      L"Replace material: TIN -> brass|Replace material: ZINC -> brass|Replace material in instance M4: TIN -> brass|"
      L"Replace material in instance M5X: ZINC -> brass|Material TIN deleted|Material ZINC deleted|"
      L"B1 Replace material|B2 Save model",
      told(world.log()));
  EXPECT_EQ("d:\\none|d:\\mat\\|", folders(world));
}

TEST_F(Materials, AReplacementThatFailsLosesNothing) {
  struct Row {
    const char* attributes;
    const wchar_t* said;
  };
  const Row rows[] = {
      {"path='d:/mat' namef_0='*' namet_0='none' delreplaced='true' instances='true'",
       L"Replace material: WOOD -> none|E:Can't read or find file none|"
       L"Replace material: TIN -> none|E:Can't read or find file none|"
       L"Replace material: ZINC -> none|E:Can't read or find file none|"
       L"Replace material: LEAD -> none|E:Can't read or find file none|"
       L"Replace material in instance M4: TIN -> none|E:Can't read or find file none|"
       L"Replace material in instance M5X: ZINC -> none|E:Can't read or find file none"},
      {"path='d:/mat' namef_0='WOOD' namef_1='' namef_2='TIN' namet_2=''",
       L"E:Nothing takes the place of WOOD: 'namet_0' is missing|"
       L"E:Nothing takes the place of TIN: 'namet_2' is missing"},
      {"path='d:/mat' namef_0='WOOD' namet_0='empty' delreplaced='true'",
       L"Replace material: WOOD -> empty|E:There seems to be a failure in material file empty"},
      {"path='d:/none' autoUpdate='true'", L"E:Can't list folder"},
  };
  for (const Row& row : rows) {
    World own;
    fill(own);
    runWith(own, task("replaceMaterial", row.attributes), L"BOLT");
    EXPECT_EQ("WOOD* TIN ZINC LEAD", materials(own, "BOLT.prt")) << row.attributes;
    EXPECT_EQ(std::wstring(L"B0 Replace material|") + row.said + L"|B1 Save model", told(own.log()));
    EXPECT_EQ("d:\\none|d:\\mat\\|", folders(own)) << row.attributes;
  }
  // An instance that isn't reworked keeps what it is made of.
  runWith(world, task("replaceMaterial", "path='d:/mat' namef_0='TIN' namet_0='brass' delreplaced='true'"), L"BOLT");
  EXPECT_EQ("TIN", rowValue(world, "M4"));
  EXPECT_NE(std::wstring::npos, told(world.log()).find(L"W:Don't delete TIN because it's used"));
}

TEST_F(Materials, AreUpdatedFromTheFilesOfTheirNames) {
  writeBytes(world.models() + "/bracket.prt.1", R"({"format": 1, "material": "STEEL", "materials": [
    {"name": "STEEL", "note": 7, "parameters": [{"name": "GRADE", "type": "integer", "value": 1, "designated": true},
                                                {"name": "OWN", "type": "integer", "value": 1}]},
    {"name": "open", "parameters": []}, {"name": "WOOD", "parameters": []}]})");
  runWith(world, task("replaceMaterial", "path='d:/mat' autoUpdate='true'"), L"BRACKET");
  EXPECT_EQ(0U, materials(world).find("STEEL*(PTC_MASS_DENSITY=7.85e-06kg/mm^3,"));
  EXPECT_NE(std::string::npos, materials(world).find(",GRADE=235,PTC_POISSON_RATIO=0.0) open WOOD"));
  EXPECT_NE(std::string::npos, world.document("BRACKET.prt").find("\"note\": 7"));
  EXPECT_NE(std::string::npos, world.document("BRACKET.prt").find("\"designated\": true"));
  EXPECT_EQ(
      L"B0 Replace material|Replace material: STEEL -> STEEL|Replace material: open -> open|"
      L"E:There seems to be a failure in material file open|B1 Save model",
      told(world.log()));
}

TEST_F(Materials, ArentUpdatedWithoutAFolder) {
  EXPECT_EQ(
      L"B0 Replace material|E:No material is updated: neither 'path' nor pro_material_dir names a folder|"
      L"B1 Replace material|E:No material is updated: neither 'path' nor pro_material_dir names a folder",
      run(task("replaceMaterial", "autoUpdate='true'") + task("replaceMaterial", "path='' autoUpdate='true'"),
          L"BRACKET", creo::ProMdlType::part));
}

TEST_F(Materials, TakeTheRowsOfTheirPart) {
  writeBytes(world.models() + "/values.csv",
             "File Name;Current Material;PTC_MATERIAL_NAME;PTC_MASS_DENSITY;GRADE;\n"
             "other;WOOD;;1;;\nbracket;STEEL;;8e-06;9;\nBRACKET.PRT;;wood;7e-7;;\n"
             "brack*;;none;1;;\nBRACKET;nothing;;1;;\nBRACKET;;WOOD;;3;\n");
  runWith(world, task("editMaterialFromFile", "path='d:/values.csv'"), L"BRACKET");
  EXPECT_EQ(
      "WOOD(PTC_MASS_DENSITY=7e-07) Unused STEEL*(PTC_MASS_DENSITY=8e-06kg/mm^3,PTC_MATERIAL_DESCRIPTION=\"plain "
      "\\\"steel\\\" ! 1.0037\",CERTIFICATE=true,GRADE=9,PTC_POISSON_RATIO=0.0)",
      materials(world));
  const std::wstring log = told(world.log());
  for (const wchar_t* line : {L"Set current material to STEEL!", L"E:The part has no material 'none'",
                              L"E:Can't read or find file nothing", L"E:The material 'WOOD' has no parameter 'GRADE'"})
    EXPECT_NE(std::wstring::npos, log.find(line)) << text::toUtf8(log);
}

TEST_F(Materials, RefuseSkeletonsAndAssemblies) {
  writeBytes(world.models() + "/bone.prt.1", R"({"format": 1, "skeleton": true, "materials": [{"name": "WOOD"}]})");
  world.assembly(L"TOP").uses(L"BONE", creo::ProMdlType::part);
  const std::string all = task("addMaterial", "material='d:/mat/brass'") + task("deleteMaterial", "name_0='*'") +
                          task("replaceMaterial", "path='d:/mat' namef_0='*' namet_0='brass'") +
                          task("addMaterial", "material='d:/mat/brass' forSkel='true'");
  const std::wstring log = run(all + task("saveModel"), L"TOP", creo::ProMdlType::assembly);
  EXPECT_EQ(
      L"B0 Add material|W:Model is an Skeleton, action canceled|B1 Delete material|"
      L"W:Model is an Skeleton, action canceled|B2 Replace material|B3 Add material|"
      L"W:Model is an Skeleton, action canceled|d:\\mat\\brass|Material is added to the model|B4 Save model|"
      L"B0 Add material|W:Only parts have materials|",
      log.substr(0, log.find(L"B1 Delete material|W:Only")));
  EXPECT_EQ("WOOD brass(PTC_MASS_DENSITY=8.5e-06,PTC_HARDNESS=\"90 HB\")", materials(world, "BONE.prt"));
  EXPECT_EQ(creo::ProNotFound, creo::ProConfigoptGet(L"pro_material_dir").error);  // it wasn't set before either
}

TEST_F(Materials, RefuseInstances) {
  world.config("kvd_filter_inst=1\nkvd_filter_curmod=1");
  const std::string all = task("addMaterial", "material='d:/mat/brass'") + task("deleteMaterial", "name_0='*'") +
                          task("replaceMaterial", "path='d:/mat' namef_0='*' namet_0='brass'");
  runWith(world, all + task("editMaterialFromFile", "path='d:/v.csv'"), L"M4");
  EXPECT_EQ("WOOD* TIN ZINC LEAD", materials(world, "BOLT.prt"));
  EXPECT_NE(std::wstring::npos,
            told(world.log()).find(L"Edit material from file|W:Model is a instance, action is canceled"));
}

// Whatever fails: no material is lost that something is made of, and the option has its values back.
TEST_F(Materials, AFailingOperationLeavesTheRestWhole) {
  const char* operations[] = {"ProPartMaterialsGet",     "ProMaterialCurrentGet",  "ProMaterialCurrentSet",
                              "ProMaterialfileRead",     "ProMaterialDelete",      "ProConfigoptArrayGet",
                              "ProConfigoptSet",         "ProFilesList",           "ProFamtableInit",
                              "ProFaminstanceValueGet",  "ProFaminstanceValueSet", "ProFaminstanceCreate",
                              "ProFamtableInstanceVisit"};
  const std::string tasks = task("replaceMaterial",
                                 "path='d:/mat' namef_0='TIN' namet_0='brass' delreplaced='true' instances='true' "
                                 "autoUpdate='true'") +
                            task("deleteMaterial", "name_0='LEAD' deleteOnlyUnused='true'") +
                            task("addMaterial", "material='d:/mat/STEEL.mtl' currmat='true'");
  for (const char* operation : operations) {
    World own;
    fill(own);
    runWith(own, tasks, L"BOLT", operation);
    const std::string saved = materials(own, "BOLT.prt");
    const std::string row = rowValue(own, "M4");
    EXPECT_NE(std::string::npos, saved.find(row)) << operation << " " << saved;
    EXPECT_NE(std::string::npos, saved.find("ZINC")) << operation << " " << saved;
    EXPECT_NE(std::string::npos, saved.find("*")) << operation << " " << saved;
    EXPECT_EQ("d:\\none|d:\\mat\\|", folders(own)) << operation;
    const std::wstring log = told(own.log());
    EXPECT_TRUE(log.find(L"E:") != log.npos || log.find(L"W:") != log.npos) << operation << text::toUtf8(log);
  }
}

}  // namespace
}  // namespace test
