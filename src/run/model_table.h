// The models that a run will visit. They live in the rows of the main dialog's table "LargeTable" and nowhere else;
// beside them stand indexes that are emptied with them.
#pragma once

#include <string>
#include <string_view>

#include "core/xml.h"
#include "creo/ProTypes.h"
#include "run/model_row.h"

namespace run {

// Walks from the start model (Creo's current one when it is null) and adds what passes. Rows that are there stay, and
// models that an earlier start led to under the same flags and filters aren't walked again: filling the table from many
// starts costs one walk over all of them. A start that is given again is walked anew. Returns the last failure of the
// dialog, or why there is no start.
creo::ProError rebuildModelTable(creo::ProMdl start);
// From here on the table counts as built for that model: it isn't rebuilt when the model comes before the person, and a
// run on it is no run on a foreign one. ProBadInputs: the handle has gone, and nothing changes.
creo::ProError countTableFor(creo::ProMdl model);
// Deletes all rows with the components of their cells.
void clearModelTable();
// Clears and rebuilds for the current model, unless the filling is held back.
void refreshModelTable();
// For as long as one lives a choice of package, list or filter, or another current model, doesn't fill the table: a
// package brings its first list with it, and filters of a list that nobody runs would judge, and may change, all
// models. Who holds the filling back fills the table himself in the end.
class TableHold {
 public:
  TableHold();
  ~TableHold();
  TableHold(const TableHold&) = delete;
  TableHold& operator=(const TableHold&) = delete;
};
// A filling was held back, and none has come since: the rows are those of an earlier choice.
bool tableIsBehind();
// Whether a walk fills the table right now. Filters that judge its models regenerate and erase some of them: no event
// of that kind may take the table, or the filter that judges, away meanwhile.
bool tableIsBeingFilled();

void setTypeFilters(bool part, bool assembly, bool drawing, bool instance, bool currentOnly);
struct TypeFilters {
  bool part = true, assembly = true, drawing = true, instance = false, currentOnly = false;
};
TypeFilters readTypeFilters();

// Loads a filter file of the package ("parts.xml") for the whole table, clears and rebuilds. A file that can't be read,
// or has no element, is an error line and refuses every model; one without items is a warning line and lets all pass.
void loadGlobalFilter(std::string_view name);
// Forgets it, clears and rebuilds.
void dropGlobalFilter(creo::ProMdl start);
// Loads it, or with an empty name forgets it, and leaves the rows as they are.
void setGlobalFilter(std::string_view name);
// Takes the filter block of an action list ("clean.xml"); clears and rebuilds unless a run is starting.
void loadListFilter(std::string_view name);

// How the table takes a model under its present buttons and filters.
enum class RowVerdict {
  selected,
  alreadyReworked,  // it has a row that starts unselected: its history holds the list
  typeIsOff,        // the button of its type is off, or the type has no rows
  filterUnreadable,
  filterRefuses,      // the filter file of the package
  listFilterRefuses,  // the list's own filter
  instancesAreOff,
};
RowVerdict judgeModel(creo::ProMdl model);
// The block that judges now: that of the filter file, else that of the list where it is in force; null: none does.
const core::XmlNode* filterInForce();

// Checks out the models of the rows whose check button is set, where a server is active, and redraws their states.
void checkOutSelected();

// All indexes and filters are forgotten, without a call to the dialog; for the tool's end.
void resetModelTable();

}  // namespace run
