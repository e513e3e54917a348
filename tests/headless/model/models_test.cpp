#include <chrono>
#include <set>
#include <sstream>
#include <thread>

#include "creo/ProDrawing.h"
#include "creo/ProExtdata.h"
#include "creo/ProMdlBackup.h"
#include "creo/ProMdlCopy.h"
#include "creo/ProSolid.h"
#include "creo/ProUtil.h"
#include "creo/ProWindow.h"
#include "headless/model/one_version.h"
#include "headless/model/save.h"
#include "headless/session_fixture.h"
#include "headless/store/compare.h"

namespace headless {
namespace {

using namespace creo;

class ModelsInMemory : public test::HeadlessSession {
 protected:
  static std::string dependencies(ProMdl model) {
    std::string out;
    for (const ProDependency& dependency : ProMdlDependenciesList(model).value)
      out += text::toUtf8(L" " + dependency.name + L"." + dependency.typeText);
    return out;
  }
};

constexpr const char* kMass = R"("parameters": [{"name": "MASS", "type": "double", "value": 2.5}])";

TEST_F(ModelsInMemory, TheHighestVersionIsCurrentAndASaveWritesTheNextOne) {
  model("bracket.prt.9", kMass);
  write("models/bracket.prt.10",
        "{\n  \"format\": 1,\n  \"parameters\": [\n    {\n      \"name\": \"MASS\",\n      "
        "\"type\": \"double\",\n      \"value\": 3.5,\n      \"made\": [1,2]\n    }\n  ]\n}\n");
  const ProMdl part = retrieve(L"Bracket");
  EXPECT_EQ(L"BRACKET", ProMdlNameGet(part).value);
  EXPECT_EQ("MASS=3.5", parameters(part));
  EXPECT_FALSE(ProMdlModificationVerify(part).value);
  EXPECT_EQ(ProNoError, set(part, L"mass", real(3.5)));
  EXPECT_FALSE(ProMdlModificationVerify(part).value);
  EXPECT_EQ(ProNoError, set(part, L"mass", real(4)));
  EXPECT_TRUE(ProMdlModificationVerify(part).value);
  EXPECT_EQ(ProNoError, ProMdlSave(part));
  EXPECT_FALSE(ProMdlModificationVerify(part).value);
  EXPECT_EQ("bracket.prt.10 bracket.prt.11 bracket.prt.9", files());
  std::string expected = read("models/bracket.prt.10");
  expected.replace(expected.find("3.5"), 3, "4.0");
  EXPECT_EQ(expected, read("models/bracket.prt.11"));
  const ProMdlData data = ProMdlDataGet(part).value;
  EXPECT_EQ(L"PRT d \\models\\ 11",
            data.type + L" " + data.device + L" " + data.path + L" " + std::to_wstring(data.version));
  ASSERT_EQ(1u, session().savedDocuments().size());
  EXPECT_EQ(L"d:\\models\\bracket.prt.11", session().savedDocuments()[0].path);
}

TEST_F(ModelsInMemory, AReadOnlyModelIsNotSavedNorAreItsInstances) {
  model("norm.prt.3", std::string(kMass) + R"(, "readOnly": true,
      "familyTable": {"items": [], "instances": [{"name": "n1", "values": {}}]})");
  double mass = 4;
  for (const wchar_t* name : {L"NORM", L"N1"}) {
    const ProMdl part = retrieve(name);
    ASSERT_EQ(ProNoError, set(part, L"mass", real(++mass)));
    EXPECT_EQ(ProGeneralError, ProMdlSave(part)) << name;
    EXPECT_TRUE(ProMdlModificationVerify(part).value) << name;
    EXPECT_EQ(L"d:\\models\\norm.prt.4: can't be written: the model is read-only", session().messages().back());
  }
  EXPECT_EQ("norm.prt.3", files());
  EXPECT_TRUE(session().savedDocuments().empty());
}

TEST_F(ModelsInMemory, ADocumentThatCantBeReadNamesFileLineAndReason) {
  write("models/cut.prt.3", "{\n\"format\": 1,\n\"parameters\": [");
  write("models/kind.prt.1", "{\n\"format\": 1,\n\"readOnly\": \"no\"}");
  session();
  EXPECT_EQ(ProGeneralError, ProMdlRetrieve(L"CUT", ProMdlType::part).error);
  EXPECT_EQ(ProGeneralError, ProMdlRetrieve(L"KIND", ProMdlType::part).error);
  EXPECT_EQ(ProNotFound, ProMdlRetrieve(L"OTHER", ProMdlType::part).error);
  EXPECT_EQ(ProNotFound, ProMdlRetrieve(L"CUT", ProMdlType::assembly).error);
  EXPECT_EQ(ProBadInputs, ProMdlRetrieve(L"CUT", ProMdlType::unused).error);
  ASSERT_EQ(2u, session().messages().size()) << messages();
  EXPECT_TRUE(session().messages()[0].starts_with(L"d:\\models\\cut.prt.3:3: syntax error")) << messages();
  EXPECT_EQ(L"d:\\models\\kind.prt.1:3: 'readOnly' must be true or false", session().messages()[1]);
}

TEST_F(ModelsInMemory, ARetrievedModelBringsWhatItUses) {
  model("top.asm.1", R"("components": [{"name": "sub", "type": "asm"}, {"name": "pin", "type": "prt"},
      {"name": "gone", "type": "prt"}, {"name": "PIN", "type": "prt"}, {"name": "top", "type": "asm"}])");
  model("sub.asm.1", R"("components": [{"name": "top", "type": "asm"}, {"name": "gone", "type": "prt"}])");
  model("pin.prt.1");
  model("top.drw.1", R"("models": [{"name": "top", "type": "asm"}, {"name": "lost", "type": "prt"}])");
  const ProMdl drawing = retrieve(L"TOP", ProMdlType::drawing);
  for (const wchar_t* name : {L"TOP", L"SUB"}) EXPECT_TRUE(ProMdlInit(name, ProMdlType::assembly));
  const ProMdl pin = ProMdlInit(L"PIN", ProMdlType::part).value;
  EXPECT_EQ("TOP.DRW uses LOST.PRT, which can't be retrieved\nTOP.ASM uses GONE.PRT, which can't be retrieved\n",
            messages());
  EXPECT_EQ(" SUB.ASM PIN.PRT GONE.PRT TOP.ASM", dependencies(ProMdlInit(L"TOP", ProMdlType::assembly).value));
  const auto solids = ProDrawingSolidsCollect(drawing);
  ASSERT_EQ(1u, solids.value.size());
  EXPECT_EQ(L"TOP", ProMdlNameGet(solids.value[0]).value);
  EXPECT_EQ(ProBadInputs, ProDrawingSolidsCollect(pin).error);
  EXPECT_EQ(ProGeneralError, ProMdlErase(pin)) << "two assemblies use it";
}

TEST_F(ModelsInMemory, HandlesOfErasedModelsGiveBadInputs) {
  model("a.prt.1", kMass);
  const ProMdl old = retrieve(L"A");
  const ProModelitem owner = item(old);
  const ProParameter parameter = ProParameterInit(owner, L"MASS").value;
  erase(old);
  const ProMdl fresh = retrieve(L"A");
  EXPECT_NE(old, fresh);
  for (const ProMdl gone : {old, ProMdl{}, ProMdl{~0ull}, ProMdl{7}}) {
    EXPECT_EQ(ProBadInputs, ProMdlNameGet(gone).error);
    EXPECT_EQ(ProBadInputs, ProMdlSave(gone));
    EXPECT_EQ(ProBadInputs, ProMdlErase(gone));
    EXPECT_EQ(ProBadInputs, ProExtdataClassRegister(gone, L"c").error);
  }
  EXPECT_EQ(ProBadInputs, ProParameterValueGet(parameter).error);
  EXPECT_EQ(ProBadInputs, ProParameterCreate(owner, L"B", real(1)).error);
  EXPECT_EQ(ProNotFound, ProMdlCurrentGet().error);
}

TEST_F(ModelsInMemory, AFailedSaveLeavesEverythingAsItWas) {
  model("a.prt.4", kMass);
  const ProMdl part = retrieve(L"A");
  set(part, L"MASS", real(7));
  const auto disk = std::make_shared<os::FaultyFiles>(*os::surroundings().files);
  const auto real = os::surroundings().files;
  os::surroundings().files = disk;
  disk->fillAfter(10);
  EXPECT_EQ(ProGeneralError, ProMdlSave(part));
  disk->heal();
  disk->denyWrites(L"d:\\models\\");
  EXPECT_EQ(ProGeneralError, ProMdlSave(part));
  EXPECT_EQ(
      "d:\\models\\a.prt.5: can't be written: No space left on device\n"
      "d:\\models\\a.prt.5: can't be written: Permission denied\n",
      messages());
  EXPECT_TRUE(ProMdlModificationVerify(part).value);
  EXPECT_EQ(4, ProMdlDataGet(part).value.version);
  EXPECT_EQ("a.prt.4", files());
  EXPECT_TRUE(session().savedDocuments().empty());
  disk->heal();
  EXPECT_EQ(ProNoError, ProMdlSave(part));
  EXPECT_EQ("a.prt.4 a.prt.5", files());
  os::surroundings().files = real;
}

TEST_F(ModelsInMemory, SavingSavesWhatWasChangedBelow) {
  const struct {
    const wchar_t* objects;  // of the option
    const char* changed;     // parts
    const char* saved;
  } cases[] = {
      {L"", "", "SHEET.DRW"},
      {L"", "PIN", "PIN.PRT SHEET.DRW"},
      {L"changed_and_specified", "LONG", "BOLT.PRT SHEET.DRW"},  // an instance, whose document is its generic's
      {L"", "PIN SUB LONG", "BOLT.PRT PIN.PRT SHEET.DRW SUB.ASM"},
      {L"changed", "PIN", "PIN.PRT"},
      {L"Changed_And_Updated", "", ""},
      {L"all", "", "BOLT.PRT PIN.PRT SHEET.DRW SUB.ASM TOP.ASM"},
      {L"", "STD", "SHEET.DRW"},      // read-only
      {L"", "HISTORY", "SHEET.DRW"},  // of PIN: who works it keeps it
  };
  for (const auto& c : cases) {
    endSession();
    std::filesystem::remove_all(folder_ + "/models");
    std::filesystem::create_directories(folder_ + "/models");
    model("pin.prt.1", kMass);
    model("std.prt.1", std::string(kMass) + R"(, "readOnly": true)");
    model("bolt.prt.1", std::string(kMass) + R"(, "familyTable": {"instances": [{"name": "LONG"}]})");
    model("sub.asm.1", std::string(kMass) + R"(, "components": [{"name": "PIN", "type": "prt"},
        {"name": "LONG<BOLT>", "type": "prt"}, {"name": "STD", "type": "prt"}, {"name": "TOP", "type": "asm"}])");
    model("top.asm.1", R"("components": [{"name": "SUB", "type": "asm"}])");
    model("sheet.drw.1", R"("models": [{"name": "TOP", "type": "asm"}], "sheets": [{"size": "A4"}])");
    const ProMdl drawing = retrieve(L"SHEET", ProMdlType::drawing);
    if (*c.objects != 0) ASSERT_EQ(ProNoError, ProConfigoptSet(L"save_objects", c.objects));
    std::istringstream names(c.changed);
    for (std::string name; names >> name;)
      if (name == "HISTORY")
        session().models().find(retrieve(L"PIN"))->document->touchData(nullptr);
      else
        set(retrieve(text::fromUtf8(name), name == "SUB" ? ProMdlType::assembly : ProMdlType::part), L"MASS", real(9));
    EXPECT_EQ(ProNoError, ProMdlSave(drawing)) << c.changed;
    std::set<std::string> saved;
    for (const SavedDocument& entry : session().savedDocuments())
      saved.insert(text::toUtf8(entry.name + L"." + typeExtension(entry.type)));
    std::string all;
    for (const std::string& item : saved) all += (all.empty() ? "" : " ") + item;
    EXPECT_EQ(c.saved, all) << c.changed;
    EXPECT_EQ(saved.size(), session().savedDocuments().size()) << "each once";
    const bool isReadOnly = std::string(c.changed) == "STD";
    EXPECT_EQ(isReadOnly ? "STD.PRT isn't saved with SHEET.DRW: it is read-only\n" : "", messages()) << c.changed;
  }
}

