// Documents that are out of memory while their models stay: nobody sees a difference, and what no file says stays.
#include "headless/model/away.h"

#include "creo/ProExtdata.h"
#include "creo/ProLayer.h"
#include "creo/ProMdlCopy.h"
#include "creo/ProSession.h"
#include "headless/model/flat_memory.h"
#include "headless/session_fixture.h"
#include "support/world.h"

namespace headless {
namespace {

using namespace creo;

class AwayDocuments : public test::HeadlessSession {
 protected:
  // All that may go.
  void putAllAway() {
    putAway(session().models(), [](ProMdl) { return false; });
  }
  // "PLATE ROD": models whose documents are away, in the order of memory.
  std::string away() {
    std::string names;
    for (const ModelInMemory& listed : session().models().list())
      if (session().models().look(listed.handle)->document->isAway())
        names += (names.empty() ? "" : " ") + text::toUtf8(listed.name);
    return names;
  }
  static std::string dependencies(ProMdl model) {
    std::string out;
    for (const ProDependency& dependency : ProMdlDependenciesList(model).value)
      out += (out.empty() ? "" : " ") + text::toUtf8(dependency.name);
    return out;
  }

 private:
  FlatMemory flat_{0};
};

constexpr const char* kMass = R"("parameters": [{"name": "MASS", "type": "double", "value": 2.5}])";
constexpr const char* kUnit = R"("components": [{"name": "ROD", "type": "prt"}, {"name": "I1<NORM>", "type": "prt"}])";
constexpr const char* kNorm = R"("familyTable": {"items": [], "instances": [{"name": "I1", "values": {}}]})";

TEST_F(AwayDocuments, WhoListsCountsAndHoldsModelsSeesNoDifference) {
  model("rod.prt.1", kMass);
  model("norm.prt.1", kNorm);
  model("unit.asm.1", kUnit);
  const ProMdl unit = retrieve(L"UNIT", ProMdlType::assembly), rod = retrieve(L"ROD");
  const std::size_t before = ProSessionMdlList(ProMdlType::part).value.size();
  putAllAway();
  EXPECT_EQ("UNIT ROD", away()) << "an instance is made of its generic's document";
  EXPECT_EQ(before, ProSessionMdlList(ProMdlType::part).value.size());
  EXPECT_EQ(rod, ProMdlInit(L"rod", ProMdlType::part).value);
  EXPECT_EQ(rod, retrieve(L"ROD"));
  putAllAway();
  EXPECT_EQ(ProGeneralError, ProMdlErase(rod)) << "the assembly uses it";
  EXPECT_EQ("ROD.PRT isn't erased: another model in memory uses it\n", messages());
  putAllAway();
  EXPECT_EQ("MASS=2.5", parameters(rod));
  EXPECT_EQ("ROD I1", dependencies(unit));
  EXPECT_EQ("", away());
  // A change stays, and what is saved may go again.
  EXPECT_EQ(ProNoError, set(rod, L"mass", real(4)));
  putAllAway();
  EXPECT_EQ("UNIT", away());
  EXPECT_EQ(ProNoError, ProMdlSave(rod));
  putAllAway();
  EXPECT_EQ("UNIT ROD", away());
  EXPECT_EQ("MASS=4", parameters(rod));
  EXPECT_EQ(2, ProMdlDataGet(rod).value.version);
  putAllAway();
  EXPECT_EQ(ProNoError, ProMdlSave(unit)) << "with what it uses: nothing of that has changed";
  EXPECT_EQ("norm.prt.1 rod.prt.1 rod.prt.2 unit.asm.1 unit.asm.2", files());
  EXPECT_EQ(ProNoError, ProMdlErase(unit));
  putAllAway();
  EXPECT_EQ(ProNoError, ProMdlErase(rod));
  session().settle();
  EXPECT_EQ(ProBadInputs, ProMdlNameGet(rod).error);
}

TEST_F(AwayDocuments, WhatIsKeptWithoutBeingSavedComesBack) {
  model("rod.prt.1", kMass);
  const ProMdl rod = retrieve(L"ROD");
  const auto history = ProExtdataClassRegister(rod, L"HISTORY");
  putAllAway();
  EXPECT_EQ(ProBadInputs, ProExtdataClassRegister(rod, L"HISTORY").error) << "it is there";
  EXPECT_EQ(ProNoError, ProExtdataSlotCreate(history.value, L"A"));
  EXPECT_TRUE(ProMdlModificationVerify(rod).value);
  putAllAway();
  EXPECT_EQ("ROD", away());
  EXPECT_TRUE(ProMdlModificationVerify(rod).value);
  EXPECT_EQ(ProBadInputs, ProExtdataSlotCreate(history.value, L"A"));
  EXPECT_EQ(ProNoError, ProMdlSave(rod));
  EXPECT_NE(std::string::npos, read("models/rod.prt.2").find("HISTORY"));
}

TEST_F(AwayDocuments, WhatNoFileSaysStaysInMemory) {
  model("layers.prt.1", R"("layers": [{"id": 1, "name": "AXES"}])");
  model("norm.prt.1", kNorm);
  write("text/other.prt.1", "{\"format\": 1}");
  session().setOption(L"search_path", L"d:\\text");
  for (const wchar_t* name : {L"LAYERS", L"NORM", L"OTHER"}) retrieve(name);
  ASSERT_TRUE(ProMdlCopy(retrieve(L"LAYERS"), L"COPY"));
  ASSERT_TRUE(session().create(L"NEW", ProMdlType::part));
  EXPECT_EQ(ProNoError, ProMdlRename(retrieve(L"COPY"), L"RENAMED"));
  EXPECT_EQ(ProNoError, ProLayerDisplaystatusSet({retrieve(L"LAYERS"), 1}, ProLayerDisplay::blank));
  putAllAway();
  EXPECT_EQ("NORM", away()) << "no document of a status, another folder, a new model, or a new name";
  retrieve(L"I1");
  putAllAway();
  EXPECT_EQ("", away());
  EXPECT_EQ(ProLayerDisplay::blank, ProLayerDisplaystatusGet({retrieve(L"LAYERS"), 1}).value);
}

constexpr const char* kPlan =
    R"("models": [{"name": "ROD", "type": "prt"}], "views": [{"name": "A", "model": "PIN.prt"}])";

TEST_F(AwayDocuments, UsersFollowANewNameInMemory) {
  for (const char* file : {"rod.prt.1", "pin.prt.1"}) model(file, kMass);
  model("norm.prt.1", kNorm);
  model("unit.asm.1", kUnit);
  model("plan.drw.1", kPlan);
  const ProMdl unit = retrieve(L"UNIT", ProMdlType::assembly), plan = retrieve(L"PLAN", ProMdlType::drawing);
  const ProMdl pin = retrieve(L"PIN");
  putAllAway();
  EXPECT_EQ(ProNoError, ProMdlRename(pin, L"DOWEL"));
  const auto text = session().models().documentText(plan);
  EXPECT_NE(std::string::npos, text.value.find("\"DOWEL.prt\"")) << "a view names what the drawing doesn't list";
  EXPECT_EQ(ProNoError, ProMdlRename(retrieve(L"ROD"), L"STICK"));
  EXPECT_EQ("STICK I1", dependencies(unit));
  EXPECT_EQ("STICK", dependencies(plan));
  EXPECT_EQ(ProGeneralError, ProMdlErase(retrieve(L"STICK"))) << "its users are counted";
}

TEST_F(AwayDocuments, UsersFollowANewNameOnDisk) {
  for (const char* file : {"rod.prt.1", "pin.prt.1"}) model(file, kMass);
  model("norm.prt.1", kNorm);
  model("unit.asm.1", kUnit);
  model("plan.drw.1", kPlan);
  const ProMdl unit = retrieve(L"UNIT", ProMdlType::assembly), plan = retrieve(L"PLAN", ProMdlType::drawing);
  putAllAway();
  ProRenamed renamed;
  EXPECT_EQ(ProNoError, ProMdlnameRename(retrieve(L"ROD"), L"BAR", renamed));
  putAllAway();
  EXPECT_EQ("BAR I1", dependencies(unit));
  EXPECT_EQ("BAR", dependencies(plan));
  EXPECT_EQ(2, ProMdlDataGet(unit).value.version);
  EXPECT_EQ(ProGeneralError, ProMdlErase(retrieve(L"BAR"))) << "its users are counted";
}

TEST_F(AwayDocuments, ADocumentThatAnotherProgramTookIsReadAnewOrToldOf) {
  model("rod.prt.1", kMass);
  model("rod.prt.2", kMass);
  model("pin.prt.1", kMass);
  const ProMdl rod = retrieve(L"ROD"), pin = retrieve(L"PIN");
  putAllAway();
  std::filesystem::remove(folder_ + "/models/rod.prt.2");
  std::filesystem::remove(folder_ + "/models/pin.prt.1");
  EXPECT_EQ(ProGeneralError, ProMdlNameGet(pin).error);
  EXPECT_NE(std::string::npos, messages().find("d:\\models\\pin.prt.1: can't be read: No such file or directory\n"));
  EXPECT_EQ(ProNotFound, ProMdlRetrieve(L"PIN", ProMdlType::part).error);
  const ProMdl older = retrieve(L"ROD");
  EXPECT_EQ(1, ProMdlDataGet(older).value.version);
  EXPECT_EQ(ProBadInputs, ProMdlNameGet(rod).error);
}

// An erasure that waits needs nothing of what the documents say.
TEST_F(AwayDocuments, OneThatIsErasedIsntReadAgain) {
  model("rod.prt.1", kMass);
  model("pin.prt.1", kMass);
  const ProMdl rod = retrieve(L"ROD"), pin = retrieve(L"PIN");
  EXPECT_EQ(ProNoError, ProMdlErase(rod));
  putAllAway();
  ASSERT_EQ("ROD PIN", away());
  for (const char* file : {"rod.prt.1", "pin.prt.1"}) std::filesystem::remove(folder_ + "/models/" + file);
  EXPECT_EQ(ProNoError, ProMdlErase(pin));
  session().settle();
  EXPECT_EQ(ProNotFound, ProSessionMdlList(ProMdlType::part).error);
  EXPECT_EQ("", messages());
}

class SomeDocuments : public test::HeadlessSession {};

TEST_F(SomeDocuments, TheEarliestGoAndAsManyStayAsHaveRoom) {
  for (int i = 0; i < 10; ++i) model("p" + std::to_string(i) + ".prt.1", kMass);
  const std::size_t one = read("models/p0.prt.1").size();
  const FlatMemory flat(4 * one);
  const auto bring = [&](int from, int to) {
    for (int i = from; i < to; ++i) retrieve(L"P" + std::to_wstring(i));
  };
  const auto away = [&] {
    std::string names;
    for (const ModelInMemory& listed : session().models().list())
      if (session().models().look(listed.handle)->document->isAway()) names += text::toUtf8(listed.name);
    return names;
  };
  const auto none = [](ProMdl) { return false; };
  bring(0, 2);
  putAway(session().models(), none);
  EXPECT_EQ("", away());
  bring(2, 10);
  const ProMdl shown = retrieve(L"P1");
  putAway(session().models(), [&](ProMdl model) { return model == shown; });
  EXPECT_EQ("P0P2P3P4P5", away());
  bring(0, 2);
  putAway(session().models(), none);
  EXPECT_EQ("P2P3P4P5", away()) << "too few came since";
}

}  // namespace
}  // namespace headless
