// Workbooks (".xls", ".xlsx", ".ods") that become CSV files for the time of a run, and the tables that actions name by
// `path`.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "core/attribute.h"
#include "language/csv_table.h"
#include "actions/task.h"

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
TableForm tableForm(const XmlNode& task);

// The table that a task names: `path` (with variables; "@project_dir@" is the package's folder reports), in its
// form. A workbook is converted first. Null, with a line: unreadable.
const CsvTable* tableOf(const Task& task);
// The attributes that say it, for the rows of actions.
constexpr core::Attribute kTableFile[] = {
    {.name = L"path",
     .kind = core::Kind::file,
     .variables = true,
     .need = core::Need::needed,
     .folder = L"reports",
     .about = "the table: a CSV file, or a workbook"},
    {.name = L"sep",
     .kind = core::Kind::word,
     .words = L"com|sem|;",
     .about = "com: a comma between fields; else a semicolon"},
    {.name = L"filetype", .kind = core::Kind::word, .words = L"1|0", .about = "1: UTF-8; else Windows-1252"},
};

}  // namespace language