TEST_F(ModelsInMemory, WhatCantBeWrittenBelowFailsTheSaveAndKeepsTheRest) {
  model("pin.prt.1", kMass);
  model("nut.prt.1", kMass);
  model("top.asm.1", R"("components": [{"name": "PIN", "type": "prt"}, {"name": "NUT", "type": "prt"}])");
  const ProMdl top = retrieve(L"TOP", ProMdlType::assembly);
  const ProMdl pin = retrieve(L"PIN");
  set(pin, L"MASS", real(9));
  set(retrieve(L"NUT"), L"MASS", real(9));
  // The number that a version would have is taken by a folder, more often than a save tries.
  for (int version = 2; version < 110; ++version)
    std::filesystem::create_directory(folder_ + "/models/pin.prt." + std::to_string(version));
  EXPECT_EQ(ProGeneralError, ProMdlSave(top));
  EXPECT_TRUE(ProMdlModificationVerify(pin).value) << "it can be saved later";
  EXPECT_TRUE(std::filesystem::is_regular_file(folder_ + "/models/nut.prt.2"));
  EXPECT_TRUE(std::filesystem::is_regular_file(folder_ + "/models/top.asm.2"));
}

TEST_F(ModelsInMemory, SavingOnceMoreReplacesOnlyTheSessionsOwnVersion) {
  model("a.prt.1", kMass);
  const ProMdl part = retrieve(L"A");
  EXPECT_EQ(ProNotFound, headless::saveReplacing(session().models(), part));
  ProMdlSave(part);
  set(part, L"MASS", real(9));
  EXPECT_EQ(ProNoError, headless::saveReplacing(session().models(), part));
  EXPECT_EQ("a.prt.1 a.prt.2", files());
  EXPECT_NE(std::string::npos, read("models/a.prt.2").find("9.0"));
  EXPECT_EQ(1u, session().savedDocuments().size());
  EXPECT_EQ(read("models/a.prt.2"), session().models().documentText(part).value);
}

