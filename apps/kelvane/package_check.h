// What of a package would not run, and what outside it it uses.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "kelvane/package_source.h"

namespace kelvane {

struct Finding {
  std::string file;      // member of the package
  std::size_t line = 0;  // from 1; 0 concerns the whole file
  std::string section;   // "head", "body", "foot", "list filter"; empty outside a list's sections
  int action = -1;       // its number in the section, from 0; -1: none
  std::string place;     // the action as the log names it: "B3", "B3 - G0"
  std::string text;
  std::string use;  // no fault, but what one should know: "program", "address", "path" of the surroundings that it
                    // uses, "units" for a number that loses its unit, or whose unit moves it, "options" for
                    // options of Creo that are saved in the body
};
// In the order of the members, within a member by line.
std::vector<Finding> checkPackage(const PackageSource& package);
// "actionlists/clean.xml:12: B3: unknown action 'delModelParameter'; did you mean 'deleteModelParameter'?"
std::string shown(const Finding& finding);

}  // namespace kelvane
