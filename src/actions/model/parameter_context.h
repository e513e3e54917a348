// What one action's work on parameters carries along.
#pragma once

#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "actions/task.h"
#include "creo/ProParameter.h"
#include "language/number_with_units.h"
#include "text/letters.h"

namespace actions {

// A value that a caller sets in place of what the attributes say.
struct ParameterOverride {
  creo::ProParamvalueType kind = creo::ProParamvalueType::none;
  std::wstring value;
  std::vector<language::NumberWithUnits> numbers{};  // that stand in it
};

// One action's work on parameters.
struct ParameterEditContext {
  const Task& currentAction;
  creo::ProMdl currentModel;
  enum Pass { retype = 1, setValue = 2 } editPass = retype;
  int visitRepeats = 1;        // how often this pass visits the parameters; each conversion adds one
  int editHits = 0;            // parameters that the search by name found
  bool editHandled = false;    // the visit reached a parameter
  bool rename = false;         // a hit gets a new name in place of a value
  bool familyAware = false;    // a conversion carries the family table's values across
  std::wstring workingName{};  // of a conversion: the new name
  std::optional<ParameterOverride> override{};
  std::optional<std::wstring> searched{};  // `name` as it was substituted for this visit
  // Names that a rename took from their first owner in this visit: the places of later ones moved up.
  std::unordered_set<std::wstring, text::HashNoCase, text::EqualNoCase> renamed{};
  // Those whose conversion was refused: told once, however often the visit is repeated.
  std::unordered_set<std::wstring, text::HashNoCase, text::EqualNoCase> refused{};
};

}  // namespace actions