TEST_F(ModelsInMemory, OneVersionIsLeftUnlessItWasHandedOut) {
  model("a.prt.1", kMass);
  const headless::OneVersion oneVersion;
  ProMdl part = retrieve(L"A");
  const auto save = [&](double mass) {
    set(part, L"MASS", real(mass));
    EXPECT_EQ(ProNoError, ProMdlSave(part));
    return files();
  };
  EXPECT_EQ("a.prt.1 a.prt.2", save(9));
  EXPECT_EQ("a.prt.1 a.prt.2", save(8));
  erase(part);
  part = retrieve(L"A");
  EXPECT_EQ("a.prt.1 a.prt.2", save(7)) << "it was out of memory";
  EXPECT_NE(std::string::npos, read("models/a.prt.2").find("7.0"));
  ASSERT_TRUE(ProMdlCopy(part, L"B"));
  EXPECT_EQ("a.prt.1 a.prt.2 a.prt.3 b.prt.1", save(6));
  std::filesystem::create_directories(folder_ + "/models/backup");
  ASSERT_TRUE(ProMdlnameBackup(part, L"d:\\models\\backup"));
  set(part, L"MASS", real(5));
  EXPECT_EQ(ProNotFound, headless::saveReplacing(session().models(), part));
  EXPECT_EQ(ProNoError, ProMdlSave(part));
  EXPECT_EQ("a.prt.1 a.prt.2 a.prt.3 b.prt.1 backup", files());
  EXPECT_NE(std::string::npos, read("models/backup/a.prt.2").find("5.0"));
  EXPECT_EQ(6u, session().savedDocuments().size());
}

