// Workbooks (".xls", ".xlsx", ".ods") that become CSV files for the time of a run, and tables in either form.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "core/xml.h"
#include "language/csv_table.h"

namespace language {

// By its ending, in either case.
bool isWorkbook(std::wstring_view path);
// 0: out names a readable file; 1: this workbook was converted already in this run, out names the result; -1, with a
// line: neither. A file that is no workbook leaves out as it is. The conversion is the site's script "xls2csv.vbs" in
// the configuration folder, started once a run for each workbook, in a dry run too; its results lie in the temp folder,
// as "name_xls.csv" or "name_xlsx.csv". outSize: room of out in UTF-16 units, its zero included; a longer result is a
// failure.
int convertWorkbook(std::wstring& out, std::size_t outSize, std::wstring_view path);
// Removes what this run converted; at its end.
void deleteConvertedFiles();

// How a task says that its table is to be read: `sep` "com" for a comma, else a semicolon, `filetype` "1" for UTF-8.
struct TableForm {
  wchar_t separator = L';';
  std::wstring_view encoding;  // for parseCsv
};
TableForm tableForm(const core::XmlNode& task);

// The table of a file in that form, which a workbook doesn't need: it is converted first. Null, with a line:
// unreadable.
const CsvTable* tableAt(const std::wstring& path, const TableForm& form);

}  // namespace language
