#include "actions/table_file.h"

#include "actions/output_file.h"
#include "language/workbook.h"

namespace actions {

const language::CsvTable* tableOf(const Task& task) {
  return language::tableAt(wholePath(task.path(L"path", L"reports")), language::tableForm(task.node()));
}

}  // namespace actions