TEST_F(ModelsInMemory, ABackupMovesLaterSaves) {
  for (const char* folder : {"backup", "again"}) std::filesystem::create_directories(folder_ + "/models/" + folder);
  model("a.prt.3", kMass);
  model("backup/a.prt.6");
  const ProMdl part = retrieve(L"A");
  EXPECT_EQ(L"d:\\models\\", ProMdlDirectoryPathGet(part).value);
  EXPECT_EQ(ProNotFound, ProMdlnameBackup(part, L"d:\\none").error);
  set(part, L"MASS", real(4));
  EXPECT_EQ(L"d:\\models\\backup\\a.prt.7", ProMdlnameBackup(part, L"d:\\models\\backup").value);
  EXPECT_EQ(L"d:\\models\\backup\\", ProMdlDirectoryPathGet(part).value);
  EXPECT_EQ(L"d:\\models\\a.prt.3", ProMdlOriginGet(part).value) << "the file that was read";
  EXPECT_EQ(ProNoError, ProMdlSave(part));
  EXPECT_EQ(ProNoError, ProMdlSave(part));
  EXPECT_NE(std::string::npos, read("models/backup/a.prt.8").find("4.0"));
  EXPECT_EQ("a.prt.3 again backup", files());
  const SavedDocument& last = session().savedDocuments().back();
  EXPECT_EQ(L"d:\\models\\backup\\a.prt.9 d:\\models\\a.prt.3 3",
            last.path + L" " + last.readPath + L" " + std::to_wstring(last.readVersion));
  EXPECT_EQ("", messages()) << "the files that lay there are nobody's changes";
  EXPECT_EQ(L"d:\\models\\again\\a.prt.1", ProMdlnameBackup(part, L"d:\\models\\again").value);
  ASSERT_EQ(ProNoError, ProDirectoryChange(L"again"));
  EXPECT_EQ(L"d:\\models\\again\\a.prt.2", ProMdlnameBackup(part, L"").value) << "the working folder";
  const auto disk = std::make_shared<os::FaultyFiles>(*os::surroundings().files);
  const auto real = os::surroundings().files;
  os::surroundings().files = disk;
  disk->denyWrites(L"d:\\models\\backup\\");
  EXPECT_EQ(ProCantWrite, ProMdlnameBackup(part, L"d:\\models\\backup").error);
  os::surroundings().files = real;
  EXPECT_EQ(L"d:\\models\\again\\", ProMdlDirectoryPathGet(part).value);
}

