// The predicate "sheetsize".
#include <cmath>

#include "core/log.h"
#include "creo/ProDrawing.h"
#include "documents/predicate_families.h"
#include "documents/predicate_words.h"
#include "language/compare.h"
#include "text/format.h"
#include "text/numbers.h"

namespace documents {
namespace {

using core::Message;

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
  if (!matches(language::kDoublePattern, value)) {
    core::logMsgPlain(Message::noDouble, core::kError);
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

Answer sheetSizePredicate(const Question& question) {
  const auto sheet = creo::ProDrawingCurrentSheetGet(question.model);
  if (!sheet) {
    core::logWrite(L"ProDrawingCurrentSheetGet - PRO_TK_ERROR", core::kError);
    return Answer::no;
  }
  const auto size = creo::ProDrawingSheetSizeGet(question.model, sheet.value);
  if (!size) {
    core::logWrite(L"ProDrawingSheetSizeGet - PRO_TK_ERROR", core::kError);
    return Answer::no;
  }
  const bool fits = passesAll(question.item, {L"hs", L"he", L"hb"}, size.value.height) &&
                    passesAll(question.item, {L"ws", L"we", L"wb"}, size.value.width);
  core::logMsgId(fits ? Message::found : Message::notTheRightOne, core::kDebug, 1);
  return answer(fits);
}

constexpr Attribute kSheetSize[] = {
    {.name = L"hs", .kind = Kind::measure, .need = Need::oneOf, .about = "the height is above it"},
    {.name = L"he", .kind = Kind::measure, .need = Need::oneOf, .about = "the height equals it"},
    {.name = L"hb", .kind = Kind::measure, .need = Need::oneOf, .about = "the height is below it"},
    {.name = L"ws", .kind = Kind::measure, .need = Need::oneOf, .about = "the width is above it"},
    {.name = L"we", .kind = Kind::measure, .need = Need::oneOf, .about = "the width equals it"},
    {.name = L"wb", .kind = Kind::measure, .need = Need::oneOf, .about = "the width is below it"},
};

constexpr Predicate kPredicates[] = {
    {.key = L"sheetsize",
     .place = 12,
     .title = Message::filterSheetSize,
     .models = Models::drawings,
     .attributes = kSheetSize,
     .about = "height and width of the current sheet lie between bounds",
     .function = &sheetSizePredicate},
};

}  // namespace

std::span<const Predicate> sheetPredicates() { return kPredicates; }

}  // namespace documents
