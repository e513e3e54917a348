// The rows that a table's repeat region makes of one: a parts list.
#pragma once

#include <optional>
#include <vector>

#include "headless/model/model.h"
#include "headless/model/parameters.h"

namespace headless {

class Models;  // models.h

// Rows of a table as a sheet shows them, and their cells, whose texts of the region are replaced.
struct RepeatedRows {
  std::vector<double> rows;  // heights, in the drawing's units
  std::vector<CellRecord> cells;
};

// A row with one of the region's forms stands once for each model that the region's assembly is made of, in the order
// of the features; the rows below move down:
//   &rpt.index                     its number in the list, from 1
//   &rpt.qty                       how many components are of that model
//   &asm.mbr.name, &asm.mbr.type   the model's name, and PART or ASSEM
//   &asm.mbr.NAME                  its parameter; empty where it has none
// What is suppressed, a skeleton, or left out of the representation in memory isn't listed. Nothing: the table has no
// region with such a row, or the region's model is no assembly that can be read.
std::optional<RepeatedRows> repeatedRows(Models& models, const Parameters& parameters, const Model& drawing,
                                         const TableRecord& table);

}  // namespace headless
