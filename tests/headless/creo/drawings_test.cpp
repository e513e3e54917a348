// Drawings: models, sheets, tables and what their cells show, symbols, dimensions.
#include "creo/ProDrawing.h"

#include <cmath>

#include "creo/ProDwgtable.h"
#include "creo/ProMdlCopy.h"
#include "creo/guards.h"
#include "headless/session_fixture.h"
#include "os/clock.h"
#include "support/drawings.h"

namespace headless {
namespace {

using namespace creo;

class Drawings : public test::HeadlessSession {
 protected:
  void SetUp() override {
    os::surroundings().clock = std::make_shared<os::FixedClock>(1710000000);
    test::writePair(folder_ + "/models");
    pair = retrieve(L"PAIR", ProMdlType::drawing);
  }
  static std::wstring currentModel(ProMdl drawing) {
    const auto solid = ProDrawingCurrentsolidGet(drawing);
    return solid ? ProMdlNameGet(solid.value).value : L"none";
  }
  // "a|b"; "none" on failure.
  static std::wstring cell(const ProDwgtable& table, int column, int row,
                           ProDwgtableText mode = ProDwgtableText::symbolic) {
    const auto lines = ProDwgtableCelltextGet(table, column, row, mode);
    if (!lines) return L"none";
    std::wstring all;
    for (const std::wstring& line : lines.value) all += (all.empty() ? L"" : L"|") + line;
    return all;
  }
  static bool modified(ProMdl drawing) { return ProMdlModificationVerify(drawing).value; }

