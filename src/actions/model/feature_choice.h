// The features that an action works on.
#pragma once

#include <functional>
#include <string>

#include "creo/ProFeature.h"
#include "engine/task.h"

namespace actions {

// Calls `work` with each feature of the model that `feat` chooses, and its name: "1" those of the type `feattype`, "2"
// the one with the id `featid`, "3" all, "4" the first whose name fits `featname`. Gives how many there were.
int visitChosenFeatures(const engine::Task& task,
                        const std::function<void(const creo::ProFeature&, const std::wstring&)>& work);

}  // namespace actions
