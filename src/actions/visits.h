// Walks over what a model holds and uses, with a line where one isn't whole.
#pragma once

#include <string_view>
#include <vector>

#include "creo/ProMdl.h"

namespace actions {

// visited: what a visit gave. True: everything was visited, nothing is there, or the visit was to stop. False, with an
// error line that names what couldn't be visited: "The layers".
bool isWhole(creo::ProError visited, std::wstring_view what);

// What a model uses directly. None, with an error line, where Creo can't tell.
std::vector<creo::ProDependency> usedBy(creo::ProMdl model);

}  // namespace actions