TEST_F(ModelsInMemory, ABackedUpNewModelComesFromNowhere) {
  std::filesystem::create_directories(folder_ + "/models/backup");
  const ProMdl part = session().create(L"NEW", ProMdlType::part).value;
  EXPECT_EQ(L"d:\\models\\backup\\new.prt.1", ProMdlnameBackup(part, L"d:\\models\\backup").value);
  EXPECT_EQ(L"", ProMdlOriginGet(part).value) << "so that a further backup of what uses it goes there too";
  EXPECT_EQ(L"d:\\models\\backup\\", ProMdlDirectoryPathGet(part).value);
  EXPECT_EQ(ProNoError, ProMdlSave(part));
  EXPECT_EQ(L"d:\\models\\backup\\new.prt.2", session().savedDocuments().back().path);
  EXPECT_EQ("backup", files());
  ProRenamed renamed;
  EXPECT_EQ(ProNoError, ProMdlnameRename(part, L"NEWER", renamed));
  EXPECT_EQ(ProNoError, ProMdlSave(part));
  for (const char* file : {"new.prt.1", "new.prt.2", "newer.prt.1"})
    EXPECT_NE("", read(std::string("models/backup/") + file)) << file;
}

TEST_F(ModelsInMemory, ACopyHasItsFileAtOnce) {
  model("a.prt.1", kMass);
  model("taken.prt.4");
  const ProMdl part = retrieve(L"A");
  set(part, L"MASS", real(7));
  const auto copy = ProMdlCopy(part, L"taken");
  EXPECT_EQ(5, ProMdlDataGet(copy.value).value.version);
  EXPECT_FALSE(ProMdlModificationVerify(copy.value).value);
  EXPECT_TRUE(ProMdlModificationVerify(part).value) << "its own file stays as it was";
  EXPECT_EQ("a.prt.1 taken.prt.4 taken.prt.5", files());
  const std::wstring tooLong(32, L'N');
  EXPECT_EQ(ProBadInputs, ProMdlCopy(part, tooLong).error);
  EXPECT_EQ(ProBadInputs, ProMdlRename(part, tooLong));
  EXPECT_EQ(ProNoError, ProMdlRename(part, tooLong.substr(1)));
  const auto disk = std::make_shared<os::FaultyFiles>(*os::surroundings().files);
  const auto real = os::surroundings().files;
  os::surroundings().files = disk;
  disk->denyWrites(L"d:\\models\\");
  EXPECT_EQ(ProGeneralError, ProMdlCopy(part, L"NONE").error);
  os::surroundings().files = real;
  EXPECT_FALSE(ProMdlInit(L"NONE", ProMdlType::part));
}

