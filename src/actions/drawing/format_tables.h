// Tables of formats while a sheet's format is exchanged: which of them stay.
#pragma once

#include <optional>
#include <string_view>

#include "creo/ProDwgtable.h"

namespace actions {

// What an entry's `tab_N` says about a table of a format: where it stands, "x:y" or "x:y:tolerance" in the drawing's
// coordinates, or what all lines of a cell say, "row!!column!!pattern".
struct FormatTableRule {
  bool isCell = false;
  double x = 0, y = 0, tolerance = 5.0;
  int row = 0, column = 0;
  std::wstring_view pattern;
};
// Nothing for a text of neither form, or one with other than whole numbers in their places.
std::optional<FormatTableRule> formatTableRule(std::wstring_view text);

// Before the new format: deletes the tables of the sheet's format but those that the rule is about; without a rule all.
void deleteFormatTables(creo::ProMdl drawing, int sheet, const std::optional<FormatTableRule>& rule);
// Behind the new format: deletes those of its tables that the rule is about, as the former ones stayed.
void deleteRepeatedTables(creo::ProMdl drawing, int sheet, const std::optional<FormatTableRule>& rule);

}  // namespace actions
