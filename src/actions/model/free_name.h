// Erasing a model whose name is wanted again at once. Creo completes an erasure only once control is back with it, and
// the name isn't free before.
#pragma once

#include <string>
#include <string_view>

#include "creo/ProTypes.h"

namespace actions {

// Gives the model a name that no other has, "OSTELO_WRITEOUT_%d" with the first free number from `number` on, which
// ends behind it. The name that the model has then; ProExists: no number of the next 10,000 is free.
creo::Got<std::wstring> renameAside(creo::ProMdl model, int& number);

// Is it such a name? What is erased under one was the action's own, and nobody misses it.
bool isAside(std::wstring_view name);

// Erases the model under such a name, so that its own is free now. As ProMdlErase; behind a failure it has its name.
creo::ProError eraseAside(creo::ProMdl model, int& number);

// Erases a model that an action made under a name of its own. One that was never saved goes under such a name, so that
// the action can make it again; of a saved one the name is taken by its file, and what it loses has to be told by it.
creo::ProError eraseMade(creo::ProMdl model);

}  // namespace actions
