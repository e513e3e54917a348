#include "headless/model/sheet_units.h"

#include "headless/model/drawing.h"
#include "text/encoding.h"
#include "text/numbers.h"

namespace headless {
namespace {

constexpr double kTextHeight = 3.5;  // mm
constexpr double kMmAnInch = 25.4;

}  // namespace

bool isInMm(creo::ProSheetSize size) {
  using enum creo::ProSheetSize;
  return size == a4 || size == a3 || size == a2 || size == a1 || size == a0 || size == emptyMm || size == variableMm;
}

double textHeight(const ModelDocument& drawing, int sheet) {
  for (const DetailOptionRecord& option : drawing.record.detailOptions) {
    if (!sameName(option.name, "text_height") && !sameName(option.name, "drawing_text_height")) continue;
    if (const double height = text::parseDouble(text::fromUtf8(option.value)); height > 0) return height;
  }
  const SheetRecord* record = sheetOf(drawing, sheet);
  return !record || isInMm(record->size) ? kTextHeight : kTextHeight / kMmAnInch;
}

}  // namespace headless
