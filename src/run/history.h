// The record that a finished run leaves in each model, as Creo external data of class kvpslot.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "creo/ProTypes.h"

namespace run {

struct HistoryRecord {
  std::wstring package, list, date, user;
};

// Adds a record for the chosen package and list. Nothing when history is switched off or the data can't be opened.
void writeHistory(creo::ProMdl model);
// True when the chosen package's chosen list already ran on the model.
bool isAlreadyReworked(creo::ProMdl model);
// How many records the model says that it has; 0 also where its data can't be opened. In damaged data some are missing.
int historyCount(creo::ProMdl model);
// All records that are there; none where the model's data can't be opened. A slot that can't be read keeps the former
// record's value; a record without one is left out.
std::vector<HistoryRecord> readHistory(creo::ProMdl model);
// What the history dialog shows for a table row ("BRACKET.PRT"): a line a record, "*" before those of the chosen
// package and list; "No history found" without one, "No model selected" for a text that names no model.
std::wstring historyText(std::string_view row);

}  // namespace run
