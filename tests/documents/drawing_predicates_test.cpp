// Predicates that ask drawings, on one drawing of three sheets.
#include <gtest/gtest.h>

#include "creo/ProDwgtable.h"
#include "creo/ProMdl.h"
#include "documents/parsed.h"
#include "support/drawings.h"

namespace test {
namespace {

using namespace creo;

class DrawingPredicates : public testing::Test {
 protected:
  void SetUp() override {
    writePair(world.models());
    writeBytes(world.models() + "/blank.drw.1", R"({"format": 1, "sheets": [{"size": "empty"}]})");
    world.config("kvd_show_no_debug_in_log=0");
    ASSERT_EQ(0, world.start());
    gear = world.open(L"GEAR", ProMdlType::part);
    pinion = world.open(L"PINION", ProMdlType::part);
    pair = world.open(L"PAIR", ProMdlType::drawing);
  }
  // What the log got since the last call holds it.
  bool logged(std::wstring_view piece) {
    const std::wstring all = world.log();
    const bool found = all.find(piece, std::min(seen_, all.size())) != all.npos;
    seen_ = all.size();
    return found;
  }

  World world;
  ProMdl gear, pinion, pair;

 private:
  std::size_t seen_ = 0;
};

struct Case {
  const wchar_t* item;
  int answer;
  const wchar_t* logged = L"";
};

TEST_F(DrawingPredicates, AnswerForModelsFormatsSymbolsAndDimensions) {
  const Case cases[] = {
      {L"type='isMultiModelDrawing'", 1},
      {L"type='formatName' value='FRAME_A4'", 1, L"8(DBG)     Extended filter: Format name"},
      {L"type='formatName' value='noFormatFound'", 1},
      {L"type='formatName' value='frame_a'", 0},
      {L"type='formatName'", 0},
      {L"type='drawingCurrentModel' value='pinion.PRT'", 1, L"Extended filter: Drawing current model"},
      {L"type='drawingCurrentModel' value='pinion'", 0},
      {L"type='drawingCurrentModel' value='gear.*' inclnoact='true'", 0},
      {L"type='formatsOnSheets' frm='0'", 1},
      {L"type='formatsOnSheets' frm='1'", 0},
      {L"type='formatsOnSheets' frm='2'", 0},
      {L"type='symbolOnDrawing' currmat='weld'", 1},
      {L"type='symbolOnDrawing' currmat='Weld'", 0},
      {L"type='symbolOnDrawing' currmat='w*'", 0},
      {L"type='symbolOnDrawing' currmat='unused'", 0},
      {L"type='symbolOnDrawing' currmat='lost'", 0},
      {L"type='symbolInDrawing' currmat='unused'", 1},
      {L"type='symbolInDrawing' currmat='lost'", 0},
      {L"type='drawingDimensionText' ddt='*H7'", 1},
      {L"type='drawingDimensionText' ddt='both sides'", 1},
      {L"type='drawingDimensionText' ddt='hidden'", 0},
      {L"type='drawingDimensionText' ddt='@D'", 1},
      {L"type='dimensiontolerance' asymmetric='true'", 0},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(c.answer, predicate(c.item, pair)) << text::toUtf8(c.item);
    EXPECT_TRUE(logged(c.logged)) << text::toUtf8(c.item);
  }
  EXPECT_EQ(1, predicate(L"type='dimensiontolerance' asymmetric='true'", pinion));
  EXPECT_EQ(0, predicate(L"type='dimensiontolerance' asymmetric='false'", pinion));
  EXPECT_EQ(0, predicate(L"type='dimensiontolerance' asymmetric='true'", gear));
}

TEST_F(DrawingPredicates, ATolerancesHalvesAreEqualUpToTheLastDigits) {
  const std::pair<std::string, int> cases[] = {
      {"0.3", 0}, {"0.30000000000000004", 0}, {"0.3000000001", 1}, {"-0.3", 1}, {"0", 1}};
  int number = 0;
  for (const auto& [lower, answer] : cases) {
    const std::string name = "pin" + std::to_string(++number);
    writeBytes(world.models() + "/" + name + ".prt.1",
               R"({"format": 1, "dimensions": [{"id": 1, "tolerance": {"upper": 0.3, "lower": )" + lower + "}}]}");
    const ProMdl pin = ProMdlRetrieve(text::fromUtf8(name), ProMdlType::part).value;
    EXPECT_EQ(answer, predicate(L"type='dimensiontolerance' asymmetric='true'", pin)) << lower;
  }
}

TEST_F(DrawingPredicates, TestTheSizeOfTheCurrentSheet) {
  // A4 in portrait: 210 x 297.
  const Case cases[] = {
      {L"", 1, L"8(DBG)     found"},
      {L"hs='' he='' hb='' ws='' we='' wb=''", 1},
      {L"he='297' we='210'", 1, L"8(DBG) = TRUE"},
      {L"he='297.04' we='209.96'", 1, L"8(DBG) 297.040000 - 297.000000"},
      {L"he='297.06'", 0, L"8(DBG) <>= FALSE"},
      {L"hs='296' hb='298' ws='209.9' wb='211'", 1, L"8(DBG) > TRUE"},
      {L"hs='297'", 0},
      {L"hb='297'", 0, L"8(DBG)     not the right one"},
      {L"ws='209'", 1, L"8(DBG) < TRUE"},
      {L"we='297'", 0},
      {L"hs='word'", 0, L"Failure can't cast double value"},
      {L"he='%X%'", 0, L"Failure can't cast double value"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(c.answer, predicate(L"type='sheetsize' " + std::wstring(c.item), pair)) << text::toUtf8(c.item);
    EXPECT_TRUE(logged(c.logged)) << text::toUtf8(c.item) << "\n" << text::toUtf8(world.log());
  }
  world.session().failNext("ProDrawingCurrentSheetGet", ProGeneralError);
  EXPECT_EQ(0, predicate(L"type='sheetsize'", pair));
  EXPECT_TRUE(logged(L"ProDrawingCurrentSheetGet - PRO_TK_ERROR"));
  world.session().failNext("ProDrawingSheetSizeGet", ProGeneralError);
  EXPECT_EQ(0, predicate(L"type='sheetsize'", pair));
  EXPECT_TRUE(logged(L"ProDrawingSheetSizeGet - PRO_TK_ERROR"));
  EXPECT_EQ(0, predicate(L"type='sheetsize'", ProMdlRetrieve(L"BLANK", ProMdlType::drawing).value));
  EXPECT_TRUE(logged(L"8(DBG) height or width == 0"));
}

TEST_F(DrawingPredicates, FindTablesByPlaceAndText) {
  const Case cases[] = {
      {L"", 0},
      {L"pos-x='100' pos-y='20'", 1},
      {L"pos-x='105' pos-y='15'", 1},
      {L"pos-x='105.1' pos-y='20'", 0},
      {L"pos-x='100' pos-y='14.9'", 0},
      {L"pos-x='-320' pos-y='-277'", 1},
      {L"pos-x='100' pos-y='20' sheet='1'", 1},
      {L"pos-x='100' pos-y='20' sheet='2'", 0},
      {L"pos-x='100' pos-y='20' sheet='0'", 1},
      {L"pos-x='100' pos-y='20' sheet='-1'", 1},
      {L"pos-x='100' pos-y='20' sheet='%SHEET%'", 0, L"Can't find parameter: SHEET"},
      {L"pos-x='' pos-y='20'", 0},
      {L"pos-x='5' pos-y='6' sheet='3'", 1},
      {L"cell-s='blue' cell-x='*' cell-y='*'", 1},
      {L"cell-s='&amp;COLOR' cell-x='1' cell-y='1'", 1},
      {L"cell-s='d-22' cell-x='1' cell-y='*'", 1},
      {L"cell-s='blue' cell-x='2' cell-y='*'", 0},
      {L"cell-s='blue' cell-x='1' cell-y='2'", 0},
      {L"cell-s='free' cell-x='2' cell-y='2' sheet='3'", 0},
      {L"cell-s='blue'", 1},
      {L"filterand='true' pos-x='100' pos-y='20'", 0},
      {L"filterand='true' cell-s='blue' cell-x='*' cell-y='*'", 0},
      {L"filterand='true' cell-s='blue' cell-x='*' cell-y='*' pos-x='100' pos-y='20'", 1},
      {L"filterand='true' cell-s='blue' cell-x='*' cell-y='*' pos-x='300' pos-y='20'", 0},
      {L"filterand='true' cell-s='free' cell-x='*' cell-y='*'", 1},  // its two texts are the same
  };
  for (const Case& c : cases) {
    EXPECT_EQ(c.answer, predicate(L"type='tableOnDrawing' " + std::wstring(c.item), pair)) << text::toUtf8(c.item);
    EXPECT_TRUE(logged(c.logged)) << text::toUtf8(c.item);
  }
  // On sheet 2 the place (-201, 14) is (9, 14), to which the sheet's matrix brings (-0.5, 30).
  ASSERT_EQ(ProNoError, ProDrawingTableCreate(pair, {-0.5, 30}, {1}, {1}).error);
  EXPECT_EQ(1, predicate(L"type='tableOnDrawing' sheet='2' pos-x='-201' pos-y='14'", pair));
  EXPECT_EQ(0, predicate(L"type='tableOnDrawing' sheet='2' pos-x='28' pos-y='6'", pair));
}

TEST_F(DrawingPredicates, DontApplyToOtherModelsAndSurviveFailures) {
  for (const wchar_t* type : {L"sheetsize", L"formatName", L"drawingCurrentModel", L"formatsOnSheets",
                              L"symbolOnDrawing", L"symbolInDrawing", L"tableOnDrawing", L"drawingDimensionText"})
    EXPECT_EQ(3, predicate(L"type='" + std::wstring(type) + L"' value='*'", gear)) << text::toUtf8(type);
  EXPECT_EQ(0, predicate(L"type='isMultiModelDrawing'", gear));

  const struct {
    const char* operation;
    const wchar_t *item, *logged;
    int answer;
  } failures[] = {
      {"ProMdlTypeGet", L"type='isMultiModelDrawing'", L"Failure while ProMdlTypeGet", 3},
      {"ProMdlTypeGet", L"type='dimensiontolerance'", L"Failure while ProMdlTypeGet", 3},
      {"ProDrawingSolidsCollect", L"type='isMultiModelDrawing'", L"Can't collect solids", 0},
      {"ProDrawingSheetsCount", L"type='formatName' value='*'", L"", 0},
      {"ProDrawingSheetsCount", L"type='formatsOnSheets' frm='1'", L"", 0},
      {"ProDrawingCurrentsolidGet", L"type='drawingCurrentModel' value='*' inclnoact='true'",
       L"8(DBG)     No Solid found", 1},
      {"ProDrawingCurrentsolidGet", L"type='drawingCurrentModel' value='*'", L"8(DBG)     No Solid found", 0},
      {"ProMdlNameGet", L"type='drawingCurrentModel' value='*'", L"- failure while read solid name", 0},
      {"ProDrawingDtlsyminstsCollect", L"type='symbolOnDrawing' currmat='weld'", L"Failure while ProArraySizeGet", 0},
      {"ProDrawingDtlsymdefsCollect", L"type='symbolInDrawing' currmat='weld'", L"Failure while ProArraySizeGet", 0},
      {"ProDrawingTablesCollect", L"type='tableOnDrawing' cell-s='*'", L"", 0},
      {"ProDwgtableInfoGet", L"type='tableOnDrawing' cell-s='blue'", L"", 0},
  };
  for (const auto& c : failures) {
    world.session().failNext(c.operation, ProGeneralError);
    EXPECT_EQ(c.answer, predicate(c.item, pair)) << c.operation;
    EXPECT_TRUE(logged(c.logged)) << c.operation;
  }
  // Who has nothing of a kind hasn't failed.
  const ProMdl blank = ProMdlRetrieve(L"BLANK", ProMdlType::drawing).value;
  logged(L"");
  for (const wchar_t* item : {L"type='isMultiModelDrawing'", L"type='symbolOnDrawing' currmat='weld'",
                              L"type='symbolInDrawing' currmat='weld'", L"type='tableOnDrawing' cell-s='*'"}) {
    EXPECT_EQ(0, predicate(item, blank)) << text::toUtf8(item);
    EXPECT_FALSE(logged(L"(ERR)")) << text::toUtf8(item);
  }
  // The first segment can't be read, so the only one is asked for.
  world.session().failNext("ProDwgtableSegSheetGet", ProNotFound);
  EXPECT_EQ(1, predicate(L"type='tableOnDrawing' cell-s='blue'", pair));
}

}  // namespace
}  // namespace test
