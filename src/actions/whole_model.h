// What the actions on a whole model share.
#pragma once

#include <string_view>

#include "actions/action.h"

namespace actions {

// Parts and assemblies that are no instances, where the list gives work.
constexpr Conditions kOnNativeSolids = {kFilter, kSolids, kNotInstance, kAnyOfTheWork};

// The error line for a word that an attribute can't have. known: "rel or abs".
void unknownWord(std::wstring_view attribute, std::wstring_view value, std::wstring_view known);

// How many entries a list "name_0", "name_1", ... may have.
constexpr int kListSize = 100;

}  // namespace actions
