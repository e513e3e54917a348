#include <gtest/gtest.h>

#include "creo/ProDrawing.h"
#include "creo/ProMdl.h"
#include "language/variables.h"
#include "support/drawings.h"
#include "text/encoding.h"

namespace language {
namespace {

using creo::ProMdlType;

class DrawingTokens : public testing::Test {
 protected:
  void SetUp() override {
    test::writePair(world.models());
    world.start();
    pair = world.open(L"PAIR", ProMdlType::drawing);
  }
  static std::wstring replaced(const std::wstring& input, creo::ProMdl model) {
    const Replaced out = replaceVariables(input, model);
    return out ? out.text : L"failed";
  }

  test::World world;
  creo::ProMdl pair;
};

TEST_F(DrawingTokens, TellTheCurrentSheet) {
  const struct {
    int sheet;
    const wchar_t *input, *expected;
  } cases[] = {
      {1, L"@sheetno@/@maxpage@ @pageno@", L"1/3 1"},
      {1, L"@cursheetname@ @cursheetformat@ @cursheetsize@", L"FRONT frame_a3 A3"},
      {3, L"@cursheetname@ @cursheetformat@ @cursheetsize@", L"SHEET3 - var 500.000000:250.000000"},
      {2, L"@curdrwmdln@.@curdrwmdltype@", L"PINION.PRT"},
      {2, L"@cursheetcurmdlscale@ @cursheetcurmdlscaleISO@", L"2.000000 2:1"},
      {1, L"@cursheetcurmdlscale@ @cursheetcurmdlscaleISO@", L"5.000000 5:1"},
      {1, L"@SHEETNO@ @mdltype@", L"@SHEETNO@ drw"},
  };
  for (const auto& c : cases) {
    ASSERT_EQ(creo::ProNoError, creo::ProDrawingCurrentSheetSet(pair, c.sheet));
    EXPECT_EQ(c.expected, replaced(c.input, pair)) << text::toUtf8(c.input);
  }
  const creo::ProMdl part = world.open(L"GEAR", ProMdlType::part);
  EXPECT_EQ(L"@sheetno@ @curdrwmdln@", replaced(L"@sheetno@ @curdrwmdln@", part));
}

TEST_F(DrawingTokens, WriteScalesAsRatiosAndSizesByName) {
  const struct {
    const char* sheet;
    const wchar_t *ratio, *size;
  } cases[] = {
      {R"("scale": 0.5, "size": "A0")", L"1:2", L"A0"},
      {R"("scale": 0.7, "size": "A1")", L"7:10", L"A1"},
      {R"("scale": 0.333333333333333333, "size": "A2")", L"1:3", L"A2"},
      {R"("scale": 2.5, "size": "A")", L"5:2", L"A"},
      {R"("scale": 100, "size": "F")", L"100:1", L"F"},
      {R"("scale": 200, "size": "empty")", L"200:1", L"empty"},
      {R"("scale": 0, "size": "emptyMm")", L"0:1", L"empty"},
      {R"("scale": 1e300, "size": "variable")", L"-", L"var 0.000000:0.000000"},
      {R"("scale": 0.00000001, "size": "E")", L"0:1", L"E"},
  };
  int number = 0;
  for (const auto& c : cases) {
    const std::string name = "one" + std::to_string(++number);
    test::writeBytes(
        world.models() + "/" + name + ".drw.1",
        std::string(R"({"format": 1, "models": [{"name": "GEAR", "type": "prt"}], "sheets": [{)") + c.sheet + "}]}");
    const creo::ProMdl drawing = creo::ProMdlRetrieve(text::fromUtf8(name), ProMdlType::drawing).value;
    EXPECT_EQ(std::wstring(c.ratio) + L" " + c.size, replaced(L"@cursheetcurmdlscaleISO@ @cursheetsize@", drawing))
        << c.sheet;
  }
}

TEST_F(DrawingTokens, ReadADashWhereTheirSourceFailsAndAskNothingInVain) {
  const struct {
    const char* operation;
    const wchar_t *input, *expected;
  } cases[] = {
      {"ProDrawingCurrentSheetGet", L"@sheetno@@pageno@@maxpage@@curdrwmdln@@curdrwmdltype@", L"-----"},
      {"ProDrawingCurrentSheetGet",
       L"@cursheetname@@cursheetsize@@cursheetcurmdlscale@@cursheetcurmdlscaleISO@@cursheetformat@", L"-----"},
      {"ProDrawingSheetsCount", L"@maxpage@", L"@maxpage@"},
      {"ProDrawingCurrentsolidGet", L"@curdrwmdln@ @curdrwmdltype@ @cursheetcurmdlscale@", L"- - -"},
      {"ProDrawingSheetNameGet", L"@cursheetname@ @sheetno@", L"- 2"},
      {"ProDrawingSheetSizeGet", L"@cursheetsize@", L"-"},
      {"ProDrawingScaleGet", L"@cursheetcurmdlscale@ @cursheetcurmdlscaleISO@", L"- -"},
      {"ProDrawingFormatGet", L"@cursheetformat@", L"-"},
  };
  for (const auto& c : cases) {
    world.session().failNext(c.operation, creo::ProGeneralError);
    EXPECT_EQ(c.expected, replaced(c.input, pair)) << c.operation;
  }
  const int before = world.session().calls("ProDrawingCurrentSheetGet");
  EXPECT_EQ(L"PAIR @ @x@", replaced(L"@mdln@ @ @x@", pair));
  EXPECT_EQ(before, world.session().calls("ProDrawingCurrentSheetGet"));
}

}  // namespace
}  // namespace language
