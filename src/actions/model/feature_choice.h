// The features that an action works on.
#pragma once

#include <functional>
#include <string>

#include "creo/ProFeature.h"
#include "engine/action.h"
#include "engine/task.h"

namespace actions {

// Calls `work` with each feature of the model that `feat` chooses, and its name: "1" those of the type `feattype`, "2"
// the one with the id `featid`, "3" all, "4" the first whose name fits `featname`. Gives how many there were.
int visitChosenFeatures(const engine::Task& task,
                        const std::function<void(const creo::ProFeature&, const std::wstring&)>& work);

// ---- what rows have in common

constexpr engine::Attribute kWhichFeatures[] = {
    {.name = L"feat",
     .kind = engine::Kind::word,
     .words = L"1|2|3|4",
     .need = engine::Need::needed,
     .about = "which features: 1 those of feattype, 2 the one with featid, 3 all, 4 the first that fits featname"},
};
constexpr engine::Attribute kChosenFeatures[] = {
    {.name = L"feattype", .kind = engine::Kind::feature, .about = "a code of a feature type"},
    {.name = L"featid", .kind = engine::Kind::integer, .about = "an id"},
    {.name = L"featname", .kind = engine::Kind::pattern, .about = "a feature's name"},
};

}  // namespace actions
