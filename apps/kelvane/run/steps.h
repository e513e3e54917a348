// What the program does with the plug-in itself, past the session. A trace has these steps among what the session
// calls, as they lead to questions too; whoever plays one takes them again.
#pragma once

#include <string_view>

#include "creo/ProTypes.h"
#include "kelvane/run/table_verdict.h"
#include "trace/line.h"

namespace kelvane::steps {

// Opening the first model would run their lists on it, in the very dialog that was opened for another one.
void leaveTriggersOut();
void clearTable();
// From this start on, beside the rows that are there.
void fillTable(creo::ProMdl start);
void countTable(creo::ProMdl model);
// What filters have to say of it was said when the table was filled: nothing is logged.
TableVerdict judge(creo::ProMdl model);

// Nothing fills the table meanwhile (run/model_table.h).
class TableHold {
 public:
  TableHold();
  ~TableHold();
  TableHold(const TableHold&) = delete;
  TableHold& operator=(const TableHold&) = delete;
};

// Takes the step of that name, or starts or ends the plug-in, as a trace says. BadLine: there is no such step, or it is
// told otherwise.
void play(std::string_view name, trace::Reading& arguments, trace::Line& result);

}  // namespace kelvane::steps