TEST_F(ModelsInMemory, FoldersOfOptionsAreSearchedToo) {
  for (const char* folder : {"lib", "frames"}) std::filesystem::create_directories(folder_ + "/" + folder);
  model("top.asm.1", R"("components": [{"name": "BOLT", "type": "prt"}, {"name": "M4", "type": "prt"}])");
  model("own.prt.2");
  write("lib/own.prt.9", "{\"format\": 1}");
  write("lib/bolt.prt.1", "{\"format\": 1}");
  write("lib/nut.prt.1", R"({"format": 1, "familyTable": {"items": [], "instances": [{"name": "M4"}]}})");
  write("frames/a4.frm.1", "{\"format\": 1}");
  write("frames/bolt.prt.5", "{\"format\": 1}");
  session();
  ASSERT_EQ(ProNoError, ProConfigoptSet(L"search_path", L"d:\\nowhere"));
  ASSERT_EQ(ProNoError, ProConfigoptSet(L"search_path", L"..\\lib"));
  ASSERT_EQ(ProNoError, ProConfigoptSet(L"pro_format_dir", L"d:\\frames"));
  retrieve(L"TOP", ProMdlType::assembly);
  EXPECT_EQ("", messages());
  EXPECT_EQ(1, ProMdlDataGet(ProMdlInit(L"BOLT", ProMdlType::part).value).value.version) << "frames have no parts";
  EXPECT_TRUE(ProMdlInit(L"M4", ProMdlType::part)) << "an instance of a generic there";
  EXPECT_EQ(2, ProMdlDataGet(retrieve(L"OWN")).value.version) << "the folder of models comes first";
  EXPECT_TRUE(ProMdlRetrieve(L"A4", ProMdlType::format));
  EXPECT_TRUE(ProMdlnameIsTaken(L"nut", ProMdlType::part).value);
}

TEST_F(ModelsInMemory, WhatUsesNothingIsToldByACode) {
  model("a.prt.1");
  model("layouts.prt.1", R"("layouts": [{"name": "PLAN"}])");
  EXPECT_EQ(ProNotFound, ProMdlDependenciesList(retrieve(L"A")).error);
  EXPECT_EQ(ProNotFound, ProMdlDependenciesDataList(retrieve(L"A")).error);
  EXPECT_EQ(1u, ProMdlDependenciesList(retrieve(L"LAYOUTS")).value.size());
}

