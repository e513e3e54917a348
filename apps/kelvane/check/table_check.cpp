#include "kelvane/check/table_check.h"

#include <algorithm>

#include "core/log.h"
#include "kelvane/check/text_check.h"
#include "kelvane/log/captured_log.h"
#include "language/csv_table.h"
#include "language/workbook.h"
#include "text/encoding.h"

namespace kelvane {
namespace {

constexpr std::string_view kReaders[] = {"editModelParameterFromFile", "editParameterFromDictionary",
                                         "editModelDimensionFromFile", "editMaterialFromFile",
                                         "editModelNotesFromFile"};
// The columns whose cells name models.
constexpr std::wstring_view kModelColumns[] = {L"model name", L"file name", L"filename"};

}  // namespace

bool readsTable(std::string_view type) {
  return std::find(std::begin(kReaders), std::end(kReaders), type) != std::end(kReaders);
}

std::vector<std::string> tableFaults(const core::XmlNode& task, const std::string& bytes) {
  CapturedLog log;
  std::vector<std::string> faults;
  const language::TableForm form = language::tableForm(task);
  const language::CsvTable table = language::parseCsv(bytes, form.separator, form.encoding);
  for (const TroubleLine& line : log.takeTrouble())
    if (line.level == core::kError) faults.push_back(line.text);
  for (const std::wstring_view title : kModelColumns) {
    const std::size_t column = table.column(title);
    for (std::size_t row = 0; column < table.columnCount() && row < table.rowCount(); ++row) {
      const std::wstring_view cell = table.cell(row, column);
      const std::string fault = patternFault(cell);
      if (!fault.empty())
        faults.push_back("'" + text::toUtf8(title) + "': " + fault + ": '" + text::toUtf8(cell) + "'");
    }
  }
  return faults;
}

}  // namespace kelvane
