#include "actions/drawing/sheet_entries.h"

#include <algorithm>
#include <cmath>

#include "actions/visits.h"
#include "core/log.h"
#include "language/compare.h"
#include "language/read_number.h"
#include "language/variables.h"
#include "text/format.h"
#include "text/numbers.h"

namespace actions {

using namespace language;

namespace {

constexpr int kMostEntries = 100;
constexpr double kTolerance = 5.0;
constexpr double kRounding = 1e-9;  // what the way through a matrix and back may cost

void say(std::wstring_view text) { core::logIndented(text, core::kNormal, 1); }
void error(std::wstring_view text) { core::logWrite(text, core::kError); }

// False, with a line: the entry names a sheet that can't be told.
bool readSheet(const Task& task, SheetNumbers numbers, SheetEntry& entry) {
  const auto attribute = task.numbered(L"sheet_%d", entry.number);
  if (!attribute || attribute->empty()) return true;
  Replaced replaced{.written = true, .text = std::wstring(*attribute)};
  if (numbers.replaced) replaced = replaceVariables(*attribute, task.model());
  if (replaced && replaced.text.empty()) return true;
  const auto number = replaced ? text::wholeInt(replaced.text) : std::nullopt;
  if (!number) {
    error(text::format(L"sheet_%d is no number of a sheet: %s", entry.number, *attribute));
    return false;
  }
  const bool isAll = *number == -1 || (*number == 0 && numbers.zeroIsAll);
  entry.written = *number;
  if (!isAll) entry.sheet = *number;
  return true;
}

bool fitsFormat(const SheetEntry& entry, std::wstring_view format, SheetWork work) {
  if (entry.format) return entry.format->empty() || matches(*entry.format, format);
  if (work == SheetWork::adding) error(text::format(L"fn_%d is missing", entry.number));
  return work == SheetWork::finding;
}

}  // namespace

std::vector<SheetEntry> sheetEntries(const Task& task, std::initializer_list<std::wstring_view> stems,
                                     SheetNumbers sheets) {
  std::vector<int> numbers;
  for (const std::wstring_view stem : stems)
    for (const int number : task.numbers(stem, kMostEntries)) numbers.push_back(number);
  std::sort(numbers.begin(), numbers.end());
  numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
  std::vector<SheetEntry> entries;
  for (const int number : numbers) {
    SheetEntry entry{number, task.numbered(L"fn_%d", number), {}, 0};
    if (readSheet(task, sheets, entry)) entries.push_back(entry);
  }
  return entries;
}

bool isForSheet(const Task& task, const SheetEntry& entry, int sheet, SheetWork work) {
  const bool adds = work == SheetWork::adding;
  const auto found = creo::ProDrawingFormatGet(task.model(), sheet);
  if (!creo::isTold(found)) cantRead(text::format(L"The format of sheet %d", sheet));
  const std::wstring format = found ? found.value : adds ? L"no_format" : L"";
  say(text::format(adds ? L"The format of page %d is %s." : L"The format of page %d is %s", sheet, format));
  if (!fitsFormat(entry, format, work)) return false;
  if (adds) say(text::format(L"Check Sheet %d = %d", sheet, entry.written));
  return !entry.sheet || *entry.sheet == sheet;
}

int sheetCount(creo::ProMdl drawing) {
  const auto count = creo::ProDrawingSheetsCount(drawing);
  if (count) return count.value;
  error(L"The sheets of the drawing can't be read");
  return 0;
}

std::optional<SheetFrame> sheetFrame(creo::ProMdl drawing, int sheet) {
  const auto matrix = creo::ProDrawingSheetTrfGet(drawing, sheet);
  if (matrix && matrix.value.scaleX != 0 && matrix.value.scaleY != 0) return SheetFrame{drawing, sheet, matrix.value};
  error(text::format(L"The matrix of sheet %d can't be read", sheet));
  return std::nullopt;
}

creo::ProPoint toDrawing(const SheetFrame& frame, const creo::ProPoint& onSheet) {
  const creo::ProSheetMatrix& m = frame.matrix;
  return {(onSheet.x - m.offsetX) / m.scaleX, (onSheet.y - m.offsetY) / m.scaleY};
}

creo::ProPoint toSheet(const SheetFrame& frame, const creo::ProPoint& inDrawing) {
  const creo::ProSheetMatrix& m = frame.matrix;
  return {m.scaleX * inDrawing.x + m.offsetX, m.scaleY * inDrawing.y + m.offsetY};
}

creo::ProPoint fromEdges(const SheetFrame& frame, creo::ProPoint onSheet) {
  if (onSheet.x >= 0 && onSheet.y >= 0) return onSheet;
  const auto size = creo::ProDrawingSheetInfoGet(frame.drawing, frame.sheet);
  if (!size) {
    error(text::format(L"The size of sheet %d can't be read", frame.sheet));
    return onSheet;
  }
  if (onSheet.x < 0) onSheet.x += size.value.width;
  if (onSheet.y < 0) onSheet.y += size.value.height;
  return onSheet;
}

bool isNear(const creo::ProPoint& a, const creo::ProPoint& b) {
  return std::fabs(a.x - b.x) <= kTolerance + kRounding && std::fabs(a.y - b.y) <= kTolerance + kRounding;
}

std::optional<creo::ProPoint> placeOf(const Task& task, const SheetEntry& entry, std::wstring_view xStem,
                                      std::wstring_view yStem, SheetWork work, std::optional<double> absent) {
  creo::ProPoint place;
  for (const auto& [stem, into] : {std::pair{xStem, &place.x}, std::pair{yStem, &place.y}}) {
    const std::wstring name = text::format(L"%s%d", stem, entry.number);
    if (absent && task.attribute(name).empty()) {
      *into = *absent;
      continue;
    }
    const std::wstring_view value = task.attribute(name);
    const auto number = work == SheetWork::adding ? numberIn(value) : text::wholeDouble(value);
    if (!number) {
      error(text::format(L"%s is no number: %s", name, value));
      return std::nullopt;
    }
    *into = *number;
  }
  return place;
}

}  // namespace actions