TEST_F(ModelsInMemory, WhatAnotherProgramWroteMeanwhileIsNeverReplaced) {
  model("a.prt.1", kMass);
  model("b.prt.1", kMass);
  const ProMdl part = retrieve(L"A");
  const auto time = [this] { return std::filesystem::last_write_time(folder_ + "/models"); };
  const auto foreign = [&](const char* file, bool unseen) {
    const auto before = time();
    model(file, R"("description": "foreign")");
    // A write in the same moment as one of the session's own leaves the folder the time that the session knows.
    if (unseen) std::filesystem::last_write_time(folder_ + "/models", before);
  };
  std::this_thread::sleep_for(std::chrono::milliseconds(50));  // the folder's time has settled
  retrieve(L"B");
  foreign("a.prt.4", false);
  EXPECT_EQ(ProNoError, ProMdlSave(part));
  EXPECT_EQ("d:\\models\\a.prt.5: another program wrote version 4 meanwhile; its changes aren't in this one\n",
            messages());
  std::this_thread::sleep_for(std::chrono::milliseconds(50));
  retrieve(L"A");
  ASSERT_EQ(ProNotFound, ProMdlRetrieve(L"C", ProMdlType::part).error);
  foreign("a.prt.6", true);
  EXPECT_EQ(ProNoError, ProMdlSave(part));
  foreign("a.prt.8", false);
  EXPECT_EQ(ProNoError, headless::saveReplacing(session().models(), part));
  EXPECT_EQ(9, ProMdlDataGet(part).value.version);
  EXPECT_EQ("a.prt.1 a.prt.4 a.prt.5 a.prt.6 a.prt.7 a.prt.8 a.prt.9 b.prt.1", files());
  for (const char* file : {"models/a.prt.4", "models/a.prt.6", "models/a.prt.8"})
    EXPECT_NE(std::string::npos, read(file).find("foreign")) << file;
  std::filesystem::create_directory(folder_ + "/models/a.prt.10");
  EXPECT_EQ(ProNoError, ProMdlSave(part));
  EXPECT_EQ(11, ProMdlDataGet(part).value.version) << "a folder has the number";
}

TEST_F(ModelsInMemory, AModelIsReadInTheVersionThatAnotherProgramWroteMeanwhile) {
  model("a.prt.1", kMass);
  model("b.prt.1", kMass);
  retrieve(L"A");
  std::this_thread::sleep_for(std::chrono::milliseconds(50));
  ASSERT_EQ(ProNotFound, ProMdlRetrieve(L"C", ProMdlType::part).error);
  model("b.prt.2", R"("parameters": [{"name": "MASS", "type": "double", "value": 7}])");
  EXPECT_EQ("MASS=7", parameters(retrieve(L"B")));
}

TEST_F(ModelsInMemory, ADryRunGoesOnAsIfItHadWritten) {
  model("a.prt.1", kMass);
  options.withholdSaves = true;
  ProMdl part = retrieve(L"A");
  set(part, L"MASS", real(9));
  EXPECT_EQ(ProNoError, ProMdlSave(part));
  erase(part);
  part = retrieve(L"A");
  EXPECT_EQ("MASS=9", parameters(part));
  EXPECT_EQ(2, ProMdlDataGet(part).value.version);
  EXPECT_EQ("a.prt.1", files());
  EXPECT_EQ(1u, session().savedDocuments().size());
}

TEST_F(ModelsInMemory, TheWorkingFolderIsSearchedFirst) {
  std::filesystem::create_directories(folder_ + "/models/other");
  model("a.prt.1", kMass);
  model("home.prt.1");
  model("other/a.prt.5");
  session();
  EXPECT_EQ(ProNotFound, ProDirectoryChange(L"d:\\nowhere"));
  EXPECT_EQ(ProNoError, ProDirectoryChange(L"other"));
  EXPECT_EQ(L"d:\\models\\other\\", ProDirectoryCurrentGet().value);
  EXPECT_EQ(5, ProMdlDataGet(retrieve(L"A")).value.version);
  retrieve(L"HOME");
  model("other/late.prt.1");
  retrieve(L"LATE");
}

