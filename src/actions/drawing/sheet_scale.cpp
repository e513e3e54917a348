// The scale of a drawing's sheets.
#include <cmath>

#include "actions/task.h"
#include "core/log.h"
#include "creo/ProDrawing.h"
#include "creo/ProDrawingSheet.h"
#include "text/format.h"
#include "text/numbers.h"
#include "text/pieces.h"

namespace actions {
namespace {

// "1:2", or a number.
std::optional<double> scaleIn(std::wstring_view text) {
  const auto parts = text::split(text, L':');
  const auto number = text::wholeDouble(parts[0]);
  if (!number || parts.size() > 2) return std::nullopt;
  const auto over = parts.size() == 2 ? text::wholeDouble(parts[1]) : 1;
  if (!over || *number <= 0 || *over <= 0) return std::nullopt;
  const double scale = *number / *over;
  if (!std::isfinite(scale) || scale <= 0) return std::nullopt;
  return scale;
}

struct Sheets {
  int first = 1, last = 0;
};

// The one with the number in `sheet`, which is absent, empty, 0 or -1 for all of them. Nothing, with an error line: the
// drawing has no such sheet.
std::optional<Sheets> wantedSheets(const Task& task) {
  const auto count = creo::ProDrawingSheetsCount(task.model());
  if (!count) {
    core::logWrite(L"The sheets of the drawing can't be read", core::kError);
    return std::nullopt;
  }
  if (text::trimmed(task.attribute(L"sheet")).empty()) return Sheets{1, count.value};
  const auto written = task.text(L"sheet");
  const auto number = text::wholeDouble(written.hasText() ? std::wstring_view(written.text) : L"");
  if (number && (*number == 0 || *number == -1)) return Sheets{1, count.value};
  if (number && *number >= 1 && *number <= count.value && std::floor(*number) == *number)
    return Sheets{static_cast<int>(*number), static_cast<int>(*number)};
  core::logWrite(text::format(L"The drawing has no sheet '%s'", written.hasText() ? written.text : std::wstring()),
                 core::kError);
  return std::nullopt;
}

Outcome setSheetScale(const Task& task) {
  const auto written = task.text(L"scale");
  const auto scale = scaleIn(written.hasText() ? std::wstring_view(written.text) : L"");
  if (!scale) {
    core::logWrite(text::format(L"'scale' can't be '%s', but 1:2 or a number above 0", task.attribute(L"scale")),
                   core::kError);
    return done;
  }
  const auto sheets = wantedSheets(task);
  if (!sheets) return done;
  for (int sheet = sheets->first; sheet <= sheets->last; ++sheet)
    if (creo::ProDrawingSheetScaleSet(task.model(), sheet, *scale) == creo::ProNoError)
      core::logIndented(text::format(L"Scale of sheet %d is set to %s", sheet, text::trimmed(written.text)),
                        core::kNormal, 1);
    else
      core::logWrite(text::format(L"The scale of sheet %d can't be set", sheet), core::kError);
  return done;
}

constexpr Attribute kAttributes[] = {
    {.name = L"sheet",
     .kind = Kind::integer,
     .variables = true,
     .about = "the number of a sheet; absent, empty, 0 or -1: all sheets"},
    {.name = L"scale",
     .kind = Kind::numbers,
     .variables = true,
     .need = Need::oneOf,
     .about = "1:2, or a number above 0"},
};

constexpr Action kActions[] = {
    {.key = L"setSheetScale",
     .place = 89,
     .title = L"Set sheet scale",
     .conditions = {kFilter, kDrawings, kAnyOfTheWork},
     .attributes = kAttributes,
     .effects = {.changes = Touched::model},
     .about = "sets the scale of sheets; views with a scale of their own keep it",
     .function = &setSheetScale},
};

}  // namespace

std::span<const Action> sheetScaleActions() { return kActions; }

}  // namespace actions
