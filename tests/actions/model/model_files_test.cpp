// Models renamed with their documents, copied, backed up, and their common names.
#include <gmock/gmock.h>

#include <filesystem>

#include "actions/action_fixture.h"
#include "actions/last_row.h"
#include "creo/ProMdlCopy.h"
#include "creo/ProUtil.h"
#include "headless/model/models.h"

namespace test {
namespace {

using creo::ProMdlType;
using testing::HasSubstr;
using testing::Not;

constexpr const char* kTop = R"({"format": 1, "components": [{"name": "BRACKET", "type": "prt", "feature": 5},
  {"name": "THIN<BRACKET>", "type": "prt", "feature": 6}, {"name": "BRACKET", "type": "asm", "feature": 7},
  {"name": "OTHER", "type": "prt", "feature": 8}],
  "familyTable": {"items": [{"type": "component", "name": "bracket"}, {"type": "component", "name": "OTHER"}],
    "instances": [{"name": "BARE", "values": {"bracket": "N", "OTHER": "THICK<BRACKET>"}}]}})";
constexpr const char* kSheet = R"({"format": 1, "models": [{"name": "BRACKET", "type": "prt"}],
  "currentModel": "Bracket.prt", "views": [{"id": 1, "name": "FRONT", "sheet": 1, "model": "bracket.prt"}],
  "shownDimensions": [{"model": "BRACKET.prt", "id": 1}]})";
constexpr const char* kBracket = R"({"format": 1, "familyTable": {"items": [],
  "instances": [{"name": "THIN"}, {"name": "THICK"}]}})";

class ModelFiles : public ActionTest {
 protected:
  void SetUp() override { fill(world); }
  static void fill(World& into) {
    const std::string folder = into.models();
    writeBytes(folder + "/bracket.prt.2", R"({"format": 1})");
    writeBytes(folder + "/bracket.prt.3", kBracket);
    writeBytes(folder + "/bracket.asm.1", R"({"format": 1})");
    writeBytes(folder + "/top.asm.1", kTop);
    writeBytes(folder + "/sheet.drw.4", kSheet);
    writeBytes(folder + "/other.prt.1", R"({"format": 1, "commonName": "BRACKET", "familyTable": {"items": [],
        "instances": [{"name": "MEMBER"}]}})");
  }
  // Names and bytes of the files of a folder.
  static std::map<std::string, std::string> state(const std::string& folder) {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
      if (entry.is_regular_file()) files[entry.path().filename()] = readBytes(entry.path());
    return files;
  }
  static std::string names(const std::string& folder) {
    std::string all;
    for (const auto& [name, bytes] : state(folder)) all += (all.empty() ? "" : " ") + name;
    return all;
  }
};

TEST_F(ModelFiles, ARenamedModelTakesItsDocumentsAndItsUsersAlong) {
  EXPECT_EQ(
      L"B0 Rename model|BRACKET.PRT is now WHEEL.PRT|d:\\sheet.drw.5 follows|d:\\top.asm.2 follows|"
      L"B1 Rename model|WHEEL.PRT has the name already",
      run(task("renameModel", "name='wheel'") + task("renameModel", "name='WHEEL'")));
  EXPECT_EQ("bracket.asm.1 other.prt.1 sheet.drw.4 sheet.drw.5 top.asm.1 top.asm.2 wheel.prt.2 wheel.prt.3",
            names(world.models()));
  EXPECT_EQ(kBracket, readBytes(world.models() + "/wheel.prt.3"));
  EXPECT_EQ(kSheet, readBytes(world.models() + "/sheet.drw.4"));
  const std::string sheet = world.document("SHEET.drw"), top = world.document("TOP.asm");
  EXPECT_THAT(sheet, Not(testing::AnyOf(HasSubstr("BRACKET"), HasSubstr("racket"))));
  for (const char* piece : {R"("WHEEL")", R"("WHEEL.prt")"}) EXPECT_THAT(sheet, HasSubstr(piece));
  // The assembly of that name is another model.
  for (const char* piece : {R"("THIN<WHEEL>")", R"("THICK<WHEEL>")", R"("WHEEL": "N")", R"("BRACKET")"})
    EXPECT_THAT(top, HasSubstr(piece));
  EXPECT_THAT(top, Not(HasSubstr("<BRACKET>")));
  const auto assembly = creo::ProMdlRetrieve(L"TOP", ProMdlType::assembly);
  EXPECT_EQ(L"WHEEL", creo::ProMdlDependenciesList(assembly.value).value[0].name);
  EXPECT_TRUE(creo::ProMdlInit(L"WHEEL", ProMdlType::part));
  EXPECT_FALSE(creo::ProMdlInit(L"BRACKET", ProMdlType::part));
}

