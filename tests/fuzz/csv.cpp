// Tables that actions read from CSV files.
#include "language/csv_table.h"

#include "fuzz/target.h"
#include "text/units.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view bytes = fuzz::bytesOf(data, size);
  const unsigned way = fuzz::choice(bytes);
  const wchar_t separator = way & 1U ? L',' : L';';
  const language::CsvTable table = language::parseCsv(bytes, separator, way & 2U ? L",ccs=UTF-8" : L"");
  constexpr std::size_t kCellUnits = 259, kFew = 50;
  for (std::size_t row = 0; row < table.rowCount(); ++row) {
    for (std::size_t column = 0; column < table.columnCount(); ++column) {
      fuzz::holds(text::units(table.cell(row, column)) <= kCellUnits, "a cell within its limit");
      fuzz::holds(table.holds(row, column) || table.cell(row, column).empty(), "what isn't there is empty");
    }
  }
  for (std::size_t column = 0; column < std::min(table.columnCount(), kFew); ++column) {
    fuzz::holds(table.column(table.header(column)) <= column, "a column is found by its title");
    std::vector<std::wstring> texts;
    for (std::size_t row = 0; row < std::min(table.rowCount(), kFew); ++row)
      texts.emplace_back(table.cell(row, column));
    std::size_t last = 0;
    for (const std::size_t row : table.rowsFor(column, texts)) {
      fuzz::holds(row < table.rowCount() && row >= last, "rows that are found are there and ascend");
      last = row;
    }
    for (const std::size_t row : table.rowsWithout(column))
      fuzz::holds(table.cell(row, column).empty(), "rows without a cell have none");
  }
  return 0;
}