  ProMdl pair;
};

TEST_F(Drawings, ShowTheModelThatTheDocumentNamesOrTheFirst) {
  const std::string models = R"("models": [{"name": "GEAR", "type": "prt"}, {"name": "PAIR", "type": "asm"}])";
  const std::pair<const char*, const wchar_t*> cases[] = {
      {"", L"GEAR"},           {"pair.ASM", L"PAIR"},    {"PAIR.prt", L"GEAR"},
      {"PINION.prt", L"GEAR"}, {"GEAR<X>.prt", L"GEAR"}, {"gear", L"GEAR"}};
  int number = 0;
  for (const auto& [label, expected] : cases) {
    const std::wstring name = L"ONE" + std::to_wstring(++number);
    model(text::toUtf8(name) + ".drw.1", models + ", \"currentModel\": \"" + label + "\"");
    EXPECT_EQ(expected, currentModel(retrieve(name, ProMdlType::drawing))) << label;
  }
  EXPECT_EQ(3u, ProDrawingSolidsCollect(pair).value.size());
  const ProMdl gear = retrieve(L"GEAR"), pinion = retrieve(L"PINION");
  model("other.prt.1");
  EXPECT_EQ(ProNotFound, ProDrawingCurrentsolidSet(pair, retrieve(L"OTHER")));
  EXPECT_EQ(ProBadInputs, ProDrawingCurrentsolidSet(pair, {}));
  EXPECT_EQ(ProNoError, ProDrawingCurrentsolidSet(pair, pinion));
  EXPECT_FALSE(modified(pair));
  {
    SolidGuard guard(pair);
    EXPECT_EQ(ProNoError, guard.change(gear));
    EXPECT_EQ(L"GEAR", currentModel(pair));
  }
  EXPECT_EQ(L"PINION", currentModel(pair));
  EXPECT_FALSE(modified(pair));  // who goes there and comes back leaves no trace
}

TEST_F(Drawings, KeepTheirTextsUntilTheyAreRegenerated) {
  const ProDwgtable table = ProDrawingTablesCollect(pair).value.front();
  ASSERT_EQ(ProNoError, ProDwgtableTextEnter(table, 2, 3, {L"&model_name &model_name:3 &TEETH"}));
  const auto shown = [&] { return cell(table, 2, 3, ProDwgtableText::displayed); };
  EXPECT_EQ(L"PINION PAIR 20", shown());
  EXPECT_EQ(ProNoError, ProDrawingCurrentsolidSet(pair, retrieve(L"GEAR")));
  EXPECT_EQ(L"PINION PAIR 20", shown());
  EXPECT_EQ(ProNoError, ProDwgDraftRegenerate(pair));
  EXPECT_EQ(L"GEAR PAIR &TEETH", shown());
  {
    SolidGuard guard(pair);
    EXPECT_EQ(ProNoError, guard.change(retrieve(L"PINION")));
    EXPECT_EQ(L"GEAR PAIR &TEETH", shown());
  }
  EXPECT_EQ(L"GEAR PAIR &TEETH", shown());
  // A new name doesn't make it another model.
  EXPECT_EQ(ProNoError, ProDrawingCurrentsolidSet(pair, retrieve(L"PINION")));
  EXPECT_EQ(ProNoError, ProMdlRename(retrieve(L"GEAR"), L"WHEEL"));
  EXPECT_EQ(L"WHEEL PAIR &TEETH", shown());
}

TEST_F(Drawings, WithALostModelAreShownWithoutItAndDontRegenerate) {
  EXPECT_EQ(ProNoError, ProDwgDraftRegenerate(pair));
  model("lost.drw.1", R"("models": [{"name": "GONE", "type": "prt"}, {"name": "GEAR", "type": "prt"}])");
  model("empty.drw.1");
  const ProMdl lost = retrieve(L"LOST", ProMdlType::drawing), empty = retrieve(L"EMPTY", ProMdlType::drawing);
  EXPECT_EQ(1u, ProDrawingSolidsCollect(lost).value.size());
  EXPECT_EQ(L"none", currentModel(lost));
  EXPECT_EQ(ProGeneralError, ProDwgDraftRegenerate(lost));
  EXPECT_EQ(ProNoError, ProDwgDraftRegenerate(empty));
  EXPECT_EQ(ProNotFound, ProDrawingCurrentsolidGet(empty).error);
  EXPECT_EQ(ProNotFound, ProDrawingSolidsCollect(empty).error);
  EXPECT_EQ(ProNotFound, ProDrawingSolidsVisit(empty, [](const ProMdl&) { return ProNoError; }));
  EXPECT_EQ(1, ProDrawingSheetsCount(empty).value);
  EXPECT_EQ(ProSheetSize::a4, ProDrawingSheetSizeGet(empty, 1).value.size);
}

TEST_F(Drawings, HaveSheetsOfStandardOrOwnSize) {
  const std::pair<std::string, const char*> cases[] = {
      {R"("size": "A0")", "9 1189x841"},
      {R"("size": "A1")", "8 841x594"},
      {R"("size": "A2")", "7 594x420"},
      {R"("size": "A3")", "6 420x297"},
      {R"("portrait": true)", "5 210x297"},
      {R"("size": "A")", "0 11x8.5"},
      {R"("size": "B", "portrait": true)", "1 11x17"},
      {R"("size": "C")", "2 22x17"},
      {R"("size": "D")", "3 34x22"},
      {R"("size": "E")", "4 44x34"},
      {R"("size": "F")", "10 40x28"},
      {R"("size": "a3", "portrait": true, "height": 500)", "6 297x500"},
      {R"("size": "variable", "width": 12, "height": 7, "portrait": true)", "99 12x7"},
      {R"("size": "empty")", "11 0x0"},
  };
  std::string sheets;
  for (const auto& [sheet, expected] : cases) sheets += (sheets.empty() ? "{" : ", {") + sheet + "}";
  model("sizes.drw.1", "\"currentSheet\": 99, \"sheets\": [" + sheets + "]");
  const ProMdl sizes = retrieve(L"SIZES", ProMdlType::drawing);
  int number = 0;
  for (const auto& [sheet, expected] : cases) {
    const ProSheetDimensions size = ProDrawingSheetSizeGet(sizes, ++number).value;
    std::ostringstream all;
    all << static_cast<int>(size.size) << ' ' << size.width << 'x' << size.height;
    EXPECT_EQ(expected, all.str()) << sheet;
  }
  EXPECT_EQ(number, ProDrawingCurrentSheetGet(sizes).value);
}

TEST_F(Drawings, AnswerForASheetByItsNumber) {
  EXPECT_EQ(L"FRONT SHEET2", ProDrawingSheetNameGet(pair, 1).value + L" " + ProDrawingSheetNameGet(pair, 2).value);
  EXPECT_EQ(L"frame_a4", ProDrawingFormatGet(pair, 2).value);
  EXPECT_EQ(ProNotFound, ProDrawingFormatGet(pair, 3).error);
  EXPECT_EQ(210, ProDrawingSheetInfoGet(pair, 2).value.width);
  const ProSheetMatrix matrix = ProDrawingSheetTrfGet(pair, 2).value;
  EXPECT_EQ("2 0.5 10 -1", (std::ostringstream()
                            << matrix.scaleX << ' ' << matrix.scaleY << ' ' << matrix.offsetX << ' ' << matrix.offsetY)
                               .str());
  EXPECT_EQ(1, ProDrawingSheetTrfGet(pair, 1).value.scaleX);
  const ProMdl gear = retrieve(L"GEAR"), pinion = retrieve(L"PINION");
  EXPECT_EQ(0.5, ProDrawingScaleGet(pair, gear, 1).value);
  EXPECT_EQ(5, ProDrawingScaleGet(pair, pinion, 1).value);
  EXPECT_EQ(2, ProDrawingScaleGet(pair, pinion, 2).value);
  model("other.prt.1");
  model("empty.drw.1");
  EXPECT_EQ(ProGeneralError, ProDrawingScaleGet(pair, retrieve(L"OTHER"), 1).error);
  EXPECT_EQ(5, ProDrawingScaleGet(pair, {}, 1).value) << "of the current model";
  EXPECT_EQ(1, ProDrawingScaleGet(retrieve(L"EMPTY", ProMdlType::drawing), {}, 1).value);

  const auto errors = [&](ProMdl drawing, int sheet) {
    return std::vector<ProError>{
        ProDrawingCurrentSheetSet(drawing, sheet),    ProDrawingSheetNameGet(drawing, sheet).error,
        ProDrawingSheetSizeGet(drawing, sheet).error, ProDrawingSheetInfoGet(drawing, sheet).error,
        ProDrawingSheetTrfGet(drawing, sheet).error,  ProDrawingFormatGet(drawing, sheet).error};
  };
  for (const int sheet : {-1, 0, 4}) EXPECT_EQ(std::vector<ProError>(6, ProBadInputs), errors(pair, sheet)) << sheet;
  EXPECT_EQ(std::vector<ProError>(6, ProBadInputs), errors(gear, 1));

  // To others a sheet below 1 is the current one, the second.
  EXPECT_EQ(2, ProDrawingScaleGet(pair, pinion, 0).value);
  EXPECT_EQ(ProBadInputs, ProDrawingScaleGet(pair, pinion, 4).error);
  EXPECT_EQ(ProDrawingDtlsyminstsCollect(pair, 2).value.at(0).id,
            ProDrawingDtlsyminstsCollect(pair, -1).value.at(0).id);
  EXPECT_EQ(ProBadInputs, ProDrawingDtlsyminstsCollect(pair, 4).error);
}

TEST_F(Drawings, GoBackToTheirSheetAndKeepItOnSaving) {
  {
    SheetGuard guard(pair);
    EXPECT_EQ(ProBadInputs, guard.change(9));
    EXPECT_FALSE(modified(pair));
    EXPECT_EQ(ProNoError, guard.change(3));
    EXPECT_EQ(3, ProDrawingCurrentSheetGet(pair).value);
  }
  EXPECT_EQ(2, ProDrawingCurrentSheetGet(pair).value);
  EXPECT_EQ(ProNoError, ProDrawingCurrentSheetSet(pair, 1));
  EXPECT_EQ(ProNoError, ProMdlSave(pair));
  erase(pair);
  EXPECT_EQ(1, ProDrawingCurrentSheetGet(retrieve(L"PAIR", ProMdlType::drawing)).value);
}

TEST_F(Drawings, ShowTheFormsInCells) {
  const ProDwgtable table = ProDrawingTablesCollect(pair).value.front();  // on sheet 1
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"plain & simple &", L"plain & simple &"},
      {L"&COLOR/&color!", L"blue/blue!"},
      {L"&COLOR:d", L"white"},
      {L"&NUMBER &NUMBER:D", L"D-22 D-22"},
      {L"&COLOR:date", L"blue:date"},
      {L"&TEETH:1 &MODULE &HARD", L"20:1 2.5 YES"},
      {L"&TEETH:d &MISSING &MISSING:d", L"&TEETH:d &MISSING &MISSING:d"},
      {L"&model_name &MODEL_NAME:1 &model_name:3", L"PINION GEAR PAIR"},
      {L"&type &type:3", L"PART ASSEM"},
      {L"&model_name:0 &type:4 &model_name:99999999999", L"&model_name:0 &type:4 &model_name:99999999999"},
      {L"&model_name:d", L"PINION:d"},
      {L"&dwg_name sheet &current_sheet of &total_sheets, &scale", L"PAIR sheet 1 of 3, 0.5"},
      {L"&scale:1", L"0.5:1"},
      {L"&todays_date", L"2024-03-09"},
      {L"&&COLOR &", L"&blue &"},
      {L"&COLOR&COLOR", L"blueblue"},
      {L"\u00D6l: &COLOR\u00D6", L"\u00D6l: &COLOR\u00D6"},
  };
  for (const auto& [symbolic, displayed] : cases) {
    ASSERT_EQ(ProNoError, ProDwgtableTextEnter(table, 2, 3, {symbolic}));
    EXPECT_EQ(symbolic, cell(table, 2, 3));
    EXPECT_EQ(displayed, cell(table, 2, 3, ProDwgtableText::displayed)) << text::toUtf8(symbolic);
  }
  // A value isn't looked into again; the drawing's own parameter serves where there is no model.
  ASSERT_EQ(ProNoError, set(retrieve(L"PINION"), L"COLOR", string(L"&COLOR")));
  EXPECT_EQ(L"&COLOR|D-22", cell(table, 1, 1, ProDwgtableText::displayed));
  model("alone.drw.1", R"("parameters": [{"name": "COLOR", "type": "string", "value": "grey"}])");
  const ProMdl alone = retrieve(L"ALONE", ProMdlType::drawing);
  const ProDwgtable own = ProDrawingTableCreate(alone, {}, {1}, {1}).value;
  ASSERT_EQ(ProNoError, ProDwgtableTextEnter(own, 1, 1, {L"&COLOR &type &model_name:1"}));
  EXPECT_EQ(L"grey &type &model_name:1", cell(own, 1, 1, ProDwgtableText::displayed));
}

