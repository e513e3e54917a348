// What a person selects in the model before him, as a command of `kelvane watch` names it.
#pragma once

#include <string>

#include "creo/ProSelection.h"

namespace kelvane {

// words: the way to it from the model down, parted by "/": names of components, or the numbers of their features where
// a name occurs more than once; at the end the number of a feature, which is selected then, else a component is.
// "UNIT.ASM/GEAR.PRT", "12/GEAR.PRT", "UNIT.ASM/12/" and "GEAR.PRT/7" are such ways. Fault where there is no such
// thing.
creo::ProSelection selectionNamed(const std::string& words, creo::ProMdl model);

}  // namespace kelvane