TEST_F(ModelFiles, WhatCantBeRenamedStaysAsAWhole) {
  const struct {
    const char *attributes, *file, *bytes;
    const wchar_t* expected;
  } cases[] = {
      {"", "", "", L"E:The attribute 'name' is missing"},
      {"name='a:b'", "", "", L"E:A:B can't be a model's name"},
      {"name='a b'", "", "", L"E:A B can't be a model's name"},
      {"name='a(1)'", "", "", L"E:A(1) can't be a model's name"},
      {"name='a,b'", "", "", L"E:A,B can't be a model's name"},
      {"name='-a'", "", "", L"E:can't be a model's name"},  // what is told here leaves out "-A"
      {"name='a\xC2\xA0"
       "b'",
       "", "", L"E:A\u00A0B can't be a model's name"},
      {"name='A2345678901234567890123456789012'", "", "",
       L"E:A2345678901234567890123456789012 can't be a model's name"},
      {"name='other'", "", "", L"E:Another model has the name OTHER"},
      {"name='member'", "", "", L"E:Another model has the name MEMBER"},
      {"name='thin'", "", "", L"E:Another model has the name THIN"},
      {"name='wheel'", "zz.asm.1", R"({"format": 1, "components": [{"name": "Bracket")", L"E:d:\\zz.asm.1:1: "},
      {"name='wheel'", "zz.asm.1", R"({"format": 1, "components": [{"name": "\u0042RACKET")", L"E:d:\\zz.asm.1:1: "},
      {"name='wheel'", "zz.asm.1",
       R"({"format": 1, "readOnly": true, "components": [{"name": "BRACKET", "type": "prt"}]})",
       L"E:d:\\zz.asm.1: can't be written: the model is read-only"},
      {"name='wheel'", "bracket.prt.4", R"({"format": 1, "readOnly": true})",
       L"E:d:\\bracket.prt.4: can't be written: the model is read-only"},
  };
  for (const auto& c : cases) {
    World own;
    fill(own);
    if (*c.file) writeBytes(own.models() + "/" + c.file, c.bytes);
    const auto before = state(own.models());
    own.list("list.xml", task("renameModel", c.attributes));
    own.config("kvd_check_modifyable=0");  // else the run passes a read-only model over
    own.runOn(L"BRACKET", ProMdlType::part, "list.xml");
    EXPECT_THAT(told(own.log()), testing::StartsWith(std::wstring(L"B0 Rename model|") + c.expected));
    EXPECT_EQ(before, state(own.models())) << c.attributes << c.file;
    EXPECT_TRUE(creo::ProMdlInit(L"BRACKET", ProMdlType::part));
  }
}

TEST_F(ModelFiles, ABrokenDocumentThatDoesntNameTheModelIsNoHindrance) {
  writeBytes(world.models() + "/zz.asm.1", R"({"format": 1, "components": [)");
  world.start();
  const auto part = creo::ProMdlRetrieve(L"BRACKET", ProMdlType::part).value;
  creo::ProRenamed renamed;
  EXPECT_EQ(creo::ProNoError, creo::ProMdlnameRename(part, L"WHEEL", renamed));
}

TEST_F(ModelFiles, AnInstanceKeepsItsName) {
  EXPECT_THAT(run("<task type='groupActions' version='3' forPRT='true' forEF='false' reworkMode='1'><subtasks>" +
                  task("renameModel", "name='wheel'") + "</subtasks></task>"),
              HasSubstr(L"W:Model is a instance, action is canceled"));
  EXPECT_EQ(3, world.version("BRACKET.prt"));
}

