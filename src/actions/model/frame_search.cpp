#include "actions/model/frame_search.h"

#include <algorithm>
#include <unordered_map>

#include "core/log.h"
#include "creo/ProDwgtable.h"
#include "creo/ProMdl.h"
#include "creo/guards.h"
#include "language/table_location.h"
#include "text/format.h"
#include "text/letters.h"
#include "text/numbers.h"
#include "text/pieces.h"

namespace actions {
namespace {

using creo::ProDwgtable;
using creo::ProDwgtableText;

constexpr double kCellWidth = 10.0, kCellHeight = 1.0;

void say(std::wstring_view text, int depth = 2) { core::logIndented(text, core::kNormal, depth); }
void error(std::wstring_view text) { core::logWrite(text, core::kError); }

bool isDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }
bool isNamePart(wchar_t c) { return isDigit(c) || c == L'_' || (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z'); }

std::optional<int> numberAt(std::wstring_view line, std::size_t at) {
  if (at >= line.size() || !isDigit(line[at])) return std::nullopt;
  return text::parseInt(line.substr(at));
}

struct Numbers {
  std::optional<int> first;
  int conflicts = 0;
  void add(int number) {
    core::logWrite(text::format(L"Number : %d", number), core::kDebug);
    if (!first) first = number;
    if (*first != number) ++conflicts;
  }
};

// False: a cell couldn't be read.
bool addNumbers(const ProDwgtable& table, Numbers& numbers) {
  const auto rows = creo::ProDwgtableRowsCount(table), columns = creo::ProDwgtableColumnsCount(table);
  if (!rows || !columns) return false;
  for (int row = 1; row <= rows.value; ++row)
    for (int column = 1; column <= columns.value; ++column) {
      const auto lines = language::cellLines(table, column, row, ProDwgtableText::symbolic);
      if (!lines) return false;
      for (const std::wstring& line : lines.value)
        if (const auto number = modelNumberIn(line)) numbers.add(*number);
    }
  return true;
}

// The tables of formats, by the sheet that they begin on; one whose sheet isn't known stands under the first.
std::optional<std::unordered_map<int, std::vector<ProDwgtable>>> formatTables(creo::ProMdl drawing) {
  std::unordered_map<int, std::vector<ProDwgtable>> bySheet;
  const creo::ProError result = creo::ProDrawingTableVisit(drawing, [&](const ProDwgtable& table) {
    const auto fromFormat = creo::ProDwgtableIsFromFormat(table);
    if (!fromFormat) return fromFormat.error;
    const auto sheet = creo::ProDwgtableSegSheetGet(table, 0);
    if (fromFormat.value) bySheet[sheet ? sheet.value : 1].push_back(table);
    return creo::ProNoError;
  });
  if (result != creo::ProNoError && result != creo::ProNotFound) return std::nullopt;
  return bySheet;
}

// The one number that all frames name. Each sheet is current while its tables are read. What can't be read could name
// another model: then there is none.
std::optional<int> numberOfFrames(creo::ProMdl drawing) {
  const auto sheets = creo::ProDrawingSheetsCount(drawing);
  const auto tables = formatTables(drawing);
  const auto before = creo::ProDrawingCurrentSheetGet(drawing);  // what isn't known couldn't be put back
  creo::SheetGuard current(drawing);
  Numbers numbers;
  bool readAll = sheets && tables && before;
  for (int sheet = 1; readAll && sheet <= sheets.value; ++sheet) {
    readAll = current.change(sheet) == creo::ProNoError;
    const auto own = tables->find(sheet);
    if (own == tables->end()) continue;
    for (const ProDwgtable& table : own->second) readAll = readAll && addNumbers(table, numbers);
  }
  if (!readAll) {
    error(L"The frames can't be read");
    return std::nullopt;
  }
  if (numbers.first && numbers.conflicts == 0) return numbers.first;
  core::logWrite(L"Found multiple possible models", core::kWarning);
  return std::nullopt;
}

// A table of one cell, for what Creo shows in place of a text. It goes with the object.
class OneCellTable {
 public:
  explicit OneCellTable(creo::ProMdl drawing)
      : table_(creo::ProDrawingTableCreate(drawing, {}, {kCellWidth}, {kCellHeight})) {}
  ~OneCellTable() {
    if (!table_) return;
    // Nothing may be left in the drawing: a refusal is tried once more.
    if (creo::ProDwgtableDelete(table_.value, true) == creo::ProNoError) return;
    if (creo::ProDwgtableDelete(table_.value, true) != creo::ProNoError)
      error(L"The table that was made to find the model can't be deleted");
  }
  OneCellTable(const OneCellTable&) = delete;
  OneCellTable& operator=(const OneCellTable&) = delete;
  [[nodiscard]] bool isThere() const { return static_cast<bool>(table_); }
  // Empty where Creo refuses.
  [[nodiscard]] std::wstring shown(const std::wstring& entered) const {
    if (creo::ProDwgtableTextEnter(table_.value, 1, 1, {entered}) != creo::ProNoError) return {};
    return text::join(creo::ProDwgtableCelltextGet(table_.value, 1, 1, ProDwgtableText::displayed).value, L"");
  }

 private:
  creo::Got<ProDwgtable> table_;
};

// Does Creo's word for a type speak against that of a model? A part and an assembly may have one name.
bool isOtherType(std::wstring_view word, creo::ProMdl model) {
  const auto type = creo::ProMdlTypeGet(model);
  if (word == L"PART") return type && type.value != creo::ProMdlType::part;
  if (word == L"ASSEM") return type && type.value != creo::ProMdlType::assembly;
  return false;
}

}  // namespace

std::optional<creo::ProMdl> modelOfFrames(creo::ProMdl drawing, const std::vector<creo::ProMdl>& models) {
  const auto number = numberOfFrames(drawing);
  return number ? modelOfNumber(drawing, models, *number, core::kError) : std::nullopt;
}

std::optional<int> modelNumberIn(std::wstring_view line) {
  const std::size_t first = line.find(L':');
  const std::size_t second = first == line.npos ? first : line.find(L':', first + 1);
  if (second != line.npos)
    if (const auto number = numberAt(line, second + 1)) return number;
  for (std::size_t sign = line.find(L'&'); sign != line.npos; sign = line.find(L'&', sign + 1)) {
    std::size_t end = sign + 1;
    while (end < line.size() && isNamePart(line[end])) ++end;
    if (end == sign + 1 || end >= line.size() || line[end] != L':') continue;
    if (const auto number = numberAt(line, end + 1)) return number;
  }
  return std::nullopt;
}

std::optional<creo::ProMdl> modelOfNumber(creo::ProMdl drawing, const std::vector<creo::ProMdl>& models, int number,
                                          int failureLevel) {
  say(L"Found a single model that should be the right one");
  const OneCellTable table(drawing);
  if (!table.isThere()) {
    if (failureLevel == core::kNormal)
      say(L"table creation failure", 1);
    else
      core::logWrite(L"table creation failure", failureLevel);
    return std::nullopt;
  }
  say(L"table created");
  const std::wstring name = table.shown(text::format(L"&model_name:%d", number));
  const std::wstring type = table.shown(text::format(L"&type:%d", number));
  say(name);
  say(type);
  const auto found = std::find_if(models.begin(), models.end(), [&](creo::ProMdl model) {
    const auto own = creo::ProMdlNameGet(model);
    return own && text::equalNoCase(own.value, name) && !isOtherType(type, model);
  });
  return found == models.end() ? std::nullopt : std::optional(*found);
}

}  // namespace actions
