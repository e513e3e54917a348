// What kelvane show tells of a model's relations and its program, and of its family table.
#pragma once

#include "headless/model/models.h"
#include "kelvane/show/drawing.h"

namespace kelvane {

// A line a row, with its number: relations, post relations, those of features and their sketches, the program.
std::vector<Section> relationSections(const headless::ModelRecord& record);
// Columns and rows, those of nested tables below their instance; "*" takes the generic's value. Behind the values
// stand the lock and the verification of a row.
Section familySection(const headless::Model& model);
// A text as it is, a number, "true" or "false".
std::string scalarText(const headless::Scalar& value);

}  // namespace kelvane
