// Packages: zip files in the package folder, unpacked under the temp folder and kept there until the file changes.
#pragma once

#include <string>
#include <string_view>

namespace documents {

// The entry of the filter chooser that stands for none.
constexpr const char* kNoFilter = "no Filter";
constexpr const char* kFilterDialog = "kvanefilter";

enum class Unpacked {
  ready,       // unpacked now, or as it is already
  incomplete,  // a required member is missing, or a member couldn't be extracted; the rest is there
  refused,     // nothing that could be used: no zip, damaged, hostile, its folder can't be made, or an interrupt
};

// Fills the package chooser and selects the first. 0; 1: none found; -1: the folder is missing.
int listPackages();
// Unpacks a package of the chooser ("standards.kvz"), then fills lists, description and filters and takes the first
// list. 0, or 1: it was refused, or it holds no action list.
int selectPackage(std::string_view name);
// Makes `openKvzPath` the package's folder and unpacks into it unless that state of the file is there already. A name
// with its folder is taken when that is the package folder.
Unpacked unpackPackage(std::string_view name, int attempt = 0);
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

}  // namespace documents