TEST_F(ModelFiles, ADiskThatFillsInTheMiddlePutsAllBack) {
  world.list("list.xml", task("renameModel", "name='wheel'"));
  world.start();
  world.open(L"BRACKET", ProMdlType::part);
  world.openTool();
  world.choose("list.xml");
  const auto before = state(world.models());
  const auto part = creo::ProMdlInit(L"BRACKET", ProMdlType::part).value;
  creo::ProRenamed renamed;
  world.disk().fillAfter(700);  // the drawing's next version has room, the assembly's hasn't
  EXPECT_EQ(creo::ProGeneralError, creo::ProMdlnameRename(part, L"WHEEL", renamed));
  EXPECT_THAT(renamed.reason, HasSubstr(L"top.asm.2: can't be written: "));
  EXPECT_TRUE(renamed.followed.empty() && renamed.left.empty());
  world.disk().heal();
  EXPECT_EQ(before, state(world.models()));
  // Another program's version: this session would lose it.
  writeBytes(world.models() + "/bracket.prt.4", kBracket);
  world.pressStart();
  EXPECT_EQ(L"B0 Rename model|E:d:\\bracket.prt.4: another program wrote version 4 meanwhile", told(world.log()));
}

TEST_F(ModelFiles, WhatIsUnsavedInMemoryStaysUnsaved) {
  world.start();
  const auto top = world.open(L"TOP", ProMdlType::assembly);
  const auto sheet = creo::ProMdlRetrieve(L"SHEET", ProMdlType::drawing).value;
  creo::ProMdlCommonnameSet(top, L"UNSAVED");
  const auto part = creo::ProMdlInit(L"BRACKET", ProMdlType::part).value;
  std::filesystem::create_directories(world.models() + "/away");
  ASSERT_EQ(creo::ProNoError, creo::ProDirectoryChange(L"d:\\away"));
  const auto lone = creo::ProMdlCopy(top, L"LONE").value;
  ASSERT_EQ(creo::ProNoError, creo::ProDirectoryChange(L"d:\\"));
  creo::ProRenamed renamed;
  ASSERT_EQ(creo::ProNoError, creo::ProMdlnameRename(part, L"WHEEL", renamed));
  EXPECT_EQ(std::vector<std::wstring>{L"LONE.ASM"}, renamed.unsaved);
  EXPECT_EQ(L"WHEEL", creo::ProMdlDependenciesList(lone).value[0].name);
  EXPECT_THAT(world.document("TOP.asm"), Not(HasSubstr("UNSAVED")));
  EXPECT_TRUE(creo::ProMdlModificationVerify(top).value);
  EXPECT_FALSE(creo::ProMdlModificationVerify(sheet).value);
  EXPECT_FALSE(creo::ProMdlModificationVerify(part).value);
  ASSERT_EQ(creo::ProNoError, creo::ProMdlSave(top));
  EXPECT_EQ(3, world.version("TOP.asm"));
  EXPECT_THAT(world.document("TOP.asm"), testing::AllOf(HasSubstr("UNSAVED"), HasSubstr(R"("WHEEL")")));
  ASSERT_EQ(creo::ProNoError, creo::ProMdlSave(part));
  EXPECT_EQ(4, world.version("WHEEL.prt"));
}

TEST_F(ModelFiles, ACopyLiesBesideItsModel) {
  EXPECT_EQ(
      L"B0 Copy model|WHEEL.PRT is written|B1 Copy model|E:Another model has the name WHEEL|"
      L"B2 Copy model|E:Another model has the name MEMBER|B3 Copy model|E:A?B can't be a model's name|"
      L"B4 Copy model|E:The attribute 'name' is missing",
      run(task("copyModel", "name='wheel'") + task("copyModel", "name='WHEEL'") + task("copyModel", "name='member'") +
          task("copyModel", "name='a?b'") + task("copyModel")));
  EXPECT_EQ(1, world.version("WHEEL.prt"));
  EXPECT_FALSE(creo::ProMdlInit(L"WHEEL", ProMdlType::part));
}

TEST_F(ModelFiles, NamesOfCreoPassWithLettersBeyondAscii) {
  EXPECT_EQ(
      L"B0 Copy model|Ä-_345678901234567890123456789Ö.PRT is written|B1 Rename model|BRACKET.PRT is now Öß-1.PRT|"
      L"d:\\sheet.drw.5 follows|d:\\top.asm.2 follows|"
      L"B2 Copy model|E:X[1] can't be a model's name|B3 Copy model|E:can't be a model's name",
      run(task("copyModel", "name='ä-_345678901234567890123456789ö'") + task("renameModel", "name='Öß-1'") +
          task("copyModel", "name='x[1]'") + task("copyModel", "name='-x'")));
}

