// Placed symbols and notes of drawings at the operations: what an action's list can't bring about.
#include "creo/ProDrawingView.h"
#include "creo/ProDtlsym.h"
#include "creo/ProDwgtable.h"
#include "creo/ProNote.h"
#include "headless/session_fixture.h"
#include "support/drawings.h"

namespace headless {
namespace {

using namespace creo;

class Details : public test::HeadlessSession {
 protected:
  void SetUp() override {
    test::writePair(folder_ + "/models");
    pair = retrieve(L"PAIR", ProMdlType::drawing);
  }
  ProMdl pair;
};

TEST_F(Details, EverySheetHasAViewOfItsOwn) {
  std::vector<int> ids;
  for (int sheet = 1; sheet <= 3; ++sheet)
    for (const auto& view : {ProDrawingBackgroundViewGet(pair, sheet), ProDrawingOverlayviewGet(pair, sheet)}) {
      ids.push_back(ProDrawingViewIdGet(view.value).value);
      EXPECT_EQ(sheet, ProDrawingViewSheetGet(view.value).value);
    }
  EXPECT_EQ((std::vector{-2, -2, -4, -4, -6, -6}), ids);
  EXPECT_EQ(ProGeneralError, ProDrawingOverlayviewGet(pair, 4).error);
  EXPECT_EQ(ProGeneralError, ProDrawingBackgroundViewGet(pair, 0).error);
  EXPECT_EQ(ProBadInputs, ProDrawingViewIdGet({pair, -7}).error);
  EXPECT_EQ(ProNotFound, ProDrawingViewSheetGet({pair, -7}).error);
  EXPECT_EQ(2U, ProDrawingViewsCollect(pair).value.size());
  model("empty.drw.1");
  EXPECT_EQ(ProNotFound, ProDrawingViewsCollect(retrieve(L"EMPTY", ProMdlType::drawing)).error);
}

// What needs the screen, and what the screen alone knows.
TEST_F(Details, AreShownWhileTheirDrawingStandsInTheCurrentWindow) {
  auto data = ProDtlnoteDataGet({pair, 3});
  ASSERT_TRUE(data);
  data.value.lines.resize(1);
  data.value.lines[0].texts.resize(1);
  data.value.lines[0].texts[0].text = L"&dwg_name";
  const auto note = ProDtlnoteCreate(pair, data.value);
  ASSERT_TRUE(note);
  const auto shown = [&] { return ProDtlnoteTextGet(note.value, ProDtlText::displayed).value.at(0); };
  EXPECT_EQ(L"&dwg_name", shown());
  EXPECT_EQ(ProGeneralError, ProDtlnoteShow(note.value));
  EXPECT_EQ(ProGeneralError, ProDtlnoteErase(note.value));
  EXPECT_EQ(ProGeneralError, ProDrawingTablesUpdate(pair));
  EXPECT_EQ(ProBadInputs, ProDrawingtreeRefresh(pair, kActiveWindow));

  ASSERT_EQ(ProNoError, ProMdlDisplay(pair));
  EXPECT_EQ(ProNoError, ProDrawingTablesUpdate(pair));
  EXPECT_EQ(ProNoError, ProDrawingtreeRefresh(pair, kActiveWindow));
  EXPECT_EQ(ProBadInputs, ProDrawingtreeRefresh(pair, 99));
  EXPECT_EQ(ProNoError, ProDtlnoteShow(note.value));
  EXPECT_EQ(L"PAIR", shown());
  ASSERT_EQ(ProNoError, ProMdlSave(pair));
  EXPECT_EQ(ProNoError, ProDtlnoteErase(note.value));
  EXPECT_EQ(ProNoError, ProDwgtableErase(ProDrawingTablesCollect(pair).value.at(0)));
  EXPECT_EQ(L"PAIR", shown());
  EXPECT_FALSE(ProMdlModificationVerify(pair).value) << "the next regeneration brings them back";
}

TEST_F(Details, ASymbolTakesOnlyWhatItsDrawingHas) {
  auto data = ProDtlsyminstDataGet({pair, 7});
  ASSERT_TRUE(data);
  const ProDtlsymdef unused{pair, 2};
  EXPECT_EQ(ProBadInputs, ProDtlsyminstdataGroupoptionsSet(data.value, ProSymbolGroups::custom, {{unused, 1}}));
  EXPECT_EQ(ProBadInputs, ProDtlsyminstdataDefSet(data.value, {retrieve(L"GEAR", ProMdlType::part), 1}));
  EXPECT_EQ(ProNoError, ProDtlsyminstdataDefSet(data.value, unused));
  data.value.attachment.view = -9;
  EXPECT_EQ(ProNotFound, ProDtlsyminstModify({pair, 7}, data.value));
  EXPECT_EQ(L"weld", ProDtlsymdefNameGet(ProDtlsyminstDefGet({pair, 7}).value).value);
  data.value.attachment.view = ProDrawingOverlayviewGet(pair, 3).value.id;
  EXPECT_EQ(ProNoError, ProDtlsyminstModify({pair, 7}, data.value));
  EXPECT_EQ(L"unused", ProDtlsymdefNameGet(ProDtlsyminstDefGet({pair, 7}).value).value);
  EXPECT_EQ(1U, ProDrawingDtlsyminstsCollect(pair, 3).value.size()) << "it goes to the sheet of its view";
  EXPECT_EQ(ProNotFound, ProDtlsyminstTextGet({pair, 8}, ProDtlText::symbolic).error) << "it has no texts";
  EXPECT_EQ(ProExists, ProDrawingDtlsymdefRetrieve(pair, L"", L"WELD", kNewestVersion, false).error);
  EXPECT_EQ(ProNotFound, ProDtlsyminstModify({pair, 99}, data.value));
  EXPECT_EQ(ProBadInputs, ProDtlsyminstCreate({}).error);
}

TEST_F(Details, ASymbolWithoutItsDefinitionCanBeMovedAndDeleted) {
  auto data = ProDtlsyminstDataGet({pair, 8});
  ASSERT_TRUE(data);
  EXPECT_EQ(0, data.value.definition.id);
  data.value.attachment.position = {30, 40};
  EXPECT_EQ(ProNoError, ProDtlsyminstModify({pair, 8}, data.value));
  EXPECT_EQ(40, ProDtlsyminstDataGet({pair, 8}).value.attachment.position.y);
  EXPECT_EQ(ProNotFound, ProDtlsyminstSymgroupsCollect({pair, 8}).error);
  EXPECT_EQ(ProNoError, ProDtlsyminstDelete({pair, 8}));
  EXPECT_EQ(ProNotFound, ProDtlsyminstDelete({pair, 8}));
}

// A deleted note is gone for all who ask while the visit goes on, also in a visit inside it, and from the document when
// it ends, whatever order the ids stand in.
TEST_F(Details, NotesCanBeDeletedWhileTheyAreVisited) {
  std::string notes;
  for (const int id : {9, 2, 7, 4, 5})
    notes += std::string(notes.empty() ? "" : ", ") + R"({"id": )" + std::to_string(id) + R"(, "lines": ["n"]})";
  model("many.drw.1", R"("sheets": [{"size": "A3"}], "notes": [)" + notes + "]");
  const ProMdl many = retrieve(L"MANY", ProMdlType::drawing);
  std::vector<int> visited;
  EXPECT_EQ(ProNoError, ProDrawingDtlnoteVisit(many, 1, [&](const ProDtlnote& note) {
              visited.push_back(note.id);
              if (note.id != 4) EXPECT_EQ(ProNoError, ProDtlnoteDelete(note));
              if (note.id != 4) EXPECT_EQ(ProNotFound, ProDtlnoteDelete(note));
              EXPECT_EQ(note.id == 4, static_cast<bool>(ProDtlnoteDataGet(note)));
              int inner = 0;
              ProDrawingDtlnoteVisit(many, 1, [&](const ProDtlnote&) { return ++inner, ProNoError; });
              EXPECT_EQ(inner, static_cast<int>(ProDrawingDtlnotesCollect(many, 1).value.size()));
              EXPECT_EQ(inner, note.id == 9 ? 4 : note.id == 2 ? 3 : note.id == 5 ? 1 : 2) << note.id;
              return ProNoError;
            }));
  EXPECT_EQ((std::vector{9, 2, 7, 4, 5}), visited);
  ASSERT_EQ(1U, ProDrawingDtlnotesCollect(many, 1).value.size());
  EXPECT_EQ(ProNoError, ProDtlnoteDelete({many, 4}));
  EXPECT_EQ(ProNotFound, ProDrawingDtlnotesCollect(many, 1).error);
  EXPECT_EQ(ProBadInputs, ProDrawingDtlnoteVisit(many, 2, [](const ProDtlnote&) { return ProNoError; }));
}

TEST_F(Details, ANoteRefusesMeasuresThatAreNone) {
  auto data = ProDtlnoteDataGet({pair, 3});
  ASSERT_TRUE(data);
  ProDtlnotetext& text = data.value.lines[0].texts[0];
  const double bad[] = {-1.0, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()};
  for (const double height : bad) {
    text.height = height;
    EXPECT_EQ(ProBadInputs, ProDtlnoteModify({pair, 3}, data.value)) << height;
  }
  text.height = 0;
  text.text = L"Every edge";
  EXPECT_EQ(ProNoError, ProDtlnoteModify({pair, 3}, data.value));
  EXPECT_EQ(L"Every edge", ProDtlnoteTextGet({pair, 3}, ProDtlText::symbolic).value.front());
  EXPECT_EQ(ProBadInputs, ProDtlattachAlloc(ProDtlattachType::free, 0, {bad[1], 0}).error);
}

}  // namespace
}  // namespace headless
