// Tokens of a drawing: its current sheet and what that shows.
#include <cmath>
#include <numeric>
#include <optional>

#include "creo/ProDrawing.h"
#include "creo/ProMdl.h"
#include "language/substitution.h"
#include "text/format.h"

namespace language {
namespace {

using Value = std::optional<std::wstring>;  // none: the token stays
constexpr std::wstring_view kUnknown = L"-";

// What several tokens need, asked when the first of them does.
class SheetFacts {
 public:
  SheetFacts(creo::ProMdl model, int number) : drawing(model), sheet(number) {}
  const creo::ProMdl drawing;
  const int sheet;

  const creo::Got<creo::ProMdl>& solid() {
    if (!solid_) solid_ = creo::ProDrawingCurrentsolidGet(drawing);
    return *solid_;
  }
  const creo::Got<double>& scale() {
    if (!scale_) scale_ = solid() ? creo::ProDrawingScaleGet(drawing, solid().value, sheet) : solid().error;
    return *scale_;
  }

 private:
  std::optional<creo::Got<creo::ProMdl>> solid_;
  std::optional<creo::Got<double>> scale_;
};

Value textOr(const creo::Got<std::wstring>& text) { return text ? text.value : std::wstring(kUnknown); }

Value sheetNumber(SheetFacts& facts) { return text::format(L"%d", facts.sheet); }
Value sheetsCount(SheetFacts& facts) {
  const auto count = creo::ProDrawingSheetsCount(facts.drawing);
  return count ? Value(text::format(L"%d", count.value)) : Value();
}
Value solidName(SheetFacts& facts) {
  const auto& solid = facts.solid();
  return textOr(solid ? creo::ProMdlNameGet(solid.value) : solid.error);
}
Value solidExtension(SheetFacts& facts) {
  const auto type = facts.solid() ? creo::ProMdlTypeGet(facts.solid().value) : facts.solid().error;
  if (!type || !creo::ProMdlNameGet(facts.solid().value)) return std::wstring(kUnknown);
  return creo::typeExtension(type.value);
}
Value sheetName(SheetFacts& facts) { return textOr(creo::ProDrawingSheetNameGet(facts.drawing, facts.sheet)); }
Value sheetFormat(SheetFacts& facts) { return textOr(creo::ProDrawingFormatGet(facts.drawing, facts.sheet)); }

Value sheetSize(SheetFacts& facts) {
  static constexpr struct {
    creo::ProSheetSize size;
    std::wstring_view name;
  } kNames[] = {
      {creo::ProSheetSize::a0, L"A0"},         {creo::ProSheetSize::a1, L"A1"},
      {creo::ProSheetSize::a2, L"A2"},         {creo::ProSheetSize::a3, L"A3"},
      {creo::ProSheetSize::a4, L"A4"},         {creo::ProSheetSize::a, L"A"},
      {creo::ProSheetSize::b, L"B"},           {creo::ProSheetSize::c, L"C"},
      {creo::ProSheetSize::d, L"D"},           {creo::ProSheetSize::e, L"E"},
      {creo::ProSheetSize::f, L"F"},           {creo::ProSheetSize::variable, L"var %.6f:%.6f"},
      {creo::ProSheetSize::empty, L"empty"},   {creo::ProSheetSize::variableMm, L"var %.6f:%.6f"},
      {creo::ProSheetSize::emptyMm, L"empty"},
  };
  const auto size = creo::ProDrawingSheetSizeGet(facts.drawing, facts.sheet);
  for (const auto& row : kNames)
    if (size && row.size == size.value.size) return text::format(row.name, size.value.width, size.value.height);
  return std::wstring(kUnknown);
}

Value scale(SheetFacts& facts) {
  const auto& scale = facts.scale();
  return scale ? text::format(L"%.6f", scale.value) : std::wstring(kUnknown);
}

// The scale as a ratio: 0.5 is "1:2".
Value scaleRatio(SheetFacts& facts) {
  constexpr long long kDenominator = 30000000;
  const auto& scale = facts.scale();
  const double numerator = scale ? scale.value * kDenominator : 0;
  if (!scale || !(std::fabs(numerator) < 1e18)) return std::wstring(kUnknown);
  const auto whole = static_cast<long long>(numerator);
  const long long divisor = std::gcd(whole, kDenominator);
  return text::format(L"%d:%d", whole / divisor, kDenominator / divisor);
}

struct DrawingToken {
  std::wstring_view token;
  Value (*value)(SheetFacts& facts);
};
constexpr DrawingToken kDrawingTokens[] = {
    {L"@sheetno@", &sheetNumber},
    {L"@pageno@", &sheetNumber},
    {L"@maxpage@", &sheetsCount},
    {L"@curdrwmdln@", &solidName},
    {L"@curdrwmdltype@", &solidExtension},
    {L"@cursheetname@", &sheetName},
    {L"@cursheetsize@", &sheetSize},
    {L"@cursheetcurmdlscale@", &scale},
    {L"@cursheetcurmdlscaleISO@", &scaleRatio},
    {L"@cursheetformat@", &sheetFormat},
};

}  // namespace

bool drawingTokens(Substitution& call) {
  std::optional<creo::Got<int>> current;
  std::optional<SheetFacts> facts;
  for (const DrawingToken& row : kDrawingTokens) {
    if (!call.holds(row.token)) continue;
    if (!current) {
      current = creo::ProDrawingCurrentSheetGet(call.model);
      facts.emplace(call.model, current->value);
    }
    const Value value = *current ? row.value(*facts) : Value(kUnknown);
    if (value && !call.replace(row.token, *value)) return false;
  }
  return true;
}

}  // namespace language