TEST_F(Drawings, TablesAreReadByCellAndSegment) {
  const auto tables = ProDrawingTablesCollect(pair).value;
  ASSERT_EQ(2u, tables.size());
  const ProDwgtable title = tables[0], split = tables[1];
  EXPECT_EQ(2, ProDwgtableColumnsCount(title).value);
  EXPECT_EQ(3, ProDwgtableRowsCount(title).value);
  const struct {
    int column, row;
    const wchar_t* expected;
    ProError error = ProNoError;
  } cells[] = {{1, 1, L"&COLOR|&NUMBER"},        {2, 2, L"free"},
               {2, 1, L"none", ProGeneralError},  // no text
               {2, 3, L"none", ProGeneralError}, {0, 1, L"none", ProNotFound},
               {1, 0, L"none", ProNotFound},     {3, 1, L"none", ProNotFound},
               {1, 4, L"none", ProNotFound}};
  for (const auto& c : cells) {
    EXPECT_EQ(c.expected, cell(title, c.column, c.row)) << c.column << " " << c.row;
    EXPECT_EQ(c.error, ProDwgtableCelltextGet(title, c.column, c.row, ProDwgtableText::displayed).error);
  }

  const struct {
    ProDwgtable table;
    int segment, sheet;  // sheet 0: there is no such segment
  } segments[] = {{title, 0, 1}, {title, -1, 1}, {title, 1, 0}, {split, 0, 3},
                  {split, 1, 2}, {split, -1, 0}, {split, 2, 0}, {split, -2, 0}};
  for (const auto& c : segments) {
    EXPECT_EQ(c.sheet, ProDwgtableSegSheetGet(c.table, c.segment).value) << c.table.id << " " << c.segment;
    EXPECT_EQ(c.sheet == 0 ? ProNotFound : ProNoError, ProDwgtableInfoGet(c.table, c.segment).error);
  }
  EXPECT_EQ(8, ProDwgtableInfoGet(split, 1).value.y);
  EXPECT_EQ(2, ProDwgtableSegCount(split).value);
  EXPECT_EQ(std::vector<int>{3}, ProDwgtableRegionModelsGet(split).value);
}