TEST_F(ModelsInMemory, ExternalDataIsKeptWithTheModel) {
  model("a.prt.1");
  ProMdl part = retrieve(L"A");
  EXPECT_EQ(ProNoError, ProExtdataInit(part));
  const ProExtdataClass cls = ProExtdataClassRegister(part, L"kvpslot").value;
  EXPECT_EQ(ProBadInputs, ProExtdataClassRegister(part, L"kvpslot").error);
  EXPECT_FALSE(ProMdlModificationVerify(part).value) << "a class without slots says nothing";
  EXPECT_EQ(ProNotFound, ProExtdataSlotWrite(cls, L"N", {}, 1));
  EXPECT_EQ(ProNoError, ProExtdataSlotCreate(cls, L"N"));
  EXPECT_EQ(ProBadInputs, ProExtdataSlotCreate(cls, L"N"));
  EXPECT_EQ(ProNotFound, ProExtdataSlotRead(cls, L"N").error);
  EXPECT_EQ(ProNotFound, ProExtdataSlotCreate({L"other", part}, L"N"));
  EXPECT_EQ(ProGeneralError, ProExtdataSlotCreate(cls, L"1st"));
  EXPECT_EQ(ProNoError, ProExtdataSlotCreate(cls, std::wstring(23, L'S')));
  EXPECT_EQ(ProGeneralError, ProExtdataSlotCreate(cls, std::wstring(24, L'S'))) << "30 characters with the class";
  EXPECT_EQ(ProGeneralError, ProExtdataClassRegister(part, std::wstring(30, L'C')).error);
  for (int i = 0; i < 40; ++i) {
    const std::wstring slot = L"T" + std::to_wstring(i);
    EXPECT_EQ(ProNoError, ProExtdataSlotCreate(cls, slot));
    EXPECT_EQ(ProNoError, ProExtdataSlotWrite(cls, slot, {ProExtdataType::text, 0, L"wörter" + slot}, 1));
  }
  ProExtdataSlotWrite(cls, L"N", {ProExtdataType::integer, 40, {}}, 1);
  ProMdlSave(part);
  erase(part);
  const ProExtdataClass again{L"kvpslot", retrieve(L"A")};
  EXPECT_EQ(40, ProExtdataSlotRead(again, L"N").value.integer);
  EXPECT_EQ(L"wörterT39", ProExtdataSlotRead(again, L"T39").value.text) << "no size counts for a text";
  EXPECT_EQ(ProNotFound, ProExtdataSlotRead(again, L"T40").error);
}

TEST_F(ModelsInMemory, SmallQuestions) {
  model("a.prt.1", R"("readOnly": true, "skeleton": true, "dimensions": [{"id": 3}, {"id": 4, "symbol": "LEN"},
      {"id": 4, "reference": true}])");
  const ProMdl part = retrieve(L"A");
  EXPECT_FALSE(ProMdlIsModifiable(part, true).value);
  EXPECT_TRUE(ProMdlIsSkeleton(part).value);
  for (const bool reference : {false, true}) {
    std::wstring symbols;
    ProSolidDimensionVisit(part, reference, [&](const ProDimension& dimension) {
      symbols += L" " + ProDimensionSymbolGet(dimension).value;
      return ProNoError;
    });
    EXPECT_EQ(reference ? L" rd4" : L" d3 LEN", symbols);
  }
}

// Growth in the number of models must be in step: counted in listings and reads of the disk.
class CountingFiles : public os::FilesWrapper {
 public:
  using FilesWrapper::FilesWrapper;
  os::Result<std::string> read(std::wstring_view path) override {
    ++reads;
    return under_.read(path);
  }
  os::Result<std::vector<os::Entry>> list(std::wstring_view folder) override {
    ++lists;
    return under_.list(folder);
  }
  int reads = 0, lists = 0;
};

TEST_F(ModelsInMemory, ABigAssemblyIsReadOnceAndItsFolderListedOnce) {
  std::string components;
  for (int i = 0; i < 100; ++i) {
    const std::string name = "p" + std::to_string(i);
    model(name + ".prt.1", kMass);
    components += (i ? "," : "") + ("{\"name\": \"" + name + "\", \"type\": \"prt\"}");
  }
  model("big.asm.1", "\"components\": [" + components + "]");
  std::this_thread::sleep_for(std::chrono::milliseconds(50));  // the folder's time has settled
  const auto real = os::surroundings().files;
  const auto files = std::make_shared<CountingFiles>(*real);
  os::surroundings().files = files;
  const ProMdl big = retrieve(L"BIG", ProMdlType::assembly);
  EXPECT_EQ(101, files->reads);
  for (const ProDependency& dependency : ProMdlDependenciesList(big).value) {
    const ProMdl part = ProMdlRetrieve(dependency.name, dependency.type).value;
    set(part, L"MASS", HeadlessSession::real(1));
    ProMdlSave(part);
    EXPECT_EQ(ProNotFound, ProMdlRetrieve(dependency.name, ProMdlType::drawing).error);
  }
  EXPECT_EQ(101, files->reads);
  EXPECT_EQ(1, files->lists);
  os::surroundings().files = real;
}

}  // namespace
}  // namespace headless
