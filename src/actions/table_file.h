// The table that an action reads: a CSV file, or a workbook, that its attribute `path` names.
#pragma once

#include "actions/task.h"
#include "core/attribute.h"
#include "language/csv_table.h"

namespace actions {

// The table of `path` (with variables; "@project_dir@" is the package's folder reports), in the form that the task
// tells. A workbook is converted first. Null, with a line: unreadable.
const language::CsvTable* tableOf(const Task& task);

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

}  // namespace actions