TEST_F(Drawings, TablesAreMadeFilledAndDeleted) {
  const ProDwgtable made = ProDrawingTableCreate(pair, {3, 4}, {10, 20}, {5}).value;
  EXPECT_EQ(2, ProDwgtableSegSheetGet(made, 0).value) << "the current sheet";
  EXPECT_EQ(ProNotFound, ProDwgtableTextEnter(made, 1, 2, {L"x"}));
  EXPECT_EQ(ProNoError, ProDwgtableTextEnter(made, 2, 1, {L"a", L"b"}));
  ASSERT_EQ(ProNoError, ProMdlSave(pair));
  erase(pair);
  pair = retrieve(L"PAIR", ProMdlType::drawing);
  const auto tables = ProDrawingTablesCollect(pair).value;
  ASSERT_EQ(3u, tables.size());
  EXPECT_EQ(L"a|b", cell(tables[2], 2, 1));
  EXPECT_EQ(4, ProDwgtableInfoGet(tables[2], -1).value.y);
  EXPECT_EQ(ProNoError, ProDwgtableTextEnter(tables[2], 2, 1, {}));
  EXPECT_EQ(L"none", cell(tables[2], 2, 1));

  for (const ProDwgtable& table : tables) EXPECT_EQ(ProNoError, ProDwgtableDelete(table, false));
  EXPECT_EQ(ProNotFound, ProDwgtableDelete(tables[0], false));
  EXPECT_EQ(ProNotFound, ProDwgtableRowsCount(tables[0]).error);
  EXPECT_EQ(ProNotFound, ProDrawingTablesCollect(pair).error);
  EXPECT_EQ(ProBadInputs, ProDrawingTableCreate(pair, {}, {}, {1}).error);
  EXPECT_EQ(ProBadInputs, ProDrawingTableCreate(pair, {}, {1}, {0}).error);
  EXPECT_EQ(ProBadInputs, ProDrawingTableCreate(pair, {}, std::vector<double>(51, 1), {1}).error);
  EXPECT_EQ(ProBadInputs, ProDrawingTableCreate(pair, {}, {std::nan("")}, {1}).error);
  EXPECT_EQ(ProBadInputs, ProDrawingTableCreate(retrieve(L"GEAR"), {}, {1}, {1}).error);
}

