// The predicate "sheetsize".
#include <cmath>

#include "core/log.h"
#include "creo/ProDrawing.h"
#include "documents/predicate_families.h"
#include "documents/predicate_words.h"
#include "engine/compare.h"
#include "text/format.h"
#include "text/numbers.h"

namespace documents {
namespace {

constexpr int kNoDouble = 26, kTitleSheetSize = 40, kSizeFits = 43, kSizeDiffers = 44;

// A test of a measure against an attribute's value, with the line of one that passes.
struct Test {
  bool (*passes)(double value, double measure);
  std::wstring_view line;
  std::wstring_view sign;  // how the sheet's measure must stand to the value
};
constexpr Test kSmaller = {[](double value, double measure) { return measure > value; }, L"< TRUE", L">"};
constexpr Test kEqual = {[](double value, double measure) { return std::fabs(value - measure) < 0.05; }, L"= TRUE",
                         L"="};
constexpr Test kBigger = {[](double value, double measure) { return value > measure; }, L"> TRUE", L"<"};

bool passes(const Test& test, std::wstring_view value, double measure) {
  if (measure == 0) {
    core::logWrite(L"height or width == 0", core::kDebug);
    return false;
  }
  if (value.empty()) return true;
  if (!matches(engine::kDoublePattern, value)) {
    core::logMsgPlain(kNoDouble, core::kError);
    return false;
  }
  const double wanted = text::parseDouble(value);
  core::logWrite(text::format(L"%f - %f", wanted, measure), core::kDebug);
  const bool passed = noted(test.sign, value, measure, test.passes(wanted, measure));
  core::logWrite(passed ? test.line : L"<>= FALSE", core::kDebug);
  return passed;
}

struct AxisAttributes {
  std::wstring_view smaller, equal, bigger;
};
bool passesAll(const core::XmlNode& item, const AxisAttributes& names, double measure) {
  return passes(kSmaller, valueOf(item, names.smaller), measure) &&
         passes(kEqual, valueOf(item, names.equal), measure) && passes(kBigger, valueOf(item, names.bigger), measure);
}

}  // namespace

int sheetSizePredicate(creo::ProMdl model, const core::XmlNode& item) {
  title(kTitleSheetSize);
  if (!applicableType(model, AppliesTo::drawings)) return kNotApplicable;
  const auto sheet = creo::ProDrawingCurrentSheetGet(model);
  if (!sheet) {
    core::logWrite(L"ProDrawingCurrentSheetGet - PRO_TK_ERROR", core::kError);
    return kFalse;
  }
  const auto size = creo::ProDrawingSheetSizeGet(model, sheet.value);
  if (!size) {
    core::logWrite(L"ProDrawingSheetSizeGet - PRO_TK_ERROR", core::kError);
    return kFalse;
  }
  const bool fits = passesAll(item, {L"hs", L"he", L"hb"}, size.value.height) &&
                    passesAll(item, {L"ws", L"we", L"wb"}, size.value.width);
  core::logMsgId(fits ? kSizeFits : kSizeDiffers, core::kDebug, 1);
  return fits ? kTrue : kFalse;
}

}  // namespace documents
