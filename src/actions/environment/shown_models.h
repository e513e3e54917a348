// Which models stay in memory where Creo erases what isn't displayed.
#pragma once

#include <optional>

#include "creo/ProTypes.h"

namespace actions {

// Makes sure that no model under work would go: the innermost one is displayed in its window or the current one, where
// it stood in none and no displayed model uses it. Nothing is displayed where that wouldn't do. Gives a model that
// would go all the same; none: all stay.
std::optional<creo::ProMdl> keepModelsUnderWork();

}  // namespace actions