TEST_F(ModelFiles, ACopyWithoutRoomLeavesNothing) {
  world.list("list.xml", task("copyModel", "name='wheel'"));
  world.start();
  world.open(L"BRACKET", ProMdlType::part);
  world.openTool();
  world.choose("list.xml");
  world.disk().denyWrites(L"d:\\");
  world.pressStart();
  world.disk().heal();
  EXPECT_EQ(L"B0 Copy model|E:WHEEL.PRT can't be written", told(world.log()));
  EXPECT_EQ(0, world.version("WHEEL.prt"));
  EXPECT_FALSE(creo::ProMdlInit(L"WHEEL", ProMdlType::part));
}

TEST_F(ModelFiles, ABackupHasWhatTheModelNeedsOrNothing) {
  std::filesystem::create_directories(world.models() + "/backup");
  std::filesystem::create_directories(world.models() + "/again");
  std::filesystem::create_directories(world.models() + "/small");
  const auto backup = [](const std::string& path) {
    return "<task type='backupAction' version='3' forASM='true' forEF='false' " + path + "/>";
  };
  world.list("list.xml", backup("path='d:/backup'") + backup("path='d:/none'") + backup("path='d:/'") + backup("") +
                             backup("path='again'"));
  world.list("full.xml", backup("path='d:/small'"));
  world.config("kvd_write_history_in_models=0");
  world.runOn(L"TOP", ProMdlType::assembly, "list.xml");
  EXPECT_EQ(
      L"B0 Backup action|Export model to d:\\backup|d:\\backup\\top.asm.1|d:\\backup\\bracket.prt.1|"
      L"d:\\backup\\bracket.asm.2|d:\\backup\\other.prt.1|Exported|"
      L"B1 Backup action|Export model to d:\\none|E:The specified directory (path) is invalid.|"
      L"B2 Backup action|Export model to d:\\|E:The specified directory (path) is invalid.|"
      L"B3 Backup action|E:The attribute 'path' is missing|"
      L"B4 Backup action|Export model to d:\\again|d:\\again\\top.asm.1|d:\\again\\bracket.prt.1|"
      L"d:\\again\\bracket.asm.2|d:\\again\\other.prt.1|Exported",
      lastRow(told(world.log())));
  EXPECT_THAT(readBytes(world.models() + "/backup/bracket.prt.1"), HasSubstr("THIN"));
  world.disk().denyWrites(L"d:\\small\\other.prt.1");
  world.run("full.xml");
  world.disk().heal();
  EXPECT_THAT(told(world.log()),
              HasSubstr(L"|W:TOP.ASM is saved in d:\\small\\ from now on|W:BRACKET.PRT is saved in "));
  EXPECT_THAT(told(world.log()), HasSubstr(L"|E:The system could not write to the specified directory."));
  EXPECT_EQ("bracket.asm.1", names(world.models() + "/small")) << "of the assembly that was worked before alone";
  // A component that isn't there: the copy would be worth nothing.
  writeBytes(world.models() + "/poor.asm.1", R"({"format": 1, "components": [{"name": "GONE", "type": "prt"}]})");
  world.open(L"POOR", ProMdlType::assembly);
  world.run("full.xml");
  EXPECT_THAT(told(world.log()), HasSubstr(L"E:GONE.PRT, which POOR.ASM uses can't be retrieved|E:An error occured"));
  EXPECT_EQ("bracket.asm.1", names(world.models() + "/small")) << "of the assembly that was worked before alone";
}

TEST_F(ModelFiles, TheCommonNameIsSetAndTheOptionPutBack) {
  EXPECT_EQ(
      L"B0 Edit common name|The common name is now 'Angle'|"
      L"B1 Edit common name|E:The attribute 'value' is missing",
      run(task("editCommonName", "value='Angle'") + task("editCommonName")));
  const auto part = creo::ProMdlInit(L"BRACKET", ProMdlType::part).value;
  EXPECT_EQ(L"Angle", creo::ProMdlCommonnameGet(part).value);
  EXPECT_LT(1, world.session().calls("ProConfigoptSet"));
  EXPECT_EQ(creo::ProNotFound, creo::ProConfigoptArrayGet(L"let_proe_rename_pdm_objects").error);
}

}  // namespace
}  // namespace test
