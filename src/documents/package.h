// Packages: zip files in the package folder, unpacked under the temp folder and kept there until the file changes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace documents {

// Limits against zip bombs.
constexpr unsigned long long kMostUnpacked = 1ULL << 30;  // bytes
constexpr unsigned kMostRatio = 1000;                     // unpacked to packed

// Fills the package chooser and selects the first. 0; 1: none found; -1: the folder is missing.
int listPackages();
// Unpacks a package of the chooser ("standards.kvz"), then fills lists, description and filters. 0 or 1.
int selectPackage(std::string_view name);
// Makes `openKvzPath` the package's folder and unpacks into it unless that state of the file is there already.
void unpackPackage(std::string_view name, int attempt = 0);
// Fills the chooser of action lists from the selected package.
void listActionLists();
// The package's description. 0 or 1 (no file).
int readPackageIndex();
// The description of a list ("clean.xml").
void readActionListInfo(std::string_view name);
// Path of the selected list's file; empty when none is selected.
std::wstring selectedListPath();

}  // namespace documents
