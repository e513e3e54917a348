// The models that a run will visit. They live in the rows of the main dialog's table "LargeTable" and nowhere else;
// beside them stand indexes that are rebuilt with them.
#pragma once

#include <string>
#include <string_view>

#include "core/xml.h"
#include "creo/ProTypes.h"

namespace engine {

constexpr const char* kModelTable = "LargeTable";

// Walks from the start model (Creo's current one when it is null) and adds what passes. Rows that are there stay.
creo::ProError rebuildModelTable(creo::ProMdl start);
// Deletes all rows with the components of their cells.
void clearModelTable();
// Clears and rebuilds for the current model.
void refreshModelTable();

void setTypeFilters(bool part, bool assembly, bool drawing, bool instance, bool currentOnly);
struct TypeFilters { bool part = true, assembly = true, drawing = true, instance = false, currentOnly = false; };
TypeFilters readTypeFilters();

// Loads a filter file of the package ("parts.xml") for the whole table and rebuilds.
void loadGlobalFilter(std::string_view name);
void dropGlobalFilter(creo::ProMdl start);
// Takes the filter block of an action list ("clean.xml"); clears and rebuilds unless a run is starting.
void loadListFilter(std::string_view name);

// Checks out the selected rows' models where a server is active.
void checkOutSelected();

// The verdicts on models are forgotten, filters are freed; for the tool's end.
void resetModelTable();

}  // namespace engine
