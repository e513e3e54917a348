// The choosers of packages, lists and filters in the dialogs, and what a choice does.
#pragma once

#include <string>
#include <string_view>

#include "run/filter_names.h"

namespace run {

// The name that a menu of a dialog shows as chosen. Empty for none, and with an error line where it can't be read.
std::string chosenName(const std::string& dialog, const char* menu);
// Fills the package chooser and selects the first. 0; 1: none found; -1: the folder is missing.
int listPackages();
// Unpacks a package of the chooser ("standards.kvz"), then fills lists, description and filters and takes the first
// list. 0, or 1: it was refused, or it holds no action list.
int selectPackage(std::string_view name);
// Fills the chooser of action lists from the selected package.
void listActionLists();
// Fills the chooser of filter files: "no Filter", then the package's; the configured one is selected if it is there.
void listFilters();
// What choosing a list does: it becomes the current one, its filter is loaded into the table, its description shown.
void selectActionList(std::string_view name);
// The package's description. 0 or 1 (no file).
int readPackageIndex();
// The description of a list ("clean.xml").
void readActionListInfo(std::string_view name);
// Path of the selected list's file; empty when none is selected.
std::wstring selectedListPath();

}  // namespace run