TEST_F(Drawings, SymbolsKnowTheirDefinitions) {
  std::wstring names;
  for (const ProDtlsymdef& dtlsymdef : ProDrawingDtlsymdefsCollect(pair).value)
    names += ProDtlsymdefNameGet(dtlsymdef).value + L" ";
  EXPECT_EQ(L"weld unused ", names);
  const auto first = ProDrawingDtlsyminstsCollect(pair, 1).value, second = ProDrawingDtlsyminstsCollect(pair, 2).value;
  ASSERT_EQ(1u, first.size());
  ASSERT_EQ(1u, second.size());
  EXPECT_EQ(ProNotFound, ProDtlsyminstDefGet(first[0]).error);
  EXPECT_EQ(1, ProDtlsyminstDefGet(second[0]).value.id);
  EXPECT_EQ(ProNotFound, ProDtlsymdefNameGet({pair, 9}).error);
  EXPECT_EQ(ProNotFound, ProDrawingDtlsyminstsCollect(pair, 3).error);
  model("empty.drw.1");
  EXPECT_EQ(ProNotFound, ProDrawingDtlsymdefsCollect(retrieve(L"EMPTY", ProMdlType::drawing)).error);
}

TEST_F(Drawings, DimensionsHaveTextsTolerancesAndAreShownOrNot) {
  const ProMdl gear = retrieve(L"GEAR"), pinion = retrieve(L"PINION");
  const struct {
    ProDimension dimension;
    const wchar_t* text;
    const char* tolerance;
    bool shown;
  } cases[] = {{{gear, 1, false}, L"hidden", "none", false},
               {{gear, 2, false}, L"TIP @D|both sides", "0.1/0.1", true},
               {{pinion, 3, true}, L"@D", "0.2/0.1", true},
               {{pinion, 4, false}, L"@D", "none", false},
               {{pair, 1, false}, L"@D H7", "0.2/0.2", true}};
  for (const auto& c : cases) {
    const std::string who = std::to_string(c.dimension.id);
    std::wstring lines;
    for (const std::wstring& line : ProDimensionTextGet(c.dimension).value)
      lines += (lines.empty() ? L"" : L"|") + line;
    EXPECT_EQ(c.text, lines) << who;
    const auto tolerance = ProDimensionToleranceGet(c.dimension);
    std::ostringstream text;
    text << tolerance.value.upper << '/' << tolerance.value.lower;
    EXPECT_EQ(c.tolerance, tolerance ? text.str() : "none") << who;
    EXPECT_EQ(c.shown, ProAnnotationIsShown(c.dimension, pair).value) << who;
  }
  const ProDimension gone{gear, 3, false};
  EXPECT_EQ(ProNotFound, ProDimensionTextGet(gone).error);
  EXPECT_EQ(ProNotFound, ProAnnotationIsShown(gone, pair).error);
  EXPECT_EQ(ProBadInputs, ProAnnotationIsShown({gear, 1, false}, gear).error);
  const auto nothing = [](const ProDimension&) { return ProNoError; };
  EXPECT_EQ(ProNoError, ProDrawingDimensionVisit(pair, false, nothing));
  EXPECT_EQ(ProNotFound, ProDrawingDimensionVisit(pair, true, nothing));
  EXPECT_EQ(ProBadInputs, ProDrawingDimensionVisit(gear, false, nothing));
  EXPECT_EQ(ProBadInputs, ProSolidDimensionVisit(pair, false, nothing));
}

}  // namespace
}  // namespace headless
