// What a look at a package finds.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "kelvane/check/edit.h"
#include "kelvane/vocabulary/rules.h"

namespace kelvane {

struct Finding {
  std::string file;      // member of the package
  std::size_t line = 0;  // from 1; 0 concerns the whole file
  std::string section;   // "head", "body", "foot", "list filter"; empty outside a list's sections
  int action = -1;       // its number in the section, from 0; -1: none
  std::string place;     // the action as the log names it: "B3", "B3 - G0"
  std::string text;
  std::string_view rule;
  std::string attribute;  // empty: it concerns the whole element
  // What the package uses of its surroundings, or what else is no fault: "program", "address", "path", "units",
  // "letters", "options"; empty for a fault.
  std::string use;
  int element = -1;  // of the file's elements, the one that it stands in; -1: none, or it can't be told
  Edits mend = {};   // of the file's bytes, what surely mends it; none: a person must
};
Severity severityOf(const Finding& finding);
// "actionlists/clean.xml:12: B3: unknown action 'delModelParameter'; did you mean 'deleteModelParameter'?"
std::string shown(const Finding& finding);

}  // namespace kelvane
