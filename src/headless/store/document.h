// The document of a model: from bytes to records and back.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "headless/store/records.h"

namespace headless {

// Brings a tree of one format to the next one.
struct Migration {
  int from = 0;
  void (*run)(Json& document) = nullptr;
};
// Those that this version knows, in ascending order.
std::span<const Migration> knownMigrations();

// The word that documents use for a status.
std::string_view textOf(creo::ProFeatureStatus status);

// Reads a document of any format up to the current one. `into` is meaningful only without a fault.
JsonFault readDocument(std::string_view source, ModelRecord& into,
                       std::span<const Migration> migrations = knownMigrations());
// The same record gives the same bytes; a closing line feed stands at the end. Empty: the record holds a number that
// isn't finite, and what no document can say must not be written.
std::string writeDocument(const ModelRecord& record);
// What a document of the same bytes would be read as, at once.
ModelRecord copyOf(const ModelRecord& record);
// A JSON Schema (2020-12) of model documents, without its last line's end.
std::string modelSchema();
// Gives a document the unknown members of a row of its family table; a name that documents have stays out.
void addUnknownMembers(ModelRecord& record, const RowRecord& row);

// Calls f(RowRecord&) for each row of a table, those of nested tables among them, parents first.
template <class F>
void eachRow(FamilyTableRecord& table, F&& f) {
  for (const auto& row : table.instances) {
    f(*row);
    if (row->familyTable) eachRow(*row->familyTable, f);
  }
}

}  // namespace headless
